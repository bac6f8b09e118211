#include "control/SetupFolderLocations.h"

#include <gtest/gtest.h>

#include "tests/support/Program.h"
#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

using testing::SettingIn;
using testing::TestBoard;
using Messages = std::vector<std::u16string>;

constexpr const char* kIni = "program/tessaly-test.ini";

std::optional<std::string> SettingOf(const TestBoard& board, std::string_view key) {
    return SettingIn(board.folder.Read(kIni), key);
}

std::string Utf8(const std::u16string& ascii) {
    return std::string(ascii.begin(), ascii.end());
}

// What the area shows when the redirect folder is made anew.
std::u16string RedirectionText(const TestBoard& board) {
    return u"Deleting Redirection Folders & Files - " + board.folder.Path("output") +
           u"\\redirect\\discus\\messages\\\r\nPlease Wait...\r\n\r\n";
}

std::u16string DeletionText(const TestBoard& board) {
    return u"Deleting Output Folders & Files - " + board.folder.Path("output") +
           u"\\\r\nPlease Wait...\r\n\r\n";
}

// Does something as soon as the area shows a text.
void When(TestBoard& board, std::u16string text, std::function<void()> step) {
    board.state.ToolboxA.EventInterval = 0;
    board.state.ToolboxA.HandleEvents = [&board, text = std::move(text), step = std::move(step),
                                         isDone = false]() mutable {
        if (isDone || board.state.txtArea.Text.find(text) == std::u16string::npos) return;
        isDone = true;
        step();
    };
}

TEST(FolderSetup, AsksForTheRootFirst) {
    TestBoard board;
    board.state.DiscusRootFolder.clear();
    board.state.DiscusMessageFolder.clear();
    SetupFolderLocations(board.state);
    EXPECT_EQ(board.messages, (Messages{u"Source of your Discus Root Folder must be filled in"}));
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_EQ(SettingOf(board, "DiscusRootFolder"), std::nullopt);
    EXPECT_FALSE(board.folder.Exists("output"));
}

TEST(FolderSetup, TellsOfARootThatIsNotThere) {
    TestBoard board;
    board.state.DiscusRootFolder = board.folder.Path("nowhere");
    SetupFolderLocations(board.state);
    EXPECT_EQ(board.messages,
              (Messages{board.folder.Path("nowhere") + u"\\ - Discus Root Folder Must Exist\r\n"}));
    EXPECT_EQ(board.state.DiscusRootFolder, board.folder.Path("nowhere") + u"\\");
    EXPECT_TRUE(board.state.CancelRequested);
}

TEST(FolderSetup, AsksForTheMessagesInItsOwnSpelling) {
    TestBoard board;
    board.state.DiscusMessageFolder.clear();
    SetupFolderLocations(board.state);
    EXPECT_EQ(board.messages, (Messages{u"Source of your Discus mMssage Folder must be filled in"}));
    EXPECT_TRUE(board.state.CancelRequested);
}

TEST(FolderSetup, TellsOfAMessageFolderThatIsNotThere) {
    TestBoard board;
    board.state.DiscusMessageFolder = board.folder.Path("nowhere");
    SetupFolderLocations(board.state);
    EXPECT_EQ(board.messages,
              (Messages{board.folder.Path("nowhere") + u"\\ - Discus Message Folder Must Exist\r\n"}));
    EXPECT_TRUE(board.state.CancelRequested);
}

TEST(FolderSetup, AsksForTheSecureMessages) {
    TestBoard board;
    board.state.DiscusSecureMessageFolder.clear();
    SetupFolderLocations(board.state);
    EXPECT_EQ(board.messages, (Messages{u"Source of your Discus Secure Message Folder must be filled in"}));
    EXPECT_TRUE(board.state.CancelRequested);
}

TEST(FolderSetup, TellsOfASecureMessageFolderThatIsNotThere) {
    TestBoard board;
    board.state.DiscusSecureMessageFolder = board.folder.Path("nowhere");
    SetupFolderLocations(board.state);
    EXPECT_EQ(board.messages,
              (Messages{board.folder.Path("nowhere") + u"\\ - Discus Secure Message Folder Must Exist\r\n"}));
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_EQ(SettingOf(board, "DiscusRootFolder"), std::nullopt);
}

TEST(FolderSetup, TakesAFileForNoFolder) {
    TestBoard board;
    board.folder.Write("file", "x");
    board.state.DiscusRootFolder = board.folder.Path("file");
    SetupFolderLocations(board.state);
    EXPECT_EQ(board.messages,
              (Messages{board.folder.Path("file") + u"\\ - Discus Root Folder Must Exist\r\n"}));
}

