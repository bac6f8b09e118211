#include <gtest/gtest.h>

#include <map>
#include <nlohmann/json.hpp>

#include "tests/support/CommandLineBoard.h"
#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

using nlohmann::json;
using testing::CommandLineBoard;
using testing::Post;
using testing::ProgramRun;
using testing::RunProgram;

struct Board : CommandLineBoard {
    Board() : CommandLineBoard(TESSALY_CLI) {}

    ProgramRun Check(const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments = {TESSALY_CLI, "check"};
        for (const std::string& option : OptionsWith(more)) arguments.push_back(option);
        return RunProgram(arguments);
    }

    void WritePage(const std::string& posts) const {
        folder.Write("source/discus/messages/12/12.html",
                     testing::PageHead("12/Radios", "12/Radios", "Radios", "Old radios") + posts);
    }

    // The bytes of every file, and every folder, by name.
    std::map<std::string, std::string> Everything() const {
        std::map<std::string, std::string> all;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Native())) {
            const std::string name = entry.path().lexically_relative(folder.Native()).generic_string();
            all[name] = entry.is_directory() ? "folder" : folder.Read(name);
        }
        return all;
    }
};

bool Holds(const std::string& text, const std::string& what) {
    return text.find(what) != std::string::npos;
}

TEST(Check, OfASoundBoardEndsWith0AndTellsTheTotalsFirst) {
    const Board board;
    const ProgramRun run = board.Check();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(run.output.starts_with("Board ")) << run.output;
    EXPECT_TRUE(Holds(run.output, "Nothing was written, created or deleted"));
    EXPECT_TRUE(Holds(run.output, "  Pages                      1\n  Posts                      1\n"));
    EXPECT_TRUE(Holds(run.output, "  Ends the run               0\n  Loses something            0\n"));
}

TEST(Check, OfABoardThatLosesSomethingEndsWith1) {
    const Board board;
    board.WritePage(Post(5, "Admin", "1043846797", "<a href=\"http://elsewhere.example\">there</a>"));
    const ProgramRun run = board.Check();
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Holds(run.output, "Links to other sites: 1\n"));
    EXPECT_FALSE(Holds(run.output, "The run would end here first"));
}

TEST(Check, OfABoardThatEndsTheRunEndsWith1AndNamesThePlaceAndTheMessage) {
    const Board board;
    board.WritePage(Post(5, "Admin", "never", "Hello"));
    const ProgramRun run = board.Check();
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Holds(run.output,
                      "The run would end here first: " + board.Native("source/discus/messages/12/12.html") +
                          ", post 5, line 5, position "))
        << run.output;
    EXPECT_TRUE(Holds(run.output, "      Message: 13 - DiscusProcessPostsOnPage()\n"));
}

TEST(Check, WithoutACommandOrWithAnOptionOfItsOwnAtConvertIsWrongUsage) {
    const Board board;
    EXPECT_EQ(RunProgram({TESSALY_CLI}).status, 2);
    EXPECT_EQ(board.Check({"--nonsense"}).status, 2);
    EXPECT_EQ(board.Convert({"--html", board.Native("x.html")}).status, 2);
}

TEST(Check, WithSettingsThatCannotBeReadEndsWith3AsARunDoes) {
    const Board board;
    board.folder.Write("program/bad.ini", "[Settings]\r\nSplitMBSize=much\r\n");
    EXPECT_EQ(board.Check({"--ini", board.Native("program/bad.ini")}).status, 3);
}

TEST(Check, WritesDeletesAndCreatesNothing) {
    const Board board;
    board.folder.Write("output/kept.txt", "kept");
    board.folder.Write("output/redirect/discus/messages/1/1.html", "kept");
    board.folder.Write("program/Docs/Discus Special Characters.txt", "kept");
    board.WritePage(Post(5, "Anna", "1043846797", "&bogus; Hello"));
    const auto before = board.Everything();
    board.Check();
    EXPECT_EQ(board.Everything(), before);
}

TEST(Check, MakesNoOutputFolder) {
    const Board board;
    const auto before = board.Everything();
    board.Check({"--split-mb", "7", "--no-redirects"});
    EXPECT_EQ(board.Everything(), before);
}

TEST(Check, WritesItsReportsAndNothingElse) {
    const Board board;
    auto before = board.Everything();
    board.Check({"--report", board.Native("a.json"), "--html", board.Native("a.html")});
    auto after = board.Everything();
    EXPECT_TRUE(after.at("a.html").starts_with("<!DOCTYPE html>"));
    EXPECT_EQ(after.erase("a.json") + after.erase("a.html"), 2u);
    EXPECT_EQ(after, before);
}

