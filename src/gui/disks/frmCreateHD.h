#pragma once
// "Create New Hard Disk": folder and name, adapter, size with its unit, disk type, creation
// method and the hardware-version caution. OK checks the entries in order (core decides
// every rule), asks the Yes/No questions, then makes the disk with a progress dialog.
#include <QDialog>
#include <QString>
#include <vector>

#include "core/disks/DiskCreator.h"
#include "core/disks/DiskValidation.h"
#include "gui/disks/DiskDialogs.h"

class QButtonGroup;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace arden::gui {

class frmCreateHD : public QDialog {
    Q_OBJECT
public:
    explicit frmCreateHD(const CreateDiskRequest& preset, QWidget* parent = nullptr);

    // The new descriptor's full path once a disk was made.
    QString descriptorPath() const { return descriptorPath_; }
    // How preallocated disks are made (the zero-writing path can be chosen on purpose).
    void setCreationOptions(const disks::DiskCreationOptions& options) { options_ = options; }

private:
    QRadioButton* addOption(QButtonGroup* group, QWidget* box, const char* name, const QString& caption, int id);
    void adapterChanged();
    void unitChanged(int newUnit);
    void browseFolder();
    void createDisk();
    disks::DiskAdapter adapter() const;

    CreateDiskRequest preset_;
    disks::DiskMaxima maxima_;
    disks::DiskCreationOptions options_;
    disks::SizeUnit unit_ = disks::SizeUnit::Gb;
    QString descriptorPath_;
    QLineEdit* txtFolder_;
    QLineEdit* txtNewDisk_;
    QLineEdit* txtDiskSize_;
    QLabel* lblSizeRange_;
    QLabel* lblAdapterWarning_;
    QButtonGroup* adapters_;
    QButtonGroup* units_;
    QButtonGroup* types_;
};

}  // namespace arden::gui
