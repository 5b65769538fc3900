#pragma once
// The general page: display name, file name and folder, target platform and version, guest
// family and version, working directory and notes. The version list follows the platform,
// the family list follows platform and version, the guest-version list follows the family.
#include "gui/config/OptionPage.h"

class QPlainTextEdit;
class QLabel;
class QPushButton;

namespace arden::gui {

class GeneralPage : public OptionPage {
    Q_OBJECT
public:
    GeneralPage(VmConfiguration& config, QWidget* parent);

signals:
    // The user changed the display name (the main window retitles the editor's tab).
    void displayNameChanged(const QString& name);
    // A change of product changed the machine's memory, processors or adapters to fit it.
    void machineFitted();

protected:
    void fillPage() override;
    void relabelPage() override;

private:
    void chooseProduct(int platform, int version);
    int firstOfferedGuest(int family) const;
    void platformChosen(int index);
    void versionChosen(int index);
    void familyChosen(int index);
    void guestVersionChosen(int index);
    void browseVmxFolder();
    void showFormatNote();

    // Rebuild a dependent list from the model without raising its change event.
    void fillVersions(bool selectStored);
    void fillFamilies();
    void fillGuestVersions(int family, int select);

    QLineEdit* txtVmxFolder_;
    QComboBox* cboTargetPlatform_;
    QComboBox* cboPlatformVersion_;
    QComboBox* cboGuestFamilies_;
    QComboBox* cboGuestVersions_;
    QPlainTextEdit* txtNotes_;
    QLabel* lblProductHardware_;
    QLabel* lblFormatNote_;
};

}  // namespace arden::gui
