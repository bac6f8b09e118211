#include "translate/DiscusProcessLinks.h"

#include <random>

#include "tests/translate/PlainText.h"
#include "tests/translate/TranslateTest.h"
#include "text/numbers.h"
#include "text/split.h"

namespace tessaly {
namespace {

using testing::PlainFind;
using testing::PlainReplace;
using testing::PlainSection;
using testing::Wide;

constexpr std::u16string_view kPage = u"http://old.example/discus/messages/12/345.html";

std::u16string Link(std::u16string_view address, std::u16string_view text) {
    return u"<a href=\"" + std::u16string(address) + u"\">" + std::u16string(text) + u"</a>";
}

std::u16string BBCode(std::u16string_view address, std::u16string_view text) {
    return u"[url=" + std::u16string(address) + u"]" + std::u16string(text) + u"[/url]";
}

class DiscusProcessLinksTest : public testing::TranslateTest {
  protected:
    DiscusProcessLinksTest() {
        state.PostCounter = 77;
        state.CurrentPosterId = 9;
    }

    // The body as it comes back, for page serial 3 and forum 4.
    std::u16string Process(std::u16string_view text) {
        body = text;
        return DiscusProcessLinks(state, body, 3, 4);
    }

    std::string MissingPage(const std::string& below) const {
        const std::u16string first = state.DiscusMessageFolder + Wide(below);
        const std::u16string second = state.DiscusSecureMessageFolder + Wide(below);
        return "Message linked file does not exist (mybb Rec# 77) - " +
               std::string(first.begin(), first.end()) + "\r\n      nor does " +
               std::string(second.begin(), second.end()) + "\r\n";
    }

    void ExpectFailure(std::u16string_view text) {
        EXPECT_EQ(board.messages, (std::vector<std::u16string>{std::u16string(text)}));
        EXPECT_EQ(state.ToolboxA.RecordedErrors, board.messages);
        EXPECT_TRUE(state.CancelRequested);
    }

