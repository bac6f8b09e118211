#include "output/OutputFiles.h"

#include <gtest/gtest.h>

#include "platform/TextFile.h"
#include "platform/TextStream.h"
#include "platform/paths.h"
#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

using testing::TestBoard;

constexpr const char* kScript = "Discus Conversion Import SQL.sql";

// A board whose output folder is there and empty, in UTF-8, with the import files' names as a run makes them.
struct OpenBoard : TestBoard {
    OpenBoard() {
        folder.MakeFolder("output");
        state.Charset = u"utf-8";
        state.SplitMBSize = 0;
        state.LogFileName = state.mybbOutputFolder + u"Log.txt";
        state.LogErrorFileName = state.mybbOutputFolder + u"LogError.txt";
        Begin(state.ThreadsFile, u"mybb_threads");
        Begin(state.UnknownFile, u"mybb_unknown");
        Begin(state.PostsFile, u"mybb_posts");
        Begin(state.UsersImportFile, u"mybb_users");
        Begin(state.ForumsFile, u"mybb_forums");
        Begin(state.AttachmentsFile, u"mybb_attachments");
        Begin(state.UserGroupsFile, u"mybb_usergroups");
        Begin(state.InternalLinksFile, u"InternalLinks");
        Begin(state.InternalLinksUpdateFile, u"InternalLinksUpdate");
        Begin(state.AnnouncementsFile, u"mybb_announcements");
    }

    void Begin(OutputFile& file, const std::u16string& base) const {
        BeginOutputFile(file, state.mybbOutputFolder + base + u"XXX.txt");
    }

    void WriteThread(std::u16string_view line) {
        WriteFileLine(state, line, state.ThreadsFile, u"mybb_threads", false);
    }

    // One statement as it must stand in the script.
    std::string Statement(const std::string& file, const std::string& table) const {
        return "LOAD DATA LOCAL INFILE '" + testing::SqlName(folder.Native("output/" + file)) +
               "' INTO TABLE " + table +
               "\r\nFIELDS TERMINATED BY ','\r\nENCLOSED BY '\"'LINES TERMINATED BY '\\r\\n';\r\n\r\n\r\n";
    }
};

TEST(BeginOutputFile, PutsTheNumberWhereTheCapitalsStand) {
    OutputFile file;
    file.Number = 9;
    BeginOutputFile(file, u"C:\\out\\mybb_postsXXX.txt");
    EXPECT_EQ(file.Template, u"C:\\out\\mybb_postsXXX.txt");
    EXPECT_EQ(file.Name, u"C:\\out\\mybb_posts1.txt");
    EXPECT_EQ(file.Number, 1);
}

TEST(BeginOutputFile, LeavesSmallLettersAloneAndReplacesAllCapitals) {
    OutputFile file;
    BeginOutputFile(file, u"C:\\xxx\\XXX\\Xxx\\mybb_postsXXX.txt");
    EXPECT_EQ(file.Name, u"C:\\xxx\\1\\Xxx\\mybb_posts1.txt");
}

TEST(BeginOutputFile, KeepsTheSizeOfTheRunBefore) {
    OutputFile file;
    file.Size = 77;
    BeginOutputFile(file, u"C:\\out\\mybb_postsXXX.txt");
    EXPECT_EQ(file.Size, 77);
}

TEST(WriteFileLine, OpensTheStreamWithTheFirstRowAndCountsTwoForALineEnd) {
    OpenBoard board;
    EXPECT_EQ(board.state.ThreadsFile.Stream, nullptr);
    board.WriteThread(u"1,\"one\"");
    EXPECT_NE(board.state.ThreadsFile.Stream, nullptr);
    EXPECT_EQ(board.state.ThreadsFile.Size, 9);
    board.WriteThread(u"2");
    EXPECT_EQ(board.state.ThreadsFile.Size, 12);
    EXPECT_FALSE(board.HasOutput("mybb_threads1.txt"));
    mybbCloseOutputFiles(board.state);
    EXPECT_EQ(board.Output("mybb_threads1.txt"), "1,\"one\"\r\n2\r\n");
}

