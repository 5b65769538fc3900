#include "gui/hardware/SoundPage.h"

namespace arden::gui {

SoundPage::SoundPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::Sound, parent) {
    setObjectName("fraSoundPage");
    stack({statusFrame("chkAudioEnabled", "chkAudioConnectedBoot")});
}

}  // namespace arden::gui
