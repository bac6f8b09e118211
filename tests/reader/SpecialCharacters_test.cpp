#include "reader/SpecialCharacters.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "tests/support/ReadyBoard.h"

namespace tessaly {
namespace {

using testing::ReadyBoard;

constexpr const char* kLog = "Discus Special Characters.txt";

using Table = std::vector<std::pair<std::u16string, std::u16string>>;

Table TableOf(const ConversionState& state) {
    Table table;
    for (const auto& [sequence, replacement] : state.ReplaceableCharacters) {
        table.emplace_back(sequence, replacement);
    }
    return table;
}

void ReadTable(ReadyBoard& board, std::string_view bytes) {
    board.folder.Write("program/Docs/koi8-r.txt", bytes);
    DiscusGetReplaceableCharacterArray(board.state, u"koi8-r");
}

Table TableRead(std::string_view bytes) {
    ReadyBoard board;
    ReadTable(board, bytes);
    EXPECT_TRUE(board.messages.empty());
    return TableOf(board.state);
}

TEST(CharacterFile, EachLineGivesAReplacementForOneOrTwoSequences) {
    ReadyBoard board;
    ReadTable(board, "&auml;\t\xC3\xA4\t&#228;\r\n&euro;\tEUR\r\n");
    // A column of three characters gives its middle one.
    EXPECT_EQ(TableOf(board.state),
              (Table{{u"&auml;", u"\u00E4"}, {u"&#228;", u"\u00E4"}, {u"&euro;", u"U"}}));
    EXPECT_TRUE(board.state.ReplaceableCharactersLoaded);
    EXPECT_EQ(board.state.txtArea.Text, u"");
}

TEST(CharacterFile, TheFileIsReadAsUtf8WhateverTheCharset) {
    EXPECT_EQ(TableRead("&yi;\t\xD1\x97\r\n"), (Table{{u"&yi;", u"\u0457"}}));
}

TEST(CharacterFile, AColumnOfJustThreeCharactersGivesItsMiddleOne) {
    EXPECT_EQ(TableRead("&nbsp;\t` `\r\n&grave;\t```\r\n&abc;\txyz\r\n"),
              (Table{{u"&nbsp;", u" "}, {u"&grave;", u"`"}, {u"&abc;", u"y"}}));
}

TEST(CharacterFile, AnyOtherColumnLosesItsBackQuotes) {
    EXPECT_EQ(TableRead("&a1;\t`x\r\n&a2;\t`xy`\r\n&a3;\tabcd\r\n"),
              (Table{{u"&a1;", u"x"}, {u"&a2;", u"xy"}, {u"&a3;", u"abcd"}}));
}

TEST(CharacterFile, ALineWithoutAReplacementAddsNothing) {
    EXPECT_EQ(TableRead("&a1;\t\t&b1;\r\n&a2;\t`\r\n&a3;\t``\t&b3;\r\n"), Table{});
}

TEST(CharacterFile, EitherSequenceMayBeMissing) {
    EXPECT_EQ(TableRead("\tx\t&b1;\r\n&a2;\ty\t\r\n&a3;\tz\r\n"),
              (Table{{u"&b1;", u"x"}, {u"&a2;", u"y"}, {u"&a3;", u"z"}}));
}

TEST(CharacterFile, SequencesAreTrimmedAndReplacementsAreNot) {
    EXPECT_EQ(TableRead("  &a1; \t x y\t &b1; \r\n"), (Table{{u"&a1;", u" x y"}, {u"&b1;", u" x y"}}));
}

TEST(CharacterFile, ASequenceOfBlanksAloneIsAnEmptyKey) {
    EXPECT_EQ(TableRead(" \tx\r\n"), (Table{{u"", u"x"}}));
}

TEST(CharacterFile, FurtherColumnsAreNotRead) {
    EXPECT_EQ(TableRead("&a1;\tx\t&b1;\t&c1;\r\n"), (Table{{u"&a1;", u"x"}, {u"&b1;", u"x"}}));
}

TEST(CharacterFile, OfTwoLinesWithTheSameSequenceTheFirstStays) {
    EXPECT_EQ(TableRead("&a1;\tx\r\n&A1;\ty\t&b1;\r\n&c1;\tz\t&B1;\r\n"),
              (Table{{u"&a1;", u"x"}, {u"&b1;", u"y"}, {u"&c1;", u"z"}}));
}

TEST(CharacterFile, ALastLineWithoutALineEndIsLost) {
    EXPECT_EQ(TableRead("&a1;\tx\r\n&a2;\ty"), (Table{{u"&a1;", u"x"}}));
}

TEST(CharacterFile, AFileThatIsNotThereIsReportedAndTheRunGoesOn) {
    ReadyBoard board;
    board.state.ReplaceableCharactersLoaded = true;
    board.state.optDisplay = false;
    DiscusGetReplaceableCharacterArray(board.state, u"big5");
    EXPECT_EQ(board.state.txtArea.Text, u"Replacable character array file not found - " +
                                            board.folder.Path("program/Docs/big5.txt") +
                                            u"\r\nContinuing without it...\r\n");
    EXPECT_FALSE(board.state.ReplaceableCharactersLoaded);
    EXPECT_FALSE(board.state.CancelRequested);
    EXPECT_TRUE(board.messages.empty());
}

// The first page tells the charset, whoever wrote it.
TEST(CharacterFile, ACharsetThatIsAPathLeadsToNoFileElsewhere) {
    ReadyBoard board;
    board.folder.Write("program/secret.txt", "&auml;\tsecret\r\n");
    board.folder.Write("program/Docs/deep/koi8-r.txt", "&auml;\t\xC3\xA4\r\n");
    for (const auto* const charset : {u"..\\secret", u"../secret", u"deep\\..\\..\\secret"}) {
        DiscusGetReplaceableCharacterArray(board.state, charset);
        EXPECT_FALSE(board.state.ReplaceableCharactersLoaded);
        EXPECT_EQ(board.TakeArea(), u"Replacable character array file not found - " +
                                        board.folder.Path("program/Docs") + u"\\" + charset +
                                        u".txt\r\nContinuing without it...\r\n");
    }
    EXPECT_EQ(TableOf(board.state), Table{});
    EXPECT_TRUE(board.messages.empty());
}

TEST(CharacterFile, AFileWithoutALineEndIsReportedAsEmpty) {
    for (const std::string_view bytes : {"", "&auml;\tx", "&auml;\tx\n&ouml;\ty\n"}) {
        ReadyBoard board;
        board.state.optDisplay = false;
        ReadTable(board, bytes);
        EXPECT_EQ(board.state.txtArea.Text, u"Replacable character array file is empty - " +
                                                board.folder.Path("program/Docs/koi8-r.txt") +
                                                u"\r\nContinuing without it...\r\n");
        EXPECT_FALSE(board.state.ReplaceableCharactersLoaded);
        EXPECT_FALSE(board.state.CancelRequested);
        EXPECT_EQ(TableOf(board.state), Table{});
    }
}

TEST(CharacterFile, ALineWithoutATabStopsTheRunBehindTheLinesBeforeIt) {
    for (const std::string_view bytes : {"&a1;\tx\r\nno tab\r\n&a2;\ty\r\n", "&a1;\tx\r\n\r\n&a2;\ty\r\n"}) {
        ReadyBoard board;
        ReadTable(board, bytes);
        EXPECT_EQ(board.messages,
                  std::vector<std::u16string>{
                      u"9 - DiscusGetReplaceableCharacterArray()\r\n\r\nSubscript out of range"});
        EXPECT_TRUE(board.state.CancelRequested);
        EXPECT_TRUE(board.state.ReplaceableCharactersLoaded);
        EXPECT_EQ(TableOf(board.state), (Table{{u"&a1;", u"x"}}));
    }
}

TEST(CharacterFile, AnEmptyLineAtTheEndStopsTheRunToo) {
    ReadyBoard board;
    ReadTable(board, "\r\n");
    EXPECT_TRUE(board.state.CancelRequested);
}

TEST(CharacterFile, NothingIsReadAfterACancel) {
    ReadyBoard board;
    board.state.ReplaceableCharactersLoaded = true;
    board.state.CancelRequested = true;
    ReadTable(board, "&auml;\tx\r\n");
    EXPECT_EQ(TableOf(board.state), Table{});
    EXPECT_FALSE(board.state.ReplaceableCharactersLoaded);
}

TEST(CharacterFile, ItsReplacementsAreNotSearchedForSequences) {
    ReadyBoard board;
    board.state.ReplaceableCharacters.Add(u"&auml;", u"\u00E4");
    ReadTable(board, "&x1;\t&auml;\r\n");
    EXPECT_EQ(TableOf(board.state), (Table{{u"&auml;", u"\u00E4"}, {u"&x1;", u"&auml;"}}));
}

// The text after a search with this table.
std::u16string Searched(ReadyBoard& board, const Table& table, std::u16string text) {
    for (const auto& [sequence, replacement] : table) {
        board.state.ReplaceableCharacters.Add(sequence, replacement);
    }
    DiscusFindSpecialCharacterSequences(board.state, text);
    EXPECT_TRUE(board.messages.empty());
    return text;
}

std::u16string Searched(const Table& table, std::u16string text) {
    ReadyBoard board;
    return Searched(board, table, std::move(text));
}

// The sequences that a search with an empty table takes for such and logs.
std::string Logged(std::u16string text) {
    ReadyBoard board;
    const std::u16string before = text;
    EXPECT_EQ(Searched(board, {}, std::move(text)), before);
    return board.HasOutput(kLog) ? board.Output(kLog) : "";
}

TEST(SequenceSearch, WithTheOptionOffNothingHappens) {
    ReadyBoard board;
    board.state.optFindDiscusSpecialCharacters = false;
    EXPECT_EQ(Searched(board, {{u"&auml;", u"\u00E4"}}, u"&auml; &what;"), u"&auml; &what;");
    EXPECT_FALSE(board.HasOutput(kLog));
}

TEST(SequenceSearch, AKnownSequenceBecomesItsReplacementWhereverItStandsInWhateverCase) {
    EXPECT_EQ(Searched({{u"&auml;", u"\u00E4"}}, u"&auml;b&AUML;c&Auml;"), u"\u00E4b\u00E4c\u00E4");
}

TEST(SequenceSearch, ASequenceHasFourToTenCharactersAndNoBlank) {
    EXPECT_EQ(Logged(u"&amp;"), "&amp;\r\n");
    EXPECT_EQ(Logged(u"&ab;"), "&ab;\r\n");
    EXPECT_EQ(Logged(u"&a;"), "");
    EXPECT_EQ(Logged(u"&;"), "");
    EXPECT_EQ(Logged(u"&12345678;"), "&12345678;\r\n");
    EXPECT_EQ(Logged(u"&123456789;"), "");
    EXPECT_EQ(Logged(u"& x;"), "");
    EXPECT_EQ(Logged(u"&a b;"), "");
}

TEST(SequenceSearch, OnlyTheBlankItselfCountsAsABlank) {
    EXPECT_EQ(Logged(u"&a\tb;"), "&a\tb;\r\n");
    EXPECT_EQ(Logged(u"&a\r\nb;"), "&a\r\nb;\r\n");
    EXPECT_EQ(Logged(u"&a\u00A0b;"),
              "&a\xA0"
              "b;\r\n");
}

TEST(SequenceSearch, TheFirstAmpersandTakesTheFirstSemicolonAndTheSearchGoesOnOneFurther) {
    EXPECT_EQ(Searched({{u"&amp;", u"+"}}, u"& text; and &amp;"), u"& text; and +");
    EXPECT_EQ(Searched({{u"&amp;", u"+"}}, u"&& &amp;"), u"&& +");
}

TEST(SequenceSearch, AnAmpersandWithinASequenceBeginsOneToo) {
    EXPECT_EQ(Logged(u"&ab&cd;"), "&ab&cd;\r\n&cd;\r\n");
}

TEST(SequenceSearch, AReplacementThatIsAnAmpersandBeginsNoSequenceAtItsOwnPlace) {
    EXPECT_EQ(Searched({{u"&amp;", u"&"}, {u"&lt;", u"<"}}, u"&amp;lt;"), u"&lt;");
}

TEST(SequenceSearch, AReplacementMayBringASequenceBehindItsFirstCharacter) {
    EXPECT_EQ(Searched({{u"&one;", u"x&two;"}, {u"&two;", u"2"}}, u"&one;"), u"x2");
}

TEST(SequenceSearch, AReplacementGoesOverTheWholeTextBeforeThePresentPositionToo) {
    // At 1 stands "&a&bc;", known as nothing; "&bc;" then becomes "m;", which leaves "&am;" behind the
    // search. The "&am;" further on is found and takes the first one with it.
    EXPECT_EQ(Searched({{u"&a&bc;", u"&a&bc;"}, {u"&bc;", u"m;"}, {u"&am;", u"!"}}, u"&a&bc; &am;"), u"! !");
}

TEST(SequenceSearch, WithoutASemicolonTheSearchEndsAtTheFirstAmpersand) {
    EXPECT_EQ(Logged(u"; a & b &abc"), "");
    EXPECT_EQ(Searched({{u"&amp;", u"+"}}, u"&amp; & &amp"), u"+ & &amp");
}

TEST(SequenceSearch, AnUnknownSequenceStaysAndIsLoggedOnceARun) {
    ReadyBoard board;
    EXPECT_EQ(Searched(board, {}, u"&what; &that; &what;"), u"&what; &that; &what;");
    EXPECT_EQ(Searched(board, {}, u"&that; &more;"), u"&that; &more;");
    EXPECT_EQ(board.Output(kLog), "&what;\r\n&that;\r\n&more;\r\n");
    EXPECT_EQ(TableOf(board.state),
              (Table{{u"&what;", u"&what;"}, {u"&that;", u"&that;"}, {u"&more;", u"&more;"}}));
}

TEST(SequenceSearch, SpellingsOfAnUnknownSequenceComeOutAsTheFirstOneMet) {
    ReadyBoard board;
    EXPECT_EQ(Searched(board, {}, u"&What; &WHAT; &what;"), u"&What; &What; &What;");
    EXPECT_EQ(Searched(board, {}, u"&WHAT;"), u"&What;");
    EXPECT_EQ(board.Output(kLog), "&What;\r\n");
}

TEST(SequenceSearch, TheKelvinSignIsTheLetterK) {
    EXPECT_EQ(Searched({{u"&ok;", u"!"}}, u"&o\u212A; &OK;"), u"! !");
}

TEST(SequenceSearch, TheLogIsContinuedNotReplaced) {
    ReadyBoard board;
    board.folder.Write("output/Discus Special Characters.txt", "&old;\r\n");
    Searched(board, {}, u"&what;");
    EXPECT_EQ(board.Output(kLog), "&old;\r\n&what;\r\n");
}

TEST(SequenceSearch, TheLogIsInTheSystemsSingleByteCodePage) {
    EXPECT_EQ(Logged(u"&\u00E4\u20AC;"), "&\xE4\x80;\r\n");
    EXPECT_EQ(Logged(u"&\u0434x;"), "&?x;\r\n");
}

TEST(SequenceSearch, WithoutACharacterFileEverySequenceIsUnknown) {
    ReadyBoard board;
    DiscusGetReplaceableCharacterArray(board.state, u"big5");
    EXPECT_EQ(Searched(board, {}, u"&auml;&nbsp;"), u"&auml;&nbsp;");
    EXPECT_EQ(board.Output(kLog), "&auml;\r\n&nbsp;\r\n");
}

TEST(SequenceSearch, ALogThatCannotBeOpenedStopsTheRun) {
    ReadyBoard board;
    board.folder.MakeFolder("output/Discus Special Characters.txt");
    std::u16string text = u"&what;";
    DiscusFindSpecialCharacterSequences(board.state, text);
    EXPECT_EQ(board.messages,
              std::vector<std::u16string>{
                  u"75 - DiscusFindSpecialCharacterSequences()\r\n\r\nPath/File access error"});
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_EQ(text, u"&what;");
}

// Whether one pass is enough or not: the second text has an "&" closely before a sequence.
TEST(SequenceSearch, WhatWasFoundBeforeALogThatCannotBeOpenedIsReplacedEverywhere) {
    for (const std::u16string more : {u"", u" AT&T&lt;"}) {
        ReadyBoard board;
        ReadTable(board, "&quot;\t'\r\n&lt;\t<\r\n");
        board.folder.MakeFolder("output/Discus Special Characters.txt");
        std::u16string text = u"&quot; &what; &QUOT; &lt;" + more;
        DiscusFindSpecialCharacterSequences(board.state, text);
        EXPECT_TRUE(board.state.CancelRequested);
        EXPECT_EQ(text, u"' &what; ' &lt;" + more);
    }
}

TEST(SequenceSearch, AReplacementThatBringsItselfBackStopsTheRunBeforeItsTextFillsTheMemory) {
    ReadyBoard board;
    ReadTable(board, "&grow;\t&grow;&grow;\r\n");
    std::u16string text = u"&grow;";
    DiscusFindSpecialCharacterSequences(board.state, text);
    EXPECT_EQ(board.messages,
              std::vector<std::u16string>{u"7 - DiscusFindSpecialCharacterSequences()\r\n\r\nOut of memory"});
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_LT(text.size(), 10000u);
}

// A pass over the text for each of them would take minutes.
TEST(SequenceSearch, ManyUnknownSequencesTakeOnePass) {
    ReadyBoard board;
    std::u16string text;
    std::string expected;
    for (int sequence = 100000; sequence < 300000; ++sequence) {
        const std::string number = std::to_string(sequence);
        text += u"&#" + std::u16string(number.begin(), number.end()) + u";";
        expected += "&#" + number + ";\r\n";
    }
    const std::u16string before = text;
    EXPECT_EQ(Searched(board, {}, std::move(text)), before);
    EXPECT_EQ(board.Output(kLog), expected);
}

// The search step by step: the "&", the next ";", the whole text each time.
struct StepByStep {
    KeyedCollection<std::u16string> table;
    std::string log;

