// arden-forge-cli: the configuration engine, disks and favourites of Arden Forge, scriptable.
#include <iostream>
#include <string>
#include <vector>

#include "cli/CliCommands.h"

#ifdef _WIN32
#include <windows.h>
#include <shellapi.h>

#include "core/support/WindowsText.h"
#endif

namespace {

struct Command {
    const char* name;
    int (*run)(arden::cli::Args);
    const char* usage;
};

const Command kCommands[] = {
    {"new", arden::cli::runNew,
     "new FOLDER NAME [--platform P] [--version V]\n"
     "      Write FOLDER/NAME.vmx with the settings of a new machine and print its path.\n"
     "      P: \"GSX Server\", \"Workstation\", \"Player\", \"Server\", \"Fusion\" or \"ESXi\";\n"
     "      V: one of P's versions (default: P's last version); neither: Workstation 5.5x.\n"
     "      A product of hardware version 6 or later also gets the PCI bridges and controllers\n"
     "      its new machines have."},
    {"show", arden::cli::runShow,
     "show FILE\n"
     "      Print the configuration as the editor shows it: product, guest, memory,\n"
     "      the hardware list and the number of kept lines; what the loader noticed goes to\n"
     "      standard error as FILE:LINE: text."},
    {"resave", arden::cli::runResave,
     "resave FILE [--output OUT] [--backup] [--yes] [--dry-run]\n"
     "      Load FILE and write it back (to OUT when given); --backup first copies FILE to FILE.bak.\n"
     "      A machine in use (a NAME.vmx.lck beside it), a read-only file or two network adapters\n"
     "      with one static address are asked about, as the desktop program asks: the question is\n"
     "      answered No (nothing is written) unless --yes. Every command that saves takes --yes."},
    {"check", arden::cli::runCheck,
     "check FILE\n"
     "      Load FILE and run the save checks without writing."},
    {"set", arden::cli::runSet,
     "set FILE [--name TEXT] [--notes TEXT] [--platform P] [--version V] [--guest ID] [--yes] [--dry-run]\n"
     "      Change the display name, the notes, the product (P and V as for new: a platform alone\n"
     "      takes its last version, a version alone keeps the machine's platform) or the guest\n"
     "      operating system, named as a file writes it (e.g. winXPPro, rhel4, otherlinux) and of a\n"
     "      family the product offers. What a new product cannot hold is listed first: devices\n"
     "      over its limits refuse the change; memory, processors, cores per socket, a guest it\n"
     "      does not offer and adapter types it lacks (they become AMD Lance) are fitted only with\n"
     "      --yes. FILE is copied to FILE.bak first; --yes also answers the questions of resave, and\n"
     "      converts the file to UTF-8 when its encoding cannot hold the name or the notes."},
    {"option", arden::cli::runOption,
     "option FILE [NAME VALUE]... [--yes] [--dry-run]\n"
     "      Without NAME, list the settings of the Options tab, one a line: name and value,\n"
     "      tab-separated. With NAME VALUE pairs, set them: yes or no for a flag (\"snapshots\",\n"
     "      \"drag-and-drop\", \"debug\" ...), one of the listed words for a choice (\"power-off\"\n"
     "      hard|soft, \"when-powering-off\" keep|revert|take-new|ask ...), a folder for\n"
     "      \"log-folder\". FILE is copied to FILE.bak first."},
    {"device", arden::cli::runDevice,
     "device add FILE TYPE [--node NODE] [--file PATH] [--yes] [--dry-run]\n"
     "      Add a device of TYPE (its English name, e.g. \"Hard Disk\", \"DVD/CD-ROM Drive\",\n"
     "      \"Serial Port\", \"SATA Controller\", \"NVMe Controller\") within the machine's limits\n"
     "      and print its entry and node. A disk-like device takes NODE (e.g. \"IDE 1:0\",\n"
     "      \"SATA 0:1\", \"NVMe 0:0\") or the first free node: IDE before SCSI on hardware\n"
     "      versions 3 to 9; from the products with SATA on, a disk takes NVMe, SCSI, SATA, then\n"
     "      IDE and a DVD/CD-ROM drive SATA, IDE, then SCSI, on the controllers the machine has; --file\n"
     "      points it at a disk, image, output file or host device (needed for \"Hard Disk\" and\n"
     "      \"Generic SCSI Device\"). An added network adapter gets a generated address and offset\n"
     "      as VMware numbers them.\n"
     "  device remove FILE ENTRY [--with-devices] [--yes] [--dry-run]\n"
     "      Remove the hardware entry whose text is ENTRY (e.g. \"CD-ROM 1\"). A SCSI, SATA or\n"
     "      NVMe controller that holds devices is removed only with --with-devices: each moves to a free\n"
     "      node of another bus, or goes with the controller where none is free (printed).\n"
     "  device node FILE ENTRY NODE [--yes] [--dry-run]\n"
     "      Put ENTRY on NODE; a disk-like device holding NODE moves to the first free node.\n"
     "      ENTRY is an entry's text, or the node of a disk-like device (\"IDE 0:0\", \"SCSI 0:3\").\n"
     "      Disk-like devices are numbered in node order (IDE before SCSI), so a printed name is\n"
     "      the name the next command finds the device by.\n"
     "      Each edit first copies FILE to FILE.bak; notices are printed and the command goes on."},
    {"memory", arden::cli::runMemory,
     "memory FILE MB [--yes] [--dry-run]\n"
     "      Set the memory within the range of the machine's product and version, rounded down\n"
     "      to a multiple of 4 MB; FILE is copied to FILE.bak first."},
    {"sound", arden::cli::runSound,
     "sound FILE es1371|sb16|sb16-synth|hdaudio [--yes] [--dry-run]\n"
     "      Set the sound adapter's type: ES1371, SB16, SB16 with the OPL3/Yamaha synthesiser\n"
     "      (sound.virtualDev, and sound.synth.operational for the synthesiser), or HD Audio where\n"
     "      the product has it; FILE is copied to FILE.bak first."},
    {"machine", arden::cli::runMachine,
     "machine FILE [--firmware bios|efi] [--secure-boot yes|no] [--nested yes|no] [--usb2 yes|no]\n"
     "             [--usb3 yes|no] [--cores-per-socket N] [--yes] [--dry-run]\n"
     "      Without options, list the settings the product offers, one a line: name and value,\n"
     "      tab-separated. With them, set the firmware, secure boot (EFI only), nested\n"
     "      virtualisation, the USB 2.0 and USB 3 controllers, and the cores per socket (dividing\n"
     "      the processors, within the product's maximum); FILE is copied to FILE.bak first."},
    {"nic", arden::cli::runNic,
     "nic FILE N [--type vlance|vmxnet|vmxnet-enhanced|e1000|e1000e|vmxnet3]\n"
     "           [--connection bridged|hostonly|nat|VMnetK]\n"
     "           [--mac generated|XX:XX:XX:XX:XX:XX] [--offset K] [--enabled yes|no] [--yes] [--dry-run]\n"
     "      Edit network adapter N (ethernetN, from 0): a type the product offers (vmxnet3 from\n"
     "      hardware version 7, e1000e from 8, vmxnet-enhanced on ESXi), the connection\n"
     "      (VMnet0 to VMnet9 for a custom network), a generated address or a static one in\n"
     "      00:50:56:00:00:00-00:50:56:3F:FF:FF, the offset of a generated address (a 32-bit\n"
     "      number). FILE is copied to FILE.bak first."},
    {"share", arden::cli::runShare,
     "share add FILE NAME HOSTPATH [--read-only] [--this-session] [--disabled] [--yes] [--dry-run]\n"
     "      Share host folder HOSTPATH with the guest as NAME. A folder missing on this computer\n"
     "      is asked about and the question answered No unless --yes (which also converts a file\n"
     "      whose encoding cannot hold NAME or HOSTPATH to UTF-8).\n"
     "  share remove FILE NAME [--yes] [--dry-run]\n"
     "  share list FILE\n"
     "      Remove a share, or print the shares one a line: name, host folder and attributes,\n"
     "      tab-separated. Each edit first copies FILE to FILE.bak."},
    {"disk", arden::cli::runDisk,
     "disk create FILE.vmdk --size SIZE --adapter ide|buslogic|lsilogic\n"
     "           --type growable|growable-split|growable-descriptor|preallocated|preallocated-split\n"
     "           [--yes]\n"
     "      Make a new virtual disk and print its descriptor's path. SIZE is a number and a unit:\n"
     "      s (sectors), K, M or G, e.g. 204800s, 100M, 20G. A question is answered No unless --yes.\n"
     "  disk info FILE.vmdk\n"
     "      Print the disk's type, adapter, size, geometry, hardware version and CID."},
    {"favorites", arden::cli::runFavorites,
     "favorites [list]\n"
     "      Print the favourites, one a line: display name, path and configuration version,\n"
     "      tab-separated.\n"
     "  favorites add NAME PATH [VERSION]\n"
     "  favorites remove NAME\n"
     "      Add (or replace) a favourite, VERSION defaulting to 8, or remove one, and save the\n"
#ifdef _WIN32
     "      settings. ArdenForge.ini is written to the temporary folder (TEMP) and read from the\n"
     "      folder in the registry value IniLocation of\n"
     "      HKEY_CURRENT_USER\\Software\\Brackenware\\Arden Forge."},
#else
     "      settings. TMPDIR names the temporary folder that holds ArdenForge.ini and\n"
     "      XDG_CONFIG_HOME the folder of the per-user store."},
#endif
};