TEST(WriteFileLine, WritesRowsInTheOrderInWhichTheyCome) {
    OpenBoard board;
    for (const auto* const row : {u"3", u"1", u"2"}) board.WriteThread(row);
    mybbCloseOutputFiles(board.state);
    EXPECT_EQ(board.Rows("mybb_threads1.txt"), (std::vector<std::string>{"3", "1", "2"}));
}

TEST(WriteFileLine, KeepsALineThatFillsTheLimitExactly) {
    OpenBoard board;
    board.state.SplitMBSize = 20;
    board.WriteThread(u"12345678");    // size 10
    board.WriteThread(u"1234567890");  // 10 + 10 is the limit and stays; size 22
    EXPECT_EQ(board.state.ThreadsFile.Number, 1);
    EXPECT_EQ(board.state.ThreadsFile.Size, 22);
    mybbCloseOutputFiles(board.state);
    EXPECT_EQ(board.Output("mybb_threads1.txt"), "12345678\r\n1234567890\r\n");
    EXPECT_FALSE(board.HasOutput("mybb_threads2.txt"));
}

TEST(WriteFileLine, TakesALineOneBeyondTheLimitToTheNextFile) {
    OpenBoard board;
    board.state.SplitMBSize = 20;
    board.WriteThread(u"12345678");
    board.WriteThread(u"12345678901");  // 10 + 11 is beyond
    EXPECT_EQ(board.state.ThreadsFile.Number, 2);
    EXPECT_EQ(board.state.ThreadsFile.Size, 13);
    EXPECT_EQ(board.state.ThreadsFile.Name, board.state.mybbOutputFolder + u"mybb_threads2.txt");
    EXPECT_EQ(board.Output("mybb_threads1.txt"), "12345678\r\n");
    mybbCloseOutputFiles(board.state);
    EXPECT_EQ(board.Output("mybb_threads2.txt"), "12345678901\r\n");
}

TEST(WriteFileLine, CountsCharactersAndNotBytes) {
    OpenBoard board;
    board.state.SplitMBSize = 6;
    board.WriteThread(u"\u00E4\u00E4");  // 2 characters and a line end, 6 bytes
    board.WriteThread(u"\u00E4\u00E4");  // 4 + 2 is the limit
    EXPECT_EQ(board.state.ThreadsFile.Number, 1);
    board.WriteThread(u"x");
    EXPECT_EQ(board.state.ThreadsFile.Number, 2);
    EXPECT_EQ(board.Output("mybb_threads1.txt"), "\xC3\xA4\xC3\xA4\r\n\xC3\xA4\xC3\xA4\r\n");
}

TEST(WriteFileLine, SavesAnEmptyFirstFileBeforeALineLongerThanTheLimit) {
    OpenBoard board;
    board.state.SplitMBSize = 5;
    board.WriteThread(u"1234567");
    EXPECT_EQ(board.Output("mybb_threads1.txt"), "");
    EXPECT_EQ(board.Output(kScript), board.Statement("mybb_threads1.txt", "mybb_threads"));
    EXPECT_EQ(board.state.ThreadsFile.Number, 2);
    board.WriteThread(u"x");  // 1 + 9 is past the limit again
    EXPECT_EQ(board.state.ThreadsFile.Number, 3);
    EXPECT_EQ(board.Output("mybb_threads2.txt"), "1234567\r\n");
    mybbCloseOutputFiles(board.state);
    EXPECT_EQ(board.Output("mybb_threads3.txt"), "x\r\n");
}

TEST(WriteFileLine, NeverSplitsWithALimitBelow1) {
    for (const std::int32_t limit : {0, -5}) {
        OpenBoard board;
        board.state.SplitMBSize = limit;
        for (int row = 0; row < 100; ++row) board.WriteThread(u"a row of some length");
        mybbCloseOutputFiles(board.state);
        EXPECT_EQ(board.Rows("mybb_threads1.txt").size(), 100u) << limit;
        EXPECT_FALSE(board.HasOutput("mybb_threads2.txt")) << limit;
    }
}

TEST(WriteFileLine, SplitsBeforeEachLineWithALimitOf1) {
    OpenBoard board;
    board.state.SplitMBSize = 1;
    board.WriteThread(u"a");  // 0 + 1 is the limit
    board.WriteThread(u"b");
    mybbCloseOutputFiles(board.state);
    EXPECT_EQ(board.Output("mybb_threads1.txt"), "a\r\n");
    EXPECT_EQ(board.Output("mybb_threads2.txt"), "b\r\n");
}

