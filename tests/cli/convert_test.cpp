#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "tests/support/CommandLineBoard.h"
#include "tests/support/Program.h"

namespace tessaly {
namespace {

using nlohmann::json;
using testing::CommandLineBoard;
using testing::ProgramRun;
using testing::RunProgram;
using testing::SettingIn;

bool Holds(const std::string& text, const std::string& what) {
    return text.find(what) != std::string::npos;
}

// The report of one run.
json ReportOf(const CommandLineBoard& board, const std::vector<std::string>& more = {}) {
    std::vector<std::string> options = {"--report", board.Native("report.json")};
    options.insert(options.end(), more.begin(), more.end());
    board.Convert(options);
    return json::parse(board.folder.Read("report.json"));
}

struct Board : CommandLineBoard {
    Board() : CommandLineBoard(TESSALY_CLI) {}
};

// The folders of the output, by name.
std::vector<std::string> FoldersOf(const CommandLineBoard& board) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(board.folder.Native("output")))
        if (entry.is_directory()) names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
}

TEST(ExitStatus, Is0WhenNothingButTheSummaryWasShown) {
    const Board board;
    const ProgramRun run = board.Convert();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(run.output.starts_with("Conversion Start: 2")) << run.output;
    EXPECT_TRUE(Holds(run.output, "\nElapsed Time: 0:0"));
    EXPECT_FALSE(Holds(run.output, "\r"));
    EXPECT_TRUE(board.folder.Exists("output/mybb_posts1.txt"));
}

TEST(ExitStatus, Is1WhenACheckStoppedTheRun) {
    const Board board;
    const ProgramRun run = board.Convert({"--messages", board.Native("nowhere")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Holds(run.errors, "nowhere\\ - Discus Message Folder Must Exist\n"));
    EXPECT_TRUE(Holds(run.output, "\n\nConversion Cancelled\n\nConversion Start: \n"));
}

TEST(ExitStatus, Is1WhenTheRunEndedAtABlankField) {
    const Board board;
    const ProgramRun run = board.Convert({"--website", ""});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "Discus website must be filled in\n");
    EXPECT_EQ(run.output, "");
}

TEST(ExitStatus, Is1WhenAFieldComplainedThoughTheRunWentWell) {
    const Board board;
    const ProgramRun run = board.Convert({"--groups", "none"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "Total Default Group of your mybb database must be filled in\n");
    EXPECT_TRUE(board.folder.Exists("output/mybb_posts1.txt"));
}

TEST(ExitStatus, Is2ForWrongUsage) {
    const Board board;
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{TESSALY_CLI},
                                                      {TESSALY_CLI, "transmogrify"},
                                                      {TESSALY_CLI, "convert", "--colour", "red"},
                                                      {TESSALY_CLI, "convert", "--root"},
                                                      {TESSALY_CLI, "convert", "stray"}}) {
        const ProgramRun run = RunProgram(arguments);
        EXPECT_EQ(run.status, 2);
        EXPECT_NE(run.errors, "");
    }
    EXPECT_FALSE(board.folder.Exists("output"));
}

TEST(ExitStatus, Is3ForAFailureThatNothingTrapped) {
    const Board board;
    const ProgramRun run = board.Convert({"--split-mb", "4096"});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.errors, "Run-time error 6 - Overflow\n");
    EXPECT_EQ(run.output, "");
    EXPECT_FALSE(board.folder.Exists("output"));
}

TEST(ExitStatus, Is3WhenTheKeptSplitSizeIsNoNumber) {
    const Board board;
    EXPECT_EQ(board.Convert({"--split-mb", "many"}).status, 0) << "a run takes it for 0";
    EXPECT_EQ(board.Setting("SplitMBSize"), "many");
    const ProgramRun run = board.Convert({"--split-mb", "50"});
    EXPECT_EQ(run.status, 3) << "but the next start does not";
    EXPECT_EQ(run.errors, "Run-time error 13 - Type mismatch\n");
}

TEST(ExitStatus, Is3EvenWhenTheReportCannotBeWrittenEither) {
    const Board board;
    const ProgramRun run =
        board.Convert({"--split-mb", "4096", "--report", board.Native("nowhere/report.json")});
    EXPECT_EQ(run.status, 3);
}

