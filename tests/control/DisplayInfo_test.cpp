#include "control/DisplayInfo.h"

#include <gtest/gtest.h>

#include "output/OutputFiles.h"
#include "platform/charset.h"
#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

using testing::TestBoard;
using Messages = std::vector<std::u16string>;

// A board with both logs open, as a run has them, and an empty area.
struct LoggingBoard : TestBoard {
    LoggingBoard() {
        folder.MakeFolder("output");
        state.LogFileName = state.mybbOutputFolder + u"Log.txt";
        state.LogErrorFileName = state.mybbOutputFolder + u"LogError.txt";
        state.optDisplay = false;
        state.optLog = false;
        mybbOpenOutputFiles(state);
        state.txtArea.SetText(u"");
    }

    // Log.txt as it stands when the logs are closed.
    std::u16string ClosedLog() {
        mybbCloseOutputFiles(state);
        return Log();
    }
};

// What a new error log begins with: a byte-order mark and two line ends in UTF-16.
const std::string kErrorHead("\xFF\xFE\r\0\n\0\r\0\n\0", 10);

// From now on each call of KeepResponsive calls out: the count to the next look at the clock runs down first.
void CallOutEachTime(ConversionState& state, std::function<void()> hook) {
    state.ToolboxA.EventInterval = 0;
    for (int call = 0; call < 32; ++call) state.ToolboxA.KeepResponsive();
    state.ToolboxA.HandleEvents = std::move(hook);
}

TEST(DisplayInfo, LeavesTheAreaAloneWithProgressOff) {
    LoggingBoard board;
    int calls = 0;
    CallOutEachTime(board.state, [&calls] { ++calls; });
    DisplayInfo(board.state, u"routine", false, false, false);
    EXPECT_EQ(board.state.txtArea.Text, u"");
    EXPECT_EQ(calls, 1);
}

TEST(DisplayInfo, ShowsRoutineProgressWithProgressOn) {
    LoggingBoard board;
    board.state.optDisplay = true;
    DisplayInfo(board.state, u"one", false, false, false);
    DisplayInfo(board.state, u"\ttwo\r\n", false, false, false);
    EXPECT_EQ(board.state.txtArea.Text, u"one\ttwo\r\n");
    EXPECT_EQ(board.ClosedLog(), u"");
}

TEST(DisplayInfo, ShowsWhatIsForcedWithProgressOff) {
    LoggingBoard board;
    DisplayInfo(board.state, u"forced", true, false, false);
    EXPECT_EQ(board.state.txtArea.Text, u"forced");
}

TEST(DisplayInfo, LogsRoutineProgressWhenAsked) {
    LoggingBoard board;
    DisplayInfo(board.state, u"not this", false, false, false);
    board.state.optLog = true;
    DisplayInfo(board.state, u"this\r\n", false, false, false);
    EXPECT_EQ(board.ClosedLog(), u"this\r\n\r\n");
}

TEST(DisplayInfo, LogsWhatIsForcedWithTheLogOff) {
    LoggingBoard board;
    DisplayInfo(board.state, u"forced", false, true, false);
    EXPECT_EQ(board.ClosedLog(), u"forced\r\n");
    EXPECT_EQ(board.Output("LogError.txt"), kErrorHead);
}

TEST(DisplayInfo, WritesTroubleToTheErrorLogWithTheLogOff) {
    LoggingBoard board;
    DisplayInfo(board.state, u"trouble", false, false, true);
    // On disk at once.
    EXPECT_EQ(board.Output("LogError.txt"), kErrorHead + "trouble\r\n");
    EXPECT_EQ(board.ClosedLog(), u"");
    EXPECT_EQ(board.state.txtArea.Text, u"");
}

TEST(DisplayInfo, MixesTwoEncodingsInTheErrorLog) {
    LoggingBoard board;
    if (platform::SystemDefaultCharset() != u"utf-8") GTEST_SKIP() << "the system's text is not UTF-8";
    DisplayInfo(board.state, u"\u00E4", false, true, true);
    DisplayInfo(board.state, u"b", false, true, true);
    EXPECT_EQ(board.Output("LogError.txt"), kErrorHead + "\xC3\xA4\r\nb\r\n");
    mybbCloseOutputFiles(board.state);
    EXPECT_EQ(board.Output("Log.txt"), std::string("\xFF\xFE\xE4\0\r\0\n\0b\0\r\0\n\0", 14));
}

TEST(DisplayInfo, ReachesTheAreaAloneBeforeAndBehindARun) {
    TestBoard board;
    DisplayInfo(board.state, u"before", true, true, true);
    EXPECT_EQ(board.state.txtArea.Text, u"before");
    EXPECT_FALSE(board.folder.Exists("output"));
    EXPECT_TRUE(board.messages.empty());
    LoggingBoard run;
    mybbCloseOutputFiles(run.state);
    DisplayInfo(run.state, u"behind", true, true, true);
    EXPECT_EQ(run.state.txtArea.Text, u"behind");
    EXPECT_EQ(run.Log(), u"");
    EXPECT_EQ(run.Output("LogError.txt"), kErrorHead);
}

TEST(DisplayInfo, ReopensTheLogAtItsThousandthLineWithoutASecondMark) {
    LoggingBoard board;
    board.state.LogLineCount = 0;
    for (int line = 1; line <= 1000; ++line) DisplayInfo(board.state, u"x", false, true, false);
    EXPECT_EQ(board.state.LogLineCount, 0);
    // What was written is on disk by now: the mark and 1000 times three characters of two bytes.
    EXPECT_EQ(board.Output("Log.txt").size(), 6002u);
    DisplayInfo(board.state, u"y", false, true, false);
    EXPECT_EQ(board.state.LogLineCount, 1);
    mybbCloseOutputFiles(board.state);
    const std::string log = board.Output("Log.txt");
    EXPECT_EQ(log.size(), 6008u);
    EXPECT_EQ(log.substr(0, 8), std::string("\xFF\xFEx\0\r\0\n\0", 8));
    EXPECT_EQ(log.substr(5996), std::string("x\0\r\0\n\0y\0\r\0\n\0", 12));
    EXPECT_EQ(log.find("\xFF\xFE", 1), std::string::npos);
}