int printHelp(std::ostream& out) {
    out << "Usage: arden-forge-cli COMMAND [ARGS]\n       arden-forge-cli --help | --version\n\nCommands:\n";
    for (const Command& c : kCommands) out << "  " << c.usage << "\n";
    out << "\nEvery command takes --language de|fr|es|it to print the program's messages in that language\n"
           "(English without it; fixed technical texts stay English).\n";
    out << "\nWith --dry-run an editing command writes nothing (no FILE.bak either): it prints the unified\n"
           "diff of the file on disk against what it would write, for patch to apply, and exits as the\n"
           "command would (0 when it would write, the usual refusal otherwise).\n";
    out << "\nExit codes: 0 success, 1 refused (the reason is printed as \"title: text\"), 2 usage error.\n";
    return 0;
}

// The arguments after the program's name, as UTF-8. On Windows they are taken from the wide
// command line: argv holds them in the system code page, which cannot spell every file name.
std::vector<std::string> commandArguments(int argc, char** argv) {
#ifdef _WIN32
    (void)argc;
    (void)argv;
    std::vector<std::string> args;
    int count = 0;
    if (wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count)) {
        for (int i = 1; i < count; ++i) args.push_back(arden::wideToUtf8(wide[i]));
        LocalFree(wide);
    }
    return args;