TEST(ExitStatus, Is1WhenTheReportCannotBeWritten) {
    const Board board;
    const ProgramRun run = board.Convert({"--report", board.Native("nowhere/report.json")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Holds(run.errors, "report"));
}

TEST(Help, TellsAStrangerWhatToType) {
    const ProgramRun run = RunProgram({TESSALY_CLI, "convert", "--help"});
    EXPECT_EQ(run.status, 0);
    for (const auto* const option : {"--root",
                                     "--messages",
                                     "--secure",
                                     "--main",
                                     "--output",
                                     "--website",
                                     "--forum",
                                     "--admin",
                                     "--users",
                                     "--groups",
                                     "--split-mb",
                                     "--charset",
                                     "--no-attachments",
                                     "--no-hidden",
                                     "--no-redirects",
                                     "--no-special-characters",
                                     "--no-show-progress",
                                     "--no-log",
                                     "--ini",
                                     "--program-folder",
                                     "--report",
                                     "--quiet"})
        EXPECT_TRUE(Holds(run.output, option)) << option;
    EXPECT_EQ(RunProgram({TESSALY_CLI, "--help"}).status, 0);
}

TEST(Version, IsTold) {
    const ProgramRun run = RunProgram({TESSALY_CLI, "--version"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "tessaly-cli 1.0.0\n");
}

TEST(Report, TellsTheOutcomeOfAGoodRun) {
    const Board board;
    const json report = ReportOf(board);
    std::vector<std::string> keys;
    for (const auto& [key, value] : report.items()) keys.push_back(key);
    EXPECT_EQ(keys, (std::vector<std::string>{"area", "cancelled", "counters", "messageCount", "messages",
                                              "processedFolders", "untrapped"}));
    EXPECT_EQ(report["cancelled"], false);
    ASSERT_EQ(report["messages"].size(), 1u);
    const std::string summary = report["messages"][0];
    EXPECT_TRUE(summary.starts_with("Conversion Start: 2"));
    EXPECT_TRUE(Holds(summary, "\r\n\r\nElapsed Time: ")) << "as the box showed it";
    EXPECT_EQ(report["processedFolders"], json::array({"12"}));
    EXPECT_EQ(report["messageCount"], "0");
    EXPECT_TRUE(report["area"].get<std::string>().ends_with(summary));
    EXPECT_EQ(report["counters"],
              (json{{"forums", 2}, {"threads", 1}, {"posts", 1}, {"attachments", 0}, {"announcements", 0}}));
    EXPECT_EQ(report["untrapped"], nullptr);
}

TEST(Report, TellsOfARunThatEndedAtACheck) {
    const Board board;
    const json report = ReportOf(board, {"--forum", ""});
    EXPECT_EQ(report,
              (json{{"cancelled", false},
                    {"messages", {"mybb Forum Address must be filled in"}},
                    {"processedFolders", json::array()},
                    {"messageCount", ""},
                    {"area", ""},
                    {"counters",
                     {{"forums", 0}, {"threads", 0}, {"posts", 0}, {"attachments", 0}, {"announcements", 0}}},
                    {"untrapped", nullptr}}));
}

TEST(Report, TellsOfACancelledRunThoughTheFlagIsDownAtItsEnd) {
    const Board board;
    const json report = ReportOf(board, {"--secure", board.Native("nowhere")});
    EXPECT_EQ(report["cancelled"], true);
    ASSERT_EQ(report["messages"].size(), 2u);
    EXPECT_TRUE(report["messages"][0].get<std::string>().ends_with(
        "nowhere\\ - Discus Secure Message Folder Must Exist\r\n"));
    EXPECT_TRUE(report["messages"][1].get<std::string>().starts_with("\r\n\r\nConversion Cancelled\r\n\r\n"));
}

TEST(Report, TellsOfAFailureThatNothingTrapped) {
    const Board board;
    const json report = ReportOf(board, {"--split-mb", "4096"});
    EXPECT_TRUE(Holds(report["untrapped"], "Overflow"));
    EXPECT_EQ(report["messages"], json::array());
    EXPECT_EQ(report["cancelled"], false);
}

TEST(Report, KeepsTextsBeyondAsciiAndControlCharacters) {
    const Board board;
    const json report = ReportOf(board, {"--messages", board.Native("no\x1Bwh\xC3\xA4re")});
    EXPECT_TRUE(Holds(report["messages"][0], "no\x1Bwh\xC3\xA4re\\ - Discus Message Folder Must Exist"));
}

TEST(Report, ListsTheMessageBoxesAndNotWhatIsToldBehindThem) {
    const Board board;
    // The capitals of the folder's name are taken for the place of a number, so that no import file finds its
    // folder.
    const json report = ReportOf(board, {"--output", board.Native("XXXout")});
    ASSERT_EQ(report["messages"].size(), 3u);
    EXPECT_TRUE(Holds(report["messages"][0], "3004 - DiscusProcessDiscusMainBoardFile() - "));
    EXPECT_EQ(report["messages"][1], "3004 - mybbWriteUserFile()\r\n\r\nWrite to file failed.");
    EXPECT_TRUE(Holds(report["messages"][2], "Conversion Cancelled"));
}

TEST(Terminal, NamesTheFilesThatCouldNotBeWritten) {
    const Board board;
    const ProgramRun run = board.Convert({"--output", board.Native("XXXout")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Holds(run.errors, "1out\\mybb_forums1.txt\n"));
}

TEST(Report, MayBeNamedRelativeToTheWorkingFolder) {
    const Board board;
    std::vector<std::string> arguments = {TESSALY_CLI, "convert", "--report", "here.json"};
    for (const std::string& option : board.Options()) arguments.push_back(option);
    EXPECT_EQ(RunProgram(arguments, board.Native("")).status, 0);
    EXPECT_TRUE(board.folder.Exists("here.json"));
}

TEST(Root, AloneGivesTheOtherThreeFolders) {
    const Board board;
    board.folder.Write("source/discus_admin_1043846797/users.txt",
                       "anna:pw:anna@host.example:Anna:::1:1.2.3.4:2:\n");
    board.folder.Write("source/discus/messages/board-topics.html",
                       "<!--Category: 1--><!--Text-->Main<!--/Text--><!--/Category-->\n"
                       "<!--Top: 40-->hidden<!--/Top-->\n");
    board.folder.Write("source/discus_admin_1043846797/secure/40/40.html", "<!--Me: 40/Hidden-->");
    EXPECT_EQ(board.Convert().status, 0);
    EXPECT_TRUE(Holds(board.folder.Read("output/mybb_users1.txt"), "anna@host.example"));
    EXPECT_TRUE(Holds(board.folder.Read("output/mybb_forums1.txt"), "2,\"Hidden\""));
}

TEST(Root, IsNotEnoughWithSeveralAdminFolders) {
    const Board board;
    board.folder.MakeFolder("source/discus_admin_2");
    const ProgramRun run = board.Convert();
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(Holds(run.errors, "--main"));
    EXPECT_FALSE(board.folder.Exists("output"));
    EXPECT_EQ(board.Convert({"--main", board.Native("source/discus_admin_1043846797")}).status, 0);
}

TEST(Root, IsNotEnoughWithoutAnAdminFolder) {
    const Board board;
    std::filesystem::rename(board.folder.Native("source/discus_admin_1043846797"),
                            board.folder.Native("source/discus_admin_old"));
    EXPECT_EQ(board.Convert().status, 2);
    board.folder.MakeFolder("source/discus_admin_");
    board.folder.MakeFolder("source/discus_admin_12x");
    EXPECT_EQ(board.Convert().status, 2);
    EXPECT_EQ(board.Convert({"--main", board.Native("source/discus_admin_old")}).status, 0);
}

TEST(Root, PassesOverAdminFoldersWithoutAPlainNumber) {
    const Board board;
    board.folder.MakeFolder("source/discus_admin_");
    board.folder.MakeFolder("source/discus_admin_1043846797_old");
    board.folder.MakeFolder("source/discus_admin_nnnnnnnnnn");
    board.folder.Write("source/discus_admin_7", "a file");
    EXPECT_EQ(board.Convert().status, 0);
}

TEST(Root, ThatIsNotThereIsToldByTheRun) {
    const Board board;
    const ProgramRun run = board.Convert({"--root", board.Native("nowhere")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Holds(run.errors, "nowhere\\ - Discus Root Folder Must Exist\n"));
}

TEST(Folders, ThatAreGivenStandBeforeWhatTheRootGives) {
    const Board board;
    board.folder.Write("elsewhere/board-topics.html",
                       "<!--Category: 1--><!--Text-->Else<!--/Text-->"
                       "<!--/Category-->\n");
    EXPECT_EQ(board.Convert({"--messages", board.Native("elsewhere")}).status, 0);
    EXPECT_TRUE(Holds(board.folder.Read("output/mybb_forums1.txt"), "1,\"Else\""));
}

TEST(Folders, GetTheirBackslashAndAreKept) {
    const Board board;
    EXPECT_EQ(board.Convert().status, 0);
    for (const auto* const key : {"DiscusRootFolder", "DiscusMessageFolder", "DiscusSecureMessageFolder",
                                  "DiscusMainFolder", "mybb_OutputFolder", "mybb_AttachmentsFolder"})
        EXPECT_TRUE(board.Setting(key).value_or("none").ends_with("\\")) << key;
    EXPECT_TRUE(board.Setting("mybb_AttachmentsFolder")->ends_with("\\output\\Attachments\\"));
}

TEST(Folders, AreTakenFromTheSettingsOfTheRunBefore) {
    const Board board;
    EXPECT_EQ(board.Convert().status, 0);
    std::filesystem::remove_all(board.folder.Native("output"));
    EXPECT_EQ(board.ConvertWith({"--program-folder", board.Native("program")}).status, 0);
    EXPECT_TRUE(board.folder.Exists("output/mybb_posts1.txt"));
}

TEST(Folders, MayBeRelativeToTheWorkingFolder) {
    const Board board;
    const ProgramRun run = RunProgram({TESSALY_CLI, "convert", "--program-folder", "program", "--root",
                                       "source", "--output", "./x/../output", "--admin", "Admin", "--website",
                                       "http://old.example", "--forum", "http://new.example"},
                                      board.Native(""));
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(board.folder.Exists("output/mybb_posts1.txt"));
    EXPECT_FALSE(board.folder.Exists("x"));
}

TEST(Folders, ThatAreEmptyEmptyTheirFields) {
    const Board board;
    EXPECT_EQ(board.Convert({"--output", ""}).errors, "mybb Output Folder Must Be Filled In\n");
    EXPECT_EQ(board.Convert({"--root", ""}).errors, "Source of your Discus Root Folder must be filled in\n");
    EXPECT_EQ(board.Convert({"--messages", ""}).errors,
              "Source of your Discus mMssage Folder must be filled in\n");
    EXPECT_EQ(board.Convert({"--secure", ""}).errors,
              "Source of your Discus Secure Message Folder must be filled in\n");
}

TEST(Folders, MayHoldBlanksAndLettersBeyondAscii) {
    const Board board;
    std::filesystem::rename(board.folder.Native("source"), board.folder.Native("\xC3\x84lte Kopie"));
    const std::string output = "\xE6\x96\xB0 forum\xF0\x9F\x93\xBB";
    const ProgramRun run =
        board.Convert({"--root", board.Native("\xC3\x84lte Kopie"), "--output", board.Native(output)});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_TRUE(board.folder.Exists(output + "/mybb_posts1.txt"));
    EXPECT_TRUE(Holds(board.folder.Read(output + "/Discus Conversion Import SQL.sql"), output));
}

TEST(Fields, AreTypedAndKeptForTheNextRun) {
    const Board board;
    EXPECT_EQ(board
                  .Convert({"--website", "http://old.example/discus/", "--forum", "http://new.example/",
                            "--admin", "Boss, Ltd", "--users", "4", "--groups", "9", "--split-mb", "12"})
                  .status,
              0);
    EXPECT_EQ(board.Setting("mybbForumAddr"), "http://new.example");
    EXPECT_EQ(board.Setting("mybb_Admin"), "Boss, Ltd");
    EXPECT_EQ(board.Setting("mybb_Users"), "4");
    EXPECT_EQ(board.Setting("mybb_Groups"), "9");
    EXPECT_EQ(board.Setting("SplitMBSize"), "12");
}

TEST(Fields, ThatWereKeptAreShownButNotAllAreUsed) {
    const Board board;
    board.folder.Write("source/discus_admin_1043846797/users.txt",
                       "anna:pw:anna@host.example:Anna:::1:1.2.3.4:2:Editors\n");
    EXPECT_EQ(board.Convert({"--groups", "9"}).status, 0);
    EXPECT_TRUE(board.folder.Read("output/mybb_usergroups1.txt").starts_with("10,0,\"Editors\""));
    EXPECT_EQ(board.Convert().status, 0);
    EXPECT_TRUE(board.folder.Read("output/mybb_usergroups1.txt").starts_with("8,0,\"Editors\""))
        << "9 is shown, but 7 counts until the field is left";
}

TEST(Fields, TakeTheWebsiteWithoutItsLastSlash) {
    const Board board;
    EXPECT_EQ(board.Convert({"--website", "http://old.example/discus/"}).status, 0);
    // The folder setup writes the same key in other letters; the file knows one key.
    const std::string kept =
        board.Setting("DiscusWebsite").value_or(board.Setting("DiscusWebSite").value_or("none"));
    EXPECT_EQ(kept, "http://old.example/discus");
}

TEST(Switches, UntickTheirBoxesForThisRunAndTheNext) {
    const Board board;
    EXPECT_EQ(board
                  .Convert({"--no-attachments", "--no-hidden", "--no-redirects", "--no-special-characters",
                            "--no-show-progress", "--no-log"})
                  .status,
              0);
    for (const auto* const key : {"Display", "Log", "CreateAttachments", "CreateHiddenTopics",
                                  "CreateRedirectionFiles", "FindDiscusSpecialCharacters"})
        EXPECT_EQ(board.Setting(key), "0") << key;
    // The empty folder of the set-up is spelled with a capital.
    EXPECT_EQ(FoldersOf(board), (std::vector<std::string>{"Attachments", "redirect"}));
    EXPECT_EQ(board.folder.Files("output/redirect"), std::vector<std::string>{});
    EXPECT_EQ(board.Convert().status, 0);
    EXPECT_EQ(FoldersOf(board), (std::vector<std::string>{"Attachments", "redirect"}));
}

TEST(Switches, LeaveOutWhatTheySay) {
    const Board board;
    board.folder.Write("source/discus/messages/12/12.html",
                       "<!--Topic: 12/Radios--><!--Me: 12/Radios-->&auml;&unknown;");
    EXPECT_EQ(board.Convert().status, 0);
    EXPECT_TRUE(board.folder.Exists("output/Discus Special Characters.txt"));
    EXPECT_EQ(board.Convert({"--no-special-characters"}).status, 0);
    EXPECT_FALSE(board.folder.Exists("output/Discus Special Characters.txt"));
}

TEST(Switches, KeepRoutineProgressOutOfTheLogAndOfTheReport) {
    const Board board;
    EXPECT_TRUE(Holds(ReportOf(board)["area"], "Processing Page"));
    EXPECT_FALSE(Holds(ReportOf(board, {"--no-show-progress", "--no-log"})["area"], "Processing Page"));
    const std::u16string log = testing::FromUtf16(board.folder.Read("output/Log.txt"));
    EXPECT_EQ(log.find(u"Processing Page"), std::u16string::npos);
    EXPECT_NE(log.find(u"Processing Discus Member File"), std::u16string::npos);
}

TEST(Charset, ThatIsGivenSwitchesTheDetectionOff) {
    const Board board;
    board.folder.Write("source/discus_admin_1043846797/users.txt",
                       "\xC3\x84nn:pw:a@host.example:\xC3\x84nn:::1:1.2.3.4:2:\n");
    board.folder.Write("source/discus/messages/12/12.html",
                       "<meta content=\"text/html; charset=iso-8859-1\">");
    EXPECT_EQ(board.Convert().status, 0);
    EXPECT_TRUE(Holds(board.folder.Read("output/mybb_users1.txt"), "\"\xC4nn\""));
    EXPECT_EQ(board.Setting("Charset"), "iso-8859-1");
    EXPECT_EQ(board.Convert({"--charset", "UTF-8"}).status, 0);
    EXPECT_TRUE(Holds(board.folder.Read("output/mybb_users1.txt"), "\"\xC3\x84nn\""));
    EXPECT_EQ(board.Setting("Charset"), "iso-8859-1") << "only the detection keeps a charset";
}

TEST(Charset, ThatIsEmptyIsDetected) {
    const Board board;
    board.folder.Write("source/discus/messages/12/12.html",
                       "<meta content=\"text/html; charset=iso-8859-1\">");
    EXPECT_EQ(board.Convert({"--charset", ""}).status, 0);
    EXPECT_EQ(board.Setting("Charset"), "iso-8859-1");
}

TEST(Charset, ThatNobodyKnowsIsToldForEachRowAndLeavesNoImportFile) {
    const Board board;
    board.folder.Write("source/discus_admin_1043846797/users.txt",
                       "anna:pw:a@host.example:Anna:::1:1.2.3.4:2:Editors\n");
    const ProgramRun run = board.Convert({"--charset", "klingon"});
    EXPECT_EQ(run.status, 1);
    const std::string row = "5 - WriteFileLine()\n\nInvalid procedure call or argument\n";
    EXPECT_EQ(run.errors, row + row) << "the row of the group, and that of the user behind the cancel";
    EXPECT_FALSE(board.folder.Exists("output/mybb_users1.txt"));
    EXPECT_FALSE(board.folder.Exists("output/mybb_usergroups1.txt"));
    EXPECT_FALSE(board.folder.Exists("output/Discus Conversion Import SQL.sql"));
}

TEST(Quiet, LeavesOutTheSummaryAndKeepsTrouble) {
    const Board board;
    const ProgramRun run = board.Convert({"--quiet"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, "");
    const ProgramRun trouble = board.Convert({"--quiet", "--website", ""});
    EXPECT_EQ(trouble.status, 1);
    EXPECT_EQ(trouble.errors, "Discus website must be filled in\n");
}

TEST(SettingsFile, MayBeAnother) {
    const Board board;
    EXPECT_EQ(board.Convert({"--ini", board.Native("my settings.ini")}).status, 0);
    EXPECT_EQ(SettingIn(board.folder.Read("my settings.ini"), "mybb_Admin"), "Admin");
    EXPECT_EQ(board.Setting("mybb_Admin"), std::nullopt);
}

TEST(SettingsFile, IsNamedAfterTheProgramBesideIt) {
    const Board board;
    EXPECT_EQ(board.Convert().status, 0);
    EXPECT_TRUE(board.folder.Exists("program/tessaly-cli.ini"));
}

TEST(ProgramFolder, IsWhereTheProgramLiesUnlessItIsGiven) {
    const Board board;
    const std::filesystem::path copy =
        board.folder.Native("program") / std::filesystem::path(TESSALY_CLI).filename();
    std::filesystem::copy_file(TESSALY_CLI, copy);
    std::vector<std::string> arguments = {copy.string(), "convert"};
    const std::vector<std::string> options = board.Options();
    arguments.insert(arguments.end(), options.begin() + 2, options.end());
    EXPECT_EQ(RunProgram(arguments).status, 0);
    EXPECT_TRUE(board.folder.Exists("program/tessaly-cli.ini"));
    EXPECT_TRUE(board.folder.Exists("output/redirect/discus/messages/12/12.html"));
}

TEST(ProgramFolder, WithoutATemplateStopsTheRunBeforeItsStart) {
    const Board board;
    board.folder.MakeFolder("empty");
    const ProgramRun run = board.Convert({"--program-folder", board.Native("empty")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.errors.starts_with("Source Redirect file not found - "));
    EXPECT_TRUE(Holds(run.output, "Conversion Start: \n"));
    EXPECT_FALSE(Holds(run.output, "Cancelled"));
}

TEST(Terminal, IsKeptFromControlCharactersOfMessages) {
    const Board board;
    // A page whose name tries to colour the terminal shows up in no box; a folder's name does.
    const ProgramRun run = board.Convert({"--messages", board.Native("evil\x1B[31m\x07\xC2\x9Btail")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Holds(run.errors, "evil?[31m??tail\\ - Discus Message Folder Must Exist\n"));
    for (const auto* const control : {"\x1B", "\x07", "\xC2\x9B", "\r"})
        EXPECT_FALSE(Holds(run.errors, control));
}

TEST(OutputFolder, IsRefusedWhereItHoldsTheBoard) {
    const Board board;
    const ProgramRun run = board.Convert({"--output", board.Native("")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Holds(run.errors, "is not deleted"));
    EXPECT_TRUE(Holds(run.errors, " - Please close them then restart the conversion\n"));
    EXPECT_TRUE(board.folder.Exists("source/discus/messages/12/12.html"));
}

}  // namespace
}  // namespace tessaly
