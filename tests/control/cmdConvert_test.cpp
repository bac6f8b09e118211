#include "control/cmdConvert.h"

#include <gtest/gtest.h>

#include <regex>

#include "control/SetupFolderLocations.h"
#include "tests/support/Program.h"
#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

using testing::SettingIn;
using testing::TestBoard;
using Messages = std::vector<std::u16string>;

constexpr const char* kMoment = R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)";

bool Matches(const std::u16string& text, const std::string& pattern) {
    return std::regex_match(std::string(text.begin(), text.end()), std::regex(pattern));
}

bool Holds(const std::u16string& text, const std::u16string& what) {
    return text.find(what) != std::u16string::npos;
}

// A board that a run converts: one category, one page, one post.
struct SmallBoard : TestBoard {
    SmallBoard() {
        WriteBoardFile(testing::BoardFile("Main", {12}));
        WritePage("12/12.html", testing::PageHead("12/Radios", "12/Radios", "Radios", "Old radios") +
                                    testing::Post(5, "Anna", "1043846797", "Hello"));
    }
};

int ErrorOfConvert(TestBoard& board) {
    return IgnoringErrors([&board] { board.Convert(); });
}

// The run ends at once: before the folders, without a summary.
void ExpectStuck(const TestBoard& board, const std::u16string& message) {
    EXPECT_EQ(board.messages, (Messages{message}));
    EXPECT_FALSE(board.state.cmdConvert.Enabled);
    EXPECT_TRUE(board.state.cmdCancel.Enabled);
    EXPECT_FALSE(board.folder.Exists("output"));
    EXPECT_EQ(board.state.txtArea.Text, u"");
}

TEST(Checks, LeaveConvertEnabledBehindABlankAdministrator) {
    SmallBoard board;
    int waitsEnded = 0;
    board.state.ToolboxA.WaitEnded = [&waitsEnded] { ++waitsEnded; };
    board.state.txtArea.SetText(u"what the run before said");
    board.state.txtDefaultAdmin.SetText(u"  ");
    board.Convert();
    EXPECT_EQ(board.messages, (Messages{u"Default Admin of your mybb database must be filled in"}));
    EXPECT_EQ(board.focused, (std::vector<const TextField*>{&board.state.txtDefaultAdmin}));
    EXPECT_EQ(board.state.txtArea.Text, u"");
    EXPECT_TRUE(board.state.cmdConvert.Enabled);
    EXPECT_FALSE(board.state.cmdCancel.Enabled);
    EXPECT_FALSE(board.folder.Exists("output"));
    EXPECT_EQ(waitsEnded, 0);
}

TEST(Checks, LeaveTheButtonsStuckBehindABlankWebsite) {
    for (const auto* const text : {u"", u"   "}) {
        SmallBoard board;
        board.state.txtDiscusWebsite.SetText(text);
        board.Convert();
        ExpectStuck(board, u"Discus website must be filled in");
    }
}

TEST(Checks, LeaveTheButtonsStuckBehindABlankForumAddress) {
    for (const auto* const text : {u"", u"   "}) {
        SmallBoard board;
        board.state.txtmybbForumAddr.SetText(text);
        board.Convert();
        ExpectStuck(board, u"mybb Forum Address must be filled in");
    }
}

TEST(Checks, AskForTheAdministratorFirstAndForTheWebsiteBeforeTheForum) {
    SmallBoard board;
    board.state.txtDiscusWebsite.SetText(u"");
    board.state.txtmybbForumAddr.SetText(u"");
    board.Convert();
    ExpectStuck(board, u"Discus website must be filled in");
    SmallBoard other;
    other.state.txtDefaultAdmin.SetText(u"");
    other.state.txtDiscusWebsite.SetText(u"");
    other.Convert();
    EXPECT_EQ(other.messages, (Messages{u"Default Admin of your mybb database must be filled in"}));
}

