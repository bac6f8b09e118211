#include "control/SetupFolderLocations.h"

#include "control/DisplayInfo.h"
#include "control/RoutineHandler.h"
#include "control/Settings.h"
#include "control/checking.h"
#include "control/deleting.h"
#include "platform/files.h"

namespace tessaly {

namespace {

struct SourceFolder {
    std::u16string& folder;
    std::u16string_view missing;
    std::u16string_view mustExist;
};

// Repairs the folder's end and tests that it is there; shows what is wrong.
bool IsReady(const ConversionState& state, const SourceFolder& source) {
    if (source.folder.empty()) {
        state.ShowMessage(source.missing);
        return false;
    }
    source.folder = ToolboxLibrary::AddBackslash(source.folder);
    if (platform::FolderExists(source.folder)) return true;
    state.ShowMessage(source.folder + std::u16string(source.mustExist) + u"\r\n");
    return false;
}

bool SourceFoldersAreReady(ConversionState& state) {
    const SourceFolder sources[] = {
        {state.DiscusRootFolder, u"Source of your Discus Root Folder must be filled in",
         u" - Discus Root Folder Must Exist"},
        {state.DiscusMessageFolder, u"Source of your Discus mMssage Folder must be filled in",
         u" - Discus Message Folder Must Exist"},
        {state.DiscusSecureMessageFolder, u"Source of your Discus Secure Message Folder must be filled in",
         u" - Discus Secure Message Folder Must Exist"},
    };
    for (const SourceFolder& source : sources) {
        if (!IsReady(state, source) && !IsCheck(state)) return false;
    }
    // A check goes on wherever it finds pages.
    return !IsCheck(state) || platform::FolderExists(state.DiscusMessageFolder);
}

// A check leaves the folder as it is, and tells whether a run may delete it.
void CheckOutputFolder(ConversionState& state) {
    state.mybbAttachmentsFolder = state.mybbOutputFolder + u"Attachments\\";
    state.mybbRedirectFolder = state.mybbOutputFolder + u"redirect\\discus\\messages\\";
    const std::u16string folder = StripTrailingBackslash(state.mybbOutputFolder);
    GoingOnInCheck(state, u" - SetupFolderLocations()", [&folder] {
        const int obstacle = platform::ObstacleToFolders(folder);
        if (obstacle != kNoError) Raise(static_cast<ErrorNumber>(obstacle));
    });
    if (platform::FolderExists(folder)) static_cast<void>(MayDeleteFolder(state, folder));
    state.CancelRequested = false;
}

bool DeleteOutputFolder(ConversionState& state) {
    DisplayInfo(
        state, u"Deleting Output Folders & Files - " + state.mybbOutputFolder + u"\r\nPlease Wait...\r\n\r\n",
        true, true, false);
    const std::u16string folder = StripTrailingBackslash(state.mybbOutputFolder);
    if (IgnoringErrors([&] { DeleteFolder(state, folder); }) == kNoError) return true;
    const std::u16string text =
        u"Files are open in " + state.mybbOutputFolder + u" - Please close them then restart the conversion";
    DisplayInfo(state, text, true, true, false);
    state.ShowMessage(text);
    return false;
}

}  // namespace

void SetupFolderLocations(ConversionState& state) try {
    state.CancelRequested = true;
    if (!SourceFoldersAreReady(state)) return;
    SaveSetting(state, u"DiscusRootFolder", state.DiscusRootFolder);
    SaveSetting(state, u"DiscusMessageFolder", state.DiscusMessageFolder);
    SaveSetting(state, u"DiscusSecureMessageFolder", state.DiscusSecureMessageFolder);
    SaveSetting(state, u"DiscusMainFolder", state.DiscusMainFolder);
    if (state.mybbOutputFolder.empty()) {
        state.CancelRequested = !IsCheck(state);
        return state.ShowMessage(u"mybb Output Folder Must Be Filled In");
    }
    state.mybbOutputFolder = ToolboxLibrary::AddBackslash(state.txtmybbOutputFolder.Text);
    if (IsCheck(state)) return CheckOutputFolder(state);

    const bool wasThere = platform::FolderExists(state.mybbOutputFolder);
    if (!wasThere) ToolboxLibrary::MakeFolderPath(state.mybbOutputFolder);
    if (wasThere && !DeleteOutputFolder(state)) return;
    // Behind a delete that worked, errors stay ignored.
    const auto run = [wasThere](auto step) {
        if (!wasThere) return step();
        IgnoringErrors(step);
    };

    state.mybbAttachmentsFolder = state.mybbOutputFolder + u"Attachments\\";
    state.txtmybbAttachmentsFolder.SetText(state.mybbAttachmentsFolder);
    if (!platform::FolderExists(state.mybbAttachmentsFolder)) {
        run([&] { ToolboxLibrary::MakeFolderPath(state.mybbAttachmentsFolder); });
    }
    run([&] { SaveSetting(state, u"mybb_OutputFolder", state.mybbOutputFolder); });
    run([&] { SaveSetting(state, u"mybb_AttachmentsFolder", state.mybbAttachmentsFolder); });
    // These two keys are written and never read.
    run([&] { SaveSetting(state, u"DiscusWebSite", state.DiscusWebsite); });
    run([&] { SaveSetting(state, u"mybb_ForumAddr", state.mybbForumAddr); });

    state.mybbRedirectFolder = state.mybbOutputFolder + u"redirect\\discus\\messages\\";
    DisplayInfo(
        state,
        u"Deleting Redirection Folders & Files - " + state.mybbRedirectFolder + u"\r\nPlease Wait...\r\n\r\n",
        true, true, false);
    if (platform::FolderExists(state.mybbRedirectFolder)) {
        run([&] { DeleteFolder(state, StripTrailingBackslash(state.mybbRedirectFolder)); });
    }
    if (platform::FolderExists(state.mybbRedirectFolder)) {
        return state.ShowMessage(u"Cannot delete " + state.mybbRedirectFolder);
    }
    run([&] { ToolboxLibrary::MakeFolderPath(state.mybbRedirectFolder); });
    state.CancelRequested = false;
} catch (...) {
    RoutineHandler(state, u" - SetupFolderLocations()", CurrentError());
}

}  // namespace tessaly