TEST(FolderSetup, NeitherRepairsNorTestsTheMainFolder) {
    TestBoard board;
    board.state.DiscusMainFolder = u"Z:\\no such folder";
    SetupFolderLocations(board.state);
    EXPECT_TRUE(board.messages.empty());
    EXPECT_FALSE(board.state.CancelRequested);
    EXPECT_EQ(board.state.DiscusMainFolder, u"Z:\\no such folder");
    EXPECT_EQ(SettingOf(board, "DiscusMainFolder"), "Z:\\no such folder");
}

TEST(FolderSetup, KeepsTheSourceFoldersBeforeItAsksForTheOutput) {
    TestBoard board;
    board.state.mybbOutputFolder.clear();
    SetupFolderLocations(board.state);
    EXPECT_EQ(board.messages, (Messages{u"mybb Output Folder Must Be Filled In"}));
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_EQ(SettingOf(board, "DiscusRootFolder"), Utf8(board.folder.Path("source") + u"\\"));
    EXPECT_EQ(SettingOf(board, "DiscusMessageFolder"),
              Utf8(board.folder.Path("source/discus/messages") + u"\\"));
    EXPECT_EQ(SettingOf(board, "DiscusSecureMessageFolder"),
              Utf8(board.folder.Path("source/discus_admin_1/secure") + u"\\"));
    EXPECT_EQ(SettingOf(board, "DiscusMainFolder"), Utf8(board.folder.Path("source/discus_admin_1") + u"\\"));
    EXPECT_EQ(SettingOf(board, "mybb_OutputFolder"), std::nullopt);
}

TEST(FolderSetup, RepairsTheFoldersThatLackTheirBackslash) {
    TestBoard board;
    ConversionState& state = board.state;
    state.DiscusRootFolder.pop_back();
    state.DiscusMessageFolder.pop_back();
    state.DiscusSecureMessageFolder.pop_back();
    state.txtmybbOutputFolder.Text.pop_back();
    SetupFolderLocations(state);
    EXPECT_EQ(state.DiscusRootFolder, board.folder.Path("source") + u"\\");
    EXPECT_EQ(state.DiscusMessageFolder, board.folder.Path("source/discus/messages") + u"\\");
    EXPECT_EQ(state.DiscusSecureMessageFolder, board.folder.Path("source/discus_admin_1/secure") + u"\\");
    EXPECT_EQ(state.mybbOutputFolder, board.folder.Path("output") + u"\\");
    EXPECT_FALSE(state.CancelRequested);
}

TEST(FolderSetup, MakesAnOutputFolderThatIsNotThereWithAllItsParents) {
    TestBoard board;
    board.state.txtmybbOutputFolder.SetText(board.folder.Path("a/b/c"));
    SetupFolderLocations(board.state);
    EXPECT_TRUE(board.folder.Exists("a/b/c/Attachments"));
    EXPECT_TRUE(board.folder.Exists("a/b/c/redirect/discus/messages"));
    EXPECT_FALSE(board.state.CancelRequested);
    EXPECT_TRUE(board.messages.empty());
    EXPECT_EQ(board.state.mybbAttachmentsFolder, board.folder.Path("a/b/c/Attachments") + u"\\");
    EXPECT_EQ(board.state.txtmybbAttachmentsFolder.Text, board.folder.Path("a/b/c/Attachments") + u"\\");
    EXPECT_EQ(board.state.mybbRedirectFolder, board.folder.Path("a/b/c/redirect/discus/messages") + u"\\");
    EXPECT_EQ(SettingOf(board, "mybb_OutputFolder"), Utf8(board.folder.Path("a/b/c") + u"\\"));
    EXPECT_EQ(SettingOf(board, "mybb_AttachmentsFolder"),
              Utf8(board.folder.Path("a/b/c/Attachments") + u"\\"));
}

TEST(FolderSetup, TellsOfTheRedirectionsAloneWhenThereWasNoOutputFolder) {
    TestBoard board;
    board.state.optDisplay = false;
    SetupFolderLocations(board.state);
    EXPECT_EQ(board.state.txtArea.Text, RedirectionText(board));
}

