#include "finish/MessageText.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

std::u16string Finished(std::u16string_view message) {
    return FinishMessage(message,
                         [](std::u16string_view) -> std::optional<std::u16string> { return std::nullopt; });
}

TEST(FinishMessage, NamesTheSizesFrom1To7) {
    EXPECT_EQ(Finished(u"[size=1]a[/size]"), u"[size=x-small]a[/size]");
    EXPECT_EQ(Finished(u"[size=2]a[/size]"), u"[size=small]a[/size]");
    EXPECT_EQ(Finished(u"[size=3]a[/size]"), u"[size=medium]a[/size]");
    EXPECT_EQ(Finished(u"[size=4]a[/size]"), u"[size=large]a[/size]");
    EXPECT_EQ(Finished(u"[size=5]a[/size]"), u"[size=x-large]a[/size]");
    EXPECT_EQ(Finished(u"[size=6]a[/size]"), u"[size=xx-large]a[/size]");
    EXPECT_EQ(Finished(u"[size=7]a[/size]"), u"[size=xx-large]a[/size]");
}

TEST(FinishMessage, LeavesSizesThatTheForumReadsAsTheyAre) {
    EXPECT_EQ(Finished(u"[size=12]a[/size] [size=xx-small]b[/size]"),
              u"[size=12]a[/size] [size=xx-small]b[/size]");
}

TEST(FinishMessage, ResolvesASecondAttributeIntoATagWithin) {
    EXPECT_EQ(Finished(u"[size=2 color=red]x[/size]"), u"[size=small][color=red]x[/color][/size]");
    EXPECT_EQ(Finished(u"[font=Courier New size=2]x[/font]"),
              u"[font=Courier New][size=small]x[/size][/font]");
    EXPECT_EQ(Finished(u"[color=#336699  FACE=Arial SIZE=5]x[/color]"),
              u"[color=#336699][font=Arial][size=x-large]x[/size][/font][/color]");
}

TEST(FinishMessage, DropsAttributesThatTheForumDoesNotKnow) {
    EXPECT_EQ(Finished(u"[size=2 class=note]x[/size]"), u"[size=small]x[/size]");
    EXPECT_EQ(Finished(u"[color=red noshade]x[/color]"), u"[color=red]x[/color]");
    EXPECT_EQ(Finished(u"[font=Arial style=top: 0 size=1]x[/font]"),
              u"[font=Arial][size=x-small]x[/size][/font]");
}

TEST(FinishMessage, DropsATagWithAValueThatWouldBeShownAndItsClosing) {
    EXPECT_EQ(Finished(u"[size=0]x[/size]"), u"x");
    EXPECT_EQ(Finished(u"[size=huge]x[/size]"), u"x");
    EXPECT_EQ(Finished(u"[color=rgb(1([)2([)3)]x[/color]"), u"x");
    EXPECT_EQ(Finished(u"[color=#12]x[/color]"), u"x");
    EXPECT_EQ(Finished(u"[font=]x[/font]"), u"x");
    EXPECT_EQ(Finished(u"[size=huge color=red]x[/size]"), u"[color=red]x[/color]");
}

TEST(FinishMessage, TakesAListOfFacesWhoseCommasWereTokens) {
    EXPECT_EQ(Finished(u"[font=Verdana([)Arial]x[/font]"), u"[font=Verdana,Arial]x[/font]");
}

TEST(FinishMessage, KeepsTagsWithinEachOther) {
    EXPECT_EQ(Finished(u"[size=2]a[size=4 color=red]b[/size]c[/size]"),
              u"[size=small]a[size=large][color=red]b[/color][/size]c[/size]");
}

TEST(FinishMessage, ClosesTagsThatOverlapEachByItsOwnClosing) {
    EXPECT_EQ(Finished(u"[size=2][color=red]x[/size]y[/color]"), u"[size=small][color=red]x[/size]y[/color]");
    EXPECT_EQ(Finished(u"[color=red][size=2]x[/font]y[/color]"), u"[color=red][size=small]x[/size]y[/color]");
}

TEST(FinishMessage, LeavesNoHalfTag) {
    EXPECT_EQ(Finished(u"[size=2]x[/size][/font]"), u"[size=small]x[/size]");
    EXPECT_EQ(Finished(u"a[/size]b[/color]c"), u"abc");
    EXPECT_EQ(Finished(u"[size=2]to the end"), u"[size=small]to the end[/size]");
    EXPECT_EQ(Finished(u"[font=Arial][color=red]x"), u"[font=Arial][color=red]x[/color][/font]");
}

