#include "control/deleting.h"

#include "platform/files.h"
#include "platform/paths.h"

namespace tessaly {

namespace {

platform::Protected KeptBy(const ConversionState& state) {
    platform::Protected kept;
    kept.homeFolder = platform::HomeFolder();
    kept.programFolder = state.ProgramFolder;
    kept.sourceFolders = SourceFolders(state);
    kept.showMessage = state.ShowMessage;
    return kept;
}

}  // namespace

void DeleteFolder(const ConversionState& state, std::u16string_view folder) {
    platform::DeleteFolder(folder, KeptBy(state));
}

bool MayDeleteFolder(const ConversionState& state, std::u16string_view folder) {
    return platform::MayDelete(folder, KeptBy(state));
}

}  // namespace tessaly
