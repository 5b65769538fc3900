#include "gui/hardware/SoundPage.h"

#include <QComboBox>
#include <QFormLayout>

#include "core/hardware/SoundAdapter.h"

namespace arden::gui {

SoundPage::SoundPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::Sound, parent) {
    setObjectName("fraSoundPage");
    auto* fraAudioDevice = frame("fraAudioDevice", 322);  // "Adapter Type"
    // Fixed product names; a stored type the list does not hold shows no entry and stays as read.
    auto* cboAudioDevice = named<QComboBox>("cboAudioDevice", fraAudioDevice);
    for (const SoundAdapterType& t : soundAdapterTypes()) cboAudioDevice->addItem(QString::fromUtf8(t.name.data(), static_cast<qsizetype>(t.name.size())));
    onFill([cboAudioDevice](const Device& d) { cboAudioDevice->setCurrentIndex(soundAdapterPosition(d.settings).value_or(-1)); });
    connect(cboAudioDevice, &QComboBox::activated, this,
            [this](int index) { store([&](Device& d) { return setSoundAdapter(d.settings, index); }); });
    auto* form = new QFormLayout(fraAudioDevice);
    addCaptionedRow(form, captions_, "lblAudioDevice", 322, cboAudioDevice);
    stack({statusFrame("chkAudioEnabled", "chkAudioConnectedBoot"), fraAudioDevice});
}

}  // namespace arden::gui
