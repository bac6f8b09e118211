#include "control/deleting.h"

#include "platform/files.h"
#include "platform/paths.h"

namespace tessaly {

void DeleteFolder(const ConversionState& state, std::u16string_view folder) {
    platform::Protected kept;
    kept.homeFolder = platform::HomeFolder();
    kept.programFolder = state.ProgramFolder;
    kept.sourceFolders = SourceFolders(state);
    kept.showMessage = state.ShowMessage;
    platform::DeleteFolder(folder, kept);
}

}  // namespace tessaly