    std::u16string body;
};

TEST_F(DiscusProcessLinksTest, ALinkToATopicBecomesABBCodeLinkAndALineOfEightFields) {
    board.WritePage("12/345.html", "x");
    EXPECT_EQ(Process(u"See " + Link(kPage, u"there") + u"."), u"See " + BBCode(kPage, u"there") + u".");
    EXPECT_EQ(Rows(state.InternalLinksFile),
              (std::vector<std::string>{
                  "[url=http://old.example/discus/messages/12/345.html]there[/url]^^4^3^77^34^12^345"}));
    EXPECT_EQ(state.txtArea.Text, u"");
}

TEST_F(DiscusProcessLinksTest, AnAddressFromTheServersRootIsATopicToo) {
    board.WriteSecurePage("12/345.html", "x");
    EXPECT_EQ(Process(u"." + Link(u"/discus/messages/12/345.html", u"t")),
              u"." + BBCode(u"/discus/messages/12/345.html", u"t"));
    EXPECT_EQ(Rows(state.InternalLinksFile),
              (std::vector<std::string>{"[url=/discus/messages/12/345.html]t[/url]^^4^3^77^34^12^345"}));
    EXPECT_EQ(state.txtArea.Text, u"");
}

TEST_F(DiscusProcessLinksTest, AMissingTargetIsReportedAndTheLinkKeptAllTheSame) {
    EXPECT_EQ(Process(u"." + Link(kPage, u"there")), u"." + BBCode(kPage, u"there"));
    EXPECT_EQ(state.txtArea.Text, Wide(MissingPage("12\\345.html")));
    EXPECT_EQ(ErrorLog(), MissingPage("12\\345.html") + "\r\n");
    EXPECT_EQ(Rows(state.InternalLinksFile).size(), 1u);
}

TEST_F(DiscusProcessLinksTest, ALinkBelowSecureIsALocalOne) {
    EXPECT_EQ(Process(u"." + Link(u"http://old.example/secure/31/155.html", u"t")),
              u"." + BBCode(u"http://old.example/secure/31/155.html", u"t"));
}

TEST_F(DiscusProcessLinksTest, LinksElsewhereStay) {
    const std::u16string text = u"a " + Link(u"http://elsewhere.example/12.html", u"x") + u" b " +
                                Link(u"mailto:anna@host.example", u"y") + u" c";
    EXPECT_EQ(Process(text), text);
    EXPECT_EQ(Rows(state.InternalLinksFile).size(), 0u);
}

TEST_F(DiscusProcessLinksTest, ABodyWithoutALinkComesBackUnchanged) {
    EXPECT_EQ(Process(u"<b>no link</b>, <a name=\"x\">"), u"<b>no link</b>, <a name=\"x\">");
    EXPECT_EQ(Process(u""), u"");
}

TEST_F(DiscusProcessLinksTest, AnUnclosedLinkEndsTheScan) {
    const std::u16string rest = u" <a href=\"http://old.example/discus/messages/12/346.html\">two";
    EXPECT_EQ(Process(u"." + Link(kPage, u"one") + rest), u"." + BBCode(kPage, u"one") + rest);
    EXPECT_EQ(Rows(state.InternalLinksFile).size(), 1u);
}

TEST_F(DiscusProcessLinksTest, AfterACancelTheTextIsEmpty) {
    state.CancelRequested = true;
    EXPECT_EQ(Process(u"text"), u"");
}

TEST_F(DiscusProcessLinksTest, CapitalLettersAreTheSame) {
    EXPECT_EQ(Process(u".<A HREF=\"http://old.example/Discus/Messages/12/345.HTML\">t</A>"),
              u"." + BBCode(u"http://old.example/Discus/Messages/12/345.HTML", u"t"));
}

TEST_F(DiscusProcessLinksTest, ATargetAttributeStaysInTheAddress) {
    const std::u16string text = u".<a href=\"/discus/messages/12/345.html\" target=\"_top\">t</a>";
    EXPECT_EQ(Process(text), u".[url=/discus/messages/12/345.html target=_top]t[/url]");
    EXPECT_EQ(Rows(state.InternalLinksFile),
              (std::vector<std::string>{
                  "[url=/discus/messages/12/345.html target=_top]t[/url]^^4^3^77^34^12^345"}));
}

TEST_F(DiscusProcessLinksTest, TagsAndQuotesInTheLinkTextGo) {
    EXPECT_EQ(Process(u"." + Link(u"/discus/messages/12/345.html", u"<b>\"t\"</b> < u")),
              u"." + BBCode(u"/discus/messages/12/345.html", u"t "));
}

// The "</a>" ends the lone "<": what stands between goes as one tag.
TEST_F(DiscusProcessLinksTest, ALoneLessThanSignSwallowsTheTextUpToTheNextEnd) {
    EXPECT_EQ(Process(u"." + Link(u"/discus/messages/12/345.html", u"a < b")),
              u"." + BBCode(u"/discus/messages/12/345.html", u"a "));
}

TEST_F(DiscusProcessLinksTest, AQueryAndAnAnchorStayInTheAddressAndTheNumberIsItsDigits) {
    EXPECT_EQ(Process(u"." + Link(u"/discus/messages/12/345.html?99#POST7", u"t")),
              u"." + BBCode(u"/discus/messages/12/345.html?99#POST7", u"t"));
    EXPECT_EQ(
        Rows(state.InternalLinksFile),
        (std::vector<std::string>{"[url=/discus/messages/12/345.html?99#POST7]t[/url]^^4^3^77^34^12^345"}));
}

TEST_F(DiscusProcessLinksTest, LineEndsInsideALinkAreDeletedFromItsLineAlone) {
    EXPECT_EQ(Process(u"." + Link(u"/discus/messages/12/345.html", u"a\r\nb\nc\rd")),
              u"." + BBCode(u"/discus/messages/12/345.html", u"a\r\nb\nc\rd"));
    EXPECT_EQ(Rows(state.InternalLinksFile),
              (std::vector<std::string>{"[url=/discus/messages/12/345.html]abc\rd[/url]^^4^3^77^34^12^345"}));
}

TEST_F(DiscusProcessLinksTest, ACaretInALinkTextShiftsTheFields) {
    Process(u"." + Link(u"/discus/messages/12/345.html", u"x^2"));
    EXPECT_EQ(Rows(state.InternalLinksFile),
              (std::vector<std::string>{"[url=/discus/messages/12/345.html]x^2[/url]^^4^3^77^34^12^345"}));
}

TEST_F(DiscusProcessLinksTest, AFileNameWithLeadingDigitsCountsAsATopic) {
    board.WritePage("12/12abc.jpg", "x");
    EXPECT_EQ(Process(u"." + Link(u"http://old.example/discus/messages/12/12abc.jpg", u"t")),
              u"." + BBCode(u"http://old.example/discus/messages/12/12abc.jpg", u"t"));
    EXPECT_EQ(state.txtArea.Text, Wide(MissingPage("12\\12.html")));
    EXPECT_EQ(state.AttachmentCounter, 0);
    EXPECT_EQ(Rows(state.InternalLinksFile),
              (std::vector<std::string>{
                  "[url=http://old.example/discus/messages/12/12abc.jpg]t[/url]^^4^3^77^34^12^12"}));
}

TEST_F(DiscusProcessLinksTest, AFileNameWithLeadingDigitsIsNotReportedWhenAPageOfThatNumberIsThere) {
    board.WritePage("12/12.html", "x");
    Process(u"." + Link(u"http://old.example/discus/messages/12/12abc.jpg", u"t"));
    EXPECT_EQ(state.txtArea.Text, u"");
}

TEST_F(DiscusProcessLinksTest, ALinkToAFileGoesWithItsTextAndBecomesAnAttachment) {
    board.WritePage("12/abc.jpg", "picture");
    EXPECT_EQ(Process(u"see " + Link(u"http://old.example/discus/messages/12/abc.jpg", u"this") + u" now"),
              u"see  now");
    EXPECT_EQ(state.AttachmentCounter, 1);
    EXPECT_TRUE(state.PageAttachmentRows.Get(u"1").starts_with(u"1,9,"));
    EXPECT_EQ(Rows(state.InternalLinksFile).size(), 0u);
}

TEST_F(DiscusProcessLinksTest, ATakenFileEmptiesTheMadeUpSectionOfTheCallersBody) {
    board.WritePage("12/abc.jpg", "picture");
    Process(u"." + Link(u"http://old.example/discus/messages/12/abc.jpg", u"this"));
    EXPECT_EQ(body, u"");
}

TEST_F(DiscusProcessLinksTest, AFileThatIsNotTakenLeavesItsMadeUpSectionInTheCallersBody) {
    EXPECT_EQ(Process(u"." + Link(u"/discus/messages/12/abc.jpg", u"this")), u".");
    EXPECT_EQ(body, u"<!--attachment: <a href=\"/discus/messages/12/abc.jpg\" target= <!--/attachment-->");
}

TEST_F(DiscusProcessLinksTest, ATargetAttributeOfALinkToAFileIsCutOff) {
    board.WritePage("12/abc.jpg", "picture");
    Process(u".<a href=\"http://old.example/discus/messages/12/abc.jpg\" target=\"_blank\">x</a>");
    EXPECT_EQ(state.AttachmentCounter, 1);
}

TEST_F(DiscusProcessLinksTest, ALinkToAFileGoesWhenAttachmentsAreOff) {
    board.WritePage("12/abc.jpg", "picture");
    state.optCreateAttachments = false;
    EXPECT_EQ(Process(u"." + Link(u"http://old.example/discus/messages/12/abc.jpg", u"this")), u".");
    EXPECT_EQ(state.AttachmentCounter, 0);
}

TEST_F(DiscusProcessLinksTest, AShowCgiLinkIsDeleted) {
    EXPECT_EQ(Process(u"a " + Link(u"http://old.example/cgi-bin/show.cgi?tpc=3&post=9", u"x") + u" b"),
              u"a  b");
    EXPECT_EQ(Process(u"a " + Link(u"http://elsewhere.example/SHOW.CGI", u"x") + u" b"), u"a  b");
    EXPECT_EQ(Process(u"a " + Link(u"http://elsewhere.example/", u"how to use show.cgi") + u" b"), u"a  b");
}

// The topic link is 45 characters, its BBCode 44: the scan goes on one character into the text behind.
TEST_F(DiscusProcessLinksTest, AShowPageLinkBehindATopicLinkIsReplacedByACopyOfThatLink) {
    EXPECT_EQ(Process(u"." + Link(u"/discus/messages/12/345.html", u"t") + u" and " +
                      Link(u"http://old.example/discus/showpage.html?x", u"page") + u"!"),
              u"." + BBCode(u"/discus/messages/12/345.html", u"t") + u" and " +
                  BBCode(u"/discus/messages/12/345.html", u"t") + u"!");
    EXPECT_EQ(Rows(state.InternalLinksFile).size(), 1u);
}

// The link loses its two quotes and one character more, three in all: a "<a href=" that begins within the
// three characters behind it is passed over.
TEST_F(DiscusProcessLinksTest, AShowPageLinkWithinTheShorteningIsSkipped) {
    const std::u16string topic = Link(u"/discus/messages/12/345.html", u"t");
    const std::u16string bbcode = BBCode(u"/discus/messages/12/345.html", u"t");
    ASSERT_EQ(topic.size() - bbcode.size(), 3u);
    const std::u16string showPage = Link(u"/showpage.html", u"p");
    EXPECT_EQ(Process(u"." + topic + showPage), u"." + bbcode + showPage);
    EXPECT_EQ(Process(u"." + topic + u".." + showPage), u"." + bbcode + u".." + showPage);
    EXPECT_EQ(Process(u"." + topic + u"..." + showPage), u"." + bbcode + u"..." + bbcode);
}

TEST_F(DiscusProcessLinksTest, ATopicLinkWithinTheShorteningOfADeletedOneIsSkipped) {
    const std::u16string deleted = Link(u"/show.cgi", u"a long text");
    EXPECT_EQ(Process(u"." + deleted + Link(kPage, u"t")), u"." + Link(kPage, u"t"));
    EXPECT_EQ(Rows(state.InternalLinksFile).size(), 0u);
}

TEST_F(DiscusProcessLinksTest, ADeletedLinkBehindATopicLinkLeavesACopyToo) {
    const std::u16string bbcode = BBCode(u"/discus/messages/12/345.html", u"t");
    state.optCreateAttachments = false;
    EXPECT_EQ(Process(u"." + Link(u"/discus/messages/12/345.html", u"t") + u"...." +
                      Link(u"/discus/messages/12/abc.jpg", u"file")),
              u"." + bbcode + u"...." + bbcode);
}

TEST_F(DiscusProcessLinksTest, TheReplacementTextStartsEmptyAtEachCall) {
    Process(u"." + Link(kPage, u"t"));
    EXPECT_EQ(Process(u"." + Link(u"/showpage.html", u"p")), u".");
}

// A copy longer than the link it stands for: the scan goes on within the copy, where no link begins.
TEST_F(DiscusProcessLinksTest, ALongCopyLetsTheScanGoOnWithinIt) {
    const std::u16string bbcode = BBCode(u"/discus/messages/12/345.html", u"a rather long text");
    const std::u16string next = Link(u"/discus/messages/12/346.html", u"n");
    EXPECT_EQ(Process(u"." + Link(u"/discus/messages/12/345.html", u"a rather long text") + u"...." +
                      Link(u"show.cgi", u"s") + next),
              u"." + bbcode + u"...." + bbcode + BBCode(u"/discus/messages/12/346.html", u"n"));
}

TEST_F(DiscusProcessLinksTest, ALinkThatOpensTheTextBecomesTheWholeText) {
    const std::u16string link = Link(u"/discus/messages/12/345.html", u"<b>t</b>");
    EXPECT_EQ(Process(link + u" and all that follows " + Link(kPage, u"u")), link);
    EXPECT_EQ(Rows(state.InternalLinksFile).size(), 1u);
}

TEST_F(DiscusProcessLinksTest, AForeignLinkThatOpensTheTextLosesNothing) {
    const std::u16string link = Link(u"http://elsewhere.example/", u"x");
    EXPECT_EQ(Process(link + Link(u"/discus/messages/12/345.html", u"t") + u"."),
              link + BBCode(u"/discus/messages/12/345.html", u"t") + u".");
}

TEST_F(DiscusProcessLinksTest, AnEmptyAddressIsSplicedLikeADeletedLink) {
    EXPECT_EQ(Process(u"." + Link(u"", u"/discus/messages/") + u"!"), u".!");
}

TEST_F(DiscusProcessLinksTest, ALinkThatIsLocalInItsTextAloneFailsWhenItsAddressHasNoSlash) {
    EXPECT_EQ(Process(u"." + Link(u"page.html", u"in /discus/messages/ it is") + u"!"), u"");
    ExpectFailure(u"9 - DiscusProcessLinks()\r\n\r\nSubscript out of range");
}

TEST_F(DiscusProcessLinksTest, AKnownTopicGetsItsNewAddressAndNoLine) {
    state.ThreadIdsByFile.Add(u"345", u"7,x,21");
    EXPECT_EQ(Process(u"." + Link(kPage, u"there") + u"!"),
              u"." + BBCode(u"http://new.example/viewtopic.php?f=7&t=21", u"there") + u"!");
    EXPECT_EQ(Rows(state.InternalLinksFile).size(), 0u);
    EXPECT_EQ(state.txtArea.Text, Wide(MissingPage("12\\345.html")));
}

TEST_F(DiscusProcessLinksTest, AnItemWithFewerThanThreePartsEndsTheRunAndTheLinkIsLost) {
    state.ThreadIdsByFile.Add(u"345", u"21");
    EXPECT_EQ(Process(u"." + Link(kPage, u"there") + u"!"), u".!");
    ExpectFailure(u"9 - BuildmybbLink()\r\n\r\nSubscript out of range");
}

TEST_F(DiscusProcessLinksTest, AFolderWithoutLeadingDigitsLeavesItsFieldEmpty) {
    Process(u"." + Link(u"/discus/messages/x12/ 0345.html", u"t"));
    EXPECT_EQ(Rows(state.InternalLinksFile),
              (std::vector<std::string>{"[url=/discus/messages/x12/ 0345.html]t[/url]^^4^3^77^34^^0345"}));
    EXPECT_EQ(state.txtArea.Text, Wide(MissingPage("\\0345.html")));
}

// The fifteen steps on one text with absolute positions. Reports and lines are gathered; files are left out,
// attachments being off.
class PlainLinks {
  public:
    PlainLinks(const KeyedCollection<std::u16string>& known, std::u16string_view forum)
        : known_(known), forum_(forum) {}

