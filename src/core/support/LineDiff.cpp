#include "core/support/LineDiff.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

namespace arden {
namespace {

// The lines of a text, each with its line break; the last one may lack it.
std::vector<std::string_view> splitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        end = end == std::string_view::npos ? text.size() : end + 1;
        lines.push_back(text.substr(start, end - start));
        start = end;
    }
    return lines;
}

// Which lines of each side are not part of the longest common sequence: `removed` for the
// lines of the old text, `added` for those of the new one.
struct EditMarks {
    std::vector<bool> removed;
    std::vector<bool> added;
};

// Marks the shortest edit between a and b (line numbers, equal lines equal numbers) into
// removed/added at the positions `aAt`/`bAt` name, by Myers' greedy search: each round d
// keeps, per diagonal k = x - y, the furthest x reached with d edits; the rounds are kept
// (only their diagonals -d..d) to walk the path back.
void markShortestEdit(const std::vector<int>& a, const std::vector<int>& b, const std::vector<std::size_t>& aAt,
                      const std::vector<std::size_t>& bAt, EditMarks& marks) {
    const int n = static_cast<int>(a.size());
    const int m = static_cast<int>(b.size());
    const int most = n + m;
    std::vector<int> v(static_cast<std::size_t>(2 * most + 3), 0);
    auto at = [&](int k) -> int& { return v[static_cast<std::size_t>(k + most + 1)]; };
    std::vector<std::vector<int>> rounds;  // rounds[d][k + d]: the furthest x of round d
    int last = 0;
    for (int d = 0; d <= most; ++d) {
        bool done = false;
        for (int k = -d; k <= d && !done; k += 2) {
            int x = (k == -d || (k != d && at(k - 1) < at(k + 1))) ? at(k + 1) : at(k - 1) + 1;
            int y = x - k;
            while (x < n && y < m && a[static_cast<std::size_t>(x)] == b[static_cast<std::size_t>(y)]) ++x, ++y;
            at(k) = x;
            done = x >= n && y >= m;
        }
        if (done) {
            last = d;
            break;
        }
        std::vector<int> round(static_cast<std::size_t>(2 * d + 1));
        for (int k = -d; k <= d; ++k) round[static_cast<std::size_t>(k + d)] = at(k);
        rounds.push_back(std::move(round));
    }
    int x = n, y = m;
    for (int d = last; d > 0; --d) {
        const std::vector<int>& prev = rounds[static_cast<std::size_t>(d - 1)];
        auto before = [&](int k) { return prev[static_cast<std::size_t>(k + d - 1)]; };
        const int k = x - y;
        const bool down = k == -d || (k != d && before(k - 1) < before(k + 1));
        const int prevK = down ? k + 1 : k - 1;
        const int prevX = before(prevK);
        const int prevY = prevX - prevK;
        if (down) marks.added[bAt[static_cast<std::size_t>(prevY)]] = true;
        else marks.removed[aAt[static_cast<std::size_t>(prevX)]] = true;
        x = prevX;
        y = prevY;
    }
}

