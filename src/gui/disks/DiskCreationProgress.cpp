#include "gui/disks/DiskCreationProgress.h"

#include <QEventLoop>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>
#include <atomic>
#include <thread>

#include "core/disks/DiskFile.h"
#include "core/disks/DiskProgress.h"
#include "core/shell/GetText.h"
#include "gui/support/UiText.h"

namespace arden::gui {

using namespace arden::disks;

namespace {

QString progressLabel(const DiskProgressState& state) {
    return qs(progressStepText(state.step)) + "\n" + qs(state.currentFile) + "\n" + qs(progressAmountText(state));
}

}  // namespace

DiskCreationResult runDiskCreation(QWidget* parent, const NewDiskRequest& request, const DiskCreationOptions& options,
                                   int languageOffset) {
    DiskProgressChannel channel;
    DiskCreationResult result;
    std::atomic<bool> finished{false};

    QProgressDialog dialog(parent);
    dialog.setObjectName("dlgDiskProgress");
    dialog.setWindowTitle(uiText(125, languageOffset));
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setAutoClose(false);
    dialog.setAutoReset(false);
    dialog.setMinimumDuration(0);
    dialog.setMinimumWidth(460);
    dialog.setRange(0, 100);
    dialog.setValue(0);
    dialog.setLabelText(qs(progressStepText(DiskStep::Reserving)) + "\n" + qs(request.descriptorPath.string()) + "\n");
    auto* cancel = new QPushButton(uiText(51, languageOffset));  // "Cancel"
    cancel->setObjectName("cmdCancelCreation");
    dialog.setCancelButton(cancel);
    QObject::connect(&dialog, &QProgressDialog::canceled, [&] {
        channel.cancel();
        dialog.setLabelText("Cancelling: removing the files made so far...");
    });

    std::thread worker([&] {
        lowerThreadPriority();
        result = createDisk(request, [&](const DiskProgressState& s) { return channel.report(s); }, options);
        finished = true;
    });

    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (finished) {
            loop.quit();
            return;
        }
        if (channel.cancelled()) return;
        DiskProgressState state = channel.latest();
        if (state.currentFile.empty()) return;
        int percent = progressPercent(state);
        if (percent < 0) dialog.setRange(0, 0);  // a tool decides: show that work goes on
        else {
            dialog.setRange(0, 100);
            dialog.setValue(percent);
        }
        dialog.setLabelText(progressLabel(state));
    });
    poll.start(kProgressPollMs);
    dialog.show();
    loop.exec();
    worker.join();
    dialog.hide();
    return result;
}

}  // namespace arden::gui