TEST(Checks, TakeTheAdministratorFromTheFieldAndKeepHim) {
    SmallBoard board;
    board.state.txtDefaultAdmin.SetText(u" The, boss");
    board.Convert();
    EXPECT_EQ(board.state.DefaultAdmin, u"The([) boss");
    EXPECT_EQ(SettingIn(board.folder.Read("program/tessaly-test.ini"), "mybb_Admin"), "\" The, boss\"");
}

TEST(Checks, LeaveAStuckRunThatIsCancelledStuck) {
    SmallBoard board;
    board.state.txtDiscusWebsite.SetText(u"");
    board.Convert();
    cmdCancel_Click(board.state);
    EXPECT_FALSE(board.state.cmdConvert.Enabled);
    EXPECT_FALSE(board.state.cmdCancel.Enabled);
    EXPECT_TRUE(board.state.CancelRequested);
}

TEST(Cancel, SetsTheFlagAndDisablesItself) {
    TestBoard board;
    int waitsBegun = 0;
    board.state.ToolboxA.WaitBegun = [&waitsBegun] { ++waitsBegun; };
    board.state.cmdCancel.SetEnabled(true);
    cmdCancel_Click(board.state);
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_FALSE(board.state.cmdCancel.Enabled);
    EXPECT_EQ(waitsBegun, 1);
}

TEST(SplitLimit, IsTheLeadingNumberOfMegabytes) {
    const std::pair<const char16_t*, std::int32_t> cases[] = {
        {u"50", 52428800}, {u"abc", 0},       {u"", 0},           {u" 2 MB", 2097152},
        {u"0.5", 524288},  {u"-1", -1048576}, {u"1e1", 10485760}, {u"2047", 2146435072},
    };
    for (const auto& [text, limit] : cases) {
        TestBoard board;
        board.state.txtSplitMBSize.SetText(text);
        board.state.txtDiscusWebsite.SetText(u"");
        board.Convert();
        EXPECT_EQ(board.state.SplitMBSize, limit);
    }
}

TEST(SplitLimit, IsRoundedHalfToEven) {
    const std::pair<const char16_t*, std::int32_t> cases[] = {
        {u"0.000000476837158203125", 0},  // half a character
        {u"0.000001430511474609375", 2},  // one and a half
    };
    for (const auto& [text, limit] : cases) {
        TestBoard board;
        board.state.txtSplitMBSize.SetText(text);
        board.state.txtDiscusWebsite.SetText(u"");
        board.Convert();
        EXPECT_EQ(board.state.SplitMBSize, limit);
    }
}

TEST(SplitLimit, LetsANumberBeyond32BitsPassAndLeavesTheButtonsAsARunHasThem) {
    SmallBoard board;
    board.state.txtSplitMBSize.SetText(u"2048");
    EXPECT_EQ(ErrorOfConvert(board), 6);
    EXPECT_TRUE(board.messages.empty());
    EXPECT_FALSE(board.state.cmdConvert.Enabled);
    EXPECT_TRUE(board.state.cmdCancel.Enabled);
    EXPECT_FALSE(board.folder.Exists("output"));
}

TEST(Addresses, AreUsedAsTheyStandInTheirFields) {
    SmallBoard board;
    board.state.txtDiscusWebsite.SetText(u" x ");
    board.state.txtmybbForumAddr.SetText(u" y\\");
    board.Convert();
    EXPECT_EQ(board.state.DiscusWebsite, u" x ");
    EXPECT_EQ(board.state.mybbForumAddr, u" y\\");
}

TEST(Addresses, OfJustABackslashPassTheBlankTest) {
    SmallBoard board;
    board.state.txtDiscusWebsite.SetText(u"\\");
    board.state.txtmybbForumAddr.SetText(u" \\ ");
    board.Convert();
    EXPECT_EQ(board.state.DiscusWebsite, u"\\");
    EXPECT_EQ(board.state.mybbForumAddr, u" \\ ");
    EXPECT_EQ(board.messages.size(), 1u);
}

