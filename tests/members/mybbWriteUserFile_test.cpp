#include "members/mybbWriteUserFile.h"

#include <gtest/gtest.h>

#include <sstream>

#include "members/clsMember.h"
#include "members/modMembers.h"
#include "tests/support/ReadyBoard.h"

namespace tessaly {
namespace {

using testing::ReadyBoard;
using Rows = std::vector<std::string>;
using Texts = std::vector<std::u16string>;

struct User {
    int number;
    std::string name;
    int group = 0;
    int address = 0;
    std::string password = {};
    std::string email = {};
    int registered = 0;
    int lastPost = 0;
    int posts = 0;
};

std::string UserRow(const User& user) {
    const std::string address = std::to_string(user.address);
    return std::to_string(user.number) + ",\"" + user.name + "\",\"" + user.password + R"(","","",")" +
           user.email + "\"," + std::to_string(user.posts) + R"(,0,"","","",)" + std::to_string(user.group) +
           R"(,"",0,"",)" + std::to_string(user.registered) + ",0,0," + std::to_string(user.lastPost) +
           R"(,"","","","","","","","all","",1,0,0,0,1,0,1,1,1,0,"",1,1,1,1,1,1,0,0,0,"","","0",0,0,"","",0,)"
           R"(0,0,"","","","",0,0,0,)" +
           address + "," + address + R"(,"",0,1,0,0,0,0,0,0,0,0,0,0,0,0,"",0)";
}

class UsersTable : public ::testing::Test {
  protected:
    // Members from number 2 on behind the administrator.
    void ReadMembers(std::string_view bytes) {
        board.WriteMembers(bytes);
        DiscusReadUserFile(state);
        board.TakeArea();
    }

    Rows Written() {
        mybbWriteUserFile(state);
        return board.HasOutput("mybb_users1.txt") ? board.Rows("mybb_users1.txt") : Rows{};
    }

    // `regip` of one member with this address, which `lastip` always equals; the message when there is one.
    std::string AddressOf(std::string_view address) {
        ReadyBoard fresh;
        fresh.WriteMembers("anna:::::::" + std::string(address) + "::\n");
        DiscusReadUserFile(fresh.state);
        mybbWriteUserFile(fresh.state);
        if (!fresh.messages.empty()) return std::string(fresh.messages[0].begin(), fresh.messages[0].end());
        // No text of this row holds a comma.
        std::istringstream row(fresh.Rows("mybb_users1.txt").at(0));
        Rows columns;
        for (std::string column; std::getline(row, column, ',');) columns.push_back(column);
        EXPECT_EQ(columns.size(), 84u);
        EXPECT_EQ(columns.at(65), columns.at(66));
        return columns.at(65);
    }