TEST(WriteFileLine, KeepsTheInternalLinksInOneFileWhateverTheirSize) {
    OpenBoard board;
    board.state.SplitMBSize = 5;
    for (const auto* const line : {u"a long first line", u"b", u"another"})
        WriteFileLine(board.state, line, board.state.InternalLinksFile, u"", true);
    mybbCloseOutputFiles(board.state);
    EXPECT_EQ(board.Output("InternalLinks1.txt"), "a long first line\r\nb\r\nanother\r\n");
    EXPECT_FALSE(board.HasOutput("InternalLinks2.txt"));
    EXPECT_FALSE(board.HasOutput(kScript));
}

TEST(WriteFileLine, SplitsTheUpdatedLinksWithoutAStatement) {
    OpenBoard board;
    board.state.SplitMBSize = 5;
    for (const auto* const line : {u"abc", u"def"})
        WriteFileLine(board.state, line, board.state.InternalLinksUpdateFile, u"", false);
    mybbCloseOutputFiles(board.state);
    EXPECT_EQ(board.Output("InternalLinksUpdate1.txt"), "abc\r\n");
    EXPECT_EQ(board.Output("InternalLinksUpdate2.txt"), "def\r\n");
    EXPECT_FALSE(board.HasOutput(kScript));
}

TEST(WriteFileLine, PutsTheStatementOfAFullFileAmongTheOthersAtThatMoment) {
    OpenBoard board;
    board.state.SplitMBSize = 5;
    board.WriteThread(u"abc");
    board.WriteThread(u"def");
    WriteFileLine(board.state, u"post", board.state.PostsFile, u"mybb_posts", false);
    FinishOutputFile(board.state, board.state.PostsFile, u"mybb_posts");
    mybbCloseOutputFiles(board.state);
    EXPECT_EQ(board.Output(kScript), board.Statement("mybb_threads1.txt", "mybb_threads") +
                                         board.Statement("mybb_posts1.txt", "mybb_posts") +
                                         board.Statement("mybb_threads2.txt", "mybb_threads"));
}

TEST(WriteFileLine, ReplacesAnyXxxOfThePathFromTheSecondFileOn) {
    OpenBoard board;
    board.folder.MakeFolder("output/Xxx");
    board.folder.MakeFolder("output/2");
    BeginOutputFile(board.state.ThreadsFile, board.state.mybbOutputFolder + u"Xxx\\mybb_threadsXXX.txt");
    board.state.SplitMBSize = 3;
    board.WriteThread(u"abc");
    EXPECT_EQ(board.state.ThreadsFile.Name, board.state.mybbOutputFolder + u"Xxx\\mybb_threads1.txt");
    board.WriteThread(u"def");
    EXPECT_EQ(board.state.ThreadsFile.Name, board.state.mybbOutputFolder + u"2\\mybb_threads2.txt");
    mybbCloseOutputFiles(board.state);
    EXPECT_EQ(board.Output("Xxx/mybb_threads1.txt"), "abc\r\n");
    EXPECT_EQ(board.Output("2/mybb_threads2.txt"), "def\r\n");
}

TEST(WriteFileLine, ReplacesAFileThatStandsUnderTheName) {
    OpenBoard board;
    board.folder.Write("output/mybb_threads1.txt", "something much longer than the new text");
    board.WriteThread(u"new");
    mybbCloseOutputFiles(board.state);
    EXPECT_EQ(board.Output("mybb_threads1.txt"), "new\r\n");
}

TEST(WriteFileLine, GivesAMessageForEachRowInAnUnknownCharsetAndSavesNothing) {
    OpenBoard board;
    board.state.Charset = u"no-such-charset";
    board.WriteThread(u"one");
    board.WriteThread(u"two");
    const std::u16string text = u"5 - WriteFileLine()\r\n\r\nInvalid procedure call or argument";
    EXPECT_EQ(board.messages, (std::vector<std::u16string>{text, text}));
    EXPECT_EQ(board.state.ToolboxA.RecordedErrors, (std::vector<std::u16string>{text, text}));
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_EQ(board.state.ThreadsFile.Stream, nullptr);
    EXPECT_EQ(board.state.ThreadsFile.Size, 0);
    mybbCloseOutputFiles(board.state);
    EXPECT_TRUE(board.folder.Files("output").empty());
}