TEST(Folders, AreReadFromTheFields) {
    SmallBoard board;
    board.state.DiscusRootFolder = u"old";
    board.state.DiscusMessageFolder = u"old";
    board.state.DiscusSecureMessageFolder = u"old";
    board.state.DiscusMainFolder = u"old";
    board.state.mybbOutputFolder = u"old";
    board.state.mybbAttachmentsFolder = u"old";
    board.Convert();
    EXPECT_EQ(board.state.DiscusRootFolder, board.folder.Path("source") + u"\\");
    EXPECT_EQ(board.state.DiscusMainFolder, board.folder.Path("source/discus_admin_1") + u"\\");
    EXPECT_EQ(board.state.mybbOutputFolder, board.folder.Path("output") + u"\\");
    EXPECT_EQ(board.Rows("mybb_posts1.txt").size(), 1u);
}

TEST(Folders, OfTheOutputIsRepairedBeforeTheNamesAreBuilt) {
    SmallBoard board;
    board.state.txtmybbOutputFolder.SetText(board.folder.Path("output"));
    board.Convert();
    EXPECT_EQ(board.state.LogFileName, board.folder.Path("output/Log.txt"));
    EXPECT_TRUE(board.HasOutput("mybb_posts1.txt"));
    EXPECT_EQ(board.messages.size(), 1u);
}

TEST(Folders, OfTheMessagesIsMisjoinedWithoutItsBackslash) {
    SmallBoard board;
    board.state.txtDiscusMessageFolder.SetText(board.folder.Path("source/discus/messages"));
    board.Convert();
    const std::u16string joined = board.folder.Path("source/discus") + u"\\messages";
    EXPECT_EQ(board.state.BoardTopicsFile, joined + u"board-topics.html");
    EXPECT_EQ(board.state.DiscusCgiFile, joined + u"discus.cgi");
    EXPECT_EQ(board.state.DiscusMessageFolder, joined + u"\\") << "repaired, but too late";
    ASSERT_EQ(board.messages.size(), 2u);
    EXPECT_EQ(board.messages[0], u"Missing File - " + joined + u"board-topics.html\r\nMissing File - " +
                                     joined + u"discus.cgi\r\nOne file must exist");
    EXPECT_FALSE(board.HasOutput("mybb_forums1.txt"));
    EXPECT_FALSE(Holds(board.messages[1], u"Cancelled"));
}

TEST(Folders, OfTheMembersIsMisjoinedWithoutItsBackslash) {
    SmallBoard board;
    board.WriteMembers("anna:pw:anna@host.example:Anna:::1:1.2.3.4:2:\n");
    board.state.txtDiscusMainFolder.SetText(board.folder.Path("source/discus_admin_1"));
    board.Convert();
    const std::u16string joined = board.folder.Path("source") + u"\\discus_admin_1";
    EXPECT_EQ(board.state.UserFile, joined + u"User.txt");
    EXPECT_EQ(board.state.UsersFile, joined + u"Users.txt");
    EXPECT_EQ(board.state.TreeFile, joined + u"tree.txt");
    // Anna is an unknown poster, without her address.
    EXPECT_EQ(board.Rows("mybb_users1.txt").size(), 1u);
    EXPECT_EQ(board.Output("mybb_users1.txt").find("anna@host.example"), std::string::npos);
}