    // Sets `failed` when an address has no next-to-last part.
    std::u16string Process(std::u16string_view text, bool& failed) {
        failed = false;
        std::u16string working(text);
        std::u16string replacement;
        Position start = 1;
        while (true) {
            const Position found = PlainFind(working, u"<a href=", start);
            const Position close = found == 0 ? 0 : PlainFind(working, u"</a>", found + 8);
            if (close == 0) return working;
            start = found;
            const Position end = close + 4;
            const std::u16string link = working.substr(Offset(start), Offset(end) - Offset(start));
            const bool isScript = PlainFind(link, u"show.cgi") != 0 || PlainFind(link, u"showpage.html") != 0;
            const bool isLocal =
                PlainFind(link, u"/discus/messages/") != 0 || PlainFind(link, u"/secure/") != 0;
            if (!isScript && !isLocal) {
                start = end;
                continue;
            }
            if (!isScript) Follow(PlainReplace(link, u"\"", u""), replacement, failed);
            if (failed) return {};
            if (start > 1) {
                const std::u16string behind = working.substr(Offset(end));
                working = working.substr(0, Offset(start)) + replacement + behind;
            } else {
                working = link;
            }
            start = end;
        }
    }

    std::vector<std::u16string> lines;

  private:
    static std::size_t Offset(Position position) { return static_cast<std::size_t>(position) - 1; }

