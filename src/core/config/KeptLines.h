#pragma once
// The lines of an opened file that the editor does not manage, in file order. A file can hold
// millions of them (a log pasted into a configuration), so they are stored as one text with the
// end of each line beside it: a few bytes a line instead of a string object each.
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace arden {

class KeptLines {
public:
    class const_iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = std::string_view;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = std::string_view;

        const_iterator() = default;
        const_iterator(const KeptLines* lines, std::size_t i) : lines_(lines), i_(i) {}
        std::string_view operator*() const { return (*lines_)[i_]; }
        const_iterator& operator++() { ++i_; return *this; }
        const_iterator operator++(int) { const_iterator t = *this; ++i_; return t; }
        bool operator==(const const_iterator& o) const { return i_ == o.i_; }

    private:
        const KeptLines* lines_ = nullptr;
        std::size_t i_ = 0;
    };
    using iterator = const_iterator;
    using value_type = std::string_view;

    KeptLines() = default;
    KeptLines(std::initializer_list<std::string_view> lines);

    void push_back(std::string_view line);
    std::size_t size() const { return ends_.size(); }
    bool empty() const { return ends_.empty(); }
    std::string_view operator[](std::size_t i) const;
    const_iterator begin() const { return {this, 0}; }
    const_iterator end() const { return {this, size()}; }

    bool operator==(const KeptLines& other) const = default;
    // The same lines as `lines`, one for one.
    bool operator==(const std::vector<std::string>& lines) const;

private:
    std::string text_;                  // every line, one after another
    std::vector<std::uint32_t> ends_;   // where each line ends in text_ (the files are at most 16 MiB)
};

}  // namespace arden
