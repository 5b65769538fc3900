#pragma once
// How an opened .vmx file holds its text, beyond its settings: the encoding its values are
// read in and written back in, a "#!" line that opens it, and why it cannot be saved, if so.
#include <string>

#include "core/support/TextEncoding.h"

namespace arden {

struct FileText {
    // VMware's name of the encoding of the values ("UTF-8", "windows-1252", "GBK" ...): the
    // file's ".encoding", or what a file without one was read as.
    std::string encoding = "UTF-8";
    // Set when the user agreed to have the whole file written in UTF-8 (a value the file's
    // encoding cannot hold): the next save writes ".encoding = "UTF-8"" and every line in UTF-8.
    bool convertToUtf8 = false;
    // A "#!" line that was the file's first line; written first again.
    std::string firstLine;
    // Only ".encoding", the display name and the encryption keys are readable.
    bool encrypted = false;
    // Why the file is opened read-only (its settings are encrypted, its encoding is unknown);
    // empty when it can be saved.
    std::string readOnlyReason;
    bool operator==(const FileText&) const = default;
};

// A value that the file's encoding cannot hold: its key and the first such character.
struct EncodingGap {
    std::string key;
    MissingCharacter character;
};

// The codec of the file's values (UTF-8 for an encoding the editor does not know).
inline TextCodec codecOf(const FileText& text) { return TextCodec::forName(text.encoding).value_or(TextCodec::utf8()); }

}  // namespace arden
