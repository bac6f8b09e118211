#include "finish/MessageText.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

using Pieces = std::vector<std::u16string>;

std::u16string Repeated(std::u16string_view text, int times) {
    std::u16string whole;
    for (int turn = 0; turn < times; ++turn) whole += text;
    return whole;
}

TEST(FinishMarkup, NamesTheSizesFrom1To7) {
    EXPECT_EQ(FinishMarkup(u"[size=1]a[/size]"), u"[size=x-small]a[/size]");
    EXPECT_EQ(FinishMarkup(u"[size=2]a[/size]"), u"[size=small]a[/size]");
    EXPECT_EQ(FinishMarkup(u"[size=3]a[/size]"), u"[size=medium]a[/size]");
    EXPECT_EQ(FinishMarkup(u"[size=4]a[/size]"), u"[size=large]a[/size]");
    EXPECT_EQ(FinishMarkup(u"[size=5]a[/size]"), u"[size=x-large]a[/size]");
    EXPECT_EQ(FinishMarkup(u"[size=6]a[/size]"), u"[size=xx-large]a[/size]");
    EXPECT_EQ(FinishMarkup(u"[size=7]a[/size]"), u"[size=xx-large]a[/size]");
}

TEST(FinishMarkup, LeavesSizesThatTheForumReadsAsTheyAre) {
    EXPECT_EQ(FinishMarkup(u"[size=12]a[/size] [size=xx-small]b[/size]"),
              u"[size=12]a[/size] [size=xx-small]b[/size]");
}

TEST(FinishMarkup, ResolvesASecondAttributeIntoATagWithin) {
    EXPECT_EQ(FinishMarkup(u"[size=2 color=red]x[/size]"), u"[size=small][color=red]x[/color][/size]");
    EXPECT_EQ(FinishMarkup(u"[font=Courier New size=2]x[/font]"),
              u"[font=Courier New][size=small]x[/size][/font]");
    EXPECT_EQ(FinishMarkup(u"[color=#336699  FACE=Arial SIZE=5]x[/color]"),
              u"[color=#336699][font=Arial][size=x-large]x[/size][/font][/color]");
}

TEST(FinishMarkup, DropsAttributesThatTheForumDoesNotKnow) {
    EXPECT_EQ(FinishMarkup(u"[size=2 class=note]x[/size]"), u"[size=small]x[/size]");
    EXPECT_EQ(FinishMarkup(u"[color=red noshade]x[/color]"), u"[color=red]x[/color]");
    EXPECT_EQ(FinishMarkup(u"[font=Arial style=top: 0 size=1]x[/font]"),
              u"[font=Arial][size=x-small]x[/size][/font]");
}

TEST(FinishMarkup, DropsATagWithAValueThatWouldBeShownAndItsClosing) {
    EXPECT_EQ(FinishMarkup(u"[size=0]x[/size]"), u"x");
    EXPECT_EQ(FinishMarkup(u"[size=huge]x[/size]"), u"x");
    EXPECT_EQ(FinishMarkup(u"[color=rgb(1([)2([)3)]x[/color]"), u"x");
    EXPECT_EQ(FinishMarkup(u"[color=#12]x[/color]"), u"x");
    EXPECT_EQ(FinishMarkup(u"[font=]x[/font]"), u"x");
    EXPECT_EQ(FinishMarkup(u"[size=huge color=red]x[/size]"), u"[color=red]x[/color]");
}

TEST(FinishMarkup, TakesAListOfFacesWhoseCommasWereTokens) {
    EXPECT_EQ(FinishMarkup(u"[font=Verdana([)Arial]x[/font]"), u"[font=Verdana,Arial]x[/font]");
}

TEST(FinishMarkup, KeepsTagsWithinEachOther) {
    EXPECT_EQ(FinishMarkup(u"[size=2]a[size=4 color=red]b[/size]c[/size]"),
              u"[size=small]a[size=large][color=red]b[/color][/size]c[/size]");
}

TEST(FinishMarkup, ClosesTagsThatOverlapEachByItsOwnClosing) {
    EXPECT_EQ(FinishMarkup(u"[size=2][color=red]x[/size]y[/color]"),
              u"[size=small][color=red]x[/size]y[/color]");
    EXPECT_EQ(FinishMarkup(u"[color=red][size=2]x[/font]y[/color]"),
              u"[color=red][size=small]x[/size]y[/color]");
}

