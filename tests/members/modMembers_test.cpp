#include "members/modMembers.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "members/clsGroup.h"
#include "members/clsMember.h"
#include "tests/support/ReadyBoard.h"
#include "text/split.h"

namespace tessaly {
namespace {

using testing::ReadyBoard;
using Texts = std::vector<std::u16string>;

// The member file has 1 default user unless told otherwise, so that its first member is number 2.
class MemberFile : public ::testing::Test {
  protected:
    void Read(std::string_view bytes) {
        board.WriteMembers(bytes);
        DiscusReadUserFile(state);
    }

    const clsMember& Member(int number) {
        const std::string digits = std::to_string(number);
        return *state.MembersById.Get(std::u16string(digits.begin(), digits.end()));
    }

    // Numbers and names of all members in the order of their entry: "2 anna/Anna Virtanen".
    Texts Members() const {
        Texts members;
        for (const auto& [number, member] : board.state.MembersById) {
            members.push_back(number + u" " + member->username + u"/" + member->RealName);
        }
        return members;
    }

    // The groups in the order of their entry: "8 Staff".
    Texts Groups() const {
        Texts groups;
        for (const auto& [name, group] : board.state.GroupsByName) {
            EXPECT_EQ(name, group->name);
            const std::string number = std::to_string(group->ID);
            groups.push_back(std::u16string(number.begin(), number.end()) + u" " + group->name);
        }
        return groups;
    }

