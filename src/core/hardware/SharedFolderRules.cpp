#include "core/hardware/SharedFolderRules.h"

#include <filesystem>
#include <system_error>

#include "core/support/TextUtil.h"
#include "core/support/PathText.h"

namespace arden {
namespace {

constexpr int kSharedFolderTitleId = 115;  // "Shared Folder"

Message refusal(std::string text) {
    return Message{MessageKind::Warning, {TextPart::fromId(kSharedFolderTitleId)}, {TextPart::fixed(std::move(text))}};
}

bool hasControlCharacter(std::string_view text) {
    for (char c : text) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) return true;
    }
    return false;
}

bool hasLineBreak(std::string_view text) { return text.find_first_of("\r\n") != std::string_view::npos; }

}  // namespace

ShareCheck checkShare(std::string_view name, std::string_view hostPath, const std::vector<std::string>& otherNames) {
    if (name.empty()) return {refusal("Enter a name for the shared folder: the guest sees the folder under this name."), {}};
    if (name.find('=') != std::string_view::npos)
        return {refusal("The share name \"" + std::string(name) + "\" contains \"=\". Use letters, digits, blanks and "
                        "punctuation other than \"=\"."), {}};
    if (hasControlCharacter(name))
        return {refusal("The share name contains a line break or another control character. Enter the name on one "
                        "line."), {}};
    if (hostPath.empty()) return {refusal("Enter the host folder to share, or choose it with Browse."), {}};
    if (hasLineBreak(hostPath))
        return {refusal("The host folder contains a line break. Enter the folder on one line."), {}};
    for (const std::string& other : otherNames) {
        if (equalsIgnoreCase(other, name))
            return {refusal("Another shared folder of this virtual machine is already named \"" + other +
                            "\". Choose a name of its own."), {}};
    }
    std::error_code ec;
    if (!std::filesystem::is_directory(filePath(hostPath), ec)) {
        return {{}, Message{MessageKind::Question, {TextPart::fromId(kSharedFolderTitleId)},
                            {TextPart::fixed("The folder " + std::string(hostPath) +
                                             " does not exist on this computer. The guest may run on a host where "
                                             "it does.  Share it anyway?")}}};
    }
    return {};
}

TextParts shareAttributes(bool enabled, bool readOnly, bool disableAfterSession) {
    TextParts parts{enabled ? TextPart::fromId(296) : TextPart::fixed("Disabled")};  // 296 "Enabled"
    if (readOnly) parts.insert(parts.end(), {TextPart::fixed(", "), TextPart::fromId(80)});  // "Read-Only"
    if (disableAfterSession)
        parts.insert(parts.end(), {TextPart::fixed(", "), TextPart::fromId(121)});  // "Disable after this session"
    return parts;
}

}  // namespace arden