TEST(FinishMessage, TakesABareClosingForWhateverIsOpen) {
    // A page whose closings could not be paired with their openings.
    EXPECT_EQ(Finished(u"[/font][size=2]x[/font]y"), u"[size=small]x[/size]y");
}

TEST(FinishMessage, LeavesOtherTagsAndLooseBrackets) {
    EXPECT_EQ(Finished(u"[b]a[/b] [center]b[/center] [img]c[/img] [ d ] [size= [b]e[/b]"),
              u"[b]a[/b] [center]b[/center] [img]c[/img] [ d ] [size= [b]e[/b]");
}

TEST(FinishMessage, LeadsEachLinkToItsNewAddress) {
    const NewAddress newAddress = [](std::u16string_view old) -> std::optional<std::u16string> {
        if (old == u"http://old/3/1.html") return u"http://new/showthread.php?tid=1";
        return std::nullopt;
    };
    EXPECT_EQ(FinishMessage(u"[url=http://old/3/1.html]a[/url] [url=http://old/3/2.html]b[/url] "
                            u"[url=http://old/3/1.html]c[/url] [url=http://old",
                            newAddress),
              u"[url=http://new/showthread.php?tid=1]a[/url] [url=http://old/3/2.html]b[/url] "
              u"[url=http://new/showthread.php?tid=1]c[/url] [url=http://old");
}

// Looking for the end of each in the whole text would take minutes.
TEST(FinishMessage, LeavesManyLinksThatNeverEnd) {
    std::u16string message;
    for (int link = 0; link < 400000; ++link) message += u"[url=";
    message += u"]";
    const auto none = [](std::u16string_view) -> std::optional<std::u16string> { return std::nullopt; };
    EXPECT_EQ(FinishMessage(message, none), message);
}

TEST(FinishMessage, AsksForAnAddressAsItWasWritten) {
    std::vector<std::u16string> asked;
    FinishMessage(u"[url=http://old/a([)b.html target=_top]x[/url]",
                  [&asked](std::u16string_view old) -> std::optional<std::u16string> {
                      asked.emplace_back(old);
                      return std::nullopt;
                  });
    EXPECT_EQ(asked, (std::vector<std::u16string>{u"http://old/a,b.html target=_top"}));
}

TEST(BytesInUtf8, CountsOneToFourBytesACharacter) {
    EXPECT_EQ(BytesInUtf8(u"a\u00E9\u65E5\U0001F389"), 1u + 2u + 3u + 4u);
}

// 20 bytes with its blank.
constexpr std::u16string_view kWords = u"nineteen characters ";

std::u16string Repeated(std::u16string_view text, int times) {
    std::u16string whole;
    for (int turn = 0; turn < times; ++turn) whole += text;
    return whole;
}

TEST(SplitMessage, LeavesAMessageThatFitsWhole) {
    const std::u16string message = Repeated(kWords, 500);
    EXPECT_EQ(SplitMessage(message, 10000, 0), std::vector<std::u16string>{message});
}

TEST(SplitMessage, CutsBehindAWordAndLosesNothing) {
    const std::u16string message = Repeated(kWords, 501);
    const auto pieces = SplitMessage(message, 10000, 0);
    ASSERT_EQ(pieces.size(), 2u);
    // 400 bytes are kept for tags that have to be closed.
    EXPECT_EQ(pieces[0], Repeated(kWords, 480));
    EXPECT_EQ(pieces[1], Repeated(kWords, 21));
}

TEST(SplitMessage, LeavesRoomInTheFirstPiece) {
    const auto pieces = SplitMessage(Repeated(kWords, 500), 10000, 40);
    ASSERT_EQ(pieces.size(), 2u);
    EXPECT_EQ(pieces[0], Repeated(kWords, 478));
}

TEST(SplitMessage, ClosesTagsAndOpensThemAgain) {
    const auto pieces = SplitMessage(u"[b][size=small]" + Repeated(kWords, 600) + u"[/size][/b]", 10000, 0);
    ASSERT_EQ(pieces.size(), 2u);
    EXPECT_TRUE(pieces[0].ends_with(u"characters [/size][/b]"));
    EXPECT_TRUE(pieces[1].starts_with(u"[b][size=small]nineteen"));
    EXPECT_TRUE(pieces[1].ends_with(u"characters [/size][/b]"));
}

