#include "core/support/RegistryStore.h"

#include <cstdio>

namespace arden {

std::string registryRootName(RegistryRoot root) {
    switch (root) {
        case RegistryRoot::ClassesRoot: return "HKEY_CLASSES_ROOT";
        case RegistryRoot::CurrentUser: return "HKEY_CURRENT_USER";
        case RegistryRoot::LocalMachine: return "HKEY_LOCAL_MACHINE";
        case RegistryRoot::Users: return "HKEY_USERS";
        case RegistryRoot::CurrentConfig: return "HKEY_CURRENT_CONFIG";
    }
    char text[16];
    std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(root));
    return text;
}

std::string normaliseKeyPath(std::string_view path) {
    std::string out;
    for (char c : path) {
        if (c == '\\' && (out.empty() || out.back() == '\\')) continue;
        out += c;
    }
    if (!out.empty() && out.back() == '\\') out.pop_back();
    return out;
}

}  // namespace arden