TEST(Names, AreBuiltForAllFilesOfTheRun) {
    SmallBoard board;
    board.Convert();
    const ConversionState& state = board.state;
    const std::u16string folder = board.folder.Path("output") + u"\\";
    const struct {
        const OutputFile& file;
        std::u16string base;
    } files[] = {
        {state.ThreadsFile, u"mybb_threads"},
        {state.UnknownFile, u"mybb_unknown"},
        {state.PostsFile, u"mybb_posts"},
        {state.UsersImportFile, u"mybb_users"},
        {state.ForumsFile, u"mybb_forums"},
        {state.AttachmentsFile, u"mybb_attachments"},
        {state.UserGroupsFile, u"mybb_usergroups"},
        {state.InternalLinksFile, u"InternalLinks"},
        {state.InternalLinksUpdateFile, u"InternalLinksUpdate"},
        {state.AnnouncementsFile, u"mybb_announcements"},
    };
    for (const auto& [file, base] : files) {
        EXPECT_EQ(file.Template, folder + base + u"XXX.txt");
        EXPECT_EQ(file.Name, folder + base + u"1.txt");
        EXPECT_EQ(file.Number, 1);
    }
    EXPECT_EQ(state.LogFileName, folder + u"Log.txt");
    EXPECT_EQ(state.LogErrorFileName, folder + u"LogError.txt");
    EXPECT_EQ(state.BoardTopicsFile, board.folder.Path("source/discus/messages/board-topics.html"));
    EXPECT_EQ(state.DiscusCgiFile, board.folder.Path("source/discus/messages/discus.cgi"));
    EXPECT_EQ(state.TreeFile, board.folder.Path("source/discus_admin_1/tree.txt"));
    EXPECT_EQ(state.UserFile, board.folder.Path("source/discus_admin_1/User.txt"));
    EXPECT_EQ(state.UsersFile, board.folder.Path("source/discus_admin_1/Users.txt"));
}

TEST(Names, KeepASmallXxxOfTheOutputFolderInTheFirstName) {
    SmallBoard board;
    board.state.txtmybbOutputFolder.SetText(board.folder.Path("xxxout"));
    board.Convert();
    EXPECT_TRUE(board.folder.Exists("xxxout/mybb_posts1.txt"));
    EXPECT_EQ(board.state.PostsFile.Name, board.folder.Path("xxxout/mybb_posts1.txt"));
}

TEST(Names, LoseACapitalXxxOfTheOutputFolderAndThenMissTheirFolder) {
    SmallBoard board;
    board.state.txtmybbOutputFolder.SetText(board.folder.Path("XXXout"));
    board.Convert();
    EXPECT_EQ(board.state.PostsFile.Name, board.folder.Path("1out/mybb_posts1.txt"));
    EXPECT_TRUE(board.folder.Exists("XXXout/Log.txt"));
    EXPECT_FALSE(board.folder.Exists("XXXout/mybb_posts1.txt"));
    EXPECT_FALSE(board.folder.Exists("1out"));
}

TEST(AttachmentsFolder, IsTheSmallOneWhateverItsFieldShows) {
    SmallBoard board;
    board.state.txtmybbAttachmentsFolder.SetText(board.folder.Path("typed"));
    board.Convert();
    EXPECT_EQ(board.state.mybbAttachmentsFolder, board.folder.Path("output/attachments"));
    EXPECT_EQ(board.state.txtmybbAttachmentsFolder.Text, board.folder.Path("output/Attachments") + u"\\");
    EXPECT_TRUE(board.folder.Exists("output/attachments"));
    EXPECT_TRUE(board.folder.Exists("output/Attachments"));
    EXPECT_FALSE(board.folder.Exists("typed"));
}

TEST(Charset, IsDetectedAtTheFirstRunWhateverTheSettingsSay) {
    SmallBoard board;
    board.WritePage("12/12.html", "<meta content=\"text/html; charset=ISO-8859-2\">");
    board.state.cboCharset.SetText(u"koi8-r");
    board.Convert();
    EXPECT_EQ(board.state.Charset, u"iso-8859-2");
    EXPECT_EQ(board.state.cboCharset.Text, u"iso-8859-2");
}

