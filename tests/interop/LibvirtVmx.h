#pragma once
// libvirt's VMX parser on a configuration file: `virsh -c vmwarews:///session
// domxml-from-native vmware-vmx FILE`, with the stand-ins the vmwarews driver needs, and small
// readers of the domain XML it prints.
#include <filesystem>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "ToolRun.h"

namespace arden::test {

inline bool virshInstalled() { return tool("command -v virsh").exitCode == 0; }

// Runs the parser on `vmx`. libvirt's vmwarews driver looks for vmrun on PATH and asks
// `vmware -v` for the product and version; stand-ins written into `scratch`/bin answer as
// Workstation 5.5 would.
inline ToolRun libvirtDomainXml(const std::filesystem::path& scratch, const std::string& vmx) {
    namespace fs = std::filesystem;
    const fs::path bin = scratch / "bin";
    fs::create_directories(bin);
    writeBytes(bin / "vmrun", "#!/bin/sh\nexit 0\n");
    writeBytes(bin / "vmware", "#!/bin/sh\necho 'VMware Workstation 5.5.0 build-18007'\n");
    for (const char* name : {"vmrun", "vmware"}) {
        fs::permissions(bin / name, fs::perms::owner_exec | fs::perms::group_exec, fs::perm_options::add);
    }
    return tool("PATH=" + quote(bin.string()) + ":\"$PATH\" virsh -c vmwarews:///session domxml-from-native vmware-vmx " +
                quote(vmx));
}

// The elements <tag ...>...</tag> of an XML text, each as its text.
inline std::vector<std::string> elements(const std::string& xml, const std::string& tag) {
    std::vector<std::string> found;
    const std::string open = "<" + tag + " ", close = "</" + tag + ">";
    for (std::size_t at = xml.find(open); at != std::string::npos; at = xml.find(open, at + 1)) {
        std::size_t end = xml.find(close, at);
        if (end == std::string::npos) break;
        found.push_back(xml.substr(at, end - at));
    }
    return found;
}

}  // namespace arden::test