TEST(WriteFileLine, LosesTheRowInHandWhenTheFullFileCannotBeSaved) {
    OpenBoard board;
    board.folder.MakeFolder("output/mybb_threads1.txt");
    board.state.SplitMBSize = 3;
    board.WriteThread(u"abc");
    board.WriteThread(u"def");
    EXPECT_EQ(board.messages,
              (std::vector<std::u16string>{u"3004 - WriteFileLine()\r\n\r\nWrite to file failed."}));
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_EQ(board.state.ThreadsFile.Number, 1);
    std::filesystem::remove(board.folder.Native("output/mybb_threads1.txt"));
    mybbCloseOutputFiles(board.state);
    EXPECT_EQ(board.Output("mybb_threads1.txt"), "abc\r\n");
}

TEST(WriteFileLine, WritesEachRowInTheCharsetOfTheRun) {
    OpenBoard board;
    board.state.Charset = u"iso-8859-2";
    board.WriteThread(u"\u0105\u4E2D");  // the second is not in the charset
    mybbCloseOutputFiles(board.state);
    EXPECT_EQ(board.Output("mybb_threads1.txt"), "\xB1?\r\n");
}

TEST(CreateImportSQL, WritesThreeLinesAndTwoBlankOnes) {
    OpenBoard board;
    CreateImportSQL(board.state, u"mybb_posts1.txt", u"mybb_posts");
    EXPECT_EQ(board.Output(kScript),
              "LOAD DATA LOCAL INFILE 'mybb_posts1.txt' INTO TABLE mybb_posts\r\n"
              "FIELDS TERMINATED BY ','\r\n"
              "ENCLOSED BY '\"'LINES TERMINATED BY '\\r\\n';\r\n"
              "\r\n"
              "\r\n");
}

TEST(CreateImportSQL, NamesTheFileAsTheMachineDoesAndDoublesBackslashesThatAreLeft) {
    OpenBoard board;
    CreateImportSQL(board.state, u"C:\\out\\mybb_posts1.txt", u"a\\table");
    const bool keepsBackslashes = std::filesystem::path::preferred_separator == '\\';
    const std::string name = keepsBackslashes ? "C:\\\\out\\\\mybb_posts1.txt" : "C:/out/mybb_posts1.txt";
    EXPECT_EQ(board.Output(kScript).substr(0, 80),
              ("LOAD DATA LOCAL INFILE '" + name + "' INTO TABLE a\\table\r\nFIELDS TERMINATED BY ','")
                  .substr(0, 80));
}

// Whoever names the folder ends the file's name in the statement with it.
TEST(CreateImportSQL, LeavesAnApostropheOfTheFolderAsItStands) {
    OpenBoard board;
    CreateImportSQL(board.state, u"anna's out", u"t");
    EXPECT_TRUE(board.Output(kScript).starts_with("LOAD DATA LOCAL INFILE 'anna's out' INTO TABLE t\r\n"));
}

TEST(CreateImportSQL, AppendsInTheSystemsEncodingWhateverTheCharset) {
    OpenBoard board;
    board.state.Charset = u"iso-8859-1";
    board.folder.Write(std::string("output/") + kScript, "old\r\n");
    CreateImportSQL(board.state, u"\u00E4", u"t");
    if (platform::SystemDefaultCharset() != u"utf-8") GTEST_SKIP() << "the system's text is not UTF-8";
    EXPECT_TRUE(
        board.Output(kScript).starts_with("old\r\nLOAD DATA LOCAL INFILE '\xC3\xA4' INTO TABLE t\r\n"));
}

TEST(CreateImportSQL, TellsWhenTheOutputFolderIsGone) {
    OpenBoard board;
    board.state.mybbOutputFolder = board.folder.Path("nowhere") + u"\\";
    CreateImportSQL(board.state, u"x", u"t");
    EXPECT_EQ(board.messages, (std::vector<std::u16string>{u"76 - CreateImportSQL()\r\n\r\nPath not found"}));
    EXPECT_TRUE(board.state.CancelRequested);
}