TEST(Charset, OfALaterRunIsTheOneOfTheField) {
    SmallBoard board;
    board.Convert();
    EXPECT_EQ(board.state.Charset, u"utf-8");
    board.WritePage("12/12.html", "<meta content=\"text/html; charset=koi8-r\">");
    board.Convert();
    EXPECT_EQ(board.state.Charset, u"utf-8") << "nothing is detected again";
    board.state.cboCharset.SetText(u"iso-8859-2");
    board.Convert();
    EXPECT_EQ(board.state.Charset, u"iso-8859-2");
    board.state.cboCharset.SetText(u"");
    board.Convert();
    EXPECT_EQ(board.state.Charset, u"utf-8");
    EXPECT_EQ(board.state.cboCharset.Text, u"utf-8");
}

TEST(Charset, IsUtf8WhenThereIsNoPageToTell) {
    TestBoard board;
    board.WriteBoardFile("<meta content=\"text/html; charset=koi8-r\">");
    board.state.cboCharset.SetText(u"koi8-r");
    board.Convert();
    EXPECT_EQ(board.state.Charset, u"utf-8");
    EXPECT_EQ(board.state.cboCharset.Text, u"utf-8");
}

TEST(Charset, LetsATagThatNoQuoteEndsPassOutOfTheRun) {
    SmallBoard board;
    board.WritePage("12/12.html", "<meta content='text/html; charset=koi8-r'>");
    EXPECT_EQ(ErrorOfConvert(board), 5);
    EXPECT_TRUE(board.messages.empty());
    EXPECT_FALSE(board.state.cmdConvert.Enabled);
}

TEST(Template, ThatIsNotThereEndsTheRunBeforeItsStartButNotAsCancelled) {
    SmallBoard board;
    std::filesystem::remove(board.folder.Native("program/Docs/Redirect.html"));
    board.Convert();
    ASSERT_EQ(board.messages.size(), 2u);
    EXPECT_EQ(board.messages[0],
              u"Source Redirect file not found - " + board.folder.Path("program/Docs/Redirect.html"));
    EXPECT_TRUE(Matches(board.messages[1], "Conversion Start: \r\nConversion Stop: " + std::string(kMoment) +
                                               "\r\n\r\nElapsed Time: \r\n"));
    EXPECT_FALSE(board.state.Progress.WasCancelled);
    EXPECT_FALSE(Holds(board.state.txtArea.Text, u"Conversion Start Time"));
    EXPECT_FALSE(board.HasOutput("mybb_forums1.txt"));
    EXPECT_FALSE(board.HasOutput("mybb_users1.txt"));
    // The closing steps are taken all the same.
    EXPECT_TRUE(Holds(board.Log(), u"Writing Updated Internal Links File - Please Wait..."));
    EXPECT_TRUE(board.state.cmdConvert.Enabled);
    EXPECT_FALSE(board.state.cmdCancel.Enabled);
}

TEST(Template, ThatIsEmptyCountsAsMissing) {
    SmallBoard board;
    board.folder.Write("program/Docs/Redirect.html", "");
    board.Convert();
    ASSERT_EQ(board.messages.size(), 2u);
    EXPECT_EQ(board.messages[0],
              u"Source Redirect file not found - " + board.folder.Path("program/Docs/Redirect.html"));
}

TEST(Template, OfTheRunBeforeDoesNotStandInForOneThatIsGone) {
    SmallBoard board;
    board.Convert();
    std::filesystem::remove(board.folder.Native("program/Docs/Redirect.html"));
    board.messages.clear();
    board.Convert();
    EXPECT_EQ(board.messages.size(), 2u);
    EXPECT_EQ(board.state.RedirectTemplate, u"");
}

TEST(StartLine, LandsInTheAreaAndBothLogsWithProgressOff) {
    SmallBoard board;
    board.state.optDisplay = false;
    board.state.optLog = false;
    board.Convert();
    const std::string line = "Conversion Start Time: " + std::string(kMoment);
    const std::u16string log = board.Log();
    EXPECT_TRUE(Matches(log.substr(0, 42), line));
    EXPECT_EQ(log.substr(42, 6), u"\r\n\r\n\r\n");
    EXPECT_TRUE(Holds(board.state.txtArea.Text, log.substr(0, 46)));
    const std::string errors = board.Output("LogError.txt").substr(10);
    EXPECT_TRUE(std::regex_search(errors, std::regex(line + "\r\n\r\n\r\n")));
}

