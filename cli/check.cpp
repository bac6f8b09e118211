#include "cli/check.h"

#include <memory>

#include "check/BoardCheck.h"
#include "check/htmlReport.h"
#include "check/printable.h"
#include "check/textReport.h"
#include "cli/ProgressLine.h"
#include "cli/checkReport.h"
#include "cli/convert.h"
#include "control/cmdConvert.h"
#include "platform/charset.h"
#include "platform/console.h"
#include "platform/paths.h"
#include "text/numbers.h"

namespace tessaly {

namespace {

void HookIn(ConversionState& state, std::unique_ptr<ProgressLine>& progress) {
    state.ShowMessage = [](std::u16string_view text) { platform::WriteError(Printable(text) + u"\n"); };
    state.ToolboxA.HandleEvents = [&state, &progress] {
        if (platform::TakeInterrupt() && state.cmdCancel.Enabled) cmdCancel_Click(state);
        if (progress) progress->Show();
    };
    platform::NoteInterrupts();
}

// The settings as a run would find them. False, with its words, for a failure that nothing traps.
bool FillIn(ConversionState& state, const Options& options) {
    try {
        StartProgram(state, options);
        FillFields(state, options);
        return true;
    } catch (...) {
        const RunTimeError error = CurrentError();
        platform::WriteError(u"Run-time error " + ToText(error.number) + u" - " + error.description + u"\n");
        return false;
    }
}

bool WriteReports(const BoardCheck& check, const Options& options) {
    const auto write = [](const std::string& file, auto step) {
        if (file.empty() || IgnoringErrors(step) == kNoError) return true;
        platform::WriteError(u"The report could not be written: " + platform::FromUtf8(file) + u"\n");
        return false;
    };
    const bool isWritten = write(options.report, [&] { WriteCheckReport(check, options.report); });
    const bool isPageWritten = write(options.html, [&] {
        WriteHtmlReport(check,
                        platform::AbsolutePathText(platform::ToNative(platform::FromUtf8(options.html))));
    });
    return isWritten && isPageWritten;
}

}  // namespace

int RunCheck(const Options& options) {
    ConversionState state;
    BoardCheck check(state);
    std::unique_ptr<ProgressLine> progress;
    HookIn(state, progress);
    if (!FillIn(state, options)) return kUntrapped;
    if (!options.quiet && platform::ErrorsGoToTerminal()) progress = std::make_unique<ProgressLine>(state);
    check.Run();
    if (progress) progress->Clear();
    // First the files: who reads the text may stop in the middle.
    const bool isWritten = WriteReports(check, options);
    if (!options.quiet) platform::WriteOutput(TextReport(check));
    if (!isWritten || check.IsCancelled()) return kTrouble;
    const Findings& found = check.Found();
    return found.CountOf(Grade::kEndsRun) + found.CountOf(Grade::kLoses) == 0 ? kAllWell : kTrouble;
}

}  // namespace tessaly
