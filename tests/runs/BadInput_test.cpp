#include <gtest/gtest.h>

#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

using testing::TestBoard;

std::string RadioHead() {
    return testing::PageHead("12/Radios", "12/Radios", "Radios", "Old radios");
}

struct Board : TestBoard {
    Board() { WriteBoardFile(testing::BoardFile("Main", {12})); }
};

std::string PostRow(const std::string& message) {
    return R"(1,1,0,2,"Old radios",0,2,"Anna",1043846797,")" + message + R"(",0,0,0,0,0,"12^12^5",1)";
}

TEST(BadInput, WithoutABoardFileIsToldAndLeavesTheMembersAlone) {
    TestBoard board;
    board.WriteMembers("anna:pw:a@host.example:Anna:::1:1.2.3.4:2:\n");
    board.Convert();
    ASSERT_EQ(board.messages.size(), 2u);
    EXPECT_EQ(board.messages[0],
              u"Missing File - " + board.folder.Path("source/discus/messages/board-topics.html") +
                  u"\r\nMissing File - " + board.folder.Path("source/discus/messages/discus.cgi") +
                  u"\r\nOne file must exist");
    EXPECT_FALSE(board.state.Progress.WasCancelled);
    EXPECT_EQ(board.Rows("mybb_users1.txt").size(), 1u);
    EXPECT_FALSE(board.HasOutput("mybb_forums1.txt"));
}

TEST(BadInput, OfAnEmptyBoardFileGivesNoForum) {
    TestBoard board;
    board.WriteBoardFile("");
    board.Convert();
    EXPECT_EQ(board.messages.size(), 1u);
    EXPECT_FALSE(board.HasOutput("mybb_forums1.txt"));
    EXPECT_FALSE(board.HasOutput("Discus Conversion Import SQL.sql"));
}

TEST(BadInput, OfAnEmptyPageGivesAForumWithoutAName) {
    Board board;
    board.WritePage("12/12.html", "");
    board.Convert();
    EXPECT_EQ(board.messages.size(), 1u);
    const auto forums = board.Rows("mybb_forums1.txt");
    ASSERT_EQ(forums.size(), 2u);
    EXPECT_TRUE(forums[1].starts_with(R"(2,"","","","f",1,"1",1,1,1,)"));
    EXPECT_FALSE(board.HasOutput("mybb_threads1.txt"));
}

TEST(BadInput, OfEmptyMembersLeavesTheAdministratorWithoutARow) {
    Board board;
    board.WriteMembers("");
    board.WritePage("12/12.html", RadioHead());
    board.Convert();
    EXPECT_EQ(board.messages.size(), 1u);
    EXPECT_FALSE(board.HasOutput("mybb_users1.txt"));
}

TEST(BadInput, WithoutAPageIsToldInTheLogsAndGoesOn) {
    Board board;
    board.Convert();
    EXPECT_EQ(board.messages.size(), 1u);
    EXPECT_EQ(board.Rows("mybb_forums1.txt").size(), 1u);
    const std::u16string told =
        u"File Does Not Exist - " + board.folder.Path("source/discus/messages/12/12.html") +
        u" nor does \r\n    " + board.folder.Path("source/discus_admin_1/secure/12/12.html") + u"\r\n";
    EXPECT_NE(board.Log().find(told), std::u16string::npos);
    EXPECT_NE(board.state.txtArea.Text.find(told), std::u16string::npos);
    EXPECT_NE(board.Output("LogError.txt").find("File Does Not Exist - "), std::string::npos);
}

TEST(BadInput, LosesItsNulBytes) {
    Board board;
    std::string page = RadioHead() + testing::Post(5, "Anna", "1043846797", "He#llo") + "#";
    for (char& byte : page) {
        if (byte == '#') byte = '\0';
    }
    page.insert(page.find("<!--Time"), 3, '\0');
    page.insert(page.find("Post: ") + 2, 1, '\0');
    board.WritePage("12/12.html", page);
    board.Convert();
    EXPECT_EQ(board.messages.size(), 1u);
    EXPECT_EQ(board.Rows("mybb_posts1.txt"), (std::vector<std::string>{PostRow("Hello")}));
}

TEST(BadInput, OfBytesThatDoNotDecodeShowsReplacements) {
    Board board;
    board.WritePage("12/12.html", RadioHead() + testing::Post(5, "Anna", "1043846797", "a\xFFz"));
    board.Convert();
    EXPECT_EQ(board.Rows("mybb_posts1.txt"), (std::vector<std::string>{PostRow("a\xEF\xBF\xBDz")}));
}

TEST(BadInput, OfAPageOfFiveMegabytesGoesThroughWhole) {
    Board board;
    std::string body;
    while (body.size() < 5000000) body += "All work and no play, <b>makes</b> Jack ";
    board.WritePage("12/12.html", RadioHead() + testing::Post(5, "Anna", "1043846797", body));
    board.Convert();
    EXPECT_EQ(board.messages.size(), 1u);
    const auto posts = board.Rows("mybb_posts1.txt");
    ASSERT_EQ(posts.size(), 1u);
    std::string message;
    for (std::size_t at = 0; at < body.size(); at += 40)
        message += "All work and no play([) [b]makes[/b] Jack ";
    EXPECT_TRUE(posts[0] == PostRow(message)) << "a row of " << posts[0].size() << " characters";
}

TEST(BadInput, OfAMegabyteOfBracketsEnds) {
    Board board;
    board.WritePage("12/12.html",
                    RadioHead() + testing::Post(5, "Anna", "1043846797", std::string(1000000, '<')));
    board.Convert();
    EXPECT_EQ(board.messages.size(), 1u);
    EXPECT_EQ(board.Rows("mybb_posts1.txt").size(), 1u);
}

TEST(BadInput, OfATruncatedPostIsLeftOut) {
    Board board;
    const std::string post = testing::Post(5, "Anna", "1043846797", "Hello");
    board.WritePage("12/12.html", RadioHead() + post + post.substr(0, post.size() - 10));
    board.Convert();
    EXPECT_EQ(board.messages.size(), 1u);
    EXPECT_EQ(board.Rows("mybb_posts1.txt").size(), 1u);
}

TEST(BadInput, OfFolderNamesWithBlanksAndLettersBeyondAsciiIsNoTrouble) {
    Board board;
    board.WritePage("12/12.html", RadioHead() + testing::Post(5, "Anna", "1043846797", "Hello"));
    const std::string name = "\xC3\x84lte \xE6\x96\xB0 Kopie";
    std::filesystem::rename(board.folder.Native("source"), board.folder.Native(name));
    board.state.txtDiscusRootFolder.SetText(board.folder.Path(name));
    board.state.txtDiscusMessageFolder.SetText(board.folder.Path(name + "/discus/messages") + u"\\");
    board.state.txtDiscusSecureMessageFolder.SetText(board.folder.Path(name + "/discus_admin_1/secure"));
    board.state.txtDiscusMainFolder.SetText(board.folder.Path(name + "/discus_admin_1") + u"\\");
    board.state.txtmybbOutputFolder.SetText(board.folder.Path("out put \xC3\x9F"));
    board.Convert();
    EXPECT_EQ(board.messages.size(), 1u);
    EXPECT_TRUE(board.folder.Exists("out put \xC3\x9F/mybb_posts1.txt"));
    EXPECT_TRUE(board.folder.Exists("out put \xC3\x9F/redirect/discus/messages/12/12.html"));
    EXPECT_NE(board.folder.Read("out put \xC3\x9F/Discus Conversion Import SQL.sql").find("out put \xC3\x9F"),
              std::string::npos);
}

}  // namespace
}  // namespace tessaly
