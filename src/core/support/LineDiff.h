#pragma once
// Line differences of two texts, printed in the unified form that `diff -u` prints and `patch`
// applies. Lines are compared as bytes, each with its own ending: a line that ends in CR LF
// differs from the same line ending in LF, and a last line without a line break differs from
// the same line with one (it is followed by "\ No newline at end of file").
#include <string>
#include <string_view>

namespace arden {

// The unified diff that turns `before` into `after`: a "--- fromLabel" and a "+++ toLabel"
// line, then each run of changes as a hunk ("@@ -start,count +start,count @@") with up to
// `context` unchanged lines around it. Empty when the texts are equal. The header and hunk
// lines end in LF; changed and context lines keep their own bytes.
std::string unifiedDiff(std::string_view before, std::string_view after, std::string_view fromLabel,
                        std::string_view toLabel, int context = 3);

}  // namespace arden