    static std::u16string WithoutTags(std::u16string text) {
        while (true) {
            const std::size_t open = text.find(u'<');
            if (open == std::u16string::npos) return text;
            const std::size_t close = text.find(u'>', open);
            if (close == std::u16string::npos) return text;
            text = PlainReplace(text, text.substr(open, close - open + 1), u"");
        }
    }

    static std::u16string Digits(std::u16string_view text) {
        const std::u16string_view trimmed = Trim(text);
        std::size_t count = 0;
        while (count < trimmed.size() && trimmed[count] >= u'0' && trimmed[count] <= u'9') ++count;
        return std::u16string(trimmed.substr(0, count));
    }

    void Follow(const std::u16string& link, std::u16string& replacement, bool& failed) {
        std::u16string address = PlainSection(link, u"<a href=", u">");
        address = PlainReplace(PlainReplace(address, u"<a href=", u""), u">", u"");
        if (address.empty()) return;
        std::u16string bbcode = BBCode(address, WithoutTags(link));
        bbcode = PlainReplace(PlainReplace(bbcode, u"\"", u""), u"<", u"");
        const std::size_t last = address.rfind(u'/');
        failed = last == std::u16string::npos;
        if (failed) return;
        const std::size_t before = last == 0 ? std::u16string::npos : address.rfind(u'/', last - 1);
        const std::size_t from = before == std::u16string::npos ? 0 : before + 1;
        const std::u16string folder = Digits(address.substr(from, last - from));
        const std::u16string number = Digits(PlainReplace(address.substr(last + 1), u".html", u""));
        if (number.empty()) return;
        for (const auto& [key, item] : known_) {
            if (key != number) continue;
            replacement =
                PlainReplace(bbcode, AddressIn(bbcode), forum_ + u"viewtopic.php?f=7&t=" + item.substr(4));
            return;
        }
        std::u16string line = bbcode + u"^^4^3^0^34^" + folder + u"^" + number;
        line = PlainReplace(PlainReplace(line, u"\r\n", u""), u"\n", u"");
        lines.push_back(line);
        replacement = bbcode;
    }