TEST(Check, ReportHoldsTotalsYearsGradesAndFindings) {
    const Board board;
    board.WritePage(Post(5, "Admin", "946684799", "Hello") + Post(6, "Admin", "946684800", "Hello") +
                    Post(7, "Admin", "1e10", "x"));
    EXPECT_EQ(board.Check({"--quiet", "--report", board.Native("a.json")}).output, "");
    const json report = json::parse(board.folder.Read("a.json"));
    EXPECT_EQ(report["wroteNothing"], true);
    EXPECT_EQ(report["cancelled"], false);
    EXPECT_EQ(report["charset"], "utf-8");
    EXPECT_EQ(report["totals"]["pages"], 1);
    EXPECT_EQ(report["totals"]["posts"], 3);
    EXPECT_EQ(report["postsByYear"], (json{{"1999", 1}, {"2000", 1}}));
    EXPECT_EQ(report["grades"], (json{{"ends the run", 1}, {"loses something", 0}, {"worth knowing", 1}}));
    ASSERT_EQ(report["kinds"].size(), 2u);
    const json& time = report["kinds"][0];
    EXPECT_EQ(time["kind"], "post-time");
    EXPECT_EQ(time["grade"], "ends the run");
    EXPECT_EQ(time["count"], 1);
    EXPECT_EQ(time["findings"][0]["post"], "7");
    EXPECT_EQ(time["findings"][0]["message"], "6 - DiscusProcessPostsOnPage()");
    EXPECT_EQ(time["findings"][0]["reason"], "Overflow");
    EXPECT_EQ(report["endsFirst"], time["findings"][0]);
    EXPECT_EQ(report["kinds"][1]["kind"], "no-member-file");
}

TEST(Check, ReportThatCannotBeWrittenIsTold) {
    const Board board;
    const ProgramRun run = board.Check({"--report", board.Native("nowhere/a.json")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Holds(run.errors, "The report could not be written: "));
}

TEST(Check, TextsOfTheBoardReachTheTerminalWithoutControlsAndTurningMarks) {
    const Board board;
    // ESC, a mark that turns the writing around, and a line end.
    board.WritePage(Post(5, "Admin", "1043846797",
                         "<a href=\"http://elsewhere.example\">\x1B[31m\xE2\x80\xAEtxt\nnext</a>"));
    const ProgramRun run = board.Check();
    EXPECT_FALSE(Holds(run.output, "\x1B"));
    EXPECT_FALSE(Holds(run.output, "\xE2\x80\xAE"));
    EXPECT_TRUE(Holds(run.output, "?[31m?txt next")) << run.output;
}

TEST(Check, TellsHowManyFindingsOfAKindTheReportsHoldWhenTheyDoNotHoldAll) {
    const Board board;
    std::string posts;
    for (int post = 1; post <= 501; ++post)
        posts += Post(post, "Admin", "1043846797", "<a href=\"http://elsewhere.example\">x</a>");
    board.WritePage(posts);
    const ProgramRun run = board.Check({"--report", board.Native("a.json")});
    EXPECT_TRUE(Holds(run.output, "Links to other sites: 501\n"));
    EXPECT_TRUE(
        Holds(run.output, "The first 500 stand in the reports: --report FILE.json, --html FILE.html."));
    const json report = json::parse(board.folder.Read("a.json"));
    EXPECT_EQ(report["kinds"][0]["findings"].size(), 500u);
    EXPECT_EQ(report["kinds"][0]["unlisted"], 1);
}

TEST(Check, WithoutAMessageFolderSaysThatItDidNotLookAtTheBoard) {
    const Board board;
    board.WritePage(Post(5, "Admin", "1043846797", "Hello"));
    const ProgramRun run = board.Check({"--messages", board.Native("nowhere")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Holds(run.output, "\nThe board was not looked at. "));
    EXPECT_FALSE(Holds(run.output, "CANCELLED"));
    EXPECT_FALSE(Holds(run.output, "charset"));
}

TEST(Check, ShowsTwentyFindingsOfAKindAndTellsWhereTheOthersAre) {
    const Board board;
    std::string posts;
    for (int post = 101; post <= 125; ++post) {
        posts += Post(post, "Admin", "1043846797", "<a href=\"http://elsewhere.example\">x</a>");
    }
    board.WritePage(posts);
    const ProgramRun run = board.Check();
    EXPECT_TRUE(Holds(run.output, "Links to other sites: 25\n"));
    EXPECT_TRUE(Holds(run.output, ", post 120, "));
    EXPECT_FALSE(Holds(run.output, ", post 121, "));
    EXPECT_TRUE(Holds(run.output, "The others stand in the reports: --report FILE.json, --html FILE.html."));
}

}  // namespace
}  // namespace tessaly