TEST(SplitMessage, OpensAgainOnlyWhatIsStillOpen) {
    const auto pieces = SplitMessage(
        u"[b]a[/b][center][color=red]b[/color]" + Repeated(kWords, 600) + u"[/center]", 10000, 0);
    ASSERT_EQ(pieces.size(), 2u);
    EXPECT_TRUE(pieces[0].ends_with(u"characters [/center]"));
    EXPECT_TRUE(pieces[1].starts_with(u"[center]nineteen"));
}

TEST(SplitMessage, KeepsALinkInOnePiece) {
    const std::u16string link = u"[url=http://new/]" + Repeated(kWords, 20) + u"[/url]";
    const std::u16string before = Repeated(kWords, 470);
    const auto pieces = SplitMessage(before + link + Repeated(kWords, 100), 10000, 0);
    ASSERT_EQ(pieces.size(), 2u);
    EXPECT_EQ(pieces[0], before);
    EXPECT_TRUE(pieces[1].starts_with(u"[url=http://new/]nineteen"));
}

TEST(SplitMessage, CutsAWordThatHasNoEndBetweenCharacters) {
    const auto pieces = SplitMessage(Repeated(u"\U0001F389", 3000), 10000, 0);
    ASSERT_EQ(pieces.size(), 2u);
    EXPECT_EQ(pieces[0], Repeated(u"\U0001F389", 2400));
    EXPECT_EQ(pieces[1], Repeated(u"\U0001F389", 600));
}

TEST(SplitMessage, CutsBeforeALinkInATextWithoutBlanks) {
    // 9600 bytes go into the first piece; the link begins at the 9571st.
    const std::u16string before = Repeated(u"\u65E5", 3190);
    const std::u16string link = u"[url=http://new/]" + Repeated(u"\u672C", 40) + u"[/url]";
    const std::u16string behind = Repeated(u"\u8A9E", 1000);
    EXPECT_EQ(SplitMessage(before + link + behind, 10000, 0),
              (std::vector<std::u16string>{before, link + behind}));
}

TEST(SplitMessage, CutsBeforeALinkWithALongAddress) {
    const std::u16string before = Repeated(u"\u65E5", 3000);
    const std::u16string link = u"[url=http://new/" + Repeated(u"a", 700) + u"]\u672C[/url]";
    EXPECT_EQ(SplitMessage(before + link + before, 10000, 0),
              (std::vector<std::u16string>{before, link + before}));
}

TEST(SplitMessage, CutsBeforeAPictureInATextWithoutBlanks) {
    const std::u16string before = Repeated(u"\u65E5", 3190);
    const std::u16string picture = u"[img]http://new/a-picture-with-a-long-name.gif[/img]";
    const std::u16string behind = Repeated(u"\u8A9E", 1000);
    EXPECT_EQ(SplitMessage(before + picture + behind, 10000, 0),
              (std::vector<std::u16string>{before, picture + behind}));
}

TEST(SplitMessage, MakesTwoLinksOfOneWithAVeryLongText) {
    const std::u16string before = Repeated(u"\u65E5", 1000);
    // 9600 - 3000 - 17 bytes are 2194 characters.
    const auto pieces =
        SplitMessage(before + u"[url=http://new/]" + Repeated(u"\u672C", 4000) + u"[/url]\u8A9E", 10000, 0);
    EXPECT_EQ(pieces, (std::vector<std::u16string>{
                          before + u"[url=http://new/]" + Repeated(u"\u672C", 2194) + u"[/url]",
                          u"[url=http://new/]" + Repeated(u"\u672C", 1806) + u"[/url]\u8A9E"}));
}

TEST(SplitMessage, GoesOnThroughAsManyPiecesAsItTakes) {
    const auto pieces = SplitMessage(Repeated(kWords, 10000), 65535, 0);
    ASSERT_EQ(pieces.size(), 4u);
    std::u16string whole;
    for (const std::u16string& piece : pieces) {
        EXPECT_LE(BytesInUtf8(piece), 65535u);
        whole += piece;
    }
    EXPECT_EQ(whole, Repeated(kWords, 10000));
}

TEST(SplitMessage, EachPieceButTheLastTakesAllButTheSlack) {
    const auto pieces = SplitMessage(u"[b]" + Repeated(u"\u65E5\u672C \n", 30000) + u"[/b]", 65535, 0);
    for (std::size_t at = 0; at + 1 < pieces.size(); ++at)
        EXPECT_GT(BytesInUtf8(pieces[at]), 65535u - kPieceSlack);
}

}  // namespace
}  // namespace tessaly