TEST(FinishMarkup, LeavesNoHalfTag) {
    EXPECT_EQ(FinishMarkup(u"[size=2]x[/size][/font]"), u"[size=small]x[/size]");
    EXPECT_EQ(FinishMarkup(u"a[/size]b[/color]c"), u"abc");
    EXPECT_EQ(FinishMarkup(u"[size=2]to the end"), u"[size=small]to the end[/size]");
    EXPECT_EQ(FinishMarkup(u"[font=Arial][color=red]x"), u"[font=Arial][color=red]x[/color][/font]");
}

TEST(FinishMarkup, TakesABareClosingForWhateverIsOpen) {
    // A page whose closings could not be paired with their openings.
    EXPECT_EQ(FinishMarkup(u"[/font][size=2]x[/font]y"), u"[size=small]x[/size]y");
}

TEST(FinishMarkup, LeavesOtherTagsAndLooseBrackets) {
    EXPECT_EQ(FinishMarkup(u"[b]a[/b] [center]b[/center] [img]c[/img] [ d ] [size= [b]e[/b]"),
              u"[b]a[/b] [center]b[/center] [img]c[/img] [ d ] [size= [b]e[/b]");
}

TEST(FinishMarkup, KeepsTheAddressesOfLinks) {
    EXPECT_EQ(FinishMarkup(u"[url=http://old/a([)b.html target=_top][size=2]x[/size][/url]"),
              u"[url=http://old/a,b.html target=_top][size=small]x[/size][/url]");
}

TEST(LeadLinks, LeadsEachLinkToItsNewAddress) {
    const NewAddress newAddress = [](std::u16string_view old) -> std::optional<std::u16string> {
        if (old == u"http://old/3/1.html") return u"http://new/showthread.php?tid=1";
        return std::nullopt;
    };
    EXPECT_EQ(LeadLinks(u"[url=http://old/3/1.html]a[/url] [url=http://old/3/2.html]b[/url] "
                        u"[url=http://old/3/1.html]c[/url] [b]d[/b] [url=http://old",
                        newAddress),
              u"[url=http://new/showthread.php?tid=1]a[/url] [url=http://old/3/2.html]b[/url] "
              u"[url=http://new/showthread.php?tid=1]c[/url] [b]d[/b] [url=http://old");
}

// Looking for the end of each in the whole text would take minutes.
TEST(LeadLinks, LeavesManyLinksThatNeverEnd) {
    const std::u16string message = Repeated(u"[url=", 400000) + u"]";
    const auto none = [](std::u16string_view) -> std::optional<std::u16string> { return std::nullopt; };
    EXPECT_EQ(LeadLinks(message, none), message);
}

