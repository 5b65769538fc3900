// The product a file was written for: the "# Platform" and "# Version" comment lines and the
// two format numbers, which are kept as read until the user picks another target.
#include "core/config/VmxLoaderState.h"
#include "core/support/TextUtil.h"

namespace arden::load {

bool Loader::productComment(const Line& line, std::string_view text) {
    for (int p = 0; p < kPlatformCount; ++p) {
        if (text == platformCommentLine(p)) {
            platform_ = p;
            return true;
        }
    }
    constexpr std::string_view kVersion = "# Version = ";
    if (text.substr(0, kVersion.size()) != kVersion) return false;
    // Which version a text names depends on the platform ("3.x" is GSX Server's second and
    // Workstation's first), so the lines are weighed once every comment has been read.
    versionComments_.emplace_back(line, std::string(text.substr(kVersion.size())));
    return true;
}

void Loader::resolveProduct() {
    // Without a "# Platform" line the file counts as Workstation; a platform without a version
    // (or with a version it does not have) counts as its latest version. Of several version
    // lines the last one that fits counts; one that fits no version of the platform is the
    // user's own comment and is kept.
    const int platform = platform_.value_or(c_.product.platform);
    std::optional<int> version;
    for (const auto& [line, text] : versionComments_) {
        if (auto v = versionFromText(platform, text)) version = v;
        else keep(line);
    }
    c_.product.platform = platform;
    if (version) c_.product.version = *version;
    else if (platform_) c_.product.version = lastVersion(platform);
}

void Loader::takeFormatNumber(const std::string& key, std::string_view value) {
    if (key == "config.version") c_.product.configVersionAsRead = std::string(value);
    else c_.product.hwVersionAsRead = std::string(value);
}

}  // namespace arden::load
