// What a file says about its own text, read before any of its values: the ".encoding" line
// (the last one counts, as for every key), and the encryption keys. A file whose settings are
// encrypted, or whose encoding the editor does not know, is opened read-only.
#include "core/config/VmxLoaderState.h"
#include "core/support/TextUtil.h"

namespace arden::load {
namespace {

struct SeenKey {
    std::string value;
    int line = 0;  // 1-based; 0 when the file does not hold the key
};

bool isPartialEncryption(const SeenKey& type) { return equalsIgnoreCase(trimBlanks(type.value), "partial"); }

}  // namespace

FileTextScan scanFileText(std::string_view bytes, std::vector<LoadNotice>& notices) {
    SeenKey encoding, keySafe, data, encryptionType;
    forEachLine(bytes, [&](std::size_t index, std::string_view text, bool) {
        std::string_view t = trimBlanks(text);
        std::size_t eq = t.find('=');
        if (t.empty() || t.front() == '#' || eq == std::string_view::npos) return;
        const std::string key = toLowerAscii(trimBlanks(t.substr(0, eq)));
        SeenKey* seen = key == ".encoding"            ? &encoding
                        : key == "encryption.keysafe" ? &keySafe
                        : key == "encryption.data"    ? &data
                        : key == "vmx.encryptiontype" ? &encryptionType
                                                      : nullptr;
        if (seen) *seen = {valueOf(trimBlanks(t.substr(eq + 1))), static_cast<int>(index + 1)};
    });

    FileTextScan scan;
    if (encoding.line == 0) {
        // No ".encoding": UTF-8 when every byte is, otherwise the code page of the products
        // that wrote such files.
        if (!scan.codec.decode(bytes)) scan.codec = TextCodec::legacyCodePage();
    } else if (auto codec = TextCodec::forName(encoding.value)) {
        scan.codec = *codec;
    } else {
        scan.text.readOnlyReason = "its encoding \"" + encoding.value + "\" (.encoding) is not one the editor can write";
        notices.push_back({encoding.line, "the encoding \"" + encoding.value +
                                              "\" is unknown: values are shown as UTF-8 and the file is opened read-only"});
    }
    scan.text.encoding = std::string(scan.codec.name());
    if (keySafe.line != 0 && data.line != 0 && !isPartialEncryption(encryptionType)) {
        scan.text.encrypted = true;
        scan.text.readOnlyReason = "its settings are encrypted (encryption.keySafe, encryption.data); only its name "
                                   "can be read, and the file is opened read-only";
        notices.push_back({data.line, "the settings are encrypted: only the display name can be read; the file is "
                                      "opened read-only and cannot be saved"});
    }
    return scan;
}

}  // namespace arden::load