    static std::u16string AddressIn(const std::u16string& bbcode) {
        const std::u16string section = PlainSection(bbcode, u"[url=", u"]");
        return PlainReplace(PlainReplace(section, u"[url=", u""), u"]", u"");
    }

    const KeyedCollection<std::u16string>& known_;
    std::u16string forum_;
};

class RandomLinks {
  public:
    explicit RandomLinks(unsigned seed) : random_(seed) {}

    std::u16string Body() {
        std::u16string body = Below(4) == 0 ? u"" : u"<!--Text-->";
        for (std::size_t count = Below(7); count > 0; --count) {
            body += Between();
            body += Below(12) == 0 ? Torn() : OneLink();
        }
        return body + Between();
    }

  private:
    std::size_t Below(std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(random_);
    }

    template <std::size_t Count>
    std::u16string_view OneOf(const std::u16string_view (&choices)[Count]) {
        return choices[Below(Count)];
    }

    std::u16string Between() {
        return std::u16string(Below(3) == 0 ? u"" : u"...............").substr(0, Below(14));
    }

    std::u16string_view Address() {
        static constexpr std::u16string_view kAddresses[] = {
            u"/discus/messages/12/345.html",
            u"http://old.example/discus/messages/12/77.html",
            u"http://old.example/discus/messages/3/345.html?99 target=\"_top\"",
            u"/secure/1/2.html",
            u"/secure/ 12x/ 8.html.html",
            u"http://a-server-with-a-rather-long-name.example/discus/messages/5/345",
            u"/discus/messages/12/abc.jpg",
            u"/secure/readme",
            u"http://elsewhere.example/",
            u"mailto:x",
            u"/cgi/show.cgi?tpc=1&post=2",
            u"show.cgi",
            u"/discus/messages/showpage.html?x",
            u"",
            u"9.html",
            u"/discus/messages/1/2.html <a href=/discus/messages/1/3.html",
        };
        return OneOf(kAddresses);
    }

