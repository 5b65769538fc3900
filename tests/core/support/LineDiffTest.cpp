// The unified diff that the Changes window shows and --dry-run prints: the form patch reads
// (hunks, context, line numbers, a last line without a line break), and an edit that is always
// correct and as short as can be, checked against a plain longest-common-sequence count on
// many random texts and applied back line by line.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "core/support/LineDiff.h"

using arden::unifiedDiff;

namespace {

std::string numbered(int from, int to) {
    std::string text;
    for (int i = from; i <= to; ++i) text += "line " + std::to_string(i) + "\n";
    return text;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        end = end == std::string::npos ? text.size() : end + 1;
        lines.push_back(text.substr(start, end - start));
        start = end;
    }
    return lines;
}

// Applies a diff of unifiedDiff's form to `before`, checking every kept and removed line
// against it; the text it gives, or "<mismatch>".
std::string applyDiff(const std::string& before, const std::string& diff) {
    const std::vector<std::string> from = linesOf(before);
    std::vector<std::string> patch = linesOf(diff);
    std::string out;
    std::size_t at = 0;  // next line of `from`
    for (std::size_t i = 2; i < patch.size(); ++i) {
        const std::string& line = patch[i];
        if (line.rfind("@@ -", 0) == 0) {
            std::size_t start = std::stoul(line.substr(4));
            std::size_t count = std::stoul(line.substr(line.find(',') + 1));
            std::size_t first = count == 0 ? start : start - 1;
            while (at < first) out += from[at++];
            continue;
        }
        std::string text = line.substr(1);
        if (i + 1 < patch.size() && patch[i + 1] == "\\ No newline at end of file\n") {
            text.pop_back();
            ++i;
        }
        if (line[0] == '+') out += text;
        else if (at >= from.size() || from[at++] != text) return "<mismatch>";
        else if (line[0] == ' ') out += text;
    }
    while (at < from.size()) out += from[at++];
    return out;
}

int changedLines(const std::string& diff) {
    int n = 0;
    const std::vector<std::string> lines = linesOf(diff);
    for (std::size_t i = 2; i < lines.size(); ++i) n += lines[i][0] == '+' || lines[i][0] == '-';
    return n;
}

int longestCommon(const std::vector<std::string>& a, const std::vector<std::string>& b) {
    std::vector<std::vector<int>> t(a.size() + 1, std::vector<int>(b.size() + 1, 0));
    for (std::size_t i = a.size(); i-- > 0;)
        for (std::size_t j = b.size(); j-- > 0;)
            t[i][j] = a[i] == b[j] ? t[i + 1][j + 1] + 1 : std::max(t[i + 1][j], t[i][j + 1]);
    return t[0][0];
}

}  // namespace

TEST(LineDiff, PrintsHunksWithThreeLinesOfContextAsDiffDoes) {
    EXPECT_EQ(unifiedDiff("same\n", "same\n", "a", "b"), "");

    // Changes six kept lines apart share a hunk; seven apart make two.
    std::string near = numbered(1, 20), far = numbered(1, 20);
    near.replace(near.find("line 12\n"), 8, "");
    near.replace(near.find("line 5\n"), 7, "");
    far.replace(far.find("line 13\n"), 8, "");
    far.replace(far.find("line 5\n"), 7, "");
    EXPECT_EQ(unifiedDiff(numbered(1, 20), near, "a", "b"),
              "--- a\n+++ b\n@@ -2,14 +2,12 @@\n line 2\n line 3\n line 4\n-line 5\n line 6\n line 7\n line 8\n"
              " line 9\n line 10\n line 11\n-line 12\n line 13\n line 14\n line 15\n");
    EXPECT_EQ(unifiedDiff(numbered(1, 20), far, "a", "b"),
              "--- a\n+++ b\n@@ -2,7 +2,6 @@\n line 2\n line 3\n line 4\n-line 5\n line 6\n line 7\n line 8\n"
              "@@ -10,7 +9,6 @@\n line 10\n line 11\n line 12\n-line 13\n line 14\n line 15\n line 16\n");
}

TEST(LineDiff, NewFilesLineEndingsAndAMissingLastLineBreak) {
    EXPECT_EQ(unifiedDiff("", "a = \"1\"\r\nb = \"2\"\r\n", "/dev/null", "vm.vmx"),
              "--- /dev/null\n+++ vm.vmx\n@@ -0,0 +1,2 @@\n+a = \"1\"\r\n+b = \"2\"\r\n");
    // Every line ending changed: each line is removed and written again.
    EXPECT_EQ(unifiedDiff("a\nb", "a\r\nb\r\n", "x", "x"),
              "--- x\n+++ x\n@@ -1,2 +1,2 @@\n-a\n-b\n\\ No newline at end of file\n+a\r\n+b\r\n");
    EXPECT_EQ(unifiedDiff("k\nz\n", "k\nz", "x", "x"), "--- x\n+++ x\n@@ -1,2 +1,2 @@\n k\n-z\n+z\n\\ No newline at end of file\n");
    EXPECT_EQ(unifiedDiff("a\n", "a\nb\n", "x", "x", 0), "--- x\n+++ x\n@@ -1,0 +2,1 @@\n+b\n");
}

// Random texts over a few line values (so that many lines repeat): the diff applies back to
// the new text and changes no more lines than the longest common sequence leaves over.
TEST(LineDiff, TheEditIsCorrectAndShortest) {
    std::mt19937 random(20240611);
    const std::string values[] = {"a\n", "b\n", "c\n", "d\r\n", "a"};
    for (int round = 0; round < 400; ++round) {
        auto text = [&](int most) {
            std::string t;
            const int n = static_cast<int>(random() % static_cast<unsigned>(most + 1));
            for (int i = 0; i < n; ++i) t += values[random() % 4];
            if (random() % 5 == 0) t += values[4];
            return t;
        };
        const std::string before = text(12), after = text(12);
        const std::string diff = unifiedDiff(before, after, "a", "b", static_cast<int>(random() % 4));
        ASSERT_EQ(applyDiff(before, diff), after) << before << "\n=>\n" << after << "\n" << diff;
        const auto a = linesOf(before), b = linesOf(after);
        EXPECT_EQ(changedLines(diff), static_cast<int>(a.size() + b.size()) - 2 * longestCommon(a, b)) << diff;
    }
}
