#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::TestBoard;

// Pages and uploads are held within the source by the tests of their readers.
TEST(LinkInTheSource, UnderTheNameOfAFixedFileIsFollowedWhereverItLeads) {
    TestBoard board;
    board.folder.Write("elsewhere/board.html", testing::BoardFile("Elsewhere", {12}));
    board.folder.Write("elsewhere/members", "anna:pw:a@host.example:Anna:::1:1.2.3.4:2:\n");
    board.folder.Write("elsewhere/pages/1.html", "<meta content=\"text/html; charset=koi8-r\">");
    fs::create_symlink(board.folder.Native("elsewhere/board.html"),
                       board.folder.Native("source/discus/messages/board-topics.html"));
    fs::create_symlink(board.folder.Native("elsewhere/members"),
                       board.folder.Native("source/discus_admin_1/users.txt"));
    fs::create_directory_symlink(board.folder.Native("elsewhere/pages"),
                                 board.folder.Native("source/discus/messages/1"));
    board.Convert();
    EXPECT_EQ(board.messages.size(), 1u);
    EXPECT_EQ(board.state.Charset, u"koi8-r");
    EXPECT_TRUE(board.Output("mybb_forums1.txt").starts_with("1,\"Elsewhere\","));
    EXPECT_TRUE(board.Output("mybb_users1.txt").starts_with("2,\"anna\","));
}

TEST(LinkInTheSource, ToAFolderThatTheOperatorNamedIsWhereThePagesLie) {
    TestBoard board;
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    board.WritePage("12/12.html", testing::PageHead("12/Radios", "12/Radios", "Radios", "Old radios") +
                                      testing::Post(5, "Anna", "1043846797", "Hello"));
    fs::create_directories(board.folder.Native("disk"));
    fs::rename(board.folder.Native("source/discus/messages"), board.folder.Native("disk/messages"));
    fs::create_directory_symlink(board.folder.Native("disk/messages"),
                                 board.folder.Native("source/discus/messages"));
    board.Convert();
    EXPECT_EQ(board.messages.size(), 1u);
    EXPECT_EQ(board.Rows("mybb_posts1.txt").size(), 1u);
}

}  // namespace
}  // namespace tessaly
