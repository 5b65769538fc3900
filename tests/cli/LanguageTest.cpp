// The command line prints English, which scripts read, unless --language chooses another of
// the program's languages; then the texts of the string table come in that language while the
// fixed technical texts stay English.
#include "CliRunner.h"

using namespace arden::test;

namespace {

// Six PCI devices: the save check refuses the machine.
std::string pciMachine(const ScratchDir& dir) {
    std::string text = "displayName = \"pci\"\r\nsound.present = \"TRUE\"\r\n";
    for (int i = 0; i < 5; ++i) text += "ethernet" + std::to_string(i) + ".present = \"TRUE\"\r\n";
    writeBytes(dir / "pci.vmx", text);
    return (dir / "pci.vmx").string();
}

}  // namespace

TEST(CliLanguage, MessagesComeInTheChosenLanguage) {
    ScratchDir dir;
    const std::string file = pciMachine(dir);
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"check", file},
         "Too many virtual PCI Devices enabled: You currently have 6 virtual PCI devices enabled (SCSI controllers, "
         "Network adapters, Sound adapters).  VMware will only accept 5.  Please go back and Disable some devices.\n"},
        {{"check", file, "--language", "de"},
         "Zu viele virtuelle PCI-Geräte aktiviert: Derzeit sind 6 virtuelle PCI-Geräte aktiviert (SCSI-Controller, "
         "Netzwerkadapter, Soundkarten). VMware akzeptiert nur 5. Bitte gehen Sie zurück und deaktivieren Sie einige Geräte.\n"},
        {{"--language", "fr", "check", file},
         "Trop de périphériques PCI virtuels activés: Vous avez actuellement 6 périphériques PCI virtuels activés "
         "(contrôleurs SCSI, cartes réseau, cartes son). VMware n'en accepte que 5. Revenez en arrière et désactivez "
         "certains périphériques.\n"},
        {{"check", "--language", "en", file},
         "Too many virtual PCI Devices enabled: You currently have 6 virtual PCI devices enabled (SCSI controllers, "
         "Network adapters, Sound adapters).  VMware will only accept 5.  Please go back and Disable some devices.\n"},
    };
    for (const auto& [args, err] : cases) {
        const CliResult r = runCli(args);
        EXPECT_EQ(r.exitCode, 1) << args.back();
        EXPECT_EQ(r.err, err);
    }
}

TEST(CliLanguage, ListedAttributesAndNewNamesFollowTheLanguage) {
    ScratchDir dir;
    const std::string file = (dir / "S.vmx").string();
    ASSERT_EQ(runCli({"new", dir.path().string(), "S"}).exitCode, 0);
    ASSERT_EQ(runCli({"share", "add", file, "Docs", dir.path().string(), "--read-only"}).exitCode, 0);
    const std::string row = "Docs\t" + dir.path().string() + "\t";
    EXPECT_EQ(runCli({"share", "list", file}).out, row + "Enabled, Read-Only\n");
    EXPECT_EQ(runCli({"share", "list", file, "--language", "it"}).out, row + "Abilitato, Sola lettura\n");
    EXPECT_EQ(runCli({"share", "list", file, "--language", "es"}).out, row + "Habilitado, Solo lectura\n");
    const CliResult unnamed = runCli({"new", dir.path().string(), "", "--language", "de"});
    EXPECT_EQ(unnamed.out, (dir / "Neue VM.vmx").string() + "\n") << unnamed.err;
}

TEST(CliLanguage, AnUnknownOrMissingLanguageIsAUsageError) {
    ScratchDir dir;
    const std::string file = pciMachine(dir);
    const CliResult unknown = runCli({"check", file, "--language", "nl"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_EQ(unknown.err, "arden-forge-cli: unknown language 'nl': use en, de, fr, es or it\nTry 'arden-forge-cli help'.\n");
    const CliResult missing = runCli({"check", file, "--language"});
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_EQ(missing.err, "arden-forge-cli: --language needs a language: en, de, fr, es or it\nTry 'arden-forge-cli help'.\n");
    EXPECT_EQ(runCli({"--language", "de"}).exitCode, 2) << "a language alone is no command";
}