TEST(DisplayInfo, CountsTheLinesOfTheLogOverRuns) {
    LoggingBoard board;
    board.state.LogLineCount = 0;
    DisplayInfo(board.state, u"x", false, true, false);
    mybbCloseOutputFiles(board.state);
    mybbOpenOutputFiles(board.state);
    // The heading of the second run comes before its log is open.
    EXPECT_EQ(board.state.LogLineCount, 1);
    DisplayInfo(board.state, u"x", false, true, false);
    EXPECT_EQ(board.state.LogLineCount, 2);
}

TEST(DisplayInfo, StartsAFullAreaOverWithTheNextButOneMessage) {
    LoggingBoard board;
    board.state.LastAreaLength = 0;
    const std::u16string half(600000, u'a');
    DisplayInfo(board.state, half, true, false, false);
    EXPECT_EQ(board.state.LastAreaLength, 0u);
    DisplayInfo(board.state, half, true, false, false);
    EXPECT_EQ(board.state.txtArea.Text.size(), 1000000u) << "what goes beyond is cut";
    EXPECT_EQ(board.state.LastAreaLength, 600000u);
    DisplayInfo(board.state, u"lost", true, false, false);
    EXPECT_EQ(board.state.txtArea.Text.size(), 1000000u);
    EXPECT_EQ(board.state.txtArea.Text.back(), u'a');
    EXPECT_EQ(board.state.LastAreaLength, 1000000u);
    DisplayInfo(board.state, u"anew", true, false, false);
    EXPECT_EQ(board.state.txtArea.Text, u"anew");
    EXPECT_EQ(board.state.LastAreaLength, 1000000u) << "not changed by starting over";
    DisplayInfo(board.state, u", on", true, false, false);
    EXPECT_EQ(board.state.txtArea.Text, u"anew, on");
    EXPECT_EQ(board.state.LastAreaLength, 4u);
}

TEST(DisplayInfo, ReplacesTheEmptyAreaAtTheVeryFirstCall) {
    TestBoard board;
    int replaced = 0;
    board.state.txtArea.Changed = [&replaced] { ++replaced; };
    ASSERT_EQ(board.state.LastAreaLength, 0u);
    DisplayInfo(board.state, u"first", true, false, false);
    EXPECT_EQ(board.state.txtArea.Text, u"first");
    EXPECT_EQ(replaced, 1);
    EXPECT_EQ(board.state.LastAreaLength, 0u);
}

TEST(DisplayInfo, StartsOverBehindAMessageWithoutText) {
    TestBoard board;
    DisplayInfo(board.state, u"a", true, false, false);
    DisplayInfo(board.state, u"", true, false, false);
    EXPECT_EQ(board.state.txtArea.Text, u"a");
    EXPECT_EQ(board.state.LastAreaLength, 1u);
    // The area is as long as it was before the last message: it passes for full.
    DisplayInfo(board.state, u"b", true, false, false);
    EXPECT_EQ(board.state.txtArea.Text, u"b");
}

TEST(DisplayInfo, CutsASingleMessageThatIsLongerThanTheArea) {
    TestBoard board;
    DisplayInfo(board.state, std::u16string(1000001, u'x'), true, false, false);
    EXPECT_EQ(board.state.txtArea.Text.size(), 1000000u);
}

TEST(DisplayInfo, TellsWhenTheErrorLogCannotBeWrittenAndAsksTheRunToStop) {
    LoggingBoard board;
    board.state.LogErrorFileName = board.folder.Path("nowhere") + u"\\LogError.txt";
    DisplayInfo(board.state, u"trouble", true, false, true);
    EXPECT_EQ(board.messages, (Messages{u"76 - DisplayInfo()\r\n\r\nPath not found"}));
    EXPECT_EQ(board.state.ToolboxA.RecordedErrors, board.messages);
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_EQ(board.state.txtArea.Text, u"trouble");
}

TEST(DisplayInfo, TellsWhenTheLogCannotBeReopened) {
    LoggingBoard board;
    board.state.LogLineCount = 999;
    board.state.LogFileName = board.folder.Path("nowhere") + u"\\Log.txt";
    DisplayInfo(board.state, u"the thousandth", false, true, false);
    EXPECT_EQ(board.messages, (Messages{u"76 - DisplayInfo()\r\n\r\nPath not found"}));
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_EQ(board.state.LogLineCount, 0);
}

TEST(DisplayInfo, ClosesTheLogQuietlyThatCouldNotBeReopened) {
    LoggingBoard board;
    board.state.LogLineCount = 999;
    board.state.LogFileName = board.folder.Path("nowhere") + u"\\Log.txt";
    DisplayInfo(board.state, u"the thousandth", false, true, false);
    DisplayInfo(board.state, u"and one more", false, true, false);
    mybbCloseOutputFiles(board.state);
    EXPECT_EQ(board.messages.size(), 1u);
    EXPECT_EQ(board.Log(), u"the thousandth\r\n");
}

TEST(DisplayInfo, LetsAClickThroughAtItsEnd) {
    LoggingBoard board;
    std::u16string seen;
    CallOutEachTime(board.state, [&] { seen = board.state.txtArea.Text; });
    DisplayInfo(board.state, u"shown first", true, false, false);
    EXPECT_EQ(seen, u"shown first");
}

}  // namespace
}  // namespace tessaly
