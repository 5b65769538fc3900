#include "gui/hardware/SoundPage.h"

#include <QComboBox>
#include <QFormLayout>

#include "core/config/DeviceFeatures.h"
#include "core/hardware/SoundAdapter.h"

namespace arden::gui {

SoundPage::SoundPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::Sound, parent) {
    setObjectName("fraSoundPage");
    auto* fraAudioDevice = frame("fraAudioDevice", 322);  // "Adapter Type"
    // Fixed product names; a stored type the list does not hold shows no entry and stays as read.
    auto* cboAudioDevice = named<QComboBox>("cboAudioDevice", fraAudioDevice);
    // Each entry holds its position in the table of types; the list holds those the product offers.
    onFill([this, cboAudioDevice](const Device& d) {
        cboAudioDevice->clear();
        for (int position : offeredSoundAdapters(config_.figures())) {
            const std::string_view name = soundAdapterTypes()[static_cast<std::size_t>(position)].name;
            cboAudioDevice->addItem(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())), position);
        }
        const auto position = soundAdapterPosition(d.settings);
        cboAudioDevice->setCurrentIndex(position ? cboAudioDevice->findData(*position) : -1);
    });
    connect(cboAudioDevice, &QComboBox::activated, this, [this, cboAudioDevice](int index) {
        const int position = cboAudioDevice->itemData(index).toInt();
        store([&](Device& d) { return setSoundAdapter(d.settings, position); });
    });
    auto* form = new QFormLayout(fraAudioDevice);
    addCaptionedRow(form, captions_, "lblAudioDevice", 322, cboAudioDevice);
    stack({statusFrame("chkAudioEnabled", "chkAudioConnectedBoot"), fraAudioDevice});
}

}  // namespace arden::gui
