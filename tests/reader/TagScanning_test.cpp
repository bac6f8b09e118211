#include "reader/TagScanning.h"

#include <gtest/gtest.h>

#include "tests/support/ReadyBoard.h"
#include "text/RunTimeError.h"

namespace tessaly {
namespace {

using testing::ReadyBoard;

struct Found {
    std::u16string section;
    Position position;
    Position nextPosition;

    bool operator==(const Found&) const = default;
};

void PrintTo(const Found& found, std::ostream* out) {
    *out << std::string(found.section.begin(), found.section.end()) << " at " << found.position << ", next "
         << found.nextPosition;
}

Found Extract(std::u16string_view text, Position position, Position nextPosition) {
    ReadyBoard board;
    std::u16string section(
        ExtractTagSection(board.state, text, u"<!--Top: ", u"<!--/Top-->", position, nextPosition));
    return {section, position, nextPosition};
}

TEST(ExtractTagSection, ASectionHoldsBothItsMarkersAndThePositionsTellWhereItStands) {
    // "<!--Top: " is 9 characters long, "12" 2 and "<!--/Top-->" 11: 22 in all, from 3.
    EXPECT_EQ(Extract(u"ab<!--Top: 12<!--/Top-->cd", 1, 1), (Found{u"<!--Top: 12<!--/Top-->", 3, 25}));
}

TEST(ExtractTagSection, APositionOf0StartsAtTheFirstCharacter) {
    EXPECT_EQ(Extract(u"<!--Top: 1<!--/Top-->", 0, 0), (Found{u"<!--Top: 1<!--/Top-->", 1, 22}));
}

TEST(ExtractTagSection, AMarkerWithoutItsCounterpartGivesNothingYetItsPlace) {
    EXPECT_EQ(Extract(u"ab<!--Top: 12", 1, 7), (Found{u"", 3, 7}));
    EXPECT_EQ(Extract(u"<!--/Top--><!--Top: 12", 1, 7), (Found{u"", 12, 7}));
    EXPECT_EQ(Extract(u"ab<!--Top: ", 1, 7), (Found{u"", 3, 7}));
}

TEST(ExtractTagSection, ATextWithoutTheMarkerSetsThePositionTo0) {
    EXPECT_EQ(Extract(u"abc", 1, 7), (Found{u"", 0, 7}));
    EXPECT_EQ(Extract(u"", 1, 7), (Found{u"", 0, 7}));
}

TEST(ExtractTagSection, APositionBeyondTheEndFindsNothing) {
    EXPECT_EQ(Extract(u"<!--Top: 1<!--/Top-->", 22, 7), (Found{u"", 0, 7}));
    EXPECT_EQ(Extract(u"<!--Top: 1<!--/Top-->", 1000, 7), (Found{u"", 0, 7}));
}

TEST(ExtractTagSection, CaseDoesNotMatterAndBlanksDo) {
    EXPECT_EQ(Extract(u"<!--TOP: 1<!--/tOP-->", 1, 1), (Found{u"<!--TOP: 1<!--/tOP-->", 1, 22}));
    EXPECT_EQ(Extract(u"<!--Top:1<!--/Top-->", 1, 1), (Found{u"", 0, 1}));
}

TEST(ExtractTagSection, AWalkGoesOnFromTheNextPosition) {
    const std::u16string text = u"<!--Top: 1<!--/Top--><!--Top: 2<!--/Top-->";
    EXPECT_EQ(Extract(text, 22, 22), (Found{u"<!--Top: 2<!--/Top-->", 22, 43}));
}

TEST(ExtractTagSection, ACloseMarkerCountsOnlyBehindTheOpenOne) {
    ReadyBoard board;
    EXPECT_EQ(FirstTagSection(board.state, u"a>b>c", u">", u">"), u">b>");
    EXPECT_EQ(FirstTagSection(board.state, u"a>b", u">", u">"), u"");
}

TEST(ExtractTagSection, ItLetsTheFormHandleWhatIsPendingInEveryCase) {
    ReadyBoard board;
    int calls = 0;
    board.state.ToolboxA.EventInterval = 0;
    board.state.ToolboxA.HandleEvents = [&calls] { ++calls; };
    // The first call may still belong to the count of the interval before.
    board.state.ToolboxA.KeepResponsive();
    while (calls == 0) board.state.ToolboxA.KeepResponsive();
    calls = 0;
    FirstTagSection(board.state, u"<a>", u"<", u">");
    FirstTagSection(board.state, u"nothing", u"<", u">");
    FirstTagSection(board.state, u"<open", u"<", u">");
    EXPECT_EQ(calls, 3);
}

struct TopicInfo {
    std::u16string topicName;
    std::u16string meName;
    std::u16string topicNumber;
};

TopicInfo InfoOf(std::u16string_view text) {
    ReadyBoard board;
    TopicInfo info{u"old", u"old", u"old"};
    GetTopicInfo(board.state, text, info.topicName, info.meName, info.topicNumber);
    return info;
}

TEST(GetTopicInfo, TheFirstSlashDividesNumberAndName) {
    const TopicInfo info = InfoOf(u"<!--Topic: 12/My/Name-->");
    EXPECT_EQ(info.topicNumber, u"12");
    EXPECT_EQ(info.topicName, u"My/Name");
}

TEST(GetTopicInfo, ANameWithoutASlashIsTheWholeValueWithoutANumber) {
    const TopicInfo info = InfoOf(u"<!--Topic: My Name-->");
    EXPECT_EQ(info.topicNumber, u"");
    EXPECT_EQ(info.topicName, u"My Name");
}

TEST(GetTopicInfo, ANumberWithoutASlashIsTheNameToo) {
    const TopicInfo info = InfoOf(u"<!--Topic: 12 clubs-->");
    EXPECT_EQ(info.topicNumber, u"12");
    EXPECT_EQ(info.topicName, u"12 clubs");
}

TEST(GetTopicInfo, TagsWithinANameGo) {
    EXPECT_EQ(InfoOf(u"<!--Me: 12/<b>Name</b>-->").meName, u"Name");
}

TEST(GetTopicInfo, ANameEndsAtTheFirstEndOfAComment) {
    EXPECT_EQ(InfoOf(u"<!--Me: 12/One-->Two-->").meName, u"One");
}

TEST(GetTopicInfo, ANameIsTrimmedBeforeItsTagsGo) {
    EXPECT_EQ(InfoOf(u"<!--Topic: 3/  Radio  -->").topicName, u"Radio");
    EXPECT_EQ(InfoOf(u"<!--Topic: 3/<b> Radio </b>-->").topicName, u" Radio ");
}

TEST(GetTopicInfo, TheFirstTagOfEachKindCounts) {
    const TopicInfo info =
        InfoOf(u"<!--ME: 9/Nine--><!--Topic: 3/Radio--><!--Me: 8/Eight--><!--topic: 4/Tape-->");
    EXPECT_EQ(info.topicNumber, u"3");
    EXPECT_EQ(info.topicName, u"Radio");
    EXPECT_EQ(info.meName, u"Nine");
}

TEST(GetTopicInfo, TagsThatAreNotThereOrHaveNoEndGiveEmptyTexts) {
    for (const std::u16string_view text : {u"", u"no tags", u"<!--Topic: 12/Radio <!--Me: 12/Radio"}) {
        const TopicInfo info = InfoOf(text);
        EXPECT_EQ(info.topicName, u"");
        EXPECT_EQ(info.meName, u"");
        EXPECT_EQ(info.topicNumber, u"");
    }
}

TEST(GetTopicInfo, ATagThatRepeatsItsOwnOpeningLosesBoth) {
    EXPECT_EQ(InfoOf(u"<!--Topic: <!--Topic: 7/Radio-->").topicNumber, u"7");
}

struct Tags {
    std::u16string open;
    std::u16string close;
};

Tags PostTagsAt(Position position, std::u16string_view text) {
    Tags tags;
    GetPostTags(position, text, tags.open, tags.close);
    return tags;
}

TEST(GetPostTags, TheClosingTagIsTheOpeningOneWithASlashBehindFourCharacters) {
    const Tags tags = PostTagsAt(3, u"ab<!--Post: 12--><b>");
    EXPECT_EQ(tags.open, u"<!--Post: 12-->");
    EXPECT_EQ(tags.close, u"<!--/Post: 12-->");
}

TEST(GetPostTags, TheSpellingOfThePageIsKept) {
    EXPECT_EQ(PostTagsAt(1, u"<!--POST:  7 x-->").close, u"<!--/POST:  7 x-->");
}

TEST(GetPostTags, ATagOfLessThanFourCharactersTakesTheSlashAtItsEnd) {
    const Tags tags = PostTagsAt(1, u"-->");
    EXPECT_EQ(tags.open, u"-->");
    EXPECT_EQ(tags.close, u"-->/");
}

TEST(GetPostTags, ATagWithoutAnEndIsAFailureOfTheCaller) {
    Tags tags{u"old", u"old"};
    EXPECT_EQ(IgnoringErrors([&] { GetPostTags(1, u"<!--Post: 12", tags.open, tags.close); }), kInvalidCall);
    EXPECT_EQ(tags.open, u"");
    EXPECT_EQ(tags.close, u"");
}

TEST(RemoveTagInformation, TheTextGivenStaysAsItWas) {
    ReadyBoard board;
    const std::u16string text = u"a<b>c<B>d";
    EXPECT_EQ(RemoveTagInformation(board.state, text), u"acd");
    EXPECT_EQ(text, u"a<b>c<B>d");
}

TEST(LeadingDigits, BlanksAreTrimmedAndLeadingZerosStay) {
    EXPECT_EQ(LeadingDigits(u" 0123abc"), u"0123");
    EXPECT_EQ(LeadingDigits(u"  42  "), u"42");
    EXPECT_EQ(LeadingDigits(u"12345678901234567890"), u"12345678901234567890");
}

TEST(LeadingDigits, ATextThatBeginsWithAnythingElseHasNone) {
    EXPECT_EQ(LeadingDigits(u"abc"), u"");
    EXPECT_EQ(LeadingDigits(u""), u"");
    EXPECT_EQ(LeadingDigits(u"   "), u"");
    EXPECT_EQ(LeadingDigits(u"-5"), u"");
    EXPECT_EQ(LeadingDigits(u"\t5"), u"");
    // Digits of other scripts are none.
    EXPECT_EQ(LeadingDigits(u"\u0661\u0662"), u"");
}

struct BuiltPath {
    std::u16string path;
    std::u16string fileName;
    std::u16string folderNumber;
};

BuiltPath PathOf(std::u16string_view link, bool isHidden = false) {
    ConversionState state;
    state.DiscusMessageFolder = u"M:\\messages\\";
    state.DiscusSecureMessageFolder = u"S:\\secure\\";
    state.HiddenTopic = isHidden;
    BuiltPath built;
    built.path = BuildTopicFilePath(state, link, built.fileName, built.folderNumber);
    return built;
}

TEST(BuildTopicFilePath, TheLastTwoStepsOfALinkGiveFolderAndFile) {
    const BuiltPath built = PathOf(u"/discus/messages/12/34.html");
    EXPECT_EQ(built.folderNumber, u"12");
    EXPECT_EQ(built.fileName, u"34.html");
    EXPECT_EQ(built.path, u"M:\\messages\\12\\34.html");
}

TEST(BuildTopicFilePath, AHiddenPageLiesInTheSecureFolder) {
    EXPECT_EQ(PathOf(u"http://old.example/discus/messages/12/34.html", true).path,
              u"S:\\secure\\12\\34.html");
}

TEST(BuildTopicFilePath, WithoutASlashTheWholeLinkStandsInForTheFolder) {
    const BuiltPath built = PathOf(u"34.html");
    EXPECT_EQ(built.folderNumber, u"34");
    EXPECT_EQ(built.fileName, u"34.html");
    EXPECT_EQ(built.path, u"M:\\messages\\34\\34.html");
}

TEST(BuildTopicFilePath, WithOneSlashTheTextBeforeItIsTheFolder) {
    const BuiltPath built = PathOf(u"12/34.html");
    EXPECT_EQ(built.folderNumber, u"12");
    EXPECT_EQ(built.fileName, u"34.html");
}

TEST(BuildTopicFilePath, OnlyTheDigitsOfTheFolderStepCount) {
    EXPECT_EQ(PathOf(u"/messages/ 12abc/34.html").path, u"M:\\messages\\12\\34.html");
    EXPECT_EQ(PathOf(u"/messages/abc/34.html").path, u"M:\\messages\\\\34.html");
}

TEST(BuildTopicFilePath, ALinkThatEndsInASlashHasNoFileName) {
    const BuiltPath built = PathOf(u"/messages/12/");
    EXPECT_EQ(built.folderNumber, u"12");
    EXPECT_EQ(built.fileName, u"");
    EXPECT_EQ(built.path, u"M:\\messages\\12\\");
}

TEST(BuildTopicFilePath, AnEmptyLinkGivesTheFolderAndABackslash) {
    EXPECT_EQ(PathOf(u"").path, u"M:\\messages\\\\");
}

TEST(BuildTopicFilePath, ALinkWhoseOnlySlashIsItsFirstCharacterIsAFailureOfTheCaller) {
    EXPECT_EQ(IgnoringErrors([] { PathOf(u"/34.html"); }), kInvalidCall);
}

TEST(AddProcessedFolder, EachTopIsALineOfTheList) {
    ConversionState state;
    AddProcessedFolder(state, u"12");
    AddProcessedFolder(state, u"");
    AddProcessedFolder(state, u"12");
    EXPECT_EQ(state.cboProcessedFolders.Items, (std::vector<std::u16string>{u"12", u"", u"12"}));
}

}  // namespace
}  // namespace tessaly
