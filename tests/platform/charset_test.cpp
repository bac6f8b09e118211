#include "platform/charset.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <vector>

#include "tests/support/MachineCharsets.h"
#include "text/RunTimeError.h"
#include "text/split.h"

namespace tessaly::platform {
namespace {

using tessaly::testing::IsThere;

constexpr std::u16string_view kNames[] = {
    u"big5",       u"euc-jp",     u"euc-kr",     u"gb2312",     u"iso-2022-jp", u"iso-2022-kr", u"iso-8859-1",
    u"iso-8859-2", u"iso-8859-3", u"iso-8859-4", u"iso-8859-5", u"iso-8859-6",  u"iso-8859-7",  u"iso-8859-8",
    u"iso-8859-9", u"koi8-r",     u"shift-jis",  u"us-ascii",   u"utf-7",       u"utf-8",
};

std::string Name(std::u16string_view charset) {
    return std::string(charset.begin(), charset.end());
}

std::vector<std::u16string_view> Names() {
    std::vector<std::u16string_view> names(std::begin(kNames), std::end(kNames));
    std::erase_if(names, [](std::u16string_view name) { return !IsThere(name); });
    return names;
}

// What every text in this charset begins with.
std::string HeadOf(std::u16string_view charset) {
    return charset == u"iso-2022-kr" ? "\x1B$)C" : "";
}

bool IsUnicode(std::u16string_view charset) {
    return charset == u"utf-7" || charset == u"utf-8";
}

std::string Encode(std::u16string_view text, std::u16string_view charset) {
    Encoder encoder(charset);
    std::string bytes;
    encoder.Append(text, bytes);
    encoder.Finish(bytes);
    return bytes;
}

std::u16string Of(char32_t character) {
    if (character < 0x10000) return std::u16string(1, static_cast<char16_t>(character));
    const char32_t offset = character - 0x10000;
    return {static_cast<char16_t>(0xD800 + (offset >> 10)), static_cast<char16_t>(0xDC00 + (offset & 0x3FF))};
}

struct Known {
    std::u16string_view charset;
    std::string_view bytes;
    std::u16string_view text;
};

// Characters of each charset from its own code table.
constexpr Known kKnown[] = {
    {u"big5", "\xA4\x40", u"\u4E00"},
    {u"big5", "\xB3\x5C", u"\u8A31"},
    {u"euc-jp", "\xA4\xA2", u"\u3042"},
    {u"euc-jp", "\x8E\xB1", u"\uFF71"},
    {u"euc-jp", "\x8F\xB0\xA1", u"\u4E02"},
    {u"euc-kr", "\xB0\xA1", u"\uAC00"},
    {u"gb2312", "\xB0\xA1", u"\u554A"},
    {u"iso-2022-jp", "\x1B$B$\"\x1B(B", u"\u3042"},
    {u"iso-2022-kr", "\x1B$)C\x0E\x30\x21\x0F", u"\uAC00"},
    {u"iso-8859-1", "\xE4", u"\u00E4"},
    {u"iso-8859-2", "\xA1", u"\u0104"},
    {u"iso-8859-3", "\xA1", u"\u0126"},
    {u"iso-8859-4", "\xB6", u"\u013C"},
    {u"iso-8859-5", "\xD0", u"\u0430"},
    {u"iso-8859-6", "\xC7", u"\u0627"},
    {u"iso-8859-7", "\xE1", u"\u03B1"},
    {u"iso-8859-8", "\xE0", u"\u05D0"},
    {u"iso-8859-9", "\xFE", u"\u015F"},
    {u"koi8-r", "\xC1", u"\u0430"},
    {u"shift-jis", "\x82\xA0", u"\u3042"},
    {u"shift-jis", "\x83\x5C", u"\u30BD"},
    {u"shift-jis", "\xB1", u"\uFF71"},
    {u"us-ascii", "a", u"a"},
    {u"utf-7", "+AOk-", u"\u00E9"},
    {u"utf-7", "+2D3eAA-", u"\U0001F600"},
    {u"utf-8", "\xC3\xA9", u"\u00E9"},
    {u"utf-8", "\xF0\x9F\x98\x80", u"\U0001F600"},
};

TEST(Charset, EachOneOnOfferIsReadAndWritten) {
    for (const Known& known : kKnown) {
        if (!IsThere(known.charset)) continue;
        EXPECT_EQ(Decode(known.bytes, known.charset), known.text) << Name(known.charset);
        EXPECT_EQ(Encode(known.text, known.charset), known.bytes) << Name(known.charset);
    }
    for (const auto name : Names()) {
        EXPECT_EQ(Decode("Tell <b>all</b>\r\n", name), u"Tell <b>all</b>\r\n") << Name(name);
        EXPECT_EQ(Encode(u"Tell <b>all</b>\r\n", name), HeadOf(name) + "Tell <b>all</b>\r\n") << Name(name);
    }
}

TEST(Charset, NamesMeanWhatBrowsersTakeThemFor) {
    const Known all[] = {
        {u"iso-8859-1", "\x80\x93\x94\x9F", u"\u20AC\u201C\u201D\u0178"},
        {u"us-ascii", "\x80\x93\x94\xE4", u"\u20AC\u201C\u201D\u00E4"},
        {u"iso-8859-9", "\x80\xD0\xDD\xFD\x9F", u"\u20AC\u011E\u0130\u0131\u0178"},
        {u"gb2312", "\x80\x81\x40\xFE\x4F", u"\u20AC\u4E02\uFA29"},
        {u"euc-kr", "\x81\x41\xC6\x52", u"\uAC02\uD7A3"},
        {u"shift-jis", "\x87\x40\xFA\x40\x81\x60", u"\u2460\u2170\uFF5E"},
    };
    for (const Known& known : all) {
        EXPECT_EQ(Decode(known.bytes, known.charset), known.text) << Name(known.charset);
        EXPECT_EQ(Encode(known.text, known.charset), known.bytes) << Name(known.charset);
    }
}

TEST(Charset, ABytesWithoutACharacterOfWindows1252IsWrittenBackAsItWas) {
    for (const char byte : {'\x81', '\x8D', '\x8F', '\x90', '\x9D'}) {
        const std::string bytes(1, byte);
        const std::u16string text = Decode(bytes, u"iso-8859-1");
        EXPECT_EQ(text, std::u16string(1, static_cast<unsigned char>(byte)));
        EXPECT_EQ(Encode(text, u"iso-8859-1"), bytes);
    }
}

TEST(Charset, EachByteOfASingleByteCharsetThatIsReadIsWrittenBackAsItWas) {
    for (const auto name :
         {u"iso-8859-1", u"iso-8859-2", u"iso-8859-3", u"iso-8859-4", u"iso-8859-5", u"iso-8859-6",
          u"iso-8859-7", u"iso-8859-8", u"iso-8859-9", u"koi8-r", u"us-ascii"}) {
        for (int byte = 0; byte < 256; ++byte) {
            const std::string bytes(1, static_cast<char>(byte));
            const std::u16string text = Decode(bytes, name);
            ASSERT_EQ(text.size(), 1u);
            ASSERT_EQ(Encode(text, name), text == u"\uFFFD" ? "?" : bytes) << Name(name) << ' ' << byte;
        }
    }
}

TEST(Charset, ABackslashStaysABackslash) {
    for (const auto name : Names()) {
        EXPECT_EQ(Decode("a\\b", name), u"a\\b") << Name(name);
        EXPECT_EQ(Decode(Encode(u"a\\b", name), name), u"a\\b") << Name(name);
        if (name != u"utf-7") {
            EXPECT_EQ(Encode(u"a\\b", name), HeadOf(name) + "a\\b") << Name(name);
        }
    }
}

TEST(Charset, ABackslashStaysABackslashInTheRomanSetOfJapaneseMail) {
    EXPECT_EQ(Decode("\x1B(Ja\\b\x1B(Bc\\d", u"iso-2022-jp"), u"a\\bc\\d");
}

// Their byte is the backslash's, and means nothing else.
TEST(Charset, YenAndWonSignsWhoseByteIsTheBackslashsAreMissing) {
    EXPECT_EQ(Encode(u"a\u00A5b", u"shift-jis"), "a?b");
    EXPECT_EQ(Encode(u"a\u00A5b", u"euc-jp"), "a?b");
    EXPECT_EQ(Encode(u"a\u20A9b", u"euc-kr"), "a?b");
}

TEST(Charset, YenAndWonSignsAreMissingInMail) {
    EXPECT_EQ(Encode(u"a\u00A5b", u"iso-2022-jp"), "a?b");
    EXPECT_EQ(Encode(u"a\u20A9b", u"iso-2022-kr"), "\x1B$)Ca?b");
}

TEST(Charset, AnOverlineOfTheRomanSetIsWrittenBackToIt) {
    EXPECT_EQ(Decode("\x1B(J~\x1B(B", u"iso-2022-jp"), u"\u203E");
    EXPECT_EQ(Encode(u"\u203E", u"iso-2022-jp"), "\x1B(J~\x1B(B");
}

TEST(Charset, ControlBytesStayThemselves) {
    for (const auto name : Names()) {
        EXPECT_EQ(Decode("\x1A\x1C\x7F", name), u"\x1A\x1C\x7F") << Name(name);
        EXPECT_EQ(Decode(Encode(u"\x1A\x1C\x7F", name), name), u"\x1A\x1C\x7F") << Name(name);
        if (name != u"utf-7") {
            EXPECT_EQ(Encode(u"\x1A\x1C\x7F", name), HeadOf(name) + "\x1A\x1C\x7F") << Name(name);
        }
    }
}

TEST(Charset, ControlBytesStayThemselvesInTheRomanSetOfJapaneseMail) {
    EXPECT_EQ(Decode("\x1B(J\x1A\x1C\x7F\x1B(B", u"iso-2022-jp"), u"\x1A\x1C\x7F");
}

// What steers a stateful charset, and the "+" of utf-7, are the only bytes of ASCII with a meaning of their
// own.
TEST(Charset, EveryOtherByteOfASCIIStaysItself) {
    for (const auto name : Names()) {
        for (int byte = 0; byte < 0x80; ++byte) {
            const bool isMail = name == u"iso-2022-jp" || name == u"iso-2022-kr";
            if (isMail && (byte == 0x0E || byte == 0x0F || byte == 0x1B)) continue;
            if (name == u"utf-7" && byte == '+') continue;
            const std::string bytes(1, static_cast<char>(byte));
            ASSERT_EQ(Decode(bytes, name), std::u16string(1, static_cast<char16_t>(byte)))
                << Name(name) << ' ' << byte;
        }
    }
}

TEST(Charset, NulCharactersAreRead) {
    for (const auto name : Names()) {
        EXPECT_EQ(Decode(std::string_view("a\0b", 3), name), std::u16string(u"a\0b", 3)) << Name(name);
    }
}

TEST(Charset, BytesThatDoNotDecodeBecomeReplacementCharacters) {
    EXPECT_EQ(Decode("a\xFFz", u"utf-8"), u"a\uFFFDz");
    EXPECT_EQ(Decode("\xC3(", u"utf-8"), u"\uFFFD(");
    EXPECT_EQ(Decode("\xC3", u"utf-8"), u"\uFFFD");
    EXPECT_EQ(Decode("a\xA5z", u"iso-8859-3"), u"a\uFFFDz");
    EXPECT_EQ(Decode("\xFF", u"iso-8859-7"), u"\uFFFD");
    EXPECT_EQ(Decode("a\x81", u"shift-jis"), u"a\uFFFD");
    EXPECT_EQ(Decode("a\xA4", u"big5"), u"a\uFFFD");
    EXPECT_EQ(Decode("a\xFFz", u"euc-jp"), u"a\uFFFDz");
    EXPECT_EQ(Decode("a\xE4z", u"utf-7"), u"a\uFFFDz");
}

TEST(Charset, MailHasNoBytesWithAnEighthBit) {
    EXPECT_EQ(Decode("a\xE4z", u"iso-2022-jp"), u"a\uFFFDz");
    EXPECT_EQ(Decode("a\xE4z", u"iso-2022-kr"), u"a\uFFFDz");
}

TEST(Charset, NoOverlongFormAndNoSurrogateIsUtf8) {
    EXPECT_EQ(Decode("\xC0\x80", u"utf-8"), u"\uFFFD\uFFFD");
    EXPECT_EQ(Decode("\xED\xA0\x80", u"utf-8").find_first_not_of(u'\uFFFD'), std::u16string::npos);
    EXPECT_EQ(Decode("\xF5\x80\x80\x80", u"utf-8").find_first_not_of(u'\uFFFD'), std::u16string::npos);
}

// A lead byte that takes the mark behind it along would open a tag or a quote again.
TEST(Charset, ALeadByteAloneDoesNotTakeTheMarkBehindItAlong) {
    for (const auto name : {u"shift-jis", u"big5", u"gb2312", u"euc-kr", u"euc-jp"}) {
        EXPECT_EQ(Decode("\xA4\"<\xE4>", name).find(u'"'), 1u) << Name(name);
        EXPECT_TRUE(Decode("\xE4>", name).ends_with(u'>')) << Name(name);
    }
}

TEST(Charset, AByteOrderMarkAtTheHeadIsDropped) {
    EXPECT_EQ(Decode("\xEF\xBB\xBFxyz", u"utf-8"), u"xyz");
    EXPECT_EQ(Decode("\xEF\xBB\xBF", u"utf-8"), u"");
    EXPECT_EQ(Decode("+/v8-abc", u"utf-7"), u"abc");
}

TEST(Charset, AByteOrderMarkElsewhereIsACharacter) {
    EXPECT_EQ(Decode("a\xEF\xBB\xBFz", u"utf-8"), u"a\uFEFFz");
    EXPECT_EQ(Decode("\xEF\xBB\xBF\xEF\xBB\xBFz", u"utf-8"), u"\uFEFFz");
}

TEST(Charset, TheMarkOfAnotherCharsetStays) {
    EXPECT_EQ(Decode("\xEF\xBB\xBFz", u"iso-8859-1"), u"\u00EF\u00BB\u00BFz");
    EXPECT_EQ(Decode("\xFF\xFE", u"iso-8859-1"), u"\u00FF\u00FE");
}

TEST(Charset, NoByteOrderMarkIsWritten) {
    EXPECT_EQ(Encode(u"a", u"utf-8"), "a");
    EXPECT_EQ(Encode(u"\u00E4", u"utf-8"), "\xC3\xA4");
    EXPECT_EQ(Encode(u"a", u"utf-16le"), std::string("a\0", 2));
}

TEST(Charset, NothingIsWrittenForAnEmptyText) {
    for (const auto name : Names()) EXPECT_EQ(Encode(u"", name), "") << Name(name);
}

TEST(Charset, AMissingCharacterIsWrittenAsOneQuestionMark) {
    for (const auto name : Names()) {
        if (IsUnicode(name)) continue;
        EXPECT_EQ(Encode(u"a\u0E01b", name), HeadOf(name) + "a?b") << Name(name);
        EXPECT_EQ(Encode(u"a\U0001F600b", name), HeadOf(name) + "a?b") << Name(name);
        EXPECT_EQ(Encode(u"a\uFFFDb", name), HeadOf(name) + "a?b") << Name(name);
    }
}

TEST(Charset, CharactersOfNoWidthAreNotDropped) {
    for (const auto name : Names()) {
        if (IsUnicode(name)) continue;
        for (const char16_t* const text :
             {u"a\u200Bb", u"a\u200Db", u"a\uFE0Fb", u"a\uFEFFb", u"a\u2060b", u"a\u034Fb", u"a\u180Eb"}) {
            EXPECT_EQ(Encode(text, name), HeadOf(name) + "a?b") << Name(name);
        }
    }
}

TEST(Charset, ALoneSurrogateIsWrittenAsOneQuestionMark) {
    for (const auto name : Names()) {
        if (name == u"utf-7") continue;
        EXPECT_EQ(Encode(u"a\xD83Dz", name), HeadOf(name) + "a?z") << Name(name);
        EXPECT_EQ(Encode(u"a\xDE00z", name), HeadOf(name) + "a?z") << Name(name);
        EXPECT_EQ(Encode(u"a\xD83D", name), HeadOf(name) + "a?") << Name(name);
        EXPECT_EQ(Encode(u"\xDE00\xD83D", name), HeadOf(name) + "??") << Name(name);
    }
}

// Its units are those of memory.
TEST(Charset, ALoneSurrogateComesThroughUtf7) {
    EXPECT_EQ(Decode(Encode(u"a\xD83Dz", u"utf-7"), u"utf-7"), u"a\xD83Dz");
}

TEST(Charset, AStatefulTextEndsInTheStartState) {
    EXPECT_EQ(Encode(u"\u3042", u"iso-2022-jp"), "\x1B$B$\"\x1B(B");
    EXPECT_EQ(Encode(u"a\u3042\r\n\u3042", u"iso-2022-jp"), "a\x1B$B$\"\x1B(B\r\n\x1B$B$\"\x1B(B");
    EXPECT_EQ(Encode(u"\uAC00", u"iso-2022-kr"), "\x1B$)C\x0E\x30\x21\x0F");
    EXPECT_EQ(Encode(u"\u00E9", u"utf-7"), "+AOk-");
}

TEST(Charset, Utf7KeepsTheMarksOfRowsAndPages) {
    EXPECT_EQ(Encode(u"\"<b>=&;{}|`^@!#$%*'_[]\u00E9-+\\~", u"utf-7"),
              "\"<b>=&;{}|`^@!#$%*'_[]+AOk--+-+AFwAfg-");
}

TEST(Charset, AStatefulTextInPiecesIsTheWholeText) {
    const std::u16string text = u"a\\\u3042\u3044\r\n\uAC00\uAC01?\u00E9\U0001F600-+\x1A\u20A9\u00A5z\u4E00";
    for (const auto name : {u"iso-2022-jp", u"iso-2022-kr", u"utf-7"}) {
        if (!IsThere(name)) continue;
        const std::string whole = Encode(text, name);
        for (std::size_t size = 1; size <= text.size(); ++size) {
            Encoder encoder(name);
            std::string bytes;
            for (std::size_t at = 0; at < text.size(); at += size) {
                encoder.Append(std::u16string_view(text).substr(at, size), bytes);
                encoder.Append(u"", bytes);
            }
            encoder.Finish(bytes);
            ASSERT_EQ(bytes, whole) << Name(name) << ' ' << size;
        }
    }
}

TEST(Charset, FinishingTwiceWritesNothingMore) {
    for (const auto name : Names()) {
        Encoder encoder(name);
        std::string bytes;
        encoder.Append(u"a\u3042\uAC00", bytes);
        encoder.Finish(bytes);
        const std::string once = bytes;
        encoder.Finish(bytes);
        EXPECT_EQ(bytes, once) << Name(name);
    }
}

TEST(Charset, AnUnknownNameIsAnInvalidCall) {
    for (const auto name : {u"", u" ", u"-", u"none", u"utf-9", u"iso-8859-99", u"\u00E9", u"utf-8\u0131",
                            u",version=1", u"iso-2022-jp,version=1", u"utf-8,", u"utf-8\"><b>"}) {
        EXPECT_EQ(IgnoringErrors([&] { Decode("a", name); }), 5) << Name(name);
        EXPECT_EQ(IgnoringErrors([&] { Encoder encoder(name); }), 5) << Name(name);
    }
    EXPECT_EQ(IgnoringErrors([] { Decode("a", std::u16string(5000, u'x')); }), 5);
}

TEST(Charset, NamesAreComparedWithoutRegardToCase) {
    EXPECT_EQ(Decode("\x80", u"ISO-8859-1"), u"\u20AC");
    EXPECT_EQ(Decode("\x80", u"Us-Ascii"), u"\u20AC");
    EXPECT_EQ(Decode("\xC3\xA9", u"UTF-8"), u"\u00E9");
    EXPECT_EQ(Decode("\x83\x5C\\", u"SHIFT-JIS"), u"\u30BD\\");
    EXPECT_EQ(Decode("\xC1", u"KOI8-R"), u"\u0430");
    EXPECT_EQ(Encode(u"\u20AC", u"ISO-8859-1"), "\x80");
}

// A character that a charset has comes back, and what it does not have is a question mark: nothing is written
// as something like it.
class WholeCharset : public ::testing::TestWithParam<std::u16string_view> {
  protected:
    void SetUp() override {
        if (!IsThere(GetParam())) GTEST_SKIP() << "not on this machine";
    }

