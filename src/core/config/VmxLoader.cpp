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

    // Every line of the file is one of: blank, a comment ("#" first), or a data line. The
    // comments are read after all data lines (a "# Version" comment is only a hint when the
    // format numbers say nothing), and the kept lines are gathered last, in file order. Each
    // step walks the bytes again rather than holding a list of millions of lines.
    std::optional<std::pair<std::size_t, std::size_t>> longLine;  // first line too long, and its length
    std::optional<std::size_t> loneCr;                              // first line that ended with a CR alone
    load::forEachLine(bytes, [&](std::size_t index, std::string_view text, bool endsWithLoneCr) {
        if (text.size() > kMaxVmxLineBytes && !longLine) longLine.emplace(index, text.size());
        if (endsWithLoneCr && !loneCr) loneCr = index;
    });
    if (longLine) {
        result.error = loadError(sourceName, "line " + std::to_string(longLine->first + 1) + " is " +
                                                 std::to_string(longLine->second) +
                                                 " bytes long; configuration lines are at most " +
                                                 std::to_string(kMaxVmxLineBytes) + " bytes");
        return result;
    }

    VmConfiguration& c = result.config;
    c.identity.vmxFolder = folder;
    c.identity.vmxFileName = fileName;
    c.identity.displayName.clear();
    load::FileTextScan scan = load::scanFileText(bytes, result.notices);
    c.fileText = std::move(scan.text);
    load::Loader loader(c, result.notices, scan.codec);
    auto lines = [&](auto&& read) {
        load::forEachLine(bytes, [&](std::size_t index, std::string_view text, bool) {
            std::string_view trimmed = trimBlanks(text);
            if (!trimmed.empty()) read(load::Line{index, text}, trimmed.front() == '#');
        });
    };
    lines([&](const load::Line& line, bool comment) {
        if (!comment) loader.dataLine(line);
    });
    if (loneCr) {
        result.notices.push_back({static_cast<int>(*loneCr + 1),
                                  "lines end with a carriage return alone; they were read as lines and are written "
                                  "with CR LF"});
    }
    lines([&](const load::Line& line, bool comment) {
        if (comment) loader.commentLine(line);
    });
    loader.finish();
    lines([&](const load::Line& line, bool) {
        if (loader.isKept(line.index)) c.keptLines.push_back(line.text);
    });
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
