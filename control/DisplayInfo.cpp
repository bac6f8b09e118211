#include "control/DisplayInfo.h"

#include "control/RoutineHandler.h"
#include "control/troubledFiles.h"
#include "platform/TextFile.h"

namespace tessaly {

namespace {

using platform::OpenMode;
using platform::TextFile;
using platform::TextFormat;

void ShowInArea(ConversionState& state, std::u16string_view text) {
    const std::size_t length = state.txtArea.Text.size();
    state.txtArea.AppendText(text);
    if (length == state.LastAreaLength) {
        // The area has not grown since the last append: it is full, and starts over with the newest message.
        state.txtArea.SetText(text);
        return;
    }
    state.LastAreaLength = length;
}

void WriteToLog(ConversionState& state, std::u16string_view text) {
    constexpr std::int32_t kLinesAtRisk = 1000;
    state.LogFile.Stream->WriteLine(text);
    ++state.LogLineCount;
    if (state.LogLineCount < kLinesAtRisk) return;
    state.LogFile.Stream->Close();
    state.LogLineCount = 0;
    state.LogFile.Stream =
        std::make_shared<TextFile>(state.LogFileName, OpenMode::kAppending, TextFormat::kUnicode);
}

// Later entries are in the system's default encoding, unlike the first line of the file.
void WriteToErrorLog(ConversionState& state, std::u16string_view text) {
    TextFile log(state.LogErrorFileName, OpenMode::kAppending, TextFormat::kSystemDefault);
    log.WriteLine(text);
    log.Close();
}

}  // namespace

void DisplayInfo(ConversionState& state, std::u16string_view text, bool forceShow, bool forceLog,
                 bool writeErrorLog) try {
    if (forceShow || state.optDisplay) ShowInArea(state, text);
    if ((forceLog || state.optLog) && state.LogFile.Stream != nullptr) {
        WithFile(state, state.LogFileName, [&] { WriteToLog(state, text); });
    }
    if (writeErrorLog && state.LogErrorFile.Stream) {
        WithFile(state, state.LogErrorFileName, [&] { WriteToErrorLog(state, text); });
    }
    state.ToolboxA.KeepResponsive();
} catch (...) {
    RoutineHandler(state, u" - DisplayInfo()", CurrentError());
}

}  // namespace tessaly