    static std::vector<std::u16string> AllCharacters() {
        std::vector<std::u16string> all;
        for (char32_t character = 0x20; character < 0x110000; ++character) {
            if (character >= 0xD800 && character < 0xE000) continue;
            if (character == 0x30000) character = 0xE0000;
            if (character == 0xE1000) character = 0xF0000;
            if (character == 0xF1000) character = 0x10FF00;
            all.push_back(Of(character));
        }
        return all;
    }

    // Each in a line of its own, so that a stateful charset begins anew with it.
    static std::vector<std::u16string> HeldBy(std::u16string_view charset) {
        const std::vector<std::u16string> all = AllCharacters();
        std::u16string text = u"\n";
        for (const std::u16string& character : all) text += character + u"\n";
        const std::u16string back = Decode(Encode(text, charset), charset);
        const auto lines = Split(back, u"\n");
        EXPECT_EQ(lines.size(), all.size() + 2);
        std::vector<std::u16string> held;
        for (std::size_t at = 0; at < all.size() && at + 1 < lines.size(); ++at) {
            if (lines[at + 1] == all[at])
                held.push_back(all[at]);
            else
                EXPECT_EQ(lines[at + 1], u"?") << Name(charset) << " character " << at + 0x20;
        }
        return held;
    }
};

TEST_P(WholeCharset, HoldsACharacterOrWritesAQuestionMark) {
    const auto charset = GetParam();
    const std::vector<std::u16string> held = HeldBy(charset);
    const std::map<std::u16string_view, std::size_t> atLeast = {
        {u"big5", 13000},       {u"euc-jp", 7000},      {u"euc-kr", 17000},   {u"gb2312", 21000},
        {u"iso-2022-jp", 6900}, {u"iso-2022-kr", 8200}, {u"shift-jis", 7000}, {u"iso-8859-1", 216},
        {u"utf-7", 200000},     {u"utf-8", 200000}};
    const auto known = atLeast.find(charset);
    EXPECT_GE(held.size(), known == atLeast.end() ? 170 : known->second);
}

TEST_P(WholeCharset, ATextOfItsCharactersComesBackAsItWas) {
    const auto charset = GetParam();
    const std::vector<std::u16string> held = HeldBy(charset);
    std::mt19937 random(20261120);
    std::u16string text = u"x";
    for (int count = 0; count < 20000; ++count) {
        if (random() % 40 == 0) text += u"\r\n";
        text += held[random() % held.size()];
    }
    const std::string bytes = Encode(text, charset);
    EXPECT_TRUE(Decode(bytes, charset) == text);
    Encoder encoder(charset);
    std::string pieces;
    for (std::size_t from = 0; from < text.size();) {
        std::size_t length = 1 + random() % 100;
        const std::size_t end = from + length;
        if (end < text.size() && (text[end] & 0xFC00) == 0xDC00) ++length;
        encoder.Append(std::u16string_view(text).substr(from, length), pieces);
        from += length;
    }
    encoder.Finish(pieces);
    EXPECT_TRUE(pieces == bytes);
}

TEST_P(WholeCharset, AnyBytesAreRead) {
    std::mt19937 random(20261120);
    for (int round = 0; round < 500; ++round) {
        std::string bytes;
        const std::size_t length = random() % 60;
        while (bytes.size() < length) {
            const auto any = static_cast<char>(random() % 256);
            bytes += random() % 3 == 0 ? std::string(1, "\x1B$(BJI)C\x0E\x0F+-\\"[random() % 13])
                                       : std::string(1, any);
        }
        const std::u16string text = Decode(bytes, GetParam());
        // Whatever was read can be written and read again.
        const std::u16string again = Decode(Encode(text, GetParam()), GetParam());
        ASSERT_LE(text.size(), bytes.size() + 2);
        if (GetParam() == u"utf-8") {
            ASSERT_EQ(again, text);
        }
    }
}

std::string ParameterName(const ::testing::TestParamInfo<std::u16string_view>& info) {
    std::string name = Name(info.param);
    std::erase(name, '-');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Offered, WholeCharset, ::testing::ValuesIn(kNames), ParameterName);

TEST(Utf8, LongTextsOfOneKind) {
    const std::u16string text(100000, u'\u20AC');
    const std::string bytes = ToUtf8(text);
    EXPECT_EQ(bytes.size(), 300000u);
    EXPECT_TRUE(FromUtf8(bytes) == text);
}

TEST(Utf8, AMarkIsKeptOutsideOfFiles) {
    EXPECT_EQ(FromUtf8("\xEF\xBB\xBFz"), u"\uFEFFz");
    EXPECT_EQ(ToUtf8(u"\uFEFFz"), "\xEF\xBB\xBFz");
}

}  // namespace
}  // namespace tessaly::platform