TEST(Summary, IsShownInABoxAndInTheAreaAndNeverLogged) {
    SmallBoard board;
    board.Convert();
    ASSERT_EQ(board.messages.size(), 1u);
    EXPECT_TRUE(Matches(board.messages[0], "Conversion Start: " + std::string(kMoment) +
                                               "\r\nConversion Stop: " + kMoment +
                                               "\r\n\r\nElapsed Time: \\d+:\\d\\d:\\d\\d\r\n"));
    EXPECT_TRUE(board.state.txtArea.Text.ends_with(board.messages[0]));
    EXPECT_FALSE(Holds(board.Log(), u"Elapsed Time"));
    EXPECT_EQ(board.Output("LogError.txt").find("Elapsed Time"), std::string::npos);
}

TEST(Summary, BeginsWithABannerBehindACancel) {
    SmallBoard board;
    board.state.ToolboxA.EventInterval = 0;
    board.state.ToolboxA.HandleEvents = [&board] {
        if (board.state.PostCounter == 1 && board.state.cmdCancel.Enabled) cmdCancel_Click(board.state);
    };
    board.Convert();
    ASSERT_EQ(board.messages.size(), 1u);
    EXPECT_TRUE(board.messages[0].starts_with(u"\r\n\r\nConversion Cancelled\r\n\r\nConversion Start: 2"));
    EXPECT_TRUE(board.state.Progress.WasCancelled);
    EXPECT_FALSE(board.state.CancelRequested);
    EXPECT_TRUE(board.state.cmdConvert.Enabled);
    EXPECT_FALSE(board.state.cmdCancel.Enabled);
    EXPECT_TRUE(board.HasOutput("mybb_forums1.txt"));
    EXPECT_TRUE(board.HasOutput("mybb_users1.txt")) << "users are written behind a cancel too";
}

TEST(ClosingSteps, AreTakenBehindAFailedFolderCheck) {
    SmallBoard board;
    board.state.txtDiscusRootFolder.SetText(board.folder.Path("nowhere"));
    board.Convert();
    ASSERT_EQ(board.messages.size(), 2u);
    EXPECT_EQ(board.messages[0], board.folder.Path("nowhere") + u"\\ - Discus Root Folder Must Exist\r\n");
    EXPECT_TRUE(Matches(board.messages[1],
                        "\r\n\r\nConversion Cancelled\r\n\r\nConversion Start: \r\nConversion Stop: " +
                            std::string(kMoment) + "\r\n\r\nElapsed Time: \r\n"));
    EXPECT_EQ(board.state.txtArea.Text,
              u"Writing Updated Internal Links File - Please Wait...\r\n" + board.messages[1]);
    EXPECT_FALSE(board.state.CancelRequested);
    EXPECT_TRUE(board.state.cmdConvert.Enabled);
    EXPECT_FALSE(board.state.cmdCancel.Enabled);
    EXPECT_FALSE(board.folder.Exists("output"));
}

TEST(ClosingSteps, EndTheWaitOfTheFormOnce) {
    SmallBoard board;
    int waitsEnded = 0;
    board.state.ToolboxA.WaitEnded = [&waitsEnded] { ++waitsEnded; };
    board.Convert();
    EXPECT_EQ(waitsEnded, 1);
    board.state.txtDiscusRootFolder.SetText(u"");
    board.Convert();
    EXPECT_EQ(waitsEnded, 2);
}