#else
    return std::vector<std::string>(argv + 1, argv + argc);
#endif
}

}  // namespace

int main(int argc, char** argv) {
    // Every command writes through the C++ streams only: without the C library's buffers in
    // step, printing a machine of many thousand devices is several times faster.
    std::ios::sync_with_stdio(false);
#ifdef _WIN32
    // Every text the program prints is UTF-8, whatever the file's own encoding: a console shows it as such.
    SetConsoleOutputCP(CP_UTF8);
#endif
    std::vector<std::string> args = commandArguments(argc, argv);
    if (!args.empty() && args[0] == "--version") {
        std::cout << "arden-forge-cli (Arden Forge) " ARDEN_VERSION "\n";
        return 0;
    }
    if (args.empty() || args[0] == "help" || args[0] == "--help" || args[0] == "-h") {
        return printHelp(args.empty() ? std::cerr : std::cout) == 0 && args.empty()
                   ? arden::cli::UsageError
                   : 0;
    }
    if (const std::string wrong = arden::cli::takeLanguage(args); !wrong.empty()) return arden::cli::usageError(wrong);
    if (args.empty()) {
        printHelp(std::cerr);
        return arden::cli::UsageError;
    }
    std::string name = args[0];
    args.erase(args.begin());
    for (const Command& c : kCommands) {
        if (name == c.name) return c.run(std::move(args));
    }
    // Not in the help: the lists the shell's completion offers.
    if (name == "__complete") return arden::cli::runComplete(std::move(args));
    return arden::cli::usageError("unknown command '" + name + "'");
}