TEST(WriteFileData, WritesTheTextAloneOverAnOldFile) {
    OpenBoard board;
    board.state.Charset = u"iso-8859-1";
    board.folder.Write("output/page.html", "a longer old page");
    WriteFileData(board.state, board.state.mybbOutputFolder + u"page.html", u"n\u00E9w");
    EXPECT_EQ(board.Output("page.html"), "n\xE9w");
}

TEST(WriteFileData, WritesAnEmptyFileForAnEmptyText) {
    OpenBoard board;
    WriteFileData(board.state, board.state.mybbOutputFolder + u"page.html", u"");
    EXPECT_EQ(board.Output("page.html"), "");
}

TEST(WriteFileData, BringsAStatefulCharsetBackToItsStartAtTheEnd) {
    OpenBoard board;
    board.state.Charset = u"iso-2022-jp";
    WriteFileData(board.state, board.state.mybbOutputFolder + u"jp.html", u"a\u65E5");
    EXPECT_EQ(board.Output("jp.html"), "a\x1B$BF|\x1B(B");
    board.state.Charset = u"utf-7";
    WriteFileData(board.state, board.state.mybbOutputFolder + u"7.html", u"a\u00E9");
    EXPECT_EQ(board.Output("7.html"), "a+AOk-");
}

TEST(WriteFileData, TellsOfAFolderThatIsNotThereAndOfAnUnknownCharset) {
    OpenBoard board;
    WriteFileData(board.state, board.state.mybbOutputFolder + u"no\\page.html", u"x");
    board.state.Charset = u"what";
    WriteFileData(board.state, board.state.mybbOutputFolder + u"page.html", u"x");
    EXPECT_EQ(board.messages, (std::vector<std::u16string>{
                                  u"3004 - WriteFileData()\r\n\r\nWrite to file failed.",
                                  u"5 - WriteFileData()\r\n\r\nInvalid procedure call or argument"}));
    EXPECT_FALSE(board.HasOutput("page.html"));
}

TEST(FinishOutputFile, WritesNothingForAFamilyWithoutARow) {
    OpenBoard board;
    FinishOutputFile(board.state, board.state.UserGroupsFile, u"mybb_usergroups");
    EXPECT_TRUE(board.folder.Files("output").empty());
}

TEST(FinishOutputFile, LeavesTheSizeForTheNextRun) {
    OpenBoard board;
    board.WriteThread(u"abc");
    FinishOutputFile(board.state, board.state.ThreadsFile, u"mybb_threads");
    EXPECT_EQ(board.state.ThreadsFile.Size, 5);
    EXPECT_EQ(board.state.ThreadsFile.Stream, nullptr);
}

TEST(FinishOutputFile, LetsALaterRowReplaceTheFinishedFile) {
    OpenBoard board;
    board.WriteThread(u"abc");
    FinishOutputFile(board.state, board.state.ThreadsFile, u"mybb_threads");
    board.WriteThread(u"later");
    mybbCloseOutputFiles(board.state);
    EXPECT_EQ(board.Output("mybb_threads1.txt"), "later\r\n");
}

