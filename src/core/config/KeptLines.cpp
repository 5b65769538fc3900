#include "core/config/KeptLines.h"

#include <algorithm>

namespace arden {

KeptLines::KeptLines(std::initializer_list<std::string_view> lines) {
    for (std::string_view line : lines) push_back(line);
}

void KeptLines::push_back(std::string_view line) {
    text_.append(line);
    ends_.push_back(static_cast<std::uint32_t>(text_.size()));
}

std::string_view KeptLines::operator[](std::size_t i) const {
    std::size_t start = i == 0 ? 0 : ends_[i - 1];
    return std::string_view(text_).substr(start, ends_[i] - start);
}

bool KeptLines::operator==(const std::vector<std::string>& lines) const {
    return std::equal(begin(), end(), lines.begin(), lines.end(),
                      [](std::string_view a, const std::string& b) { return a == b; });
}

}  // namespace arden
