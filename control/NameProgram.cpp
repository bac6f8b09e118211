#include "control/NameProgram.h"

#include "control/Settings.h"
#include "control/checking.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace tessaly {

namespace {

// A program that was installed for all users lies where none of them can write.
void UseOwnSettings(ConversionState& state) {
    const std::u16string folder = platform::UserSettingsFolder();
    if (folder.empty()) return;
    if (!IsCheck(state) && IgnoringErrors([&] { platform::MakeFolders(folder); }) != kNoError) return;
    state.SettingsFile = IniFileIn(folder, state.ProgramName);
}

}  // namespace

void NameProgram(ConversionState& state, std::u16string_view programFolder,
                 std::u16string_view settingsFile) {
    const std::filesystem::path program = platform::ToNative(platform::ProgramFile());
    state.ProgramName = platform::ToPathText(program.filename());
    state.ProgramFolder = programFolder.empty() ? platform::ToPathText(program.parent_path()) : programFolder;
    state.SettingsFile = settingsFile;
    if (settingsFile.empty() && !platform::CanWriteInto(state.ProgramFolder)) UseOwnSettings(state);
}

std::u16string SettingsNote(const ConversionState& state) {
    if (state.SettingsFile.empty()) return {};
    return u"Settings are kept in " + platform::WithNativeSeparators(state.SettingsFile);
}

}  // namespace tessaly