TEST(mybbCloseOutputFiles, FinishesNineFamiliesInTheirOrderAndLeavesTheForumsOpen) {
    OpenBoard board;
    ConversionState& state = board.state;
    WriteFileLine(state, u"a", state.AnnouncementsFile, u"mybb_announcements", false);
    WriteFileLine(state, u"f", state.ForumsFile, u"mybb_forums", false);
    WriteFileLine(state, u"l", state.InternalLinksFile, u"", true);
    WriteFileLine(state, u"lu", state.InternalLinksUpdateFile, u"", false);
    WriteFileLine(state, u"g", state.UserGroupsFile, u"mybb_usergroups", false);
    WriteFileLine(state, u"at", state.AttachmentsFile, u"mybb_attachments", false);
    WriteFileLine(state, u"u", state.UsersImportFile, u"mybb_users", false);
    WriteFileLine(state, u"p", state.PostsFile, u"mybb_posts", false);
    WriteFileLine(state, u"un", state.UnknownFile, u"mybb_unknown", false);
    WriteFileLine(state, u"t", state.ThreadsFile, u"mybb_threads", false);
    mybbCloseOutputFiles(state);
    EXPECT_EQ(board.Output(kScript), board.Statement("mybb_threads1.txt", "mybb_threads") +
                                         board.Statement("mybb_unknown1.txt", "mybb_unknown") +
                                         board.Statement("mybb_posts1.txt", "mybb_posts") +
                                         board.Statement("mybb_users1.txt", "mybb_users") +
                                         board.Statement("mybb_attachments1.txt", "mybb_attachments") +
                                         board.Statement("mybb_usergroups1.txt", "mybb_usergroups") +
                                         board.Statement("mybb_announcements1.txt", "mybb_announcements"));
    EXPECT_EQ(board.folder.Files("output"),
              (std::vector<std::string>{kScript, "InternalLinks1.txt", "InternalLinksUpdate1.txt",
                                        "mybb_announcements1.txt", "mybb_attachments1.txt", "mybb_posts1.txt",
                                        "mybb_threads1.txt", "mybb_unknown1.txt", "mybb_usergroups1.txt",
                                        "mybb_users1.txt"}));
    EXPECT_NE(state.ForumsFile.Stream, nullptr);
    EXPECT_EQ(state.ThreadsFile.Stream, nullptr);
    EXPECT_EQ(state.AttachmentsFile.Stream, nullptr);
    EXPECT_EQ(state.InternalLinksFile.Stream, nullptr);
}

TEST(mybbCloseOutputFiles, WritesNoFileAndNoStatementWhenNoRowCame) {
    OpenBoard board;
    mybbCloseOutputFiles(board.state);
    EXPECT_TRUE(board.folder.Files("output").empty());
    EXPECT_TRUE(board.messages.empty());
}

TEST(mybbCloseOutputFiles, ShowsNothingWhenOneFamilyCannotBeSavedAndGoesOn) {
    OpenBoard board;
    board.WriteThread(u"t");
    WriteFileLine(board.state, u"p", board.state.PostsFile, u"mybb_posts", false);
    board.folder.MakeFolder("output/mybb_threads1.txt");
    mybbCloseOutputFiles(board.state);
    EXPECT_TRUE(board.messages.empty());
    EXPECT_FALSE(board.state.CancelRequested);
    EXPECT_EQ(board.Output("mybb_posts1.txt"), "p\r\n");
    EXPECT_EQ(board.state.ThreadsFile.Stream, nullptr);
    EXPECT_EQ(board.Output(kScript), board.Statement("mybb_threads1.txt", "mybb_threads") +
                                         board.Statement("mybb_posts1.txt", "mybb_posts"));
}

TEST(mybbCloseOutputFiles, ClosesTheLogsAndWritesToThemNoMore) {
    OpenBoard board;
    mybbOpenOutputFiles(board.state);
    EXPECT_NE(board.state.LogFile.Stream, nullptr);
    EXPECT_TRUE(board.state.LogErrorFile.Stream);
    mybbCloseOutputFiles(board.state);
    EXPECT_EQ(board.state.LogFile.Stream, nullptr);
    EXPECT_FALSE(board.state.LogErrorFile.Stream);
}

TEST(mybbOpenOutputFiles, DoesNothingAfterACancel) {
    OpenBoard board;
    board.folder.Write("output/mybb_posts1.txt", "old");
    board.state.CancelRequested = true;
    mybbOpenOutputFiles(board.state);
    EXPECT_EQ(board.folder.Files("output"), (std::vector<std::string>{"mybb_posts1.txt"}));
    EXPECT_EQ(board.state.txtArea.Text, u"");
    EXPECT_EQ(board.state.LogFile.Stream, nullptr);
}

