#include "finish/ImportRows.h"

#include <gtest/gtest.h>

#include "finish/FinishError.h"
#include "members/clsTblUsers.h"
#include "output/clsTblPosts.h"
#include "output/clsTblThreads.h"
#include "tests/support/TemporaryFolder.h"
#include "translate/clsTblAttachments.h"

namespace tessaly {
namespace {

using testing::TemporaryFolder;

std::string PostRow(int pid, const std::string& message) {
    return std::to_string(pid) + ",1,0,4,\"Old radios\",0,2,\"Anna\",1043846797,\"" + message +
           "\",0,0,0,0,0,\"3^111^5\",1\r\n";
}

std::string UserRow(const std::string& password, const std::string& email) {
    clsTblUsers row;
    row.uid = 2;
    row.username = u"anna";
    row.password = std::u16string(password.begin(), password.end());
    row.email = std::u16string(email.begin(), email.end());
    row.usergroup = 8;
    row.birthdayprivacy = u"all";
    std::u16string text;
    row.BuildString(text);
    return std::string(text.begin(), text.end()) + "\r\n";
}

class ImportRowsTest : public ::testing::Test {
  protected:
    ImportFolder Import(std::u16string charset = u"utf-8") const { return {folder.Path() + u"\\", charset}; }

    std::vector<int> Pids() const {
        ImportRows rows(Import(), u"mybb_posts", clsTblPosts::kColumns);
        std::vector<int> pids;
        while (rows.Next()) pids.push_back(rows.Int(ColumnAt<clsTblPosts>(u"pid")));
        return pids;
    }

    // The password and the mail address of the one user.
    std::pair<std::u16string, std::u16string> User() const {
        using Row = clsTblUsers;
        constexpr FreeColumns kFree{ColumnAt<Row>(u"password"), ColumnAt<Row>(u"email")};
        ImportRows rows(Import(), u"mybb_users", Row::kColumns, kFree);
        EXPECT_TRUE(rows.Next());
        EXPECT_EQ(rows.Text(ColumnAt<Row>(u"username")), u"anna");
        EXPECT_EQ(rows.Int(ColumnAt<Row>(u"usergroup")), 8);
        EXPECT_EQ(rows.Text(ColumnAt<Row>(u"birthdayprivacy")), u"all");
        const std::pair<std::u16string, std::u16string> user{rows.Text(kFree.first), rows.Text(kFree.last)};
        EXPECT_FALSE(rows.Next());
        return user;
    }

