#include "translate/BuildmybbLink.h"

#include "tests/translate/TranslateTest.h"

namespace tessaly {
namespace {

class BuildmybbLinkTest : public testing::TranslateTest {
  protected:
    std::u16string Build(std::u16string_view link, std::u16string_view item) {
        return BuildmybbLink(state, link, item, list);
    }

    void ExpectFailure() {
        EXPECT_EQ(board.messages,
                  (std::vector<std::u16string>{u"9 - BuildmybbLink()\r\n\r\nSubscript out of range"}));
        EXPECT_EQ(state.ToolboxA.RecordedErrors, board.messages);
        EXPECT_TRUE(state.CancelRequested);
    }

    std::vector<std::u16string> list;
};

TEST_F(BuildmybbLinkTest, ForumAndTopicAreTheFirstAndTheThirdPartOfTheItem) {
    EXPECT_EQ(Build(u"[url=http://old.example/1.html]text[/url]", u"7,x,21,y"),
              u"[url=http://new.example/viewtopic.php?f=7&t=21]text[/url]");
    EXPECT_EQ(list, (std::vector<std::u16string>{u"7", u"x", u"21", u"y"}));
}

TEST_F(BuildmybbLinkTest, TheOldAddressIsReplacedInTheLinkTextTooIgnoringCase) {
    EXPECT_EQ(Build(u"[URL=http://old.example/1.html]see HTTP://OLD.EXAMPLE/1.html[/url]", u"7,,21"),
              u"[URL=http://new.example/viewtopic.php?f=7&t=21]see "
              u"http://new.example/viewtopic.php?f=7&t=21[/url]");
}

TEST_F(BuildmybbLinkTest, ALinkWithoutAnAddressStaysAsItIs) {
    EXPECT_EQ(Build(u"[url=]text[/url]", u"7,,21"), u"[url=]text[/url]");
    EXPECT_EQ(Build(u"no link", u"7,,21"), u"no link");
}

TEST_F(BuildmybbLinkTest, ABareNumberFailsAndTheLinkIsLost) {
    EXPECT_EQ(Build(u"[url=http://old.example/1.html]text[/url]", u"21"), u"");
    EXPECT_EQ(list, (std::vector<std::u16string>{u"21"}));
    ExpectFailure();
}

TEST_F(BuildmybbLinkTest, TwoPartsAreNotEnough) {
    EXPECT_EQ(Build(u"[url=http://old.example/1.html]text[/url]", u"7,21"), u"");
    ExpectFailure();
}

TEST_F(BuildmybbLinkTest, AnEmptyItemHasNoPartAtAll) {
    EXPECT_EQ(Build(u"[url=http://old.example/1.html]text[/url]", u""), u"");
    EXPECT_TRUE(list.empty());
    ExpectFailure();
}

}  // namespace
}  // namespace tessaly
