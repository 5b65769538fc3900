#pragma once
// The base of the device pages. A page shows the settings of one device, the current
// device, held by its type and identifier and looked up in the store at every use (a device
// may be removed or its collection may grow between two edits). Controls are bound to a
// setting of the device: filling shows the stored values while the filling flag is set, and
// one `store` writes each accepted change into the current device and reports the edit;
// nothing is written while the page is being filled.
#include <QGroupBox>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "core/config/MachineKeys.h"
#include "core/config/VmConfiguration.h"
#include "core/hardware/DeviceChoices.h"
#include "core/hardware/HostPorts.h"
#include "core/hardware/NodeAssignment.h"
#include "gui/config/ConfigWidgets.h"
#include "gui/support/UiText.h"

class QBoxLayout;
class QCheckBox;
class QHBoxLayout;
class QComboBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace arden::gui {

// What every page of one editor shares: the program's image folder (where floppy and ISO
// images are browsed for first), the host's ports and the language offset of the captions.
struct DevicePageContext {
    QString imageFolder;
    HostPorts hostPorts;  // offered by the serial and parallel port pages
    int languageOffset = 0;
};

class DevicePage : public QWidget {
    Q_OBJECT
public:
    DevicePage(VmConfiguration& config, DevicePageContext& context, DeviceType type, QWidget* parent);

    DeviceType deviceType() const { return type_; }
    const std::string& identifier() const { return identifier_; }

    // Makes device `identifier` of this page's type current and shows its settings; emits nothing.
    void fill(const std::string& identifier);
    // Shows the current device again (after an edit elsewhere changed what the page offers).
    void refill() { fill(identifier_); }
    // Sets every caption in the language of the context.
    void relabel();

signals:
    // A control changed the current device (or, for node choices, other devices as well).
    void edited();

protected:
    // Page-specific filling beyond the bound controls (node lists, ranges).
    virtual void fillPage(const Device&) {}
    virtual void relabelPage() {}

    bool filling() const { return filling_; }
    int languageOffset() const { return context_.languageOffset; }
    // The current device, or null when it no longer exists.
    Device* device() { return config_.devices.find(type_, identifier_); }

    // Writes into the current device and reports the edit, unless the page is being filled
    // or the device is gone. `write` may return false to say it changed nothing.
    template <typename F>
    void store(F&& write) {
        if (filling_) return;
        Device* d = device();
        if (!d) return;
        if constexpr (std::is_same_v<decltype(write(*d)), bool>) {
            if (!write(*d)) return;
        } else {
            write(*d);
        }
        emit edited();
    }

    // Runs `show` on every fill (while the filling flag is set).
    void onFill(std::function<void(const Device&)> show) { fillers_.push_back(std::move(show)); }

    // --- Controls bound to settings ---

    // A frame captioned by `captionId`.
    QGroupBox* frame(const char* name, int captionId, QWidget* parent = nullptr);
    // A check box showing flag `key` (`fallback` when the device does not hold it).
    QCheckBox* flagBox(QWidget* parent, const char* name, int captionId, std::string key, bool fallback);
    // The "Device Status" frame with its Enabled (".present") and, when `connectedName` is
    // given, Connect at power on (".startConnected") boxes.
    QGroupBox* statusFrame(const char* enabledName, const char* connectedName);
    // One entry of a value list: the value it stores and its caption, a string-table id or,
    // when 0, the fixed text (the value itself when that is null too).
    struct ListEntry {
        std::string value;
        int captionId = 0;
        const char* text = nullptr;
    };
    // A list whose entries store fixed values into `key`. A device that does not hold the
    // setting shows entry `unsetIndex`; a stored value not in the list shows no entry.
    QComboBox* valueList(QWidget* parent, const char* name, std::string key, std::vector<ListEntry> entries,
                         int unsetIndex = -1);
    // A text box holding text `key`, stored when the user leaves it.
    QLineEdit* textBox(QWidget* parent, const char* name, std::string key);
    // What a numeric box's check of the typed text says: the value to store, or a refusal
    // to show (focus then stays in the box), or neither (the text is ignored and the box shows
    // the stored value again).
    struct NumberCheck {
        std::optional<long long> value;
        std::optional<Message> refusal;
    };
    // A text box for number `key`, checked by `check` when the user leaves it; `shown` gives
    // the box's text for a stored number (an unset number shows an empty box).
    QLineEdit* numberBox(QWidget* parent, const char* name, std::string key,
                         std::function<NumberCheck(std::string_view text)> check,
                         std::function<QString(long long stored)> shown);