TEST(LeadLinks, AsksForAnAddressAsItStands) {
    std::vector<std::u16string> asked;
    LeadLinks(u"[url=http://old/a,b.html target=_top]x[/url]",
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

// The pieces of a message that loses nothing by being cut.
Pieces Cut(std::u16string_view message, std::size_t roomInFirst = 0) {
    const MessagePieces pieces = SplitMessage(message, {.most = 10000, .roomInFirst = roomInFirst});
    EXPECT_FALSE(pieces.isTorn);
    return pieces.texts;
}

TEST(SplitMessage, LeavesAMessageThatFitsWhole) {
    const std::u16string message = Repeated(kWords, 500);
    EXPECT_EQ(Cut(message), Pieces{message});
}

TEST(SplitMessage, CutsBehindAWordAndLosesNothing) {
    // 1,800 bytes are kept for tags that have to be closed.
    EXPECT_EQ(Cut(Repeated(kWords, 501)), (Pieces{Repeated(kWords, 410), Repeated(kWords, 91)}));
}

TEST(SplitMessage, LeavesRoomInTheFirstPiece) {
    EXPECT_EQ(Cut(Repeated(kWords, 500), 40), (Pieces{Repeated(kWords, 408), Repeated(kWords, 92)}));
}

TEST(SplitMessage, CountsAnAddressThatMayBecomeLonger) {
    // 72 links of 106 and 7 bytes are 8,136; the next opening goes beyond 8,200.
    const std::u16string_view link = u"[url=x]a[/url]";
    const MessagePieces pieces = SplitMessage(Repeated(link, 100), {.most = 10000, .shortestAddress = 100});
    EXPECT_EQ(pieces.texts, (Pieces{Repeated(link, 72), Repeated(link, 28)}));
}

TEST(SplitMessage, CountsAddressesBetweenThePartsOfAPictureToo) {
    const std::u16string_view link = u"[url=x]a[/url]";
    const MessagePieces pieces =
        SplitMessage(u"[img" + Repeated(link, 100) + u"[/img]", {.most = 10000, .shortestAddress = 100});
    EXPECT_EQ(pieces.texts, (Pieces{u"[img" + Repeated(link, 72), Repeated(link, 28) + u"[/img]"}));
}

TEST(SplitMessage, ClosesTagsAndOpensThemAgain) {
    EXPECT_EQ(Cut(u"[b][size=small]" + Repeated(kWords, 600) + u"[/size][/b]"),
              (Pieces{u"[b][size=small]" + Repeated(kWords, 409) + u"[/size][/b]",
                      u"[b][size=small]" + Repeated(kWords, 191) + u"[/size][/b]"}));
}

TEST(SplitMessage, OpensAgainOnlyWhatIsStillOpen) {
    const Pieces pieces = Cut(u"[b]a[/b][center][color=red]b[/color]" + Repeated(kWords, 600) + u"[/center]");
    ASSERT_EQ(pieces.size(), 2u);
    EXPECT_TRUE(pieces[0].ends_with(u"characters [/center]"));
    EXPECT_TRUE(pieces[1].starts_with(u"[center]nineteen"));
}

TEST(SplitMessage, ClosesAndOpensFiftyTags) {
    const std::u16string openings = Repeated(u"[size=x-large]", 50);
    const std::u16string closings = Repeated(u"[/size]", 50);
    // 700 bytes are those of the openings, so 7,500 are left.
    EXPECT_EQ(
        Cut(openings + Repeated(kWords, 500) + closings),
        (Pieces{openings + Repeated(kWords, 375) + closings, openings + Repeated(kWords, 125) + closings}));
}

TEST(SplitMessage, TellsThatMoreThan200TagsAreOpen) {
    const std::u16string words = Repeated(kWords, 600);
    const auto inBold = [&words](int times) {
        return Repeated(u"[b]", times) + words + Repeated(u"[/b]", times);
    };
    EXPECT_FALSE(SplitMessage(inBold(200), {.most = 10000}).isTorn);
    EXPECT_TRUE(SplitMessage(inBold(201), {.most = 10000}).isTorn);
}

TEST(SplitMessage, KeepsALinkInOnePiece) {
    const std::u16string link = u"[url=http://new/]" + Repeated(kWords, 20) + u"[/url]";
    const std::u16string before = Repeated(kWords, 400);
    const std::u16string behind = Repeated(kWords, 100);
    EXPECT_EQ(Cut(before + link + behind), (Pieces{before, link + behind}));
}

TEST(SplitMessage, CutsAWordThatHasNoEndBetweenCharacters) {
    EXPECT_EQ(Cut(Repeated(u"\U0001F389", 3000)),
              (Pieces{Repeated(u"\U0001F389", 2050), Repeated(u"\U0001F389", 950)}));
}

TEST(SplitMessage, CutsBeforeALinkInATextWithoutBlanks) {
    // 8,200 bytes go into the first piece; the link begins at the 8,161st.
    const std::u16string before = Repeated(u"\u65E5", 2720);
    const std::u16string link = u"[url=http://new/]" + Repeated(u"\u672C", 40) + u"[/url]";
    const std::u16string behind = Repeated(u"\u8A9E", 1000);
    EXPECT_EQ(Cut(before + link + behind), (Pieces{before, link + behind}));
}

TEST(SplitMessage, CutsBeforeALinkWithALongAddress) {
    for (const int length : {700, 2000}) {
        const std::u16string before = Repeated(u"\u65E5", 2500);
        const std::u16string link = u"[url=http://new/" + Repeated(u"a", length) + u"]\u672C[/url]";
        EXPECT_EQ(Cut(before + link + before), (Pieces{before, link + before}));
    }
}

TEST(SplitMessage, CutsBeforeALinkWithItsAddressForItsText) {
    const std::u16string before = Repeated(u"\u65E5", 2720);
    const std::u16string link = u"[url]http://new/a-page-with-a-long-name.html[/url]";
    const std::u16string behind = Repeated(u"\u8A9E", 1000);
    EXPECT_EQ(Cut(before + link + behind), (Pieces{before, link + behind}));
}

TEST(SplitMessage, CutsBeforeAPictureInATextWithoutBlanks) {
    const std::u16string before = Repeated(u"\u65E5", 2720);
    const std::u16string picture = u"[img]http://new/a-picture-with-a-long-name.gif[/img]";
    const std::u16string behind = Repeated(u"\u8A9E", 1000);
    EXPECT_EQ(Cut(before + picture + behind), (Pieces{before, picture + behind}));
}

TEST(SplitMessage, KeepsAPictureWithAnAddressOfThousandsOfBytesInOnePiece) {
    const std::u16string before = Repeated(u"\u65E5", 1500);
    const std::u16string picture = u"[img]" + Repeated(u"a", 5000) + u"[/img]";
    const std::u16string behind = Repeated(u"\u8A9E", 1000);
    EXPECT_EQ(Cut(before + picture + behind), (Pieces{before, picture + behind}));
}

TEST(SplitMessage, CutsNoPictureAtABlankOfItsAddress) {
    const std::u16string before = Repeated(u"\u65E5", 2000);
    const std::u16string picture = u"[img]" + Repeated(u"long name ", 300) + u".gif[/img]";
    const std::u16string behind = Repeated(u"\u8A9E", 1000);
    EXPECT_EQ(Cut(before + picture + behind), (Pieces{before, picture + behind}));
}

TEST(SplitMessage, LeavesNoEmptyLinkBeforeThePictureInIt) {
    const std::u16string before = Repeated(u"\u65E5", 2000);
    const std::u16string picture = u"[url=http://new/][img]" + Repeated(u"a", 4000) + u"[/img][/url]";
    const std::u16string behind = Repeated(u"\u8A9E", 1000);
    EXPECT_EQ(Cut(before + picture + behind), (Pieces{before, picture + behind}));
}

TEST(SplitMessage, TellsThatNoPieceHoldsAPicture) {
    const MessagePieces pieces =
        SplitMessage(u"\u65E5[img]" + Repeated(u"a", 12000) + u"[/img]", {.most = 10000});
    // 8,200 bytes are three, five and 8,192.
    EXPECT_EQ(pieces.texts,
              (Pieces{u"\u65E5[img]" + Repeated(u"a", 8192), Repeated(u"a", 3808) + u"[/img]"}));
    EXPECT_TRUE(pieces.isTorn);
}

TEST(SplitMessage, MakesTwoLinksOfOneWithAVeryLongText) {
    const std::u16string before = Repeated(u"\u65E5", 1000);
    // 8,200 - 3,000 - 17 bytes are 1,727 characters.
    EXPECT_EQ(Cut(before + u"[url=http://new/]" + Repeated(u"\u672C", 4000) + u"[/url]\u8A9E"),
              (Pieces{before + u"[url=http://new/]" + Repeated(u"\u672C", 1727) + u"[/url]",
                      u"[url=http://new/]" + Repeated(u"\u672C", 2273) + u"[/url]\u8A9E"}));
}

TEST(SplitMessage, MakesTwoLinksOfOneWithALongAddressToo) {
    const std::u16string opening = u"[url=http://new/" + Repeated(u"a", 700) + u"]";
    // 8,200 - 717 bytes are 2,494 characters.
    EXPECT_EQ(Cut(opening + Repeated(u"\u672C", 4000) + u"[/url]"),
              (Pieces{opening + Repeated(u"\u672C", 2494) + u"[/url]",
                      opening + Repeated(u"\u672C", 1506) + u"[/url]"}));
}

TEST(SplitMessage, TellsThatALinkWithAnEndlessAddressIsNotOpenedAgain) {
    const std::u16string opening = u"[url=http://new/" + Repeated(u"a", 6000) + u"]";
    const MessagePieces pieces =
        SplitMessage(opening + Repeated(u"\u672C", 2000) + u"[/url]", {.most = 10000});
    // 8,200 - 6,017 bytes are 727 characters.
    EXPECT_EQ(pieces.texts, (Pieces{opening + Repeated(u"\u672C", 727) + u"[/url]",
                                    Repeated(u"\u672C", 1273) + u"[/url]"}));
    EXPECT_TRUE(pieces.isTorn);
}

TEST(SplitMessage, GoesOnThroughAsManyPiecesAsItTakes) {
    const std::u16string message = Repeated(kWords, 10000);
    const Pieces pieces = SplitMessage(message, {.most = 65535}).texts;
    ASSERT_EQ(pieces.size(), 4u);
    std::u16string whole;
    for (const std::u16string& piece : pieces) {
        EXPECT_LE(BytesInUtf8(piece), 65535u);
        whole += piece;
    }
    EXPECT_EQ(whole, message);
}

// Looking for the end of each in the whole text would take minutes.
TEST(SplitMessage, GoesThroughManyTagsThatNeverEnd) {
    for (const std::u16string_view opening : {u"[url=", u"[img", u"[url]", u"["}) {
        const std::u16string message = Repeated(opening, 400000);
        std::u16string whole;
        for (const std::u16string& piece : SplitMessage(message, {.most = 65535}).texts) whole += piece;
        EXPECT_TRUE(whole == message);
    }
}

}  // namespace
}  // namespace tessaly
