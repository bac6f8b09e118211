#include <gtest/gtest.h>

#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

using testing::TestBoard;

constexpr const char* kSite = "http://old.example/discus/messages/";

TEST(EndlessBoard, ThatLeadsBackToItselfEndsAtLevel1001) {
    TestBoard board;
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    board.WritePage("12/12.html", testing::PageHead("12/Radios", "12/Radios", "Radios", "Old radios") +
                                      testing::Top(12, std::string(kSite) + "12/12.html", "again"));
    board.Convert();
    ASSERT_EQ(board.messages.size(), 2u);
    EXPECT_EQ(board.messages[0], u"28 - DiscusProcessBoardTopics() - " +
                                     board.folder.Path("source/discus/messages/12/12.html") +
                                     u"\r\n\r\nOut of stack space");
    EXPECT_TRUE(board.messages[1].starts_with(u"\r\n\r\nConversion Cancelled\r\n\r\n"));
    const auto forums = board.Rows("mybb_forums1.txt");
    ASSERT_EQ(forums.size(), 1001u) << "the category and a thousand levels";
    EXPECT_TRUE(forums[1].starts_with("2,\"Radios\",\"\",\"\",\"f\",1,\"1\","));
    EXPECT_TRUE(forums[3].starts_with("4,\"Radios\",\"\",\"\",\"f\",3,\"1,2,3\","));
    EXPECT_TRUE(forums[1000].starts_with("1001,\"Radios\",\"\",\"\",\"f\",1000,\"1,2,3,4,"));
}

TEST(EndlessBoard, OfTwoPagesThatLeadToEachOtherEndsTheSameWay) {
    TestBoard board;
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    board.WritePage("12/12.html", testing::PageHead("12/A", "12/A", "A", "A") +
                                      testing::Top(13, std::string(kSite) + "12/13.html", "there"));
    board.WritePage("12/13.html", testing::PageHead("12/A", "13/B", "B", "B") +
                                      testing::Top(12, std::string(kSite) + "12/12.html", "back"));
    board.Convert();
    ASSERT_EQ(board.messages.size(), 2u);
    // Level 1 is page 12, so level 1001 is page 12 again.
    EXPECT_EQ(board.messages[0], u"28 - DiscusProcessBoardTopics() - " +
                                     board.folder.Path("source/discus/messages/12/12.html") +
                                     u"\r\n\r\nOut of stack space");
    EXPECT_EQ(board.Rows("mybb_forums1.txt").size(), 1001u);
}

TEST(EndlessBoard, LeavesTheProgramReadyForAnotherRun) {
    TestBoard board;
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    const std::string head = testing::PageHead("12/Radios", "12/Radios", "Radios", "Old radios");
    board.WritePage("12/12.html", head + testing::Top(12, std::string(kSite) + "12/12.html", "again"));
    board.Convert();
    board.WritePage("12/12.html", head + testing::Post(5, "Anna", "1043846797", "Hello"));
    board.messages.clear();
    board.Convert();
    EXPECT_EQ(board.messages.size(), 1u);
    EXPECT_EQ(board.Rows("mybb_forums1.txt").size(), 2u);
    EXPECT_EQ(board.Rows("mybb_posts1.txt").size(), 1u);
    EXPECT_EQ(board.state.DataIndex.size(), 1u);
}

}  // namespace
}  // namespace tessaly
