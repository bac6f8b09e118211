#include <gtest/gtest.h>

#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

using testing::TestBoard;

// A board of one page with a post and an announcement.
struct Board : TestBoard {
    Board() {
        WriteBoardFile(testing::BoardFile("Main", {12}));
        WritePage("12/12.html", testing::PageHead("12/Radios", "12/Radios", "Radios", "Old radios") +
                                    testing::Post(5, "Anna", "1043846797", "Hello") +
                                    "<!--Announcement-->Fair<!--/Announcement-->\n");
    }
};

// The row of the board's one thread: 77 characters.
constexpr const char* kThread =
    R"(1,2,"Radios",0,0,0,2,"Anna",1043846797,1,0,"Anna",2,1,0,"",0,0,0,"",1,0,0,0,0)";

TEST(TwoRuns, StartTheirNumbersAnewAndFindTheSameRows) {
    Board board;
    board.Convert();
    const auto posts = board.Rows("mybb_posts1.txt");
    const auto forums = board.Rows("mybb_forums1.txt");
    const auto users = board.Rows("mybb_users1.txt");
    board.Convert();
    EXPECT_EQ(board.messages.size(), 2u);
    EXPECT_EQ(board.Rows("mybb_threads1.txt"), (std::vector<std::string>{kThread}));
    EXPECT_EQ(board.Rows("mybb_posts1.txt"), posts);
    EXPECT_EQ(board.Rows("mybb_forums1.txt"), forums);
    EXPECT_EQ(board.Rows("mybb_users1.txt"), users);
    EXPECT_EQ(board.state.ForumCounter, 2);
    EXPECT_EQ(board.state.ThreadCounter, 1);
    EXPECT_EQ(board.state.PostCounter, 1);
}

TEST(TwoRuns, CountAnnouncementsAndPagesOnFromTheFirst) {
    Board board;
    board.Convert();
    EXPECT_EQ(board.state.AnnouncementCounter, 1);
    EXPECT_EQ(board.state.PageSerial, 1);
    EXPECT_TRUE(board.Output("mybb_announcements1.txt").starts_with("1,"));
    EXPECT_NE(board.Output("redirect/discus/messages/12/12.html").find(" 1.0 "), std::string::npos);
    board.Convert();
    EXPECT_EQ(board.state.AnnouncementCounter, 2);
    EXPECT_EQ(board.state.PageSerial, 2);
    EXPECT_TRUE(board.Output("mybb_announcements1.txt").starts_with("2,"));
    EXPECT_NE(board.Output("redirect/discus/messages/12/12.html").find(" 2.0 "), std::string::npos);
}

TEST(TwoRuns, CarryTheSizesOverButThoseOfPostsAndUsers) {
    Board board;
    board.Convert();
    const std::int32_t forums = board.state.ForumsFile.Size;
    const std::int32_t posts = board.state.PostsFile.Size;
    const std::int32_t users = board.state.UsersImportFile.Size;
    const std::int32_t announcements = board.state.AnnouncementsFile.Size;
    EXPECT_EQ(board.state.ThreadsFile.Size, 79);
    EXPECT_EQ(forums, static_cast<std::int32_t>(board.Output("mybb_forums1.txt").size()));
    board.Convert();
    EXPECT_EQ(board.state.ThreadsFile.Size, 158);
    EXPECT_EQ(board.state.ForumsFile.Size, 2 * forums);
    EXPECT_EQ(board.state.AnnouncementsFile.Size, 2 * announcements);
    EXPECT_EQ(board.state.PostsFile.Size, posts);
    EXPECT_EQ(board.state.UsersImportFile.Size, users);
}

TEST(TwoRuns, SplitTheSecondSoonerForTheSizeOfTheFirst) {
    Board board;
    board.state.txtSplitMBSize.SetText(u"0.000095367431640625");  // 100 characters
    board.Convert();
    EXPECT_EQ(board.Rows("mybb_threads1.txt"), (std::vector<std::string>{kThread}));
    EXPECT_FALSE(board.HasOutput("mybb_threads2.txt"));
    board.Convert();
    EXPECT_EQ(board.Output("mybb_threads1.txt"), "");
    EXPECT_EQ(board.Rows("mybb_threads2.txt"), (std::vector<std::string>{kThread}));
}

TEST(TwoRuns, KeepTheListOfFoldersGrowing) {
    Board board;
    board.Convert();
    board.Convert();
    EXPECT_EQ(board.state.cboProcessedFolders.Items, (std::vector<std::u16string>{u"12", u"12"}));
}

TEST(TwoRuns, LowerTheNumberOfDefaultUsersUntilItsFieldIsLeft) {
    Board board;
    board.state.DefaultUserCount = 5;
    board.Convert();
    EXPECT_TRUE(board.Output("mybb_users1.txt").starts_with("6,\"Anna\""));
    board.Convert();
    EXPECT_TRUE(board.Output("mybb_users1.txt").starts_with("5,\"Anna\""));
}

TEST(TwoRuns, TakeNoForumFromAFirstThatDidNotFinishThem) {
    Board board;
    // A board file that ends with a category's header stops the reader before the forums are saved.
    board.WriteBoardFile(
        "<!--Category: 1--><!--Text-->First<!--/Text--><!--/Category-->\n"
        "<!--Category: 2--><!--Text-->Last<!--/Text--><!--/Category-->");
    board.Convert();
    EXPECT_EQ(board.state.ForumsFile.Stream, nullptr);
    EXPECT_FALSE(board.HasOutput("mybb_forums1.txt"));
    EXPECT_EQ(board.messages.size(), 1u);
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    board.Convert();
    const auto forums = board.Rows("mybb_forums1.txt");
    ASSERT_EQ(forums.size(), 2u);
    EXPECT_TRUE(forums[0].starts_with("1,\"Main\",\"\",\"\",\"c\",0,"));
    EXPECT_TRUE(forums[1].starts_with("2,\"Radios\",\"\",\"\",\"f\",1,\"1\","));
}

TEST(TwoRuns, LeaveNothingOfTheFirstInTheOutput) {
    Board board;
    board.Convert();
    board.folder.Write("output/mine.txt", "of the operator");
    board.WriteBoardFile("<!--Category: 1--><!--Text-->Empty<!--/Text--><!--/Category-->\n");
    board.Convert();
    EXPECT_EQ(board.folder.Files("output"),
              (std::vector<std::string>{"Discus Conversion Import SQL.sql", "Log.txt", "LogError.txt",
                                        "mybb_forums1.txt"}));
}

TEST(TwoRuns, StartTheAreaAnew) {
    Board board;
    board.Convert();
    board.Convert();
    const std::u16string& area = board.state.txtArea.Text;
    const std::u16string start = u"Conversion Start Time: ";
    const std::size_t first = area.find(start);
    ASSERT_NE(first, std::u16string::npos);
    EXPECT_EQ(area.find(start, first + 1), std::u16string::npos);
}

}  // namespace
}  // namespace tessaly