TEST(ClosingSteps, ReleaseTheCollectionsAndBlankTheFirstElement) {
    SmallBoard board;
    board.Convert();
    const ConversionState& state = board.state;
    EXPECT_EQ(state.MembersById.Count(), 0);
    EXPECT_EQ(state.MembersByRealName.Count(), 0);
    EXPECT_EQ(state.MembersByUserName.Count(), 0);
    EXPECT_EQ(state.RealNames.Count(), 0);
    EXPECT_EQ(state.GroupsByName.Count(), 0);
    EXPECT_EQ(state.ThreadIdsByFile.Count(), 0);
    EXPECT_EQ(state.ReplaceableCharacters.Count(), 0);
    EXPECT_EQ(state.ForumIdsByName.Count(), 0);
    EXPECT_EQ(state.DataIndex[0].MeName, u"");
    EXPECT_EQ(state.ForumCounter, 2) << "counters keep their last values";
    EXPECT_EQ(state.PostCounter, 1);
}

TEST(ClosingSteps, LeaveNoStreamOpen) {
    SmallBoard board;
    board.Convert();
    const ConversionState& state = board.state;
    for (const OutputFile* file :
         {&state.ThreadsFile, &state.UnknownFile, &state.PostsFile, &state.UsersImportFile, &state.ForumsFile,
          &state.AttachmentsFile, &state.UserGroupsFile, &state.InternalLinksFile,
          &state.InternalLinksUpdateFile, &state.AnnouncementsFile})
        EXPECT_EQ(file->Stream, nullptr);
    EXPECT_EQ(state.LogFile.Stream, nullptr);
    EXPECT_FALSE(state.LogErrorFile.Stream);
}

TEST(Reset, EmptiesTheCountOfMessagesAndTheAreaAndTurnsTheButtons) {
    SmallBoard board;
    board.state.txtMsgCount.SetText(u"99");
    board.state.txtArea.SetText(u"old");
    bool areaWasEmpty = false;
    board.state.ToolboxA.EventInterval = 0;
    board.state.ToolboxA.HandleEvents = [&] {
        if (board.state.txtArea.Text.starts_with(u"Deleting")) areaWasEmpty = true;
        EXPECT_FALSE(board.state.cmdConvert.Enabled);
        EXPECT_TRUE(board.state.cmdCancel.Enabled);
    };
    board.state.txtmybbForumAddr.SetText(u"http://new.example/");
    board.Convert();
    EXPECT_TRUE(areaWasEmpty);
    EXPECT_EQ(board.state.txtMsgCount.Text, u"0") << "the count when the last page was read";
}

TEST(Cancel, DuringTheFolderSetupIsForgottenAtItsEnd) {
    SmallBoard board;
    bool isClicked = false;
    board.state.ToolboxA.EventInterval = 0;
    board.state.ToolboxA.HandleEvents = [&] {
        if (isClicked) return;
        isClicked = true;
        cmdCancel_Click(board.state);
    };
    board.Convert();
    EXPECT_TRUE(isClicked);
    EXPECT_FALSE(board.state.Progress.WasCancelled);
    EXPECT_EQ(board.Rows("mybb_posts1.txt").size(), 1u);
}

TEST(NestedHandlers, MayPickAnotherOutputFolderInTheMiddleOfARun) {
    SmallBoard board;
    board.state.ToolboxA.PickFolder = [&board](std::u16string_view) { return board.folder.Path("other"); };
    bool isPicked = false;
    board.state.ToolboxA.EventInterval = 0;
    board.state.ToolboxA.HandleEvents = [&] {
        if (isPicked || board.state.PostCounter == 0) return;
        isPicked = true;
        board.state.txtmybbOutputFolder.SetText(board.folder.Path("other"));
        SetupFolderLocations(board.state);
    };
    board.Convert();
    EXPECT_TRUE(isPicked);
    // The import files keep the names that they have, the script goes to the new folder.
    EXPECT_TRUE(board.HasOutput("mybb_posts1.txt"));
    EXPECT_TRUE(board.folder.Exists("other/Discus Conversion Import SQL.sql"));
    EXPECT_EQ(board.messages.size(), 1u);
}

}  // namespace
}  // namespace tessaly