TEST(FolderSetup, DeletesAnOutputFolderThatIsThereWithAllItHolds) {
    TestBoard board;
    board.folder.Write("output/deep/er/old.txt", "old");
    board.folder.Write("output/readonly.txt", "old");
    std::filesystem::permissions(board.folder.Native("output/readonly.txt"),
                                 std::filesystem::perms::owner_read);
    board.state.optDisplay = false;
    SetupFolderLocations(board.state);
    EXPECT_TRUE(board.folder.Files("output").empty());
    EXPECT_FALSE(board.folder.Exists("output/deep"));
    EXPECT_TRUE(board.folder.Exists("output/Attachments"));
    EXPECT_TRUE(board.folder.Exists("output/redirect/discus/messages"));
    EXPECT_EQ(board.state.txtArea.Text, DeletionText(board) + RedirectionText(board));
    EXPECT_FALSE(board.state.CancelRequested);
    EXPECT_TRUE(board.messages.empty());
}

TEST(FolderSetup, TakesTheOutputFolderFromItsFieldAndTheVariableForTheBlankTestAlone) {
    TestBoard board;
    board.folder.Write("other/kept.txt", "kept");
    board.state.mybbOutputFolder = board.folder.Path("other") + u"\\";
    SetupFolderLocations(board.state);
    EXPECT_EQ(board.folder.Read("other/kept.txt"), "kept");
    EXPECT_EQ(board.state.mybbOutputFolder, board.folder.Path("output") + u"\\");
    EXPECT_TRUE(board.folder.Exists("output/Attachments"));
}

TEST(FolderSetup, RaisesTheCancelWhileItWorksAndLowersItAtItsEnd) {
    TestBoard board;
    std::vector<bool> seen;
    board.state.ToolboxA.EventInterval = 0;
    board.state.ToolboxA.HandleEvents = [&] { seen.push_back(board.state.CancelRequested); };
    SetupFolderLocations(board.state);
    EXPECT_EQ(seen, (std::vector<bool>{true}));
    EXPECT_FALSE(board.state.CancelRequested);
}

TEST(FolderSetup, FailsWhenTheOutputFolderCannotBeMade) {
    TestBoard board;
    board.folder.Write("file", "x");
    board.state.txtmybbOutputFolder.SetText(board.folder.Path("file/output"));
    SetupFolderLocations(board.state);
    EXPECT_EQ(board.messages, (Messages{u"76 - SetupFolderLocations()\r\n\r\nPath not found"}));
    EXPECT_EQ(board.state.ToolboxA.RecordedErrors, board.messages);
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_EQ(board.folder.Read("file"), "x");
}

TEST(FolderSetup, FailsWhenTheSettingsCannotBeKept) {
    TestBoard board;
    board.folder.Write("output/old.txt", "old");
    board.state.IniFile = board.folder.Path("nowhere") + u"\\tessaly.ini";
    SetupFolderLocations(board.state);
    EXPECT_EQ(board.messages, (Messages{u"75 - SetupFolderLocations()\r\n\r\nPath/File access error"}));
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_EQ(board.Output("old.txt"), "old");
}

TEST(FolderSetup, IgnoresEveryFailureBehindADeleteThatWorked) {
    TestBoard board;
    board.folder.Write("output/old.txt", "old");
    When(board, DeletionText(board),
         [&] { board.state.IniFile = board.folder.Path("nowhere") + u"\\x.ini"; });
    SetupFolderLocations(board.state);
    EXPECT_TRUE(board.messages.empty());
    EXPECT_FALSE(board.state.CancelRequested);
    EXPECT_TRUE(board.folder.Exists("output/redirect/discus/messages"));
    EXPECT_EQ(SettingOf(board, "mybb_OutputFolder"), std::nullopt);
}

TEST(FolderSetup, TellsWhenTheRedirectFolderCannotBeDeletedAfterADeleteThatWorked) {
    TestBoard board;
    board.folder.Write("output/old.txt", "old");
    // A folder of the source appears inside, so that the second delete is refused.
    When(board, RedirectionText(board), [&] {
        board.folder.MakeFolder("output/redirect/discus/messages/source");
        board.state.DiscusMainFolder = board.folder.Path("output/redirect/discus/messages/source");
    });
    SetupFolderLocations(board.state);
    ASSERT_EQ(board.messages.size(), 2u);
    EXPECT_NE(board.messages[0].find(u"is not deleted"), std::u16string::npos);
    EXPECT_EQ(board.messages[1],
              u"Cannot delete " + board.folder.Path("output/redirect/discus/messages") + u"\\");
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_TRUE(board.folder.Exists("output/redirect/discus/messages/source"));
}

TEST(FolderSetup, FailsWhenTheRedirectFolderCannotBeDeletedAndThereWasNoOutputFolder) {
    TestBoard board;
    When(board, RedirectionText(board), [&] {
        board.folder.MakeFolder("output/redirect/discus/messages/source");
        board.state.DiscusMainFolder = board.folder.Path("output/redirect/discus/messages/source");
    });
    SetupFolderLocations(board.state);
    ASSERT_EQ(board.messages.size(), 2u);
    EXPECT_EQ(board.messages[1], u"70 - SetupFolderLocations()\r\n\r\nPermission denied");
    EXPECT_TRUE(board.state.CancelRequested);
}

