#include "forms/CheckBoard.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QProgressDialog>
#include <QTemporaryFile>
#include <QUrl>
#include <algorithm>

#include "check/BoardCheck.h"
#include "check/htmlReport.h"
#include "control/CountPages.h"
#include "control/cmdConvert.h"
#include "forms/text.h"
#include "platform/paths.h"

namespace tessaly {

namespace {

void ShowProgress(ConversionState& state, QProgressDialog& progress) {
    const auto last = static_cast<std::int64_t>(progress.maximum()) - 1;
    progress.setValue(static_cast<int>(std::min(state.Progress.PagesRead, last)));
    QCoreApplication::processEvents();
    if (progress.wasCanceled() && state.cmdCancel.Enabled) cmdCancel_Click(state);
}

// A new file whose name no other program can foresee.
QString MakeReportFile() {
    QTemporaryFile file(QDir::tempPath() + QStringLiteral("/tessaly-check-XXXXXX.html"));
    file.setAutoRemove(false);
    if (!file.open()) Raise(kPathAccessError);
    return file.fileName();
}

}  // namespace

QString CheckBoard(QWidget* owner, const ConversionState& fields) {
    ConversionState state;
    BoardCheck check(state);
    CopyFields(fields, state);
    QProgressDialog progress(QStringLiteral("Checking the board. Nothing is written but the report."),
                             QStringLiteral("Cancel"), 0, 1, owner);
    progress.setWindowTitle(QStringLiteral("Check board"));
    progress.setWindowModality(Qt::WindowModal);
    progress.setAutoReset(false);
    progress.setMaximum(static_cast<int>(CountPages(state)) + 1);
    // At once, so that nothing of the form behind it can be clicked when events are let in.
    progress.show();
    state.ToolboxA.HandleEvents = [&state, &progress] { ShowProgress(state, progress); };
    check.Run();
    progress.reset();
    if (check.IsCancelled()) return {};
    const QString file = MakeReportFile();
    WriteHtmlReport(check, platform::ToPathText(platform::ToNative(FromQt(QDir::toNativeSeparators(file)))));
    QDesktopServices::openUrl(QUrl::fromLocalFile(file));
    return file;
}

}  // namespace tessaly
