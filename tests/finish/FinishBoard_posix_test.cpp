#include <gtest/gtest.h>

#include <filesystem>

#include "tests/finish/ImportBoard.h"
#include "tests/support/Unprivileged.h"

namespace tessaly {
namespace {

using testing::ImportBoard;
using testing::Unprivileged;

class BoardOnDisk : public ::testing::Test {
  protected:
    BoardOnDisk() {
        board.Category(1, u"Things");
        board.Forum(2, 1, u"Radios");
    }

    ImportBoard board;
};

TEST_F(BoardOnDisk, IsNotFinishedWhereNothingCanBeWritten) {
    board.Finish();
    std::filesystem::permissions(board.folder.Native(), std::filesystem::perms(0555));
    const Unprivileged unprivileged;
    ASSERT_TRUE(unprivileged.IsSo());
    try {
        FinishBoard(board.options);
        FAIL();
    } catch (const FinishError& error) {
        EXPECT_TRUE(error.text.starts_with(u"The board could not be finished in "));
        EXPECT_TRUE(error.text.ends_with(u": 70 - Permission denied"));
    }
    EXPECT_TRUE(board.folder.Exists("finish/README.txt"));
}

TEST_F(BoardOnDisk, IsReplacedWithoutFollowingALinkOutOfItsFolder) {
    board.folder.Write("elsewhere/kept.txt", "x");
    std::filesystem::create_directory_symlink(board.folder.Native("elsewhere"),
                                              board.folder.Native("finish"));
    board.Finish();
    EXPECT_TRUE(board.folder.Exists("elsewhere/kept.txt"));
    EXPECT_FALSE(std::filesystem::is_symlink(board.folder.Native("finish")));
    EXPECT_TRUE(board.folder.Exists("finish/README.txt"));
}

}  // namespace
}  // namespace tessaly