    TemporaryFolder folder;
};

TEST_F(ImportRowsTest, GivesEachColumnOfARow) {
    folder.Write("mybb_posts1.txt", PostRow(7, "Hello([) you"));
    ImportRows rows(Import(), u"mybb_posts", clsTblPosts::kColumns);
    ASSERT_TRUE(rows.Next());
    EXPECT_EQ(rows.Int(ColumnAt<clsTblPosts>(u"pid")), 7);
    EXPECT_EQ(rows.Int(ColumnAt<clsTblPosts>(u"fid")), 4);
    EXPECT_EQ(rows.Text(ColumnAt<clsTblPosts>(u"subject")), u"Old radios");
    EXPECT_EQ(rows.Int(ColumnAt<clsTblPosts>(u"dateline")), 1043846797);
    EXPECT_EQ(rows.Text(ColumnAt<clsTblPosts>(u"message")), u"Hello([) you");
    EXPECT_EQ(rows.Text(ColumnAt<clsTblPosts>(u"editreason")), u"3^111^5");
    EXPECT_EQ(rows.Int(ColumnAt<clsTblPosts>(u"visible")), 1);
    EXPECT_FALSE(rows.Next());
}

TEST_F(ImportRowsTest, ReadsTheFilesOfAFamilyInTheOrderOfTheirNumbers) {
    folder.Write("mybb_posts10.txt", PostRow(5, "e"));
    folder.Write("mybb_posts2.txt", PostRow(3, "c") + PostRow(4, "d"));
    folder.Write("mybb_posts1.txt", PostRow(1, "a") + PostRow(2, "b"));
    EXPECT_EQ(Pids(), (std::vector<int>{1, 2, 3, 4, 5}));
}

TEST_F(ImportRowsTest, PassesOverFilesOfOtherNames) {
    folder.Write("mybb_posts1.txt", PostRow(1, "a"));
    folder.Write("mybb_posts.txt", "x");
    folder.Write("mybb_postsOld.txt", "x");
    folder.Write("mybb_posts1.txt.bak", "x");
    folder.Write("old mybb_posts2.txt", "x");
    EXPECT_EQ(Pids(), (std::vector<int>{1}));
}

TEST_F(ImportRowsTest, TakesAnEmptyFirstFile) {
    // The first row was longer than the split size.
    folder.Write("mybb_posts1.txt", "");
    folder.Write("mybb_posts2.txt", PostRow(1, "a"));
    EXPECT_EQ(Pids(), (std::vector<int>{1}));
}

TEST_F(ImportRowsTest, GivesNothingForAFamilyWithoutFiles) {
    EXPECT_EQ(Pids(), std::vector<int>{});
}

TEST_F(ImportRowsTest, ReadsTheCharsetOfTheBoard) {
    folder.Write("mybb_posts1.txt", PostRow(1, "\x95\x5C"));
    ImportRows rows(Import(u"shift-jis"), u"mybb_posts", clsTblPosts::kColumns);
    ASSERT_TRUE(rows.Next());
    EXPECT_EQ(rows.Text(ColumnAt<clsTblPosts>(u"message")), u"\u8868");
}

TEST_F(ImportRowsTest, ReadsNegativeNumbers) {
    std::string row = PostRow(1, "a");
    row.replace(row.find("1043846797"), 10, "-5");
    folder.Write("mybb_posts1.txt", row);
    ImportRows rows(Import(), u"mybb_posts", clsTblPosts::kColumns);
    ASSERT_TRUE(rows.Next());
    EXPECT_EQ(rows.Int(ColumnAt<clsTblPosts>(u"dateline")), -5);
}

TEST_F(ImportRowsTest, TellsTheRowThatIsNone) {
    folder.Write("mybb_posts1.txt", PostRow(1, "a") + "2,1,0,4\r\n");
    ImportRows rows(Import(), u"mybb_posts", clsTblPosts::kColumns);
    ASSERT_TRUE(rows.Next());
    try {
        rows.Next();
        FAIL();
    } catch (const FinishError& error) {
        EXPECT_TRUE(error.text.starts_with(u"Row 2 of "))
            << std::string(error.text.begin(), error.text.end());
        EXPECT_NE(error.text.find(u"mybb_posts1.txt"), std::u16string::npos);
    }
}

TEST_F(ImportRowsTest, RefusesARowWithAColumnTooManyOrATextForANumber) {
    folder.Write("mybb_posts1.txt", "1,1,0,4,\"s\",0,2,\"a\",1,\"m\",0,0,0,0,0,\"3^1^5\",1,1\r\n");
    EXPECT_THROW(Pids(), FinishError);
    folder.Write("mybb_posts1.txt", "x,1,0,4,\"s\",0,2,\"a\",1,\"m\",0,0,0,0,0,\"3^1^5\",1\r\n");
    EXPECT_THROW(Pids(), FinishError);
}

TEST_F(ImportRowsTest, FindsTheEndsOfAPasswordWithQuotesAndCommas) {
    folder.Write("mybb_users1.txt", UserRow("a\",\"b\",,\"", "x@y"));
    EXPECT_EQ(User(), (std::pair<std::u16string, std::u16string>{u"a\",\"b\",,\"", u"x@y"}));
    folder.Write("mybb_users1.txt", UserRow("\\", "\"anna, v\"@mail.example"));
    EXPECT_EQ(User(), (std::pair<std::u16string, std::u16string>{u"\\", u"\"anna, v\"@mail.example"}));
    folder.Write("mybb_users1.txt", UserRow("", ""));
    EXPECT_EQ(User(), (std::pair<std::u16string, std::u16string>{u"", u""}));
}

TEST_F(ImportRowsTest, JoinsTheLinesOfAPasswordWithALineFeed) {
    folder.Write("mybb_users1.txt", UserRow("a\nb", "x@y"));
    EXPECT_EQ(User(), (std::pair<std::u16string, std::u16string>{u"a\nb", u"x@y"}));
}

TEST_F(ImportRowsTest, TakesAFileNameWithQuotesAndCommas) {
    using Row = clsTblAttachments;
    constexpr FreeColumns kFree{ColumnAt<Row>(u"filename"), ColumnAt<Row>(u"filetype")};
    folder.Write("mybb_attachments1.txt", R"(1,2,"AB",2,"\a\the "big", one.txt","txt",189,"",0,0,1,"")"
                                          "\r\n");
    ImportRows rows(Import(), u"mybb_attachments", Row::kColumns, kFree);
    ASSERT_TRUE(rows.Next());
    EXPECT_EQ(rows.Text(kFree.first), u"\\a\\the \"big\", one.txt");
    EXPECT_EQ(rows.Text(kFree.last), u"txt");
    EXPECT_EQ(rows.Int(ColumnAt<Row>(u"filesize")), 189);
    EXPECT_EQ(rows.Int(ColumnAt<Row>(u"aid")), 1);
}

TEST_F(ImportRowsTest, ReadsAFileOfManyBlocks) {
    std::string bytes;
    for (int pid = 1; pid <= 4000; ++pid) bytes += PostRow(pid, std::string(1000, 'x'));
    folder.Write("mybb_posts1.txt", bytes);
    const std::vector<int> pids = Pids();
    ASSERT_EQ(pids.size(), 4000u);
    for (int at = 0; at < 4000; ++at) ASSERT_EQ(pids[static_cast<std::size_t>(at)], at + 1);
}

}  // namespace
}  // namespace tessaly
