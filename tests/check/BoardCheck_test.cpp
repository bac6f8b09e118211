#include "check/BoardCheck.h"

#include <gtest/gtest.h>

#include "control/cmdConvert.h"
#include "tests/support/CheckedBoard.h"

namespace tessaly {
namespace {

using testing::CheckedBoard;
using testing::PageHead;
using testing::Post;
using testing::Top;

void WriteTwoPages(const CheckedBoard& board) {
    board.WriteBoardFile(testing::BoardFile("Main", {12, 13}));
    board.WritePage("12/12.html", PageHead("12/Radios", "12/Radios", "Radios", "Radios") +
                                      Post(5, "Anna", "1043846797", "Hello") +
                                      Post(6, "Bert", "1012345678", "Bye"));
    board.WritePage("13/13.html", PageHead("13/Tapes", "13/Tapes", "Tapes", "Tapes") +
                                      Top(20, "http://old.example/discus/messages/13/20.html", "Azimuth"));
    board.WritePage("13/20.html", PageHead("13/Tapes", "20/Azimuth", "Azimuth", "Azimuth") +
                                      Post(7, "Anna", "1043846798", "Hello"));
}

TEST(BoardCheck, CountsPagesPostsMembersAndYears) {
    CheckedBoard board;
    WriteTwoPages(board);
    const BoardTally& tally = board.Check().Tally();
    EXPECT_EQ(tally.pages, 3);
    EXPECT_EQ(tally.posts, 3);
    // The administrator and the two who post.
    EXPECT_EQ(tally.members, 3);
    EXPECT_EQ(tally.postsByYear, (std::map<int, std::int64_t>{{2002, 1}, {2003, 2}}));
}

TEST(BoardCheck, KeepsTheTreeOfTheBoardWithItsPosts) {
    CheckedBoard board;
    WriteTwoPages(board);
    const auto& nodes = board.Check().Tally().nodes;
    ASSERT_EQ(nodes.size(), 4u);
    EXPECT_EQ(nodes[0].name, u"Main");
    EXPECT_EQ(nodes[0].parent, 0u);
    EXPECT_EQ(nodes[1].name, u"Radios");
    EXPECT_EQ(nodes[1].page, u"12/12.html");
    EXPECT_EQ(nodes[1].parent, 0u);
    EXPECT_EQ(nodes[1].posts, 2);
    EXPECT_EQ(nodes[2].name, u"Tapes");
    EXPECT_EQ(nodes[2].parent, 0u);
    EXPECT_EQ(nodes[3].name, u"Azimuth");
    EXPECT_EQ(nodes[3].parent, 2u);
    EXPECT_EQ(nodes[3].posts, 1);
}

TEST(BoardCheck, PostsOfATimeBefore1970BelongToTheirYear) {
    CheckedBoard board;
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    board.WritePage("12/12.html", PageHead("12/Radios", "12/Radios", "Radios", "Radios") +
                                      Post(5, "Anna", "-1", "Hello") + Post(6, "Anna", "0", "Hello"));
    EXPECT_EQ(board.Check().Tally().postsByYear, (std::map<int, std::int64_t>{{1969, 1}, {1970, 1}}));
}

TEST(BoardCheck, ThatIsCancelledTellsSoAndLooksForNoPagesThatItDidNotReach) {
    CheckedBoard board;
    WriteTwoPages(board);
    ConversionState state;
    BoardCheck check(state);
    CopyFields(board.state, state);
    state.ToolboxA.EventInterval = 0;
    state.ToolboxA.HandleEvents = [&state] {
        if (state.PostCounter == 1 && state.cmdCancel.Enabled) cmdCancel_Click(state);
    };
    check.Run();
    EXPECT_TRUE(check.IsCancelled());
    EXPECT_EQ(check.Tally().posts, 1);
    EXPECT_EQ(check.Found().CountOf(FindingKind::kUnreachedPage), 0);
    EXPECT_EQ(testing::EndsOf(check), 0);
}

TEST(BoardCheck, LeavesTheFieldsThatItWasGivenAsTheyAre) {
    CheckedBoard board;
    WriteTwoPages(board);
    board.Check();
    EXPECT_EQ(board.state.PostCounter, 0);
    EXPECT_TRUE(board.state.cmdConvert.Enabled);
    EXPECT_TRUE(board.messages.empty());
    board.Convert();
    ASSERT_EQ(board.messages.size(), 1u);
    EXPECT_EQ(board.Rows("mybb_posts1.txt").size(), 3u);
}

TEST(BoardCheck, FindsTheSameAfterARunAsBefore) {
    CheckedBoard board;
    WriteTwoPages(board);
    const auto before = board.Check().Found().CountOf(Grade::kLoses);
    board.Convert();
    EXPECT_EQ(board.Check().Found().CountOf(Grade::kLoses), before);
    EXPECT_TRUE(board.HasOutput("mybb_posts1.txt"));
}

}  // namespace
}  // namespace tessaly
