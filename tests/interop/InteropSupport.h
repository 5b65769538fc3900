#pragma once
// Third-party tools run through the shell, their output captured, and libvirt's VMX parser
// (`virsh -c vmwarews:///session domxml-from-native vmware-vmx FILE`) with the stand-ins its
// vmwarews driver needs.
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "TestSupport.h"

namespace arden::test {

struct ToolRun {
    int exitCode = -1;
    std::string output;  // standard output and error together
};

inline ToolRun tool(const std::string& command) {
    ToolRun run;
    FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
    if (!pipe) return run;
    char buffer[4096];
    for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) run.output.append(buffer, n);
    int status = ::pclose(pipe);
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

// `make test` installs libvirt-clients: without virsh the libvirt tests cannot run (a failure in CI).
#define ARDEN_REQUIRE_VIRSH()                                                                     \
    do {                                                                                          \
        if (::arden::test::tool("command -v virsh").exitCode != 0)                                \
            ARDEN_CANNOT_RUN("virsh is needed (Debian package libvirt-clients)");                 \
    } while (0)

// Runs the parser on `vmx`. The vmwarews driver looks for vmrun on PATH and asks `vmware -v`
// for the product: stand-ins written into `scratch`/bin answer as Workstation 5.5 would.
inline ToolRun libvirtDomainXml(const std::filesystem::path& scratch, const std::string& vmx) {
    namespace fs = std::filesystem;
    const fs::path bin = scratch / "bin";
    fs::create_directories(bin);
    for (const auto& [name, script] : {std::pair{"vmrun", "exit 0"}, {"vmware", "echo 'VMware Workstation 5.5.0 build-18007'"}}) {
        writeBytes(bin / name, std::string("#!/bin/sh\n") + script + "\n");
        fs::permissions(bin / name, fs::perms::owner_exec | fs::perms::group_exec, fs::perm_options::add);
    }
    return tool("PATH=" + shellQuote(bin.string()) + ":\"$PATH\" virsh -c vmwarews:///session domxml-from-native vmware-vmx " +
                shellQuote(vmx));
}

// The elements <tag ...>...</tag> of an XML text, each as its text.
inline std::vector<std::string> elements(const std::string& xml, const std::string& tag) {
    std::vector<std::string> found;
    const std::string open = "<" + tag + " ", close = "</" + tag + ">";
    for (std::size_t at = xml.find(open), end; at != std::string::npos && (end = xml.find(close, at)) != std::string::npos;
         at = xml.find(open, end))
        found.push_back(xml.substr(at, end - at));
    return found;
}

// True when `text` holds every one of `parts`.
inline bool holdsAll(const std::string& text, const std::vector<std::string>& parts) {
    for (const std::string& p : parts)
        if (text.find(p) == std::string::npos) return false;
    return true;
}

}  // namespace arden::test
