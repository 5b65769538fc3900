// Reading a .vmx file: size and binary checks, splitting the bytes into lines (CR LF, LF, or
// a lone CR), and handing data lines and comment lines to the loader.
#include "core/config/VmxLoader.h"

#include "core/config/VmxLoaderState.h"
#include "core/support/AtomicFile.h"
#include "core/support/TextUtil.h"

namespace arden {
namespace {

Message loadError(const std::string& sourceName, const std::string& what) {
    return Message{MessageKind::Critical, {TextPart::fixed("Unable to Open Configuration")},
                   {TextPart::fixed(sourceName + ": " + what)}};
}

std::string tooLong(std::size_t size) {
    return "the file is " + std::to_string(size) + " bytes long; a configuration file is at most " +
           std::to_string(kMaxVmxFileBytes) + " bytes";
}

}  // namespace

LoadResult parseVmxText(std::string_view bytes, const std::string& folder, const std::string& fileName,
                        const std::string& sourceName) {
    LoadResult result;
    if (bytes.size() > kMaxVmxFileBytes) {
        result.error = loadError(sourceName, tooLong(bytes.size()));
        return result;
    }
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF") bytes.remove_prefix(3);
    if (std::size_t nul = bytes.find('\0'); nul != std::string_view::npos) {
        result.error = loadError(sourceName, "this is not a configuration file: it holds binary data (a zero byte at offset " +
                                                 std::to_string(nul) + "); a configuration file is text of \"key = value\" lines");
        return result;
    }

    VmConfiguration& c = result.config;
    c.identity.vmxFolder = folder;
    c.identity.vmxFileName = fileName;
    c.identity.displayName.clear();
    load::Loader loader(c, result.notices);

    std::vector<load::Line> comments;
    std::size_t index = 0;
    std::size_t pos = 0;
    std::optional<std::size_t> loneCr;  // first line that ended with a CR alone
    while (pos < bytes.size()) {
        // A line ends at LF, CR LF, or a CR alone (the old Macintosh form).
        std::size_t eol = bytes.find_first_of("\r\n", pos);
        if (eol == std::string_view::npos) eol = bytes.size();
        std::string_view text = bytes.substr(pos, eol - pos);
        std::size_t next = eol + 1;
        if (eol < bytes.size() && bytes[eol] == '\r') {
            if (eol + 1 < bytes.size() && bytes[eol + 1] == '\n') ++next;
            else if (!loneCr) loneCr = index;
        }
        if (text.size() > kMaxVmxLineBytes) {
            result.error = loadError(sourceName, "line " + std::to_string(index + 1) + " is " + std::to_string(text.size()) +
                                                     " bytes long; configuration lines are at most " +
                                                     std::to_string(kMaxVmxLineBytes) + " bytes");
            return result;
        }
        std::string_view trimmed = trimBlanks(text);
        if (!trimmed.empty()) {
            load::Line line{index, text};
            if (trimmed.front() == '#') comments.push_back(line);
            else loader.dataLine(line);
        }
        ++index;
        pos = next;
    }
    if (loneCr) {
        result.notices.push_back({static_cast<int>(*loneCr + 1),
                                  "lines end with a carriage return alone; they were read as lines and are written "
                                  "with CR LF"});
    }
    for (const load::Line& line : comments) loader.commentLine(line);
    loader.finish();
    loader.countOmittedNotices();
    result.ok = true;
    return result;
}

LoadResult loadVmxFile(const std::filesystem::path& path) {
    std::string error;
    auto bytes = readWholeFile(path, error, kMaxVmxFileBytes);
    if (!bytes) {
        LoadResult r;
        r.error = Message{MessageKind::Critical, {TextPart::fixed("Unable to Open Configuration")}, {TextPart::fixed(error)}};
        return r;
    }
    std::string folder = pathText(path.parent_path());
    if (!folder.empty() && folder.back() != '/' && folder.back() != '\\') folder += static_cast<char>(std::filesystem::path::preferred_separator);
    return parseVmxText(*bytes, folder, pathText(path.filename()), pathText(path));
}

}  // namespace arden