    std::u16string_view Text() {
        static constexpr std::u16string_view kTexts[] = {
            u"",
            u"t",
            u"<b>bold</b>",
            u"a rather long text that makes the link longer",
            u"x^2",
            u"line\r\nends\n",
            u"a < b",
            u"\"quoted\"",
            u"/secure/",
            u"]",
            u"<a href=",
            u"[/url]",
            u"<i><I></i>",
            u"/discus/messages/1/2.html",
        };
        return OneOf(kTexts);
    }

    std::u16string OneLink() {
        const std::u16string quote = Below(4) == 0 ? u"" : u"\"";
        const std::u16string open = Below(5) == 0 ? u"<A HREF=" : u"<a href=";
        const std::u16string close = Below(5) == 0 ? u"</A>" : u"</a>";
        return open + quote + std::u16string(Address()) + quote + u">" + std::u16string(Text()) + close;
    }

    std::u16string_view Torn() {
        static constexpr std::u16string_view kTorn[] = {
            u"<a href=\"/discus/messages/12/345.html\">",
            u"</a>",
            u"<a href=",
            u"<a href=\"/show.cgi\"",
            u"<",
            u">",
        };
        return OneOf(kTorn);
    }

    std::mt19937 random_;
};

void ExpectTheFifteenSteps(unsigned seed, const std::u16string& forum, int rounds) {
    testing::TestBoard board;
    ConversionState& state = board.state;
    state.Charset = u"utf-8";
    state.Depth = 1;
    state.DataIndex.resize(2);
    state.DataIndex[1].FileNumber = u"34";
    state.optCreateAttachments = false;
    state.optDisplay = false;
    state.mybbForumAddr = forum;
    BeginOutputFile(state.InternalLinksFile, board.folder.Path() + u"\\LinksXXX.txt");
    state.ThreadIdsByFile.Add(u"77", u"7,x,21");
    state.ThreadIdsByFile.Add(u"8", u"7,x,5");
    RandomLinks links(seed);
    PlainLinks plain(state.ThreadIdsByFile, forum);
    int failures = 0;
    for (int round = 0; round < rounds; ++round) {
        const std::u16string text = links.Body();
        bool failed = false;
        const std::u16string expected = plain.Process(text, failed);
        state.CancelRequested = false;
        state.txtArea.SetText(u"");
        std::u16string body = text;
        ASSERT_EQ(DiscusProcessLinks(state, body, 3, 4), expected) << ::testing::PrintToString(text);
        ASSERT_EQ(state.CancelRequested, failed) << ::testing::PrintToString(text);
        failures += failed ? 1 : 0;
    }
    EXPECT_GT(failures, rounds / 100);
    EXPECT_LT(failures, rounds / 2);
    FinishOutputFile(state, state.InternalLinksFile, u"");
    std::vector<std::string> lines = testing::Lines(board.folder.Read("Links1.txt"));
    ASSERT_EQ(lines.size(), plain.lines.size() + 1);
    for (std::size_t line = 0; line < plain.lines.size(); ++line) {
        ASSERT_EQ(Wide(lines[line]), plain.lines[line]) << line;
    }
}

TEST(DiscusProcessLinksRandomTest, TheSplicesAreThoseOfTheFifteenSteps) {
    ExpectTheFifteenSteps(20263, u"http://new.example/", 10000);
}

// A new address that holds a link itself: the only way for a scan to find one within a replacement.
TEST(DiscusProcessLinksRandomTest, LinksWithinAReplacementAreGoneThroughToo) {
    ExpectTheFifteenSteps(20264, u"....................<a href=\"/show.cgi/\">x</a><a href=/secure/", 10000);
}

}  // namespace
}  // namespace tessaly