    // --- Whole-machine settings of later products (held among the kept lines) ---

    // A check box showing switch `which`, visible only where the product offers it; a click
    // sets the switch and refills the page (secure boot follows the firmware).
    QCheckBox* switchBox(QWidget* parent, const char* name, int captionId, MachineSwitch which);
    // Runs a whole-machine change unless the page is being filled: shows its refusal, or reports
    // the edit and refills the page when it changed something.
    void storeMachine(const std::function<SwitchResult()>& change);

    // An option button captioned by `captionId`.
    QRadioButton* option(QWidget* parent, const char* name, int captionId);

    // One alternative of a connection: its option button, and the control (an editable list or
    // a text box) that holds the file name while the alternative is chosen.
    struct Alternative {
        Connection connection;
        QRadioButton* option;
        QWidget* name;
    };
    // Binds the connection of this page's type (connectionKey) and ".fileName" to the
    // alternatives: filling chooses the stored alternative and shows the name in its control;
    // choosing an alternative stores its connection and the name its control holds; editing
    // a name control chooses its alternative and stores both.
    void bindConnection(std::vector<Alternative> alternatives);

    // A Browse button that asks for a file (title `titleId`, filter from `filterIds` with the
    // patterns given) and puts the answer into `box` as if the user had typed it. Image
    // pickers start in the program's image folder, others in the machine's folder.
    QPushButton* browseButton(QWidget* parent, const char* name, QLineEdit* box, int titleId,
                              std::vector<std::pair<int, QString>> filters, bool inImageFolder);

    // An editable list of `entries` whose text is a device path or selector.
    QComboBox* deviceList(QWidget* parent, const char* name, const QStringList& entries);

    // The "Virtual Device Node" frame of a disk-like device: for each bus the device may use,
    // an option button (none when `ideOption` and `scsiOption` are null: a generic SCSI
    // device has only its SCSI list) and the node list. Filling chooses the device's bus and
    // selects its node; choosing a node or a bus places the device by the core rules, shows
    // their message, and rebuilds both lists so that every label shows its holder.
    // The SATA and NVMe rows are shown only while the machine has nodes on that bus (a declared
    // controller) or the device sits there, so a machine of the original products sees none.
    QGroupBox* nodeFrame(const char* ideOption, const char* ideList, const char* scsiOption, const char* scsiList,
                         const char* sataOption = nullptr, const char* sataList = nullptr,
                         const char* nvmeOption = nullptr, const char* nvmeList = nullptr);

    // Lays out `frames` top to bottom, the rest of the page left empty below them.
    void stack(std::initializer_list<QWidget*> frames);
    // A row of `widgets` indented under an option button (text boxes and lists take the room).
    static QHBoxLayout* indentedRow(QBoxLayout* into, std::initializer_list<QWidget*> widgets);

    VmConfiguration& config_;
    Captions captions_;

private:
    struct NodeBus {
        Bus bus;
        QRadioButton* option;  // may be null
        QComboBox* list;
    };
    void showNodes(const Device& d);
    void chooseNodeLabel(const std::string& label);
    void chooseBus(Bus bus);
    void storeConnection(const Alternative& chosen);
    static QString nameText(QWidget* control);
    static void showName(QWidget* control, const QString& text);

    DevicePageContext& context_;
    DeviceType type_;
    std::string identifier_;
    std::vector<std::function<void(const Device&)>> fillers_;
    std::vector<NodeBus> nodeBuses_;
    // Signals raised while the controls are built count as filling too.
    bool filling_ = true;
};

}  // namespace arden::gui