// What the guard refuses goes the way of files that are open.
void ExpectRefused(const TestBoard& board, const std::u16string& folder) {
    ASSERT_EQ(board.messages.size(), 2u);
    EXPECT_NE(board.messages[0].find(u"is not deleted"), std::u16string::npos);
    const std::u16string text =
        u"Files are open in " + folder + u" - Please close them then restart the conversion";
    EXPECT_EQ(board.messages[1], text);
    EXPECT_EQ(board.state.txtArea.Text,
              u"Deleting Output Folders & Files - " + folder + u"\r\nPlease Wait...\r\n\r\n" + text);
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_EQ(SettingOf(board, "mybb_OutputFolder"), std::nullopt);
}

TEST(RefusedOutputFolder, IsOneThatHoldsTheSource) {
    TestBoard board;
    board.WriteBoardFile("kept");
    board.state.txtmybbOutputFolder.SetText(board.folder.Path("source"));
    SetupFolderLocations(board.state);
    ExpectRefused(board, board.folder.Path("source") + u"\\");
    EXPECT_EQ(board.folder.Read("source/discus/messages/board-topics.html"), "kept");
}

TEST(RefusedOutputFolder, IsEachFolderOfTheSourceItself) {
    for (const auto* const name : {"source/discus/messages", "source/discus_admin_1/secure",
                                   "source/discus_admin_1", "source/discus"}) {
        TestBoard board;
        board.WriteBoardFile("kept");
        board.WriteMembers("kept");
        board.state.txtmybbOutputFolder.SetText(board.folder.Path(name));
        SetupFolderLocations(board.state);
        ExpectRefused(board, board.folder.Path(name) + u"\\");
        EXPECT_EQ(board.folder.Read("source/discus/messages/board-topics.html"), "kept");
        EXPECT_EQ(board.folder.Read("source/discus_admin_1/users.txt"), "kept");
    }
}

TEST(RefusedOutputFolder, IsOneThatHoldsAMainFolderOutsideOfTheRoot) {
    TestBoard board;
    board.folder.Write("output/admin/users.txt", "kept");
    board.state.DiscusMainFolder = board.folder.Path("output/admin");
    SetupFolderLocations(board.state);
    ExpectRefused(board, board.folder.Path("output") + u"\\");
    EXPECT_EQ(board.folder.Read("output/admin/users.txt"), "kept");
}

TEST(RefusedOutputFolder, IsTheProgramsOwn) {
    TestBoard board;
    board.state.txtmybbOutputFolder.SetText(board.folder.Path("program"));
    SetupFolderLocations(board.state);
    ExpectRefused(board, board.folder.Path("program") + u"\\");
    EXPECT_TRUE(board.folder.Exists("program/Docs/Redirect.html"));
}

TEST(RefusedOutputFolder, IsOneAboveTheProgramsOwn) {
    TestBoard board;
    board.folder.Write("up/program/Docs/Redirect.html", "kept");
    board.state.ProgramFolder = board.folder.Path("up/program");
    board.state.txtmybbOutputFolder.SetText(board.folder.Path("up"));
    SetupFolderLocations(board.state);
    ExpectRefused(board, board.folder.Path("up") + u"\\");
    EXPECT_EQ(board.folder.Read("up/program/Docs/Redirect.html"), "kept");
}

TEST(RefusedOutputFolder, IsNotOneBelowTheSource) {
    TestBoard board;
    board.WriteBoardFile("kept");
    board.folder.Write("source/import/old.txt", "old");
    board.state.txtmybbOutputFolder.SetText(board.folder.Path("source/import"));
    SetupFolderLocations(board.state);
    EXPECT_TRUE(board.messages.empty());
    EXPECT_FALSE(board.folder.Exists("source/import/old.txt"));
    EXPECT_EQ(board.folder.Read("source/discus/messages/board-topics.html"), "kept");
}

TEST(RefusedOutputFolder, IsNotOneWhoseNameJustBeginsLikeTheSources) {
    TestBoard board;
    board.folder.Write("source2/old.txt", "old");
    board.state.txtmybbOutputFolder.SetText(board.folder.Path("source2"));
    SetupFolderLocations(board.state);
    EXPECT_TRUE(board.messages.empty());
    EXPECT_FALSE(board.folder.Exists("source2/old.txt"));
}

}  // namespace
}  // namespace tessaly
