#include "output/mybbWriteForumsFile.h"

#include <gtest/gtest.h>

#include "output/OutputFiles.h"
#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

using testing::TestBoard;

struct ForumBoard : TestBoard {
    ForumBoard() {
        folder.MakeFolder("output");
        state.Charset = u"utf-8";
        state.SplitMBSize = 0;
        BeginOutputFile(state.ForumsFile, state.mybbOutputFolder + u"mybb_forumsXXX.txt");
    }

    // Writes a forum and gives the parent list as it stands behind the call.
    std::u16string Write(std::u16string_view name, std::u16string parentList,
                         std::u16string_view stype = u"f") {
        mybbWriteForumsFile(state, name, state.ForumCounter, 1, parentList, stype, u"");
        return parentList;
    }

    std::vector<std::string> Written() {
        FinishOutputFile(state, state.ForumsFile, u"mybb_forums");
        return Rows("mybb_forums1.txt");
    }
};

// A row's columns behind the parent list, the same in every row.
constexpr const char* kRest =
    R"(,1,1,1,0,0,0,"",0,0,"",0,1,1,1,1,1,1,1,1,0,"",1,0,0,0,"","",0,0,0,0,0,"","")";

TEST(mybbWriteForumsFile, GivesACategoryNoParent) {
    ForumBoard board;
    EXPECT_EQ(board.Write(u"Main", u"", u"c"), u"");
    EXPECT_EQ(board.Written(), (std::vector<std::string>{std::string(R"(1,"Main","","","c",0,"")") + kRest}));
}

TEST(mybbWriteForumsFile, TakesTheOneNumberOfTheListAsParent) {
    ForumBoard board;
    board.state.ForumCounter = 4;
    EXPECT_EQ(board.Write(u"Radios", u"2,"), u"2");
    EXPECT_EQ(board.Written(),
              (std::vector<std::string>{std::string(R"(5,"Radios","","","f",2,"2")") + kRest}));
}

TEST(mybbWriteForumsFile, TakesTheNearestParentOfALongerList) {
    ForumBoard board;
    EXPECT_EQ(board.Write(u"Deep", u"2,5,"), u"2,5");
    EXPECT_EQ(board.Write(u"Deeper", u"2,5,11,"), u"2,5,11");
    EXPECT_EQ(board.Write(u"Without its last comma", u"3,12"), u"3,12");
    const std::string rest = kRest;
    EXPECT_EQ(board.Written(),
              (std::vector<std::string>{R"(1,"Deep","","","f",5,"2,5")" + rest,
                                        R"(2,"Deeper","","","f",11,"2,5,11")" + rest,
                                        R"(3,"Without its last comma","","","f",12,"3,12")" + rest}));
}

TEST(mybbWriteForumsFile, CutsOneCommaAloneSoThatAnEmptyLastNumberIsAFailure) {
    ForumBoard board;
    EXPECT_EQ(board.Write(u"Odd", u"2,,"), u"2,");
    EXPECT_EQ(board.messages,
              (std::vector<std::u16string>{u"13 - mybbWriteForumsFile()\r\n\r\nType mismatch"}));
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_EQ(board.state.ForumCounter, 1);
    EXPECT_EQ(board.state.ForumIdsByName.Count(), 0);
}

TEST(mybbWriteForumsFile, ReadsTheParentUpToWhatIsNoNumber) {
    ForumBoard board;
    EXPECT_EQ(board.Write(u"A", u"12x"), u"12x");
    EXPECT_EQ(board.Write(u"B", u"x"), u"x");
    const std::string rest = kRest;
    EXPECT_EQ(board.Written(), (std::vector<std::string>{R"(1,"A","","","f",12,"12x")" + rest,
                                                         R"(2,"B","","","f",0,"x")" + rest}));
}

TEST(mybbWriteForumsFile, LetsTheLaterForumOfANameWinWhateverItsCase) {
    ForumBoard board;
    board.Write(u"Radios", u"");
    board.Write(u"Other", u"");
    board.Write(u"RADIOS", u"");
    EXPECT_EQ(board.Written().size(), 3u);
    EXPECT_EQ(board.state.ForumIdsByName.Count(), 2);
    EXPECT_EQ(board.state.ForumIdsByName.Get(u"radios"), 3);
    EXPECT_EQ(board.state.ForumIdsByName.Get(u"other"), 2);
    EXPECT_TRUE(board.messages.empty());
}

TEST(mybbWriteForumsFile, EntersANameUnderItsEscapedForm) {
    ForumBoard board;
    board.Write(u"Tubes, <b>old</b> \"and\" new", u"");
    EXPECT_EQ(
        board.Written(),
        (std::vector<std::string>{std::string(R"(1,"Tubes([) old (})and(}) new","","","f",0,"")") + kRest}));
    EXPECT_NE(board.state.ForumIdsByName.Find(u"Tubes([) old (})and(}) new"), nullptr);
    EXPECT_EQ(board.state.ForumIdsByName.Find(u"Tubes, old \"and\" new"), nullptr);
}

TEST(mybbWriteForumsFile, WritesTheDescriptionAsItIsAndNotTheOrder) {
    ForumBoard board;
    std::u16string none;
    mybbWriteForumsFile(board.state, u"A", board.state.ForumCounter, 99, none, u"f", u"as it is");
    EXPECT_EQ(board.Written(),
              (std::vector<std::string>{std::string(R"(1,"A","as it is","","f",0,"")") + kRest}));
}

TEST(mybbWriteForumsFile, EntersAnEmptyNameLikeAnyOther) {
    ForumBoard board;
    board.Write(u"", u"");
    board.Write(u"", u"");
    EXPECT_EQ(board.state.ForumIdsByName.Get(u""), 2);
}

}  // namespace
}  // namespace tessaly
