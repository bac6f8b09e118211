#include "check/htmlReport.h"

#include <gtest/gtest.h>

#include "tests/support/CheckedBoard.h"

namespace tessaly {
namespace {

using testing::CheckedBoard;
using testing::PageHead;
using testing::Post;
using testing::Top;

std::string ReportOf(CheckedBoard& board) {
    WriteHtmlReport(board.Check(), board.folder.Path("report.html"));
    return board.folder.Read("report.html");
}

std::size_t Count(const std::string& text, const std::string& what) {
    std::size_t count = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++count;
    return count;
}

TEST(HtmlReport, EscapesWhatTheBoardSays) {
    CheckedBoard board;
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    board.WritePage("12/12.html",
                    PageHead("12/a", "12/\"5\" & 6' <", "Radios", "Radios") +
                        Post(5, "<script>", "1043846797", "<a href=\"http://x.example\">\x01</a>"));
    const std::string report = ReportOf(board);
    EXPECT_EQ(Count(report, "<script>"), 1u);
    // The quotes of a name are tokens by then.
    EXPECT_EQ(Count(report, "<bdi>(})5(}) &amp; 6({) &lt;</bdi>"), 1u);
    EXPECT_GE(Count(report, "&lt;a href=&quot;http://x.example&quot;&gt;?&lt;/a&gt;"), 1u);
    EXPECT_EQ(Count(report, "\x01"), 0u);
}

// 3 categories, and below the first 2100 pages in two levels.
TEST(HtmlReport, ShowsOfALargeTreeWhatIsNearestToTheTopAndCountsTheRest) {
    CheckedBoard board;
    board.WriteBoardFile(testing::BoardFile("One", {1}) + testing::BoardFile("Two", {}) +
                         testing::BoardFile("Three", {}));
    std::string tops;
    for (int page = 10; page < 2100; ++page) {
        const std::string number = std::to_string(page);
        tops += Top(page, "http://old.example/discus/messages/1/" + number + ".html", "x");
        board.WritePage("1/" + number + ".html", "<!--Me: " + number + "/Page " + number + "-->");
    }
    board.WritePage("1/1.html", PageHead("1/a", "1/Head", "Head", "Head") + tops);
    const std::string report = ReportOf(board);
    // Of 2000 the three categories and the page above them are the first: 1996 of 2090 are left.
    EXPECT_EQ(Count(report, "<li class=\"faint\">and 94 more</li>"), 1u);
    EXPECT_EQ(Count(report, "<bdi>Three</bdi>"), 1u);
    EXPECT_EQ(Count(report, "<bdi>Page 2005</bdi>"), 1u);
    EXPECT_EQ(Count(report, "<bdi>Page 2006</bdi>"), 0u);
    EXPECT_EQ(Count(report, "0 posts, 2,091 pages"), 2u);
}

TEST(HtmlReport, TellsHowManyFindingsItLeavesOutOnlyWhenItLeavesSomeOut) {
    CheckedBoard board;
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    std::string page = PageHead("12/Radios", "12/Radios", "Radios", "Radios");
    for (int post = 1; post <= 500; ++post)
        page += Post(post, "Anna", "1043846797", "<a href=\"http://elsewhere.example\">x</a>");
    board.WritePage("12/12.html", page);
    EXPECT_EQ(Count(ReportOf(board), "These are the first"), 0u);
    board.WritePage("12/12.html",
                    page + Post(501, "Anna", "1043846797", "<a href=\"http://e.example\">x</a>"));
    EXPECT_EQ(Count(ReportOf(board), "These are the first 500 of 501 places."), 1u);
}

TEST(HtmlReport, OfABoardWithoutPostsHasNoChartAndNoFindings) {
    CheckedBoard board;
    board.WriteBoardFile(testing::BoardFile("Main", {}));
    board.WriteMembers("anna:pw:a@host.example:Anna:::0:10.0.0.1:0:\n");
    const std::string report = ReportOf(board);
    EXPECT_EQ(Count(report, "<svg"), 0u);
    EXPECT_EQ(Count(report, "<p>None.</p>"), 1u);
    EXPECT_EQ(Count(report, "<script>"), 0u);
}

}  // namespace
}  // namespace tessaly