TEST(mybbOpenOutputFiles, DeletesItsThirteenTargetsAndNothingElse) {
    OpenBoard board;
    const std::vector<std::string> targets = {kScript,
                                              "Log.txt",
                                              "LogError.txt",
                                              "mybb_threads1.txt",
                                              "mybb_threads.txt",
                                              "mybb_unknown1.txt",
                                              "mybb_users12.txt",
                                              "mybb_posts1.txt",
                                              "mybb_posts2.txt",
                                              "mybb_forums1.txt",
                                              "mybb_attachments1.txt",
                                              "mybb_announcements1.txt",
                                              "mybb_usergroups1.txt",
                                              "InternalLinks1.txt",
                                              "InternalLinksUpdate1.txt"};
    const std::vector<std::string> others = {"Discus Special Characters.txt", "mybb_posts1.txt.bak",
                                             "my_posts1.txt", "redirect/mybb_posts1.txt", "notes.txt"};
    for (const std::string& name : targets) board.folder.Write("output/" + name, "old");
    for (const std::string& name : others) board.folder.Write("output/" + name, "old");
    board.state.optCreateAttachments = false;
    mybbOpenOutputFiles(board.state);
    EXPECT_EQ(
        board.folder.Files("output"),
        (std::vector<std::string>{"Discus Special Characters.txt", "Log.txt", "LogError.txt", "my_posts1.txt",
                                  "mybb_posts1.txt.bak", "notes.txt", "redirect/mybb_posts1.txt"}));
    EXPECT_TRUE(board.messages.empty());
}

TEST(mybbOpenOutputFiles, DeletesTheSequenceLogBesideTheProgramAndKeepsTheOneOfTheOutput) {
    OpenBoard board;
    board.folder.Write("program/Docs/Discus Special Characters.txt", "old");
    board.folder.Write("output/Discus Special Characters.txt", "kept");
    mybbOpenOutputFiles(board.state);
    EXPECT_FALSE(board.folder.Exists("program/Docs/Discus Special Characters.txt"));
    EXPECT_EQ(board.Output("Discus Special Characters.txt"), "kept");
    EXPECT_TRUE(board.folder.Exists("program/Docs/Redirect.html"));
}

TEST(mybbOpenOutputFiles, TellsThatItCleansUp) {
    OpenBoard board;
    board.state.optDisplay = false;
    mybbOpenOutputFiles(board.state);
    EXPECT_EQ(board.state.txtArea.Text, u"Cleaning up Output Folders - Please Wait...\r\n");
}

TEST(mybbOpenOutputFiles, OpensTheErrorLogWithTwoLineEndsInUtf16) {
    OpenBoard board;
    mybbOpenOutputFiles(board.state);
    EXPECT_EQ(board.Output("LogError.txt"), std::string("\xFF\xFE\r\0\n\0\r\0\n\0", 10));
    mybbCloseOutputFiles(board.state);
    EXPECT_EQ(board.Output("Log.txt"), "\xFF\xFE");
}

TEST(mybbOpenOutputFiles, EmptiesTheAttachmentsFolderWithTheOptionOn) {
    OpenBoard board;
    board.folder.Write("output/attachments/1_ABC", "old");
    board.state.optCreateAttachments = true;
    mybbOpenOutputFiles(board.state);
    EXPECT_TRUE(board.folder.Exists("output/attachments"));
    EXPECT_FALSE(board.folder.Exists("output/attachments/1_ABC"));
}

TEST(mybbOpenOutputFiles, LeavesTheAttachmentsFolderAloneWithTheOptionOff) {
    OpenBoard board;
    board.folder.Write("output/attachments/1_ABC", "old");
    board.state.optCreateAttachments = false;
    mybbOpenOutputFiles(board.state);
    EXPECT_EQ(board.Output("attachments/1_ABC"), "old");
}

TEST(mybbOpenOutputFiles, TellsWhenTheLogCannotBeOpened) {
    OpenBoard board;
    board.state.LogFileName = board.folder.Path("nowhere") + u"\\Log.txt";
    mybbOpenOutputFiles(board.state);
    EXPECT_EQ(board.messages,
              (std::vector<std::u16string>{u"76 - mybbOpenOutputFiles()\r\n\r\nPath not found"}));
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_EQ(board.state.LogFile.Stream, nullptr);
    EXPECT_FALSE(board.state.LogErrorFile.Stream);
}

TEST(mybbOpenOutputFiles, DropsTheLogThatAnEarlierRunLeftOpen) {
    OpenBoard board;
    mybbOpenOutputFiles(board.state);
    const auto old = board.state.LogFile.Stream;
    mybbOpenOutputFiles(board.state);
    EXPECT_NE(board.state.LogFile.Stream, old);
}

}  // namespace
}  // namespace tessaly