    // False for a text that its own replacements make grow without end.
    bool Search(std::u16string& text) {
        Position position = 1;
        while (true) {
            const Position open = Find(text, u"&", position);
            if (open == 0) return true;
            const Position semicolon = Find(text, u";", open);
            if (semicolon == 0) return true;
            const std::u16string sequence(Between(text, open, semicolon + 1));
            if (sequence.size() >= 4 && sequence.size() <= 10 && sequence.find(u' ') == sequence.npos) {
                Exchange(text, sequence);
            }
            if (text.size() > 500) return false;
            position = open + 1;
        }
    }

    void Exchange(std::u16string& text, const std::u16string& sequence) {
        if (const std::u16string* const replacement = table.Find(sequence)) {
            return ReplaceAll(text, sequence, std::u16string(*replacement));
        }
        table.Add(sequence, sequence);
        log += std::string(sequence.begin(), sequence.end()) + "\r\n";
    }
};

void ExpectAsStepByStep(const Table& table, const std::vector<std::u16string>& texts, int round) {
    StepByStep expected;
    for (const auto& [sequence, replacement] : table) expected.table.Add(sequence, replacement);
    std::vector<std::u16string> exchanged = texts;
    for (std::u16string& text : exchanged) {
        if (!expected.Search(text)) return;
    }
    static ReadyBoard board;
    std::filesystem::remove(board.folder.Native("output/Discus Special Characters.txt"));
    board.state.ReplaceableCharacters = {};
    for (std::size_t text = 0; text < texts.size(); ++text) {
        ASSERT_EQ(Searched(board, text == 0 ? table : Table{}, texts[text]), exchanged[text])
            << "round " << round << " text " << text;
    }
    Table left;
    for (const auto& [sequence, replacement] : expected.table) left.emplace_back(sequence, replacement);
    ASSERT_EQ(TableOf(board.state), left) << "round " << round;
    ASSERT_EQ(board.HasOutput(kLog) ? board.Output(kLog) : "", expected.log) << "round " << round;
}

std::u16string AnyText(std::mt19937& random, std::u16string_view letters, std::size_t longest) {
    std::u16string text(random() % (longest + 1), u' ');
    for (char16_t& unit : text) unit = letters[random() % letters.size()];
    return text;
}

// Known sequences over the same few letters, with replacements that bring "&", ";", blanks, more text than
// they take away, or the sequence itself in its own or another case.
Table AnyTable(std::mt19937& random) {
    KeyedCollection<std::u16string> table;
    const std::size_t count = random() % 6;
    for (std::size_t entry = 0; entry < count; ++entry) {
        const std::u16string sequence = u"&" + AnyText(random, u"aAbB&", 3) + u"b;";
        std::u16string replacement;
        switch (random() % 6) {
            case 0:
                replacement = sequence;
                break;
            case 1:
                for (const char16_t unit : sequence) replacement += unit == u'a' ? u'A' : unit;
                break;
            case 2:
                replacement = u"x" + AnyText(random, u"&;ab ", 7);
                break;
            case 3:
                replacement = u"&";
                break;
            case 4:
                replacement = AnyText(random, u"&;aB", 4) + u";";
                break;
            default:
                replacement = u"x";
        }
        if (table.Find(sequence) == nullptr) table.Add(sequence, replacement);
    }
    Table entries;
    for (const auto& [sequence, replacement] : table) entries.emplace_back(sequence, replacement);
    return entries;
}

TEST(SequenceSearch, AnyTextsComeOutAsStepByStep) {
    std::mt19937 random(20265);
    for (int round = 0; round < 20000 && !HasFatalFailure(); ++round) {
        const Table table = AnyTable(random);
        std::vector<std::u16string> texts(1 + random() % 3);
        for (std::u16string& text : texts) text = AnyText(random, u"&&&;;aAbB x ", 40);
        ExpectAsStepByStep(table, texts, round);
    }
}

TEST(SequenceSearch, AnyTextsOfWholeSequencesComeOutAsStepByStep) {
    const std::u16string pieces[] = {u"&ab;",  u"&AB;",    u"&aB;",  u"&aab;", u"&b&ab;", u"&a&bb;",
                                     u"&",     u";",       u" ",     u"x",     u"&a",     u"b;",
                                     u"&a b;", u"&bbbbbb", u"bbbbb", u"&abb;"};
    std::mt19937 random(20266);
    for (int round = 0; round < 20000 && !HasFatalFailure(); ++round) {
        const Table table = AnyTable(random);
        std::vector<std::u16string> texts(1 + random() % 3);
        for (std::u16string& text : texts) {
            const std::size_t count = random() % 12;
            for (std::size_t piece = 0; piece < count; ++piece) text += pieces[random() % std::size(pieces)];
        }
        ExpectAsStepByStep(table, texts, round);
    }
}

}  // namespace
}  // namespace tessaly
