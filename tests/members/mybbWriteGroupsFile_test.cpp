#include "members/mybbWriteGroupsFile.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "members/modMembers.h"
#include "tests/support/ReadyBoard.h"

namespace tessaly {
namespace {

using testing::ReadyBoard;
using Rows = std::vector<std::string>;
using Texts = std::vector<std::u16string>;

std::string GroupRow(int number, const std::string& title) {
    return std::to_string(number) + ",0,\"" + title +
           R"(","","{username}","",0,"images/star.png","",0,0,1,1,1,1,0,1,1,1,1,0,0,0,0,1,1,1,1,)"
           "0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,"
           "0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0";
}

class UserGroupsTable : public ::testing::Test {
  protected:
    // One member with these groups.
    void ReadGroups(const std::string& groups) {
        board.WriteMembers("anna:::::::::" + groups + "\n");
        DiscusReadUserFile(state);
        board.TakeArea();
    }

    Rows Written() {
        mybbWriteGroupsFile(state);
        return board.HasOutput("mybb_usergroups1.txt") ? board.Rows("mybb_usergroups1.txt") : Rows{};
    }

    ReadyBoard board;
    ConversionState& state = board.state;
};

TEST_F(UserGroupsTable, ARowTellsAGroupInAll89Columns) {
    ReadGroups("Staff");
    EXPECT_EQ(Written(),
              (Rows{R"(8,0,"Staff","","{username}","",0,"images/star.png","",0,0,1,1,1,1,0,1,1,1,1,)"
                    "0,0,0,0,1,1,1,1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,"
                    "0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0"}));
    EXPECT_EQ(state.UserGroupsFile.Stream, nullptr);
    const std::string file = testing::SqlName(board.folder.Native("output/mybb_usergroups1.txt"));
    EXPECT_EQ(board.Output("Discus Conversion Import SQL.sql"),
              "LOAD DATA LOCAL INFILE '" + file +
                  "' INTO TABLE mybb_usergroups\r\nFIELDS TERMINATED BY ','\r\n"
                  "ENCLOSED BY '\"'LINES TERMINATED BY '\\r\\n';\r\n\r\n\r\n");
}

TEST_F(UserGroupsTable, RowsComeInTheOrderOfTheFirstSighting) {
    state.DefaultGroupCount = 0;
    ReadGroups("Staff/Editors/Alumni");
    EXPECT_EQ(Written(), (Rows{GroupRow(1, "Staff"), GroupRow(2, "Editors"), GroupRow(3, "Alumni")}));
}

TEST_F(UserGroupsTable, WithoutGroupsThereIsNoRowNoFileAndNoStatement) {
    ReadGroups("");
    EXPECT_EQ(Written(), Rows{});
    EXPECT_TRUE(board.folder.Files("output").empty());
}

// No token stands for the comma.
TEST_F(UserGroupsTable, TheTitleIsTheCleanedName) {
    ReadGroups("Staff, old/O'Neil \"x\"");
    EXPECT_EQ(Written(), (Rows{GroupRow(8, "Staff old"), GroupRow(9, "ONeil x")}));
}

TEST_F(UserGroupsTable, SpellingsThatDifferInCaseAreOneGroupUnderTheFirst) {
    ReadGroups("sTaff/STAFF/Kim/\xE2\x84\xAAIM");
    EXPECT_EQ(Written(), (Rows{GroupRow(8, "sTaff"), GroupRow(9, "Kim")}));
}

TEST_F(UserGroupsTable, AfterACancelNothingIsWritten) {
    ReadGroups("Staff");
    state.CancelRequested = true;
    EXPECT_EQ(Written(), Rows{});
    EXPECT_EQ(state.txtArea.Text, u"");
}

TEST_F(UserGroupsTable, AFileThatCannotBeSavedStopsTheRunAndItsRowsStay) {
    ReadGroups("Staff");
    std::filesystem::remove(board.folder.Native("output"));
    mybbWriteGroupsFile(state);
    EXPECT_EQ(board.messages, (Texts{u"3004 - mybbWriteGroupsFile()\r\n\r\nWrite to file failed."}));
    EXPECT_TRUE(state.CancelRequested);
    board.folder.MakeFolder("output");
    EXPECT_EQ(board.RowsOf(state.UserGroupsFile), (Rows{GroupRow(8, "Staff")}));
}

TEST_F(UserGroupsTable, TheHeadingIsAlwaysShownAndAlwaysLogged) {
    state.optDisplay = false;
    state.optLog = false;
    mybbWriteGroupsFile(state);
    EXPECT_EQ(board.TakeArea(), u"\r\nWriting mybb Groups Import File, Please Wait...\r\n");
    board.WriteBoardFile("no category");
    board.Convert();
    EXPECT_NE(board.Log().find(u"\r\nWriting mybb Groups Import File, Please Wait...\r\n"),
              std::u16string::npos);
    EXPECT_EQ(board.Output("LogError.txt").find("Groups Import"), std::string::npos);
}

TEST_F(UserGroupsTable, ItsFileIsFinishedFirstOfAll) {
    board.WriteBoardFile(testing::BoardFile("Main", {}));
    board.WriteMembers("anna:::::::1::Staff\n");
    board.Convert();
    const std::string script = board.Output("Discus Conversion Import SQL.sql");
    const auto groups = script.find("INTO TABLE mybb_usergroups\r\n");
    const auto forums = script.find("INTO TABLE mybb_forums\r\n");
    const auto users = script.find("INTO TABLE mybb_users\r\n");
    ASSERT_NE(groups, std::string::npos);
    ASSERT_NE(users, std::string::npos);
    EXPECT_LT(groups, forums);
    EXPECT_LT(forums, users);
}

}  // namespace
}  // namespace tessaly
