#include "control/CountPages.h"

#include <gtest/gtest.h>

#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

using testing::TestBoard;

TEST(CountPages, CountsWhatLiesInTheTopicsFolders) {
    const TestBoard board;
    board.WriteBoardFile("");
    board.WritePage("12/12.html", "");
    board.WritePage("12/13.html", "");
    board.WritePage("12/manual.pdf", "");
    board.WriteSecurePage("40/40.html", "");
    EXPECT_EQ(CountPages(board.state), 3);
}

TEST(CountPages, LeavesOutHiddenPagesThatAreNotConverted) {
    TestBoard board;
    board.WritePage("12/12.html", "");
    board.WriteSecurePage("40/40.html", "");
    board.state.chkCreateHiddenTopics.Value = 0;
    EXPECT_EQ(CountPages(board.state), 1);
}

TEST(CountPages, OfFoldersThatAreNotThereIsNone) {
    TestBoard board;
    board.state.txtDiscusMessageFolder.Text = board.folder.Path("nowhere");
    board.state.txtDiscusSecureMessageFolder.Text = u"";
    EXPECT_EQ(CountPages(board.state), 0);
}

}  // namespace
}  // namespace tessaly