    ReadyBoard board;
    ConversionState& state = board.state;
};

TEST_F(MemberFile, EachFieldOfALineGoesToItsPlace) {
    Read(
        "anna:aB,\"c\\D3:Anna@Host.Example:Anna Virtanen:4:5:1012345678:192.168.1.5:1043846797:Staff/Editors:"
        "more:and more\n");
    const clsMember& member = Member(2);
    EXPECT_EQ(member.username, u"anna");
    EXPECT_EQ(member.password, u"aB,\"c\\D3");
    EXPECT_EQ(member.email, u"anna@host.example");
    EXPECT_EQ(member.RealName, u"Anna Virtanen");
    EXPECT_EQ(member.RegisteredDate, 1012345678);
    EXPECT_EQ(member.IPAddr, u"192.168.1.5");
    EXPECT_EQ(member.lastpost, 1043846797);
    EXPECT_EQ(member.Groups, u"Staff/Editors");
    EXPECT_EQ(member.ID, 2);
    EXPECT_EQ(member.PostCount, 0);
    EXPECT_EQ(member.LastLogin, 0);
    EXPECT_EQ(Groups(), (Texts{u"8 Staff", u"9 Editors"}));
    EXPECT_EQ(state.MembersByUserName.Get(u"ANNA")->ID, 2);
    EXPECT_EQ(state.MembersByRealName.Get(u"anna virtanen")->ID, 2);
    EXPECT_EQ(state.RealNames.Get(u"Anna Virtanen"), u"Anna Virtanen");
    EXPECT_TRUE(board.messages.empty());
}

TEST_F(MemberFile, TheAdministratorIsMember1WhoeverElseIsThere) {
    state.DefaultUserCount = 5;
    Read("anna:::::::::\n");
    const clsMember& admin = Member(1);
    EXPECT_EQ(admin.username, u"Admin");
    EXPECT_EQ(admin.RealName, u"Admin");
    EXPECT_EQ(admin.password, u"");
    EXPECT_EQ(admin.email, u"admin@example.com");
    EXPECT_EQ(admin.IPAddr, u"0");
    EXPECT_EQ(admin.RegisteredDate, 0);
    EXPECT_EQ(admin.lastpost, 0);
    EXPECT_EQ(admin.Groups, u"");
    EXPECT_EQ(admin.ID, 1);
    EXPECT_EQ(Members(), (Texts{u"1 Admin/Admin", u"6 anna/anna"}));
}

TEST_F(MemberFile, TheAdministratorsNameIsCleanedLikeAnyOther) {
    state.DefaultAdmin = u"Smith([) J";
    Read("");
    EXPECT_EQ(Members(), (Texts{u"1 Smith J/Smith J"}));
}

TEST_F(MemberFile, AMemberOfTheAdministratorsNameGetsBothSuffixes) {
    Read("ADMIN:secret:root@host.example:Admin::::::\nadmin:::::::::\n");
    EXPECT_EQ(Members(), (Texts{u"1 Admin/Admin", u"2 ADMIN_2/Admin 2", u"3 admin_3/admin 3"}));
    EXPECT_EQ(Member(2).password, u"secret");
    EXPECT_EQ(Member(1).password, u"");
}

TEST_F(MemberFile, TheFirstMembersNumberLiesAboveTheDefaultUsersAndIs2AtTheLeast) {
    const int counts[][3] = {{0, 2, 0}, {1, 2, 0}, {2, 3, 1}, {5, 6, 4}, {-3, 2, 0}};
    for (const auto& [kept, number, left] : counts) {
        ReadyBoard fresh;
        fresh.state.DefaultUserCount = kept;
        fresh.WriteMembers("anna:::::::::\nbert:::::::::\n");
        DiscusReadUserFile(fresh.state);
        EXPECT_EQ(fresh.state.MembersByUserName.Get(u"anna")->ID, number) << kept;
        EXPECT_EQ(fresh.state.MembersByUserName.Get(u"bert")->ID, number + 1) << kept;
        // The count stays changed.
        EXPECT_EQ(fresh.state.DefaultUserCount, left) << kept;
    }
}

TEST_F(MemberFile, UserTxtComesBeforeUsersTxt) {
    board.WriteMembers("wrong:::::::::\n");
    board.folder.Write("source/discus_admin_1/User.txt", "anna:::::::::\n");
    DiscusReadUserFile(state);
    EXPECT_EQ(Members(), (Texts{u"1 Admin/Admin", u"2 anna/anna"}));
}

TEST_F(MemberFile, WithoutAFileTheAdministratorIsAloneAndNothingIsReported) {
    DiscusReadUserFile(state);
    EXPECT_EQ(Members(), (Texts{u"1 Admin/Admin"}));
    EXPECT_TRUE(board.messages.empty());
    EXPECT_FALSE(state.CancelRequested);
    EXPECT_EQ(state.MemberPostCounts.size(), 101u);
}

TEST_F(MemberFile, AnEmptyFileIsLikeNone) {
    Read("");
    EXPECT_EQ(Members(), (Texts{u"1 Admin/Admin"}));
    EXPECT_TRUE(board.messages.empty());
}

TEST_F(MemberFile, AFileThatCannotBeReadStopsTheRunAndTheAdministratorIsThereYet) {
    if (!std::filesystem::exists("/proc/self/mem")) GTEST_SKIP() << "this system has no such file";
    std::filesystem::create_symlink("/proc/self/mem", board.folder.Native("source/discus_admin_1/Users.txt"));
    DiscusReadUserFile(state);
    EXPECT_EQ(board.messages,
              (Texts{u"57 - GetFileDataCharset() - " + board.folder.Path("source/discus_admin_1/Users.txt") +
                     u"\r\n\r\nDevice I/O error"}));
    EXPECT_TRUE(state.CancelRequested);
    EXPECT_EQ(Members(), (Texts{u"1 Admin/Admin"}));
}

TEST_F(MemberFile, TheHeadingIsAlwaysShownAndAlwaysLogged) {
    state.optDisplay = false;
    state.optLog = false;
    DiscusReadUserFile(state);
    EXPECT_EQ(board.TakeArea(), u"Processing Discus Member File, Please wait...\r\n");
    board.WriteBoardFile("no category");
    board.Convert();
    EXPECT_NE(board.Log().find(u"Processing Discus Member File, Please wait...\r\n"), std::u16string::npos);
    EXPECT_EQ(board.Output("LogError.txt").find("Member File"), std::string::npos);
}

TEST_F(MemberFile, AfterACancelNothingHappens) {
    state.CancelRequested = true;
    Read("anna:::::::::\n");
    EXPECT_EQ(Members(), Texts{});
    EXPECT_EQ(state.txtArea.Text, u"");
    EXPECT_EQ(state.DefaultUserCount, 1);
}

TEST_F(MemberFile, LinesEndInLineFeedsOrInBothCharacters) {
    const Texts expected{u"1 Admin/Admin", u"2 anna/anna", u"3 bert/bert"};
    for (const std::string_view bytes :
         {"anna:::::::::\nbert:::::::::\n", "anna:::::::::\r\nbert:::::::::\r\n",
          "anna:::::::::\n\n\nbert:::::::::", "\r\nanna:::::::::\r\n\r\nbert:::::::::"}) {
        ReadyBoard fresh;
        fresh.WriteMembers(bytes);
        DiscusReadUserFile(fresh.state);
        Texts members;
        for (const auto& [number, member] : fresh.state.MembersById) {
            members.push_back(number + u" " + member->username + u"/" + member->RealName);
            EXPECT_EQ(member->Groups, u"");
        }
        EXPECT_EQ(members, expected) << bytes;
    }
}

// One carriage return anywhere, and line feeds alone end no line any more.
TEST_F(MemberFile, ASingleCarriageReturnMakesOneLineOfAFileWithLineFeeds) {
    Read("anna:::::::::Staff\nbert:::::::::Ed\ritors\n");
    EXPECT_EQ(Members(), (Texts{u"1 Admin/Admin", u"2 anna/anna"}));
    EXPECT_EQ(Member(2).Groups, u"Staff\nbert");
    EXPECT_EQ(Groups(), (Texts{u"8 Staff(:)bert"}));
}

TEST_F(MemberFile, AByteOrderMarkIsNoPartOfTheFirstName) {
    Read(
        "\xEF\xBB\xBF"
        "anna:::::::::\n");
    EXPECT_EQ(Member(2).username, u"anna");
}

TEST_F(MemberFile, TheFileIsReadAsUtf8WhateverTheCharset) {
    state.Charset = u"iso-8859-1";
    Read("b\xC3\xA4rbel::B\xC3\x84@X.example:::::::\n");
    EXPECT_EQ(Member(2).username, u"b\u00E4rbel");
    EXPECT_EQ(Member(2).email, u"b\u00E4@x.example");
}

TEST_F(MemberFile, SequencesOfTheFileAreExchanged) {
    state.ReplaceableCharacters.Add(u"&auml;", u"\u00E4");
    Read("b&auml;r:::::::::\n");
    EXPECT_EQ(Member(2).username, u"b\u00E4r");
}

TEST_F(MemberFile, ALineWithABlankNameGivesItsGroupsAndNoMember) {
    Read("   :pw::Nobody:::0:::Staff\nanna:::::::::Editors\n");
    EXPECT_EQ(Members(), (Texts{u"1 Admin/Admin", u"2 anna/anna"}));
    EXPECT_EQ(Groups(), (Texts{u"8 Staff", u"9 Editors"}));
    EXPECT_TRUE(board.messages.empty());
}

TEST_F(MemberFile, WithoutARealNameTheUserNameServesAsItStandsInTheFile) {
    Read("an,na:::::::::\n bert :::   ::::::\n");
    EXPECT_EQ(Members(), (Texts{u"1 Admin/Admin", u"2 anna/anna", u"3 bert/bert"}));
}

TEST_F(MemberFile, ARealNameThatIsTakenGetsABlankAndTheNumber) {
    Read("anna:::Anna Virtanen::::::\nbert:::ANNA virtanen::::::\n");
    EXPECT_EQ(Members(), (Texts{u"1 Admin/Admin", u"2 anna/Anna Virtanen", u"3 bert/ANNA virtanen 3"}));
    EXPECT_EQ(state.MembersByRealName.Get(u"Anna Virtanen")->ID, 2);
    EXPECT_EQ(state.MembersByRealName.Get(u"Anna Virtanen 3")->ID, 3);
    EXPECT_EQ(state.MembersByUserName.Get(u"bert")->ID, 3);
    EXPECT_EQ(state.RealNames.Find(u"Anna Virtanen 3"), nullptr);
}

TEST_F(MemberFile, AUserNameThatIsTakenGetsAnUnderscoreAndTheNumber) {
    Read("anna:::Anna One::::::\nANNA:::Anna Two::::::\n");
    EXPECT_EQ(Members(), (Texts{u"1 Admin/Admin", u"2 anna/Anna One", u"3 ANNA_3/Anna Two"}));
    EXPECT_EQ(state.MembersByUserName.Get(u"anna")->ID, 2);
    EXPECT_EQ(state.MembersByUserName.Get(u"anna_3")->ID, 3);
}

TEST_F(MemberFile, TheKelvinSignIsTheLetterK) {
    Read("kim:::Kim Lee::::::\n\xE2\x84\xAAim:::\xE2\x84\xAAIM LEE::::::\n");
    EXPECT_EQ(Members(), (Texts{u"1 Admin/Admin", u"2 kim/Kim Lee", u"3 \u212Aim_3/\u212AIM LEE 3"}));
}

// The changed name is not among the names that are looked at, and the collection that gives the numbers does
// not grow: the next member gets the same number again, and no place in the list by number.
TEST_F(MemberFile, AChangedRealNameThatIsTakenAsWellGivesTheNextMemberTheSameNumber) {
    Read("b1:::Bob::::::\nb2:::Bob 4::::::\nb3:::Bob::::::\neve:::Eve::::::\nfred:::Fred::::::\n");
    EXPECT_EQ(Members(),
              (Texts{u"1 Admin/Admin", u"2 b1/Bob", u"3 b2/Bob 4", u"4 b3/Bob 4", u"5 fred/Fred"}));
    EXPECT_EQ(state.MembersByRealName.Get(u"Bob 4")->username, u"b2");
    EXPECT_EQ(state.MembersByRealName.Get(u"Eve")->ID, 4);
    EXPECT_EQ(state.MembersByUserName.Get(u"b3")->ID, 4);
    EXPECT_EQ(state.MembersByUserName.Get(u"eve")->ID, 4);
    EXPECT_TRUE(board.messages.empty());
}

TEST_F(MemberFile, ANameLikeAChangedOneIsNotSeenToBeTaken) {
    Read("b1:::Bob::::::\nb2:::Bob::::::\nb3:::Bob 3::::::\neve:::Eve::::::\n");
    EXPECT_EQ(Members(), (Texts{u"1 Admin/Admin", u"2 b1/Bob", u"3 b2/Bob 3", u"4 b3/Bob 3"}));
    EXPECT_EQ(state.MembersByRealName.Get(u"Bob 3")->username, u"b2");
}

TEST_F(MemberFile, AChangedUserNameThatIsTakenAsWellIsLeftOutOfTheNames) {
    Read("anna:::A::::::\nanna_4:::B::::::\nanna:::C::::::\ndora:::D::::::\n");
    EXPECT_EQ(Members(), (Texts{u"1 Admin/Admin", u"2 anna/A", u"3 anna_4/B", u"4 anna_4/C", u"5 dora/D"}));
    EXPECT_EQ(state.MembersByUserName.Get(u"anna_4")->ID, 3);
}

TEST_F(MemberFile, NamesLoseTheirMarksAndKeepTheirTags) {
    Read("An,na \"x\" <b>y</b> 'z' `q\\ w?:::M. O'Hara, J.R. ...::::::\n");
    EXPECT_EQ(Members(), (Texts{u"1 Admin/Admin", u"2 Anna x <b>y</b> z q w/M. OHara J.R"}));
}

TEST_F(MemberFile, ANameOfMarksAloneIsAnEmptyName) {
    Read("?,^:::::::::\n',':::::::::\n");
    EXPECT_EQ(Members(), (Texts{u"1 Admin/Admin", u"2 /", u"3 _3/ 3"}));
    EXPECT_EQ(state.MembersByUserName.Get(u"")->ID, 2);
}

TEST_F(MemberFile, ATimeThatIsNoNumberIs0) {
    Read("anna::::::yesterday::12:34:\nbert::::::::\t7:\ncarl::::::0x10::1,5:\n");
    EXPECT_EQ(Member(2).RegisteredDate, 0);
    EXPECT_EQ(Member(2).lastpost, 12);
    EXPECT_EQ(Member(2).Groups, u"34");
    EXPECT_EQ(Member(3).RegisteredDate, 0);
    EXPECT_EQ(Member(3).lastpost, 0);
    EXPECT_EQ(Member(4).RegisteredDate, 0);
    EXPECT_EQ(Member(4).lastpost, 0);
    EXPECT_TRUE(board.messages.empty());
}

TEST_F(MemberFile, ATimeIsAnyDecimalNumberRoundedHalfToEven) {
    Read("anna:::::: 1012345678 ::12.5:\nbert::::::-5::13.5:\ncarl::::::1e3::+.4:\n");
    EXPECT_EQ(Member(2).RegisteredDate, 1012345678);
    EXPECT_EQ(Member(2).lastpost, 12);
    EXPECT_EQ(Member(3).RegisteredDate, -5);
    EXPECT_EQ(Member(3).lastpost, 14);
    EXPECT_EQ(Member(4).RegisteredDate, 1000);
    EXPECT_EQ(Member(4).lastpost, 0);
}

TEST_F(MemberFile, ATimeThatDoesNotFitIsAMessageAndTheLinesBehindItAreStillRead) {
    Read("anna::::::2147483648:::Staff\nbert::::::0::-2147483649:\ncarl::::::2147483647::-2147483648:\n");
    EXPECT_EQ(board.messages,
              (Texts{u"6 - DiscusAddMember()\r\n\r\nOverflow", u"6 - DiscusAddMember()\r\n\r\nOverflow"}));
    EXPECT_EQ(state.ToolboxA.RecordedErrors, board.messages);
    EXPECT_TRUE(state.CancelRequested);
    EXPECT_EQ(Members(), (Texts{u"1 Admin/Admin", u"2 carl/carl"}));
    EXPECT_EQ(Member(2).RegisteredDate, 2147483647);
    EXPECT_EQ(Member(2).lastpost, -2147483647 - 1);
    EXPECT_EQ(Groups(), (Texts{u"8 Staff"}));
}

TEST_F(MemberFile, ALineWithTooFewFieldsIsOneMessageAndTheLinesBehindItAreStillRead) {
    Read("anna\nbert:::::::::Staff\nno:groups:a@b.example:No Groups:::0:1.2.3.4:0\ncarl:::::::::\n");
    EXPECT_EQ(board.messages, (Texts{u"9 - DiscusAddMember()\r\n\r\nSubscript out of range",
                                     u"9 - DiscusAddMember()\r\n\r\nSubscript out of range"}));
    EXPECT_TRUE(state.CancelRequested);
    EXPECT_EQ(Members(), (Texts{u"1 Admin/Admin", u"2 bert/bert", u"3 carl/carl"}));
    EXPECT_EQ(Groups(), (Texts{u"8 Staff"}));
}

// "((>)[)" loses "(>)" in the first cleaning and becomes "([)", which the second one takes away too.
TEST_F(MemberFile, AShortLineTakesTheGroupsOfTheLineBeforeOnceMoreInTheirChangedForm) {
    Read("anna:::::::::((>)[)/Staff\nshort\nshort\nbert:::::::::Editors\n");
    EXPECT_EQ(Groups(), (Texts{u"8 ([)", u"9 Staff", u"10 ", u"11 Editors"}));
    EXPECT_EQ(board.messages.size(), 2u);
}

TEST_F(MemberFile, ALineWithAnEmptyGroupFieldLeavesNoGroupsForAShortOne) {
    Read("anna:::::::::((>)[)\nbert:::::::::\nshort\n");
    EXPECT_EQ(Groups(), (Texts{u"8 ([)"}));
}

TEST_F(MemberFile, GroupsAreAddedAtTheirFirstSightingAboveTheDefaultOnes) {
    state.DefaultGroupCount = 0;
    Read("anna:::::::::Staff/Editors//Staff\nbert:::::::::EDITORS/Guests\n");
    EXPECT_EQ(Groups(), (Texts{u"1 Staff", u"2 Editors", u"3 Guests"}));
}

TEST_F(MemberFile, AGroupIsKnownUnderItsCleanedNameAloneWhileTheMemberKeepsTheFilesForm) {
    Read("anna:::::::::Staff, old/ Night Watch /O'Neil\n");
    EXPECT_EQ(Groups(), (Texts{u"8 Staff old", u"9 Night Watch", u"10 ONeil"}));
    EXPECT_EQ(Member(2).Groups, u"Staff, old/ Night Watch /O'Neil");
}

TEST_F(MemberFile, AGroupOfABlankIsAGroupWithoutAName) {
    Read("anna::::::::: /,\n");
    EXPECT_EQ(Groups(), (Texts{u"8 "}));
}

TEST_F(MemberFile, TheCountsOfPostsBeginAnewWith101Elements) {
    state.MemberPostCounts.assign(500, 7);
    Read("anna:::::::::\n");
    EXPECT_EQ(state.MemberPostCounts, std::vector<std::int32_t>(101, 0));
}

std::string Lines(int count) {
    std::string lines;
    for (int line = 0; line < count; ++line) lines += "member" + std::to_string(line) + ":::::::::\n";
    return lines;
}

// The counter begins at the count of default users, here 1, and a line's turn comes when it meets the last
// index, 100.
TEST_F(MemberFile, TheCountsOfPostsGrowWhenTheCounterMeetsTheirLastIndex) {
    Read(Lines(98));
    EXPECT_EQ(state.MemberPostCounts.size(), 101u);
    state.MembersById = {};
    state.DefaultUserCount = 1;
    Read(Lines(99));
    EXPECT_EQ(state.MemberPostCounts.size(), 201u);
    state.DefaultUserCount = 1;
    Read(Lines(199));
    EXPECT_EQ(state.MemberPostCounts.size(), 301u);
}

TEST_F(MemberFile, ALineThatFailsCountsForTheGrowthToo) {
    Read(Lines(98) + "short\n");
    EXPECT_EQ(state.MemberPostCounts.size(), 201u);
}

TEST_F(MemberFile, ACounterThatBeginsBehindTheLastIndexNeverMeetsIt) {
    state.DefaultUserCount = 100;
    Read(Lines(300));
    EXPECT_EQ(state.MemberPostCounts.size(), 101u);
}

TEST_F(MemberFile, TenThousandMembersOfOneNameAllGetTheirOwn) {
    std::string lines;
    for (int line = 0; line < 10000; ++line) lines += "bob:::Bob::::::Staff\n";
    Read(lines);
    EXPECT_EQ(state.MembersById.Count(), 10001);
    EXPECT_EQ(state.MembersByUserName.Count(), 10001);
    EXPECT_EQ(state.MembersByRealName.Count(), 10001);
    EXPECT_EQ(Member(2).username, u"bob");
    EXPECT_EQ(Member(3).username, u"bob_3");
    EXPECT_EQ(Member(10001).username, u"bob_10001");
    EXPECT_EQ(Member(10001).RealName, u"Bob 10001");
    EXPECT_EQ(Groups(), (Texts{u"8 Staff"}));
}

TEST_F(MemberFile, AFileOfMegabytesIsRead) {
    std::string lines;
    for (int line = 0; line < 30000; ++line) {
        const std::string name = "member" + std::to_string(line);
        lines += name + ":aBcD3fGh:" + name + "@host.example:Member number " + std::to_string(line) +
                 ":x:y:1012345678:192.168.1.5:1043846797:Moderators/Editors:more fields\r\n";
    }
    ASSERT_GT(lines.size(), 3000000u);
    Read(lines);
    EXPECT_EQ(state.MembersById.Count(), 30001);
    EXPECT_EQ(Member(30001).RealName, u"Member number 29999");
    EXPECT_EQ(Groups(), (Texts{u"8 Moderators", u"9 Editors"}));
}

TEST_F(MemberFile, MembersAddedLaterGoOnWithTheNextNumber) {
    state.DefaultUserCount = 5;
    Read("anna:::::::::\n");
    EXPECT_EQ(DiscusAddMember(state, Split(u"Bert,,,,,,,,,,", u",")), 7);
    const clsMember& bert = Member(7);
    EXPECT_EQ(bert.username, u"Bert");
    EXPECT_EQ(bert.RealName, u"Bert");
    EXPECT_EQ(bert.password, u"");
    EXPECT_EQ(bert.email, u"");
    EXPECT_EQ(bert.Groups, u"");
    EXPECT_EQ(bert.IPAddr, u"");
    EXPECT_EQ(bert.RegisteredDate, 0);
    EXPECT_EQ(bert.lastpost, 0);
}

TEST_F(MemberFile, AMemberThatCannotBeAddedHasNumber0) {
    EXPECT_EQ(DiscusAddMember(state, Split(u"Bert", u",")), 0);
    EXPECT_EQ(state.MembersById.Count(), 0);
    EXPECT_TRUE(state.CancelRequested);
}

TEST_F(MemberFile, TheStepOfTheGroupsChangesTheNamesInPlace) {
    Texts names{u" a,b ", u"", u"c?", u"AB"};
    DiscusAddGroups(state, names);
    EXPECT_EQ(names, (Texts{u"ab", u"", u"c", u"AB"}));
    EXPECT_EQ(Groups(), (Texts{u"8 ab", u"9 c"}));
}

}  // namespace
}  // namespace tessaly
