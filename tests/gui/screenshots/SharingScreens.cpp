#include "SharingScreens.h"

#include <QFile>
#include <QTabWidget>
#include <QTreeWidget>

#include "gui/config/Builder.h"
#include "gui/hardware/frmAddSharedFolder.h"
#include "gui/shell/frmMain.h"

namespace {

// Two adapters (a static address on a custom network, a generated one with an offset) and
// three shares with blanks, quotes and accents in their host folders.
constexpr const char* kSharing =
    "config.version = \"8\"\r\nvirtualHW.version = \"4\"\r\ndisplayName = \"Sharing\"\r\n"
    "guestOS = \"winxppro\"\r\nmemsize = \"512\"\r\n"
    "ethernet0.present = \"TRUE\"\r\nethernet0.startConnected = \"TRUE\"\r\nethernet0.virtualDev = \"e1000\"\r\n"
    "ethernet0.connectionType = \"custom\"\r\nethernet0.vnet = \"VMnet3\"\r\nethernet0.addressType = \"static\"\r\n"
    "ethernet0.address = \"00:50:56:12:AB:CD\"\r\n"
    "ethernet1.present = \"TRUE\"\r\nethernet1.startConnected = \"FALSE\"\r\nethernet1.virtualDev = \"vmxnet\"\r\n"
    "ethernet1.connectionType = \"nat\"\r\nethernet1.addressType = \"generated\"\r\n"
    "ethernet1.generatedAddress = \"00:0C:29:5E:07:21\"\r\nethernet1.generatedAddressOffset = \"10\"\r\n"
    "sharedFolder.maxNum = \"3\"\r\n"
    "sharedFolder0.present = \"TRUE\"\r\nsharedFolder0.enabled = \"TRUE\"\r\nsharedFolder0.readAccess = \"TRUE\"\r\n"
    "sharedFolder0.writeAccess = \"TRUE\"\r\nsharedFolder0.hostPath = \"/home/ann/My Documents\"\r\n"
    "sharedFolder0.guestName = \"Documents\"\r\nsharedFolder0.expiration = \"never\"\r\n"
    "sharedFolder1.present = \"TRUE\"\r\nsharedFolder1.enabled = \"TRUE\"\r\nsharedFolder1.readAccess = \"TRUE\"\r\n"
    "sharedFolder1.writeAccess = \"FALSE\"\r\nsharedFolder1.hostPath = \"/srv/media/|22Best of|22 Mixes\"\r\n"
    "sharedFolder1.guestName = \"Music\"\r\nsharedFolder1.expiration = \"never\"\r\n"
    "sharedFolder2.present = \"TRUE\"\r\nsharedFolder2.enabled = \"FALSE\"\r\nsharedFolder2.readAccess = \"TRUE\"\r\n"
    "sharedFolder2.writeAccess = \"TRUE\"\r\nsharedFolder2.hostPath = \"/mnt/Données/Übergabe\"\r\n"
    "sharedFolder2.guestName = \"Hand-over\"\r\nsharedFolder2.expiration = \"session\"\r\n";

}  // namespace

arden::gui::Builder* openWrittenMachine(arden::gui::frmMain& window, const QString& file, const char* text) {
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly)) return nullptr;
    out.write(text);
    out.close();
    return window.OpenEditorTab(true, file, {}, 8, {});
}

void saveSharingScreens(arden::gui::frmMain& window, const QString& folder, int languageOffset,
                        const std::function<void(QWidget*, const QString&)>& save) {
    arden::gui::Builder* editor = openWrittenMachine(window, folder + "/Sharing.vmx", kSharing);
    if (!editor) return;
    auto* tabs = editor->findChild<QTabWidget*>("sstMain");
    auto* hw = editor->findChild<QTreeWidget*>("lvwHardwareList");
    tabs->setCurrentIndex(1);  // Hardware
    const char* nicScreens[] = {"device-network-static", "device-network-generated"};
    int nic = 0;
    for (int i = 0; i < hw->topLevelItemCount() && nic < 2; ++i) {
        if (!hw->topLevelItem(i)->data(0, Qt::UserRole).toString().startsWith("H6|")) continue;
        hw->setCurrentItem(hw->topLevelItem(i));
        save(&window, nicScreens[nic++]);
    }

    tabs->setCurrentIndex(0);  // Options
    auto* options = editor->findChild<QTreeWidget*>("lvwOptionsList");
    options->setCurrentItem(options->topLevelItem(2));
    auto* shares = editor->findChild<QTreeWidget*>("lvwSharedFolders");
    shares->setCurrentItem(shares->topLevelItem(1));
    save(&window, "editor-shared-folders-three");

    const arden::SharedFolder& music = editor->configuration().sharedFolders.folders.at(1);
    arden::gui::frmAddSharedFolder dialog(music, {}, languageOffset, &window);
    dialog.show();
    dialog.adjustSize();
    save(&dialog, "shared-folder-dialog");
}
