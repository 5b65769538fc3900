#include "gui/shell/frmAbout.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QVBoxLayout>

#include "gui/support/Icons.h"
#include "gui/support/Mnemonics.h"
#include "gui/support/UiText.h"

namespace arden::gui {

QString versionLabelText() { return QStringLiteral("v") + QStringLiteral(ARDEN_VERSION) + QStringLiteral(" by BRK/WN"); }

QString frmAbout::systemInfoProgram() {
    // Desktop system-information tools, most specific first.
    for (const char* name : {"hardinfo", "kinfocenter", "gnome-system-monitor", "lxtask"}) {
        QString path = QStandardPaths::findExecutable(QString::fromLatin1(name));
        if (!path.isEmpty()) return path;
    }
    return {};
}

frmAbout::frmAbout(int languageOffset, QWidget* parent) : QDialog(parent) {
    setObjectName("frmAbout");
    setWindowTitle(uiText(15, languageOffset));

    auto* icon = new QLabel(this);
    icon->setPixmap(machineIcon("VM").pixmap(64, 64));
    auto* lblTitle = new QLabel(uiText(1, languageOffset), this);
    lblTitle->setObjectName("lblTitle");
    QFont big = lblTitle->font();
    big.setPointSizeF(big.pointSizeF() * 1.6);
    big.setBold(true);
    lblTitle->setFont(big);
    auto* lblVersion = new QLabel(versionLabelText(), this);  // "v1.0.0 by BRK/WN": the version once
    lblVersion->setObjectName("lblVersion");
    auto* lblAbout = new QLabel(
        "A wizard and editor for VMware virtual-machine configurations (.vmx) and virtual disks (.vmdk).", this);
    lblAbout->setWordWrap(true);

    cmdSysInfo_ = new QPushButton(uiText(82, languageOffset), this);
    cmdSysInfo_->setObjectName("cmdSysInfo");
    const QString tool = systemInfoProgram();
    cmdSysInfo_->setEnabled(!tool.isEmpty());
    if (tool.isEmpty()) cmdSysInfo_->setToolTip("No system-information program is installed.");
    connect(cmdSysInfo_, &QPushButton::clicked, this, [tool] { QProcess::startDetached(tool, {}); });

    auto* buttons = new QDialogButtonBox(this);
    auto* cmdOK = buttons->addButton(uiText(50, languageOffset), QDialogButtonBox::AcceptRole);
    cmdOK->setObjectName("cmdOK");
    buttons->addButton(cmdSysInfo_, QDialogButtonBox::ActionRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    auto* head = new QHBoxLayout;
    head->addWidget(icon);
    auto* titles = new QVBoxLayout;
    titles->addWidget(lblTitle);
    titles->addWidget(lblVersion);
    head->addLayout(titles, 1);
    layout->addLayout(head);
    layout->addWidget(lblAbout);
    layout->addStretch(1);
    layout->addWidget(buttons);
    setMinimumWidth(420);
    assignMnemonics(this);
}

}  // namespace arden::gui
