#pragma once
// What a fuzz target does when a property it checks does not hold: print what was expected
// and what was found, then abort, so libFuzzer keeps the input as a crash reproducer.
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace arden::fuzz {

[[noreturn]] inline void fail(std::string_view what, std::string_view expected, std::string_view found) {
    std::fprintf(stderr, "\n*** %.*s\n--- expected (%zu bytes):\n%.*s\n--- found (%zu bytes):\n%.*s\n",
                 static_cast<int>(what.size()), what.data(), expected.size(), static_cast<int>(expected.size()),
                 expected.data(), found.size(), static_cast<int>(found.size()), found.data());
    std::abort();
}

inline void expectEqual(std::string_view what, std::string_view expected, std::string_view found) {
    if (expected != found) fail(what, expected, found);
}

}  // namespace arden::fuzz
