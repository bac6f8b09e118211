#include <gtest/gtest.h>

#include <map>
#include <set>

#include "control/cmdConvert.h"
#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

using testing::TestBoard;

// A board that visits every phase: two categories, a sub-topic, a hidden topic, posts in both orders, links,
// an attachment, an announcement, members with groups.
struct BusyBoard : TestBoard {
    BusyBoard() {
        const std::string site = "http://old.example/discus/messages/";
        WriteBoardFile(testing::BoardFile("Main", {12, 13}) + testing::BoardFile("More", {20}));
        WritePage("12/12.html", testing::PageHead("12/Radios", "12/Radios", "Radios", "Old radios") +
                                    testing::Top(121, site + "12/121.html", "Tubes") +
                                    testing::Top(122, site + "12/122.html", "Hidden"));
        WritePage(
            "12/121.html",
            testing::PageHead("12/Radios", "121/Tubes", "Tubes", "Tubes &auml;") +
                testing::Post(1, "Anna", "100", "First &uuml; <b>bold</b>") +
                testing::Post(2, "Berta", "200", "<a href=\"" + site + "13/13.html?1\">there</a>") +
                testing::Post(3, "Nobody", "300", "<a href=\"" + site + "12/plan-5.png\">plan</a> <i>x</i>"));
        WritePage("12/plan-5.png", "not really a picture");
        WriteSecurePage("12/122.html", testing::PageHead("12/Radios", "122/Hidden", "Hidden", "Hidden") +
                                           testing::Post(9, "Anna", "100", "secret"));
        WritePage("13/13.html", testing::PageHead("13/News", "13/News", "News", "News") +
                                    "<!--Announcement-->Fair on <b>Sunday</b><!--/Announcement-->\n" +
                                    testing::Post(7, "Anna", "900", "later") +
                                    testing::Post(8, "Berta", "800", "sooner"));
        WritePage("20/20.html", testing::PageHead("20/Rest", "20/Rest", "Rest", "Rest"));
        WriteMembers(
            "anna:pw:anna@host.example:Anna:::1:1.2.3.4:2:Editors/Helpers\n"
            "berta:pw:berta@host.example:Berta:::1:1.2.3.4:2:Editors\n");
    }
};

// Columns of an import row. Its texts hold no quotes; the list of a forum's parents holds commas.
std::size_t ColumnsOf(const std::string& row) {
    std::size_t columns = 1;
    bool isQuoted = false;
    for (const char byte : row) {
        if (byte == '"') isQuoted = !isQuoted;
        if (byte == ',' && !isQuoted) ++columns;
    }
    return columns;
}

const std::map<std::string, std::size_t> kColumns = {
    {"mybb_threads", 25},    {"mybb_posts", 17},       {"mybb_forums", 41},       {"mybb_users", 84},
    {"mybb_usergroups", 89}, {"mybb_attachments", 12}, {"mybb_announcements", 10}};

// The tables named in the script, in its order.
std::vector<std::string> TablesOf(const TestBoard& board) {
    std::vector<std::string> tables;
    if (!board.HasOutput("Discus Conversion Import SQL.sql")) return tables;
    for (const std::string& line : testing::Lines(board.Output("Discus Conversion Import SQL.sql"))) {
        const std::size_t at = line.find("INTO TABLE ");
        if (at != std::string::npos) tables.push_back(line.substr(at + 11));
    }
    return tables;
}

void ExpectIdle(const ConversionState& state) {
    EXPECT_TRUE(state.cmdConvert.Enabled);
    EXPECT_FALSE(state.cmdCancel.Enabled);
    EXPECT_FALSE(state.CancelRequested);
    for (const OutputFile* file :
         {&state.ThreadsFile, &state.UnknownFile, &state.PostsFile, &state.UsersImportFile, &state.ForumsFile,
          &state.AttachmentsFile, &state.UserGroupsFile, &state.InternalLinksFile,
          &state.InternalLinksUpdateFile, &state.AnnouncementsFile})
        EXPECT_EQ(file->Stream, nullptr);
    EXPECT_EQ(state.LogFile.Stream, nullptr);
}

// Whatever was written can be loaded: whole rows, and a statement for each import file.
void ExpectLoadable(const TestBoard& board) {
    const std::vector<std::string> tables = TablesOf(board);
    std::set<std::string> onDisk;
    for (const auto& [table, columns] : kColumns) {
        if (!board.HasOutput(table + "1.txt")) continue;
        onDisk.insert(table);
        EXPECT_TRUE(board.Output(table + "1.txt").ends_with("\r\n")) << table;
        for (const std::string& row : board.Rows(table + "1.txt")) EXPECT_EQ(ColumnsOf(row), columns) << row;
    }
    EXPECT_EQ(std::set<std::string>(tables.begin(), tables.end()), onDisk);
    EXPECT_EQ(tables.size(), onDisk.size()) << "no file has two statements";
}

