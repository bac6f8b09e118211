#include <gtest/gtest.h>

#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

using testing::TestBoard;

TEST(SmallBoard, APageWithOnePostBecomesAForumWithOneThread) {
    TestBoard board;
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    board.WritePage("12/12.html", testing::PageHead("12/Radios", "12/Radios", "Radios", "Old radios") +
                                      testing::Post(5, "Anna", "1043846797", "Hello, <b>all</b>"));
    board.Convert();

    ASSERT_EQ(board.messages.size(), 1u);
    EXPECT_EQ(board.Rows("mybb_posts1.txt"),
              (std::vector<std::string>{R"(1,1,0,2,"Old radios",0,2,"Anna",1043846797,"Hello([) [b]all[/b]",)"
                                        R"(0,0,0,0,0,"12^12^5",1)"}));
    EXPECT_EQ(
        board.Rows("mybb_threads1.txt"),
        (std::vector<std::string>{R"(1,2,"Radios",0,0,0,2,"Anna",1043846797,1,0,"Anna",2,1,0,"",0,0,0,"",)"
                                  R"(1,0,0,0,0)"}));
}

}  // namespace
}  // namespace tessaly
