// The product a file was written for: the "# Platform" and "# Version" comment lines, the
// two format numbers (kept as read until the user picks another target) and, for a file
// without the comment lines, the hardware version and the keys that mark an ESXi file.
#include "core/config/VmxLoaderState.h"
#include "core/hardware/DeviceKeys.h"
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
    if (version) {
        c_.product.platform = platform;
        c_.product.version = *version;
        return;
    }
    // Otherwise the hardware version says which product wrote the file.
    int hw = 0;
    if (!parseInt32(c_.product.hwVersionAsRead, hw)) hw = 0;
    if (auto product = productForFile(platform_, hw, esxFile())) {
        c_.product.platform = product->platform;
        c_.product.version = product->version;
    }
}

void Loader::noteProductHint(const std::string& key, std::string_view value) {
    if (value.find("/vmfs/") != std::string_view::npos ||
        (key.ends_with(".filename") && value.starts_with("[")))
        datastorePath_ = true;
    if (key.starts_with("ethernet") && key.ends_with(".networkname")) networkName_ = true;
    if (key.starts_with("ethernet") && key.ends_with(".connectiontype")) connectionType_ = true;
    if (key == "virtualhw.productcompatibility" && equalsIgnoreCase(value, "hosted")) hostedMarker_ = true;
}

bool Loader::esxFile() const {
    // Hosted products name host networks ("connectionType") even beside a "networkName", and
    // older ESX files carry the hosted marker too, so a datastore path alone settles it.
    return datastorePath_ || (networkName_ && !connectionType_ && !hostedMarker_);
}

void Loader::takeFormatNumber(const std::string& key, std::string_view value) {
    if (key == "config.version") c_.product.configVersionAsRead = std::string(value);
    else c_.product.hwVersionAsRead = std::string(value);
}

}  // namespace arden::load