    ReadyBoard board;
    ConversionState& state = board.state;
};

TEST_F(UsersTable, ARowTellsAMemberInAll84Columns) {
    ReadMembers("anna:aBcD3fGh:Anna@Host.Example:Anna Virtanen:::1012345678:192.168.1.5:1043846797:Staff:\n");
    EXPECT_EQ(
        Written(),
        (Rows{
            R"(2,"anna","aBcD3fGh","","","anna@host.example",0,0,"","","",8,"",0,"",1012345678,0,0,1043846797,)"
            R"("","","","","","","","all","",1,0,0,0,1,0,1,1,1,0,"",1,1,1,1,1,1,0,0,0,"","","0",0,0,"","",0,0,0,)"
            R"("","","","",0,0,0,49494953,49494953,"",0,1,0,0,0,0,0,0,0,0,0,0,0,0,"",0)"}));
    EXPECT_EQ(state.UsersImportFile.Stream, nullptr);
    const std::string file = testing::SqlName(board.folder.Native("output/mybb_users1.txt"));
    EXPECT_EQ(board.Output("Discus Conversion Import SQL.sql"),
              "LOAD DATA LOCAL INFILE '" + file +
                  "' INTO TABLE mybb_users\r\nFIELDS TERMINATED BY ','\r\n"
                  "ENCLOSED BY '\"'LINES TERMINATED BY '\\r\\n';\r\n\r\n\r\n");
}

TEST_F(UsersTable, TheAdministratorAloneGivesNoRowNoFileAndNoStatement) {
    ReadMembers("");
    EXPECT_EQ(Written(), Rows{});
    EXPECT_TRUE(board.folder.Files("output").empty());
}

TEST_F(UsersTable, AnAddedPosterHasEmptyFields) {
    ReadMembers("");
    board.AddMember(u"Bert::::::::::");
    EXPECT_EQ(Written(), (Rows{UserRow({2, "Bert"})}));
}

TEST_F(UsersTable, TheFirstGroupFoundIsTheMembersGroup) {
    ReadMembers("anna:::::::1::Staff/Editors\nbert:::::::1::/editors/Staff\n");
    EXPECT_EQ(Written(), (Rows{UserRow({2, "anna", 8, 1}), UserRow({3, "bert", 9, 1})}));
}

TEST_F(UsersTable, AMemberWithoutGroupsKeepsTheGroupOfTheMemberBefore) {
    ReadMembers(
        "anna:::::::1::\nbert:::::::1::Staff\ncarl:::::::1::\ndora:::::::1::Editors\nemil:::::::1::\n");
    EXPECT_EQ(Written(),
              (Rows{UserRow({2, "anna", 0, 1}), UserRow({3, "bert", 8, 1}), UserRow({4, "carl", 8, 1}),
                    UserRow({5, "dora", 9, 1}), UserRow({6, "emil", 9, 1})}));
}

TEST_F(UsersTable, AMemberWhoseGroupsAreEmptyNamesHasNone) {
    ReadMembers("anna:::::::1::Staff\nbert:::::::1:://\n");
    EXPECT_EQ(Written(), (Rows{UserRow({2, "anna", 8, 1}), UserRow({3, "bert", 0, 1})}));
}

TEST_F(UsersTable, AGroupWhoseNameWasChangedStopsTheRowsBehindThoseWritten) {
    ReadMembers("anna:::::::1::Staff\nbert:::::::1::Staff, old\ncarl:::::::1::Staff\n");
    mybbWriteUserFile(state);
    EXPECT_EQ(board.messages, (Texts{u"5 - mybbWriteUserFile()\r\n\r\nInvalid procedure call or argument"}));
    EXPECT_TRUE(state.CancelRequested);
    EXPECT_EQ(board.RowsOf(state.UsersImportFile), (Rows{UserRow({2, "anna", 8, 1})}));
}

TEST_F(UsersTable, RowsWrittenBeforeAFailureAreSavedAtTheEndOfTheRun) {
    board.WriteBoardFile("no category");
    board.WriteMembers("anna:::::::1::Staff\nbert:::::::1::Staff?\n");
    board.Convert();
    EXPECT_EQ(board.Rows("mybb_users1.txt"), (Rows{UserRow({2, "anna", 8, 1})}));
    EXPECT_NE(board.Output("Discus Conversion Import SQL.sql").find("INTO TABLE mybb_users\r\n"),
              std::string::npos);
}

// Element 0 is not the member's own count.
TEST_F(UsersTable, TheCountOfPostsIsElement0ForAll) {
    ReadMembers("anna:::::::1::\nbert:::::::1::\n");
    state.MemberPostCounts[0] = 3;
    state.MemberPostCounts[2] = 40;
    User anna{2, "anna", 0, 1};
    User bert{3, "bert", 0, 1};
    anna.posts = bert.posts = 3;
    EXPECT_EQ(Written(), (Rows{UserRow(anna), UserRow(bert)}));
}

TEST_F(UsersTable, AnAddressIsTheCodesOfTheFirstCharactersOfItsFourPartsJoined) {
    EXPECT_EQ(AddressOf("192.168.1.5"), "49494953");
    EXPECT_EQ(AddressOf("10.0.0.1"), "49484849");
    EXPECT_EQ(AddressOf("1.2.3.4.5"), "49505152");
    EXPECT_EQ(AddressOf("a.b.c.d"), "979899100");
    EXPECT_EQ(AddressOf(" 1. 2.3.4."), "32325152");
}

TEST_F(UsersTable, TheCodeOfACharacterBeyondAsciiIsThatOfTheSingleByteCodePage) {
    // 228, 128 for the euro sign, and that of "?" for what the code page does not have.
    EXPECT_EQ(AddressOf("\xC3\xA4.1.1.1"), "228494949");
    EXPECT_EQ(AddressOf("\xE2\x82\xAC.1.1.1"), "128494949");
    EXPECT_EQ(AddressOf("\xD1\x8F.1.1.1"), "63494949");
    EXPECT_EQ(AddressOf("\xF0\x9F\x98\x80.1.1.1"), "63494949");
}

TEST_F(UsersTable, AnAddressWithoutAPointIsTheNumberAtItsBeginning) {
    EXPECT_EQ(AddressOf("1234"), "1234");
    EXPECT_EQ(AddressOf("  12abc"), "12");
    EXPECT_EQ(AddressOf("-5"), "-5");
    EXPECT_EQ(AddressOf("1e2"), "100");
    EXPECT_EQ(AddressOf("2147483647"), "2147483647");
}

TEST_F(UsersTable, AnAddressWithTooFewOrEmptyPartsStopsTheRun) {
    EXPECT_EQ(AddressOf("1.2.3"), "9 - mybbWriteUserFile()\r\n\r\nSubscript out of range");
    EXPECT_EQ(AddressOf("1."), "5 - mybbWriteUserFile()\r\n\r\nInvalid procedure call or argument");
    EXPECT_EQ(AddressOf("1..2.3"), "5 - mybbWriteUserFile()\r\n\r\nInvalid procedure call or argument");
    EXPECT_EQ(AddressOf(".1.2.3"), "5 - mybbWriteUserFile()\r\n\r\nInvalid procedure call or argument");
    EXPECT_EQ(AddressOf("1.2.3."), "5 - mybbWriteUserFile()\r\n\r\nInvalid procedure call or argument");
}

TEST_F(UsersTable, AnAddressThatDoesNotFitStopsTheRun) {
    EXPECT_EQ(AddressOf("\xC3\xA4.\xC3\xA4.1.1"), "6 - mybbWriteUserFile()\r\n\r\nOverflow");
    // 120, 121, 122 and 49: ten digits and one too many.
    EXPECT_EQ(AddressOf("x.y.z.1"), "6 - mybbWriteUserFile()\r\n\r\nOverflow");
    EXPECT_EQ(AddressOf("2147483648"), "6 - mybbWriteUserFile()\r\n\r\nOverflow");
}

TEST_F(UsersTable, MembersWithoutAUsableAddressAreNumberedFrom0) {
    ReadMembers("a:::::::0::\nb:::::::::\nc:::::::5::\nd:::::::none::\ne:::::::0.0.0.0::\nf:::::::0::\n");
    // The codes of four zeros: 48484848.
    EXPECT_EQ(Written(),
              (Rows{UserRow({2, "a", 0, 0}), UserRow({3, "b", 0, 1}), UserRow({4, "c", 0, 5}),
                    UserRow({5, "d", 0, 2}), UserRow({6, "e", 0, 48484848}), UserRow({7, "f", 0, 3})}));
}

TEST_F(UsersTable, TheNameIsEscapedOnceMoreAndPasswordAndAddressAreNot) {
    ReadMembers("anna:a\"b,c'd\\e:\"A,B\"@host.example:::::1::\n");
    state.MembersById.Get(u"2")->username = u"an,na";
    User anna{2, "an([)na", 0, 1};
    anna.password = "a\"b,c'd\\e";
    anna.email = "\"a,b\"@host.example";
    EXPECT_EQ(Written(), (Rows{UserRow(anna)}));
}

TEST_F(UsersTable, AMemberWhoseNumberWasTakenHasNoRow) {
    ReadMembers("b1:::Bob::::1::\nb2:::Bob 4::::1::\nb3:::Bob::::1::\neve:::Eve::::1::\n");
    EXPECT_EQ(Written(),
              (Rows{UserRow({2, "b1", 0, 1}), UserRow({3, "b2", 0, 1}), UserRow({4, "b3", 0, 1})}));
}

TEST_F(UsersTable, ARunThatIsCancelledStillWritesItsMembers) {
    ReadMembers("anna:::::::1::\nbert:::::::1::\n");
    state.CancelRequested = true;
    EXPECT_EQ(Written(), (Rows{UserRow({2, "anna", 0, 1}), UserRow({3, "bert", 0, 1})}));
    EXPECT_EQ(state.UsersImportFile.Stream, nullptr);
}

TEST_F(UsersTable, TheHeadingIsAlwaysShownAndAlwaysLogged) {
    ReadMembers("");
    state.optDisplay = false;
    state.optLog = false;
    mybbWriteUserFile(state);
    EXPECT_EQ(board.TakeArea(), u"\r\nWriting mybb Users Import File, Please Wait...\r\n");
    board.WriteBoardFile("no category");
    board.Convert();
    EXPECT_NE(board.Log().find(u"\r\nWriting mybb Users Import File, Please Wait...\r\n"),
              std::u16string::npos);
    EXPECT_EQ(board.Output("LogError.txt").find("Users Import"), std::string::npos);
}

TEST_F(UsersTable, PostersFoundOnTheBoardAreAmongTheRows) {
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    board.WritePage("12/12.html", testing::PageHead("12/T", "12/Radios", "Title", "Subject") +
                                      testing::Post(1, "Anna Virtanen", "100", "one") +
                                      testing::Post(2, "Bert", "200", "two"));
    board.WriteMembers("anna:::Anna Virtanen:::0:1:0:\n");
    board.Convert();
    EXPECT_EQ(board.Rows("mybb_users1.txt"), (Rows{UserRow({2, "anna", 0, 1}), UserRow({3, "Bert", 0, 0})}));
}

}  // namespace
}  // namespace tessaly
