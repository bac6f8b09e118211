#include "cli/convert.h"

#include <algorithm>
#include <memory>

#include "cli/ProgressLine.h"
#include "cli/finish.h"
#include "cli/report.h"
#include "control/NameProgram.h"
#include "control/cmdConvert.h"
#include "control/troubledFiles.h"
#include "platform/console.h"
#include "text/numbers.h"

namespace tessaly {

namespace {

// What the operator would see on the screen.
struct Screen {
    std::vector<std::u16string> messages;
    std::unique_ptr<ProgressLine> progress;
    bool isInterrupted = false;
};

// Control characters of a board's texts must not reach the terminal.
std::u16string WithoutControls(std::u16string_view text) {
    std::u16string plain;
    for (const char16_t unit : text) {
        if (unit == u'\r') continue;
        const bool isControl =
            (unit < 0x20 && unit != u'\n' && unit != u'\t') || (unit >= 0x7F && unit < 0xA0);
        plain += isControl ? u'?' : unit;
    }
    return plain;
}

// A click on Cancel for Ctrl-C, from now on at the first chance. One while the folders are set up is
// forgotten by the run, so it is made again.
void PassOnInterrupts(ConversionState& state, Screen& screen) {
    if (platform::TakeInterrupt()) {
        screen.isInterrupted = true;
        state.ToolboxA.EventInterval = 0;
    }
    if (screen.isInterrupted && !state.CancelRequested) cmdCancel_Click(state);
}

void HookIn(ConversionState& state, Screen& screen, const Options& options) {
    state.ShowMessage = [&state, &screen, &options](std::u16string_view text) {
        screen.messages.emplace_back(text);
        if (screen.progress) screen.progress->Clear();
        if (!state.Progress.SummaryShown) return platform::WriteError(WithoutControls(text) + u"\n");
        if (!options.quiet) platform::WriteOutput(WithoutControls(text));
    };
    state.ToolboxA.HandleEvents = [&state, &screen] {
        PassOnInterrupts(state, screen);
        if (screen.progress) screen.progress->Show();
    };
    platform::NoteInterrupts();
}

void TellOf(const std::u16string& note) {
    if (!note.empty()) platform::WriteError(note + u"\n");
}

std::optional<std::u16string> Convert(ConversionState& state, Screen& screen, const Options& options) {
    try {
        StartProgram(state, options);
        if (options.ini.empty() && !options.quiet) TellOf(SettingsNote(state));
        FillFields(state, options);
        if (!options.quiet && platform::ErrorsGoToTerminal()) {
            screen.progress = std::make_unique<ProgressLine>(state);
        }
        cmdConvert_Click(state);
        platform::WriteError(WithoutControls(TroubledFilesText(state)));
        return {};
    } catch (...) {
        const RunTimeError error = CurrentError();
        return ToText(error.number) + u" - " + error.description;
    }
}

// Half a board makes no forum.
int FinishIfWhole(const ConversionState& state, const Options& options) {
    if (state.Progress.SummaryShown && !state.Progress.WasCancelled) return FinishRun(state, options);
    platform::WriteError(u"The conversion did not come to its end, so the board is not finished.\n");
    return kTrouble;
}

}  // namespace

int RunConversion(const Options& options) {
    ConversionState state;
    Screen screen;
    HookIn(state, screen, options);
    state.Note.IsWanted = options.isFinishWanted;
    const std::optional<std::u16string> untrapped = Convert(state, screen, options);
    if (untrapped) {
        if (screen.progress) screen.progress->Clear();
        platform::WriteError(u"Run-time error " + *untrapped + u"\n");
    }
    if (!options.report.empty()) {
        const int error =
            IgnoringErrors([&] { WriteReport(state, screen.messages, untrapped, options.report); });
        if (error != kNoError) {
            platform::WriteError(u"The report could not be written.\n");
            return untrapped ? kUntrapped : kTrouble;
        }
    }
    if (untrapped) return kUntrapped;
    const std::size_t expected = state.Progress.SummaryShown ? 1 : 0;
    const bool isWell = screen.messages.size() == expected && state.Progress.TroubledFiles.empty();
    const int status = isWell ? kAllWell : kTrouble;
    if (!options.isFinishWanted) return status;
    return std::max(status, FinishIfWhole(state, options));
}

}  // namespace tessaly
