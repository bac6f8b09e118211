#include "control/cmdConvert.h"

#include "control/DetectCharset.h"
#include "control/DisplayInfo.h"
#include "control/Settings.h"
#include "control/SetupFolderLocations.h"
#include "control/checking.h"
#include "members/modMembers.h"
#include "members/mybbWriteGroupsFile.h"
#include "members/mybbWriteUserFile.h"
#include "output/OutputFiles.h"
#include "platform/clock.h"
#include "reader/SourceFiles.h"
#include "reader/SpecialCharacters.h"
#include "reader/modBoards.h"
#include "reader/modThreads.h"
#include "text/numbers.h"
#include "text/split.h"
#include "translate/UpdateInternalLinks.h"

namespace tessaly {

namespace {

// `ForumIdsByName` is made by the board's reader.
void MakeCollections(ConversionState& state) {
    state.MembersById = {};
    state.MembersByRealName = {};
    state.MembersByUserName = {};
    state.RealNames = {};
    state.GroupsByName = {};
    state.ThreadIdsByFile = {};
    state.ReplaceableCharacters = {};
    state.SpareCollectionA = {};
    state.SpareCollectionB = {};
}

// The sizes of the other families go on from where the last run left them.
void ResetRun(ConversionState& state) {
    constexpr double kMegabyte = 1048576;
    MakeCollections(state);
    state.MemberPostCounts.assign(101, 0);
    state.ThreadRowCount = 0;
    state.AttachmentCounter = 0;
    state.PostCounter = 0;
    state.txtMsgCount.SetText(u"");
    state.BoardSpare = 0;
    state.PostsFile.Size = 0;
    state.PostsFile.Number = 0;
    state.UsersImportFile.Size = 0;
    state.UsersImportFile.Number = 0;
    state.ThreadCounter = 0;
    state.ForumCounter = 0;
    state.PreviousDepth = 0;
    state.Progress = {};
    state.cmdCancel.SetEnabled(true);
    state.cmdConvert.SetEnabled(false);
    state.txtArea.SetText(u"");
    state.SplitMBSize = RoundToInteger(LeadingNumber(state.txtSplitMBSize.Text) * kMegabyte);
}

bool AdministratorIsFilled(ConversionState& state) {
    txtDefaultAdmin_LostFocus(state);
    if (!state.DefaultAdmin.empty()) return true;
    state.txtArea.SetText(u"");
    state.cmdCancel.SetEnabled(false);
    state.cmdConvert.SetEnabled(true);
    return false;
}

bool AddressIsFilled(ConversionState& state, const TextField& field, std::u16string& address,
                     std::u16string_view missing) {
    address = Trim(field.Text);
    if (address.empty()) {
        state.ShowMessage(missing);
        return false;
    }
    address = StripTrailingBackslash(address);
    return true;
}

bool WebsiteIsFilled(ConversionState& state) {
    return AddressIsFilled(state, state.txtDiscusWebsite, state.DiscusWebsite,
                           u"Discus website must be filled in");
}

bool ForumAddressIsFilled(ConversionState& state) {
    return AddressIsFilled(state, state.txtmybbForumAddr, state.mybbForumAddr,
                           u"mybb Forum Address must be filled in");
}

// A blank address leaves the buttons as they are: no other run until the program is restarted. A check tells
// of all blank fields and goes on.
bool RequiredFieldsAreFilled(ConversionState& state) {
    for (const auto isFilled : {AdministratorIsFilled, WebsiteIsFilled, ForumAddressIsFilled}) {
        if (!isFilled(state) && !IsCheck(state)) return false;
    }
    return true;
}

// The fields as they stand: the addresses neither trimmed nor stripped.
void GatherFields(ConversionState& state) {
    state.DiscusRootFolder = state.txtDiscusRootFolder.Text;
    state.DiscusMessageFolder = state.txtDiscusMessageFolder.Text;
    state.DiscusSecureMessageFolder = state.txtDiscusSecureMessageFolder.Text;
    state.DiscusMainFolder = state.txtDiscusMainFolder.Text;
    state.mybbOutputFolder = state.txtmybbOutputFolder.Text;
    state.mybbAttachmentsFolder = state.txtmybbAttachmentsFolder.Text;
    state.DiscusWebsite = state.txtDiscusWebsite.Text;
    state.mybbForumAddr = state.txtmybbForumAddr.Text;
    state.BoardTopicsFile = state.DiscusMessageFolder + u"board-topics.html";
    state.DiscusCgiFile = state.DiscusMessageFolder + u"discus.cgi";
    state.TreeFile = state.DiscusMainFolder + u"tree.txt";
    state.UserFile = state.DiscusMainFolder + u"User.txt";
    state.UsersFile = state.DiscusMainFolder + u"Users.txt";
}

// The folder of the attachments is this one, whatever its field shows.
void NameOutput(ConversionState& state) {
    const std::u16string& folder = state.mybbOutputFolder;
    state.LogFileName = folder + u"Log.txt";
    state.LogErrorFileName = folder + u"LogError.txt";
    state.mybbAttachmentsFolder = folder + u"attachments";
    BeginOutputFile(state.ThreadsFile, folder + u"mybb_threadsXXX.txt");
    BeginOutputFile(state.UnknownFile, folder + u"mybb_unknownXXX.txt");
    BeginOutputFile(state.PostsFile, folder + u"mybb_postsXXX.txt");
    BeginOutputFile(state.UsersImportFile, folder + u"mybb_usersXXX.txt");
    BeginOutputFile(state.ForumsFile, folder + u"mybb_forumsXXX.txt");
    BeginOutputFile(state.AttachmentsFile, folder + u"mybb_attachmentsXXX.txt");
    BeginOutputFile(state.UserGroupsFile, folder + u"mybb_usergroupsXXX.txt");
    BeginOutputFile(state.InternalLinksFile, folder + u"InternalLinksXXX.txt");
    BeginOutputFile(state.InternalLinksUpdateFile, folder + u"InternalLinksUpdateXXX.txt");
    BeginOutputFile(state.AnnouncementsFile, folder + u"mybb_announcementsXXX.txt");
}

// What counts of the detection is that it has written the charset into the field.
void SettleCharset(ConversionState& state) {
    GoingOnInCheck(state, u"", [&state] {
        if (state.Charset.empty()) state.Charset = DetectCharset(state);
    });
    if (state.cboCharset.Text.empty()) state.cboCharset.SetText(u"utf-8");
    state.Charset = state.cboCharset.Text;
}

bool LoadRedirectTemplate(ConversionState& state) {
    const std::u16string path = ToolboxLibrary::AddBackslash(state.ProgramFolder) + u"Docs\\Redirect.html";
    state.RedirectTemplate.clear();
    if (ToolboxLibrary::FileExists(path)) GetFileDataANSI(state, path, state.RedirectTemplate, false);
    if (!state.RedirectTemplate.empty()) return true;
    state.ShowMessage(u"Source Redirect file not found - " + path);
    return false;
}

// Each phase decides for itself what a cancel means for it.
void RunPhases(ConversionState& state, std::u16string& startText) {
    DisplayInfo(state, u"Conversion Start Time: " + platform::MomentText(platform::Now()) + u"\r\n\r\n", true,
                true, true);
    startText = state.ToolboxA.StartTimer();
    ResetDataIndex(state, 0);
    DiscusReadUserFile(state);
    mybbWriteGroupsFile(state);
    DiscusProcessDiscusMainBoardFile(state);
    mybbWriteUserFile(state);
}

void ShowSummary(ConversionState& state, const std::u16string& startText) {
    std::u16string summary;
    state.Progress.WasCancelled = state.CancelRequested;
    if (state.CancelRequested) summary = u"\r\n\r\nConversion Cancelled\r\n\r\n";
    state.ToolboxA.FormWaitEnd();
    MakeCollections(state);
    state.ForumIdsByName = {};
    IgnoringErrors([&state] { InitDataIndex(state, 0); });
    const std::u16string stopText = state.ToolboxA.StopTimer();
    summary += u"Conversion Start: " + startText + u"\r\nConversion Stop: " + stopText +
               u"\r\n\r\nElapsed Time: " + state.ToolboxA.ElapsedTime(startText, stopText) + u"\r\n";
    // The logs are closed by now: the summary reaches the text area alone.
    DisplayInfo(state, summary, true, true, true);
    state.Progress.SummaryShown = true;
    state.ShowMessage(summary);
}

}  // namespace

void cmdConvert_Click(ConversionState& state) {
    ResetRun(state);
    if (!RequiredFieldsAreFilled(state)) return;
    GatherFields(state);
    SetupFolderLocations(state);
    std::u16string startText;
    if (!state.CancelRequested) {
        NameOutput(state);
        mybbOpenOutputFiles(state);
        SettleCharset(state);
        DiscusGetReplaceableCharacterArray(state, state.Charset);
        if (LoadRedirectTemplate(state) || IsCheck(state)) RunPhases(state, startText);
    }
    UpdateInternalLinks(state);
    mybbCloseOutputFiles(state);
    // Forums that their reader has not finished go unsaved, so that the next run does not begin with them.
    state.ForumsFile.Stream.reset();
    ShowSummary(state, startText);
    state.CancelRequested = false;
    state.cmdCancel.SetEnabled(false);
    state.cmdConvert.SetEnabled(true);
}

void cmdCancel_Click(ConversionState& state) {
    state.CancelRequested = true;
    state.cmdCancel.SetEnabled(false);
    state.ToolboxA.FormWaitBegin();
}

}  // namespace tessaly
