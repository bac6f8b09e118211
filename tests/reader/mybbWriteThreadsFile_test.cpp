#include <gtest/gtest.h>

#include <limits>

#include "reader/modThreads.h"
#include "tests/support/ReadyBoard.h"

namespace tessaly {
namespace {

using testing::ReadyBoard;
using Rows = std::vector<std::string>;
using Texts = std::vector<std::u16string>;

// The page in hand at depth 1, with the members Admin (1), Anna (2) and Bert (3).
class mybbWriteThreadsFileTest : public ::testing::Test {
  protected:
    mybbWriteThreadsFileTest() {
        state.DefaultUserCount = 0;
        board.AddMember(u"Admin:::::::::");
        board.AddMember(u"anna:::Anna::::::");
        board.AddMember(u"bert:::Bert::::::");
        state.Depth = 1;
        ResetDataIndex(state, 1);
        state.DataIndex[1].FileNumber = u"34";
    }

    void Write(std::int32_t firstPost, std::int32_t lastPost, std::int32_t firstPoster,
               std::int32_t lastPoster) {
        state.DataIndex[1].FirstPostId = firstPost;
        state.DataIndex[1].LastPostId = lastPost;
        mybbWriteThreadsFile(state, u"Old \"radios\", Anna's", 7, firstPost, lastPost, firstPoster,
                             lastPoster, false);
    }

    Rows Threads() const { return board.RowsOf(board.state.ThreadsFile); }

    ReadyBoard board;
    ConversionState& state = board.state;
};

using ThreadsFile = mybbWriteThreadsFileTest;

// The subject is escaped by whoever hands it over; it is written as it stands.
TEST_F(ThreadsFile, AThreadsRowTellsItsPostsPostersAndTimes) {
    state.ThreadCounter = 41;
    state.FirstPostTime = 1000;
    state.LastPostTime = 2000;
    Write(4, 6, 3, 2);
    EXPECT_EQ(Threads(), (Rows{R"(42,7,"Old "radios", Anna's",0,0,0,3,"bert",1000,4,2000,"anna",2,3,2,"",)"
                               R"(0,0,0,"",1,0,0,0,0)"}));
    EXPECT_EQ(state.ThreadCounter, 42);
    EXPECT_EQ(state.ThreadRowCount, 1);
    EXPECT_EQ(state.ThreadPostCount, 3);
}

TEST_F(ThreadsFile, AThreadOfOnePostHasOneViewAndNoReply) {
    state.FirstPostTime = 1000;
    Write(4, 4, 2, 2);
    EXPECT_EQ(Threads(), (Rows{R"(1,7,"Old "radios", Anna's",0,0,0,2,"anna",1000,4,0,"anna",2,1,0,"",)"
                               R"(0,0,0,"",1,0,0,0,0)"}));
    EXPECT_EQ(state.ThreadPostCount, 1);
}

TEST_F(ThreadsFile, AThreadWithoutPostsLooksLikeOneOfTheNextPostByTheAdministrator) {
    Write(10, 9, 0, 0);
    EXPECT_EQ(Threads(), (Rows{R"(1,7,"Old "radios", Anna's",0,0,0,1,"Admin",0,10,0,"Admin",1,1,0,"",)"
                               R"(0,0,0,"",1,0,0,0,0)"}));
    EXPECT_EQ(state.ThreadPostCount, 0);
    EXPECT_EQ(state.DataIndex[1].LastPostId, 10);
}

TEST_F(ThreadsFile, TheMapOfThreadsStaysEmpty) {
    Write(1, 1, 2, 2);
    Write(2, 2, 2, 2);
    EXPECT_EQ(state.ThreadIdsByFile.Count(), 0);
    EXPECT_EQ(state.ThreadIdsByFile.Find(u"34"), nullptr);
    EXPECT_TRUE(board.messages.empty());
    EXPECT_FALSE(state.CancelRequested);
}

TEST_F(ThreadsFile, AnUnknownPosterStopsTheRunUnderANeighboursLabel) {
    Write(1, 1, 2, 4);
    EXPECT_EQ(board.messages, (Texts{u"5 - InitDataIndex()\r\n\r\nInvalid procedure call or argument"}));
    EXPECT_TRUE(state.CancelRequested);
    EXPECT_EQ(state.ThreadsFile.Stream, nullptr);
    // The number is given out, the row is not counted.
    EXPECT_EQ(state.ThreadCounter, 1);
    EXPECT_EQ(state.ThreadRowCount, 0);
}

TEST_F(ThreadsFile, TimesBeforeTheFirstSecondAreNegative) {
    state.FirstPostTime = -5;
    state.LastPostTime = -2147483647 - 1;
    Write(1, 2, 2, 3);
    EXPECT_EQ(Threads(),
              (Rows{R"(1,7,"Old "radios", Anna's",0,0,0,2,"anna",-5,1,-2147483648,"bert",3,2,1,"",)"
                    R"(0,0,0,"",1,0,0,0,0)"}));
}

TEST_F(ThreadsFile, NumbersThatDoNotFitStopTheRun) {
    Write(-2, std::numeric_limits<std::int32_t>::max(), 2, 3);
    EXPECT_EQ(board.messages, (Texts{u"6 - InitDataIndex()\r\n\r\nOverflow"}));
    EXPECT_EQ(state.ThreadsFile.Stream, nullptr);
}

TEST_F(ThreadsFile, AfterACancelNothingIsWrittenOrCounted) {
    state.CancelRequested = true;
    Write(10, 9, 0, 0);
    EXPECT_EQ(state.ThreadsFile.Stream, nullptr);
    EXPECT_EQ(state.ThreadCounter, 0);
    EXPECT_EQ(state.DataIndex[1].LastPostId, 9);
}

}  // namespace
}  // namespace tessaly