// Post numbers run from 1 without a gap, whatever their order.
void ExpectPostsWithoutAGap(const TestBoard& board) {
    if (!board.HasOutput("mybb_posts1.txt")) return;
    std::set<int> numbers;
    for (const std::string& row : board.Rows("mybb_posts1.txt")) numbers.insert(std::stoi(row));
    EXPECT_EQ(*numbers.begin(), 1);
    EXPECT_EQ(*numbers.rbegin(), static_cast<int>(numbers.size()));
    EXPECT_EQ(numbers.size(), board.Rows("mybb_posts1.txt").size());
}

// Runs the busy board and clicks Cancel at the n-th chance to do so; gives how many chances there were.
int RunWithCancelAt(BusyBoard& board, int n) {
    int chances = 0;
    board.state.ToolboxA.EventInterval = 0;
    board.state.ToolboxA.HandleEvents = [&] {
        if (++chances == n) cmdCancel_Click(board.state);
    };
    board.Convert();
    board.state.ToolboxA.HandleEvents = nullptr;
    return chances;
}

TEST(Cancel, IsNotNeededForTheBusyBoard) {
    BusyBoard board;
    EXPECT_GT(RunWithCancelAt(board, 0), 100);
    EXPECT_EQ(board.messages.size(), 1u);
    EXPECT_FALSE(board.state.Progress.WasCancelled);
    EXPECT_EQ(TablesOf(board),
              (std::vector<std::string>{"mybb_usergroups", "mybb_forums", "mybb_posts", "mybb_users",
                                        "mybb_threads", "mybb_attachments", "mybb_announcements"}));
    EXPECT_EQ(board.Rows("mybb_posts1.txt").size(), 6u);
    ExpectIdle(board.state);
    ExpectLoadable(board);
    ExpectPostsWithoutAGap(board);
}

TEST(Cancel, EndsTheRunByItsClosingStepsWhereverItComes) {
    BusyBoard whole;
    const int chances = RunWithCancelAt(whole, 0);
    int cancelled = 0;
    for (int n = 1; n <= chances; n += n < 20 ? 1 : 1 + chances / 60) {
        SCOPED_TRACE("cancelled at chance " + std::to_string(n) + " of " + std::to_string(chances));
        BusyBoard board;
        RunWithCancelAt(board, n);
        ASSERT_EQ(board.messages.size(), 1u);
        const bool hasBanner = board.messages[0].starts_with(u"\r\n\r\nConversion Cancelled\r\n\r\n");
        EXPECT_EQ(hasBanner, board.state.Progress.WasCancelled);
        if (hasBanner) ++cancelled;
        EXPECT_TRUE(board.state.ToolboxA.RecordedErrors.empty());
        ExpectIdle(board.state);
        ExpectLoadable(board);
        ExpectPostsWithoutAGap(board);
        EXPECT_TRUE(board.HasOutput("Log.txt"));
    }
    EXPECT_GT(cancelled, 50);
}

TEST(Cancel, LeavesTheProgramReadyForAWholeRun) {
    BusyBoard whole;
    const int chances = RunWithCancelAt(whole, 0);
    BusyBoard board;
    RunWithCancelAt(board, chances / 2);
    EXPECT_TRUE(board.state.Progress.WasCancelled);
    board.messages.clear();
    board.Convert();
    EXPECT_EQ(board.messages.size(), 1u);
    EXPECT_FALSE(board.state.Progress.WasCancelled);
    EXPECT_EQ(board.Rows("mybb_posts1.txt"), whole.Rows("mybb_posts1.txt"));
    EXPECT_EQ(board.Rows("mybb_forums1.txt"), whole.Rows("mybb_forums1.txt"));
    EXPECT_EQ(board.Rows("mybb_users1.txt"), whole.Rows("mybb_users1.txt"));
}

TEST(Cancel, BehindTheMembersStillWritesTheUsers) {
    BusyBoard board;
    board.state.ToolboxA.EventInterval = 0;
    bool isClicked = false;
    board.state.ToolboxA.HandleEvents = [&] {
        if (isClicked || board.state.GroupsByName.Count() != 2) return;
        isClicked = true;
        cmdCancel_Click(board.state);
    };
    board.Convert();
    EXPECT_TRUE(isClicked);
    EXPECT_EQ(TablesOf(board), (std::vector<std::string>{"mybb_users"}));
    EXPECT_FALSE(board.HasOutput("mybb_forums1.txt"));
}

}  // namespace
}  // namespace tessaly