// The edit between the two line lists. Equal lines at both ends are passed over, and a line
// that the other side does not hold at all is removed or added without a search: a re-save
// that changes every line ending costs no more than reading the lines.
EditMarks findEdit(const std::vector<std::string_view>& from, const std::vector<std::string_view>& to) {
    EditMarks marks{std::vector<bool>(from.size(), false), std::vector<bool>(to.size(), false)};
    std::size_t head = 0;
    while (head < from.size() && head < to.size() && from[head] == to[head]) ++head;
    std::size_t tail = 0;
    while (tail < from.size() - head && tail < to.size() - head &&
           from[from.size() - 1 - tail] == to[to.size() - 1 - tail])
        ++tail;

    std::unordered_map<std::string_view, int> numbers;
    std::unordered_map<int, int> inFrom, inTo;
    auto numberOf = [&](std::string_view line) { return numbers.emplace(line, static_cast<int>(numbers.size())).first->second; };
    std::vector<int> fromNumbers, toNumbers;
    for (std::size_t i = head; i < from.size() - tail; ++i) ++inFrom[fromNumbers.emplace_back(numberOf(from[i]))];
    for (std::size_t j = head; j < to.size() - tail; ++j) ++inTo[toNumbers.emplace_back(numberOf(to[j]))];

    std::vector<int> a, b;
    std::vector<std::size_t> aAt, bAt;
    for (std::size_t i = 0; i < fromNumbers.size(); ++i) {
        if (inTo.count(fromNumbers[i])) {
            a.push_back(fromNumbers[i]);
            aAt.push_back(head + i);
        } else {
            marks.removed[head + i] = true;
        }
    }
    for (std::size_t j = 0; j < toNumbers.size(); ++j) {
        if (inFrom.count(toNumbers[j])) {
            b.push_back(toNumbers[j]);
            bAt.push_back(head + j);
        } else {
            marks.added[head + j] = true;
        }
    }
    markShortestEdit(a, b, aAt, bAt, marks);
    return marks;
}

// One line of the diff: ' ' kept, '-' removed, '+' added, with its line numbers (from 0) on
// each side before it is counted.
struct DiffLine {
    char kind;
    std::size_t from;
    std::size_t to;
    std::string_view text;
};

void appendLine(std::string& out, char kind, std::string_view text) {
    out += kind;
    out += text;
    if (text.empty() || text.back() != '\n') out += "\n\\ No newline at end of file\n";
}

// "start,count" of a hunk side; an empty side names the line before it, as diff does.
std::string range(std::size_t start, std::size_t count) {
    return std::to_string(count == 0 ? start : start + 1) + "," + std::to_string(count);
}

}  // namespace

std::string unifiedDiff(std::string_view before, std::string_view after, std::string_view fromLabel,
                        std::string_view toLabel, int context) {
    if (before == after) return {};
    const std::vector<std::string_view> from = splitLines(before);
    const std::vector<std::string_view> to = splitLines(after);
    const EditMarks marks = findEdit(from, to);

    std::vector<DiffLine> lines;
    for (std::size_t i = 0, j = 0; i < from.size() || j < to.size();) {
        if (i < from.size() && marks.removed[i]) lines.push_back({'-', i, j, from[i]}), ++i;
        else if (j < to.size() && marks.added[j]) lines.push_back({'+', i, j, to[j]}), ++j;
        else lines.push_back({' ', i, j, from[i]}), ++i, ++j;
    }

    std::string out = "--- " + std::string(fromLabel) + "\n+++ " + std::string(toLabel) + "\n";
    const std::size_t reach = static_cast<std::size_t>(std::max(context, 0));
    std::size_t at = 0;
    while (at < lines.size()) {
        while (at < lines.size() && lines[at].kind == ' ') ++at;
        if (at == lines.size()) break;
        // A hunk: from `reach` lines before the first change to `reach` lines after the last
        // one, taking in the next change while the kept lines between are at most twice `reach`.
        const std::size_t first = at > reach ? at - reach : 0;
        std::size_t end = at;
        for (std::size_t scan = at; scan < lines.size(); ++scan) {
            if (lines[scan].kind != ' ') end = scan + 1;
            else if (scan - end >= 2 * reach) break;
        }
        const std::size_t stop = std::min(lines.size(), end + reach);
        std::size_t fromCount = 0, toCount = 0;
        for (std::size_t k = first; k < stop; ++k) {
            fromCount += lines[k].kind != '+';
            toCount += lines[k].kind != '-';
        }
        out += "@@ -" + range(lines[first].from, fromCount) + " +" + range(lines[first].to, toCount) + " @@\n";
        for (std::size_t k = first; k < stop; ++k) appendLine(out, lines[k].kind, lines[k].text);
        at = stop;
    }
    return out;
}

}  // namespace arden
