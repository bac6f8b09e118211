#include <gtest/gtest.h>

#include "platform/IniFile.h"
#include "platform/TextFile.h"
#include "platform/TextStream.h"
#include "tests/support/TemporaryFolder.h"

namespace tessaly::platform {
namespace {

using testing::TemporaryFolder;

template <typename Step>
int ErrorOf(Step&& step) {
    return IgnoringErrors(step);
}

std::string Bytes(std::string_view bytes) {
    return std::string(bytes);
}

void WriteLines(std::u16string_view path, OpenMode mode, TextFormat format,
                const std::vector<std::u16string>& lines) {
    TextFile file(path, mode, format);
    for (const std::u16string& line : lines) file.WriteLine(line);
    file.Close();
}

TEST(TextFile, UnicodeTextIsUtf16WithAMarkAtTheHead) {
    const TemporaryFolder folder;
    WriteLines(folder.Path("a.txt"), OpenMode::kWriting, TextFormat::kUnicode, {u"a\u20AC", u"\U0001F600"});
    EXPECT_EQ(folder.Read("a.txt"), Bytes({"\xFF\xFE"
                                           "a\0\xAC\x20\r\0\n\0"
                                           "\x3D\xD8\x00\xDE\r\0\n\0",
                                           18}));
}

TEST(TextFile, AMarkStandsAtTheHeadOnlyAlsoWhenAppendedTo) {
    const TemporaryFolder folder;
    WriteLines(folder.Path("a.txt"), OpenMode::kWriting, TextFormat::kUnicode, {u"a"});
    WriteLines(folder.Path("a.txt"), OpenMode::kAppending, TextFormat::kUnicode, {u"b"});
    EXPECT_EQ(folder.Read("a.txt"), Bytes({"\xFF\xFE"
                                           "a\0\r\0\n\0b\0\r\0\n\0",
                                           14}));
}

TEST(TextFile, AppendingBeginsANewOrEmptyFileWithTheMark) {
    const TemporaryFolder folder;
    folder.Write("empty.txt", "");
    for (const auto* name : {"empty.txt", "new.txt"}) {
        WriteLines(folder.Path(name), OpenMode::kAppending, TextFormat::kUnicode, {u"b"});
        EXPECT_EQ(folder.Read(name), Bytes({"\xFF\xFE"
                                            "b\0\r\0\n\0",
                                            8}));
    }
}

TEST(TextFile, WithoutALineOnlyTheMarkIsWritten) {
    const TemporaryFolder folder;
    WriteLines(folder.Path("a.txt"), OpenMode::kWriting, TextFormat::kUnicode, {});
    EXPECT_EQ(folder.Read("a.txt"), "\xFF\xFE");
    WriteLines(folder.Path("b.txt"), OpenMode::kWriting, TextFormat::kSystemDefault, {});
    EXPECT_EQ(folder.Read("b.txt"), "");
}

TEST(TextFile, WritingReplacesAnOldFile) {
    const TemporaryFolder folder;
    folder.Write("a.txt", "a longer text than the new one");
    WriteLines(folder.Path("a.txt"), OpenMode::kWriting, TextFormat::kSystemDefault, {u"new"});
    EXPECT_EQ(folder.Read("a.txt"), "new\r\n");
}

TEST(TextFile, SystemDefaultTextHasNoMark) {
    const TemporaryFolder folder;
    WriteLines(folder.Path("a.txt"), OpenMode::kAppending, TextFormat::kSystemDefault, {u"one"});
    WriteLines(folder.Path("a.txt"), OpenMode::kAppending, TextFormat::kSystemDefault, {u"two"});
    EXPECT_EQ(folder.Read("a.txt"), "one\r\ntwo\r\n");
}

TEST(TextFile, ALongTextIsWrittenWhole) {
    const TemporaryFolder folder;
    std::string expected;
    std::vector<std::u16string> lines;
    for (int count = 0; count < 3000; ++count) {
        lines.emplace_back(97, u'x');
        expected += std::string(97, 'x') + "\r\n";
    }
    WriteLines(folder.Path("a.txt"), OpenMode::kWriting, TextFormat::kSystemDefault, lines);
    EXPECT_TRUE(folder.Read("a.txt") == expected);
}

TEST(TextFile, AFileThatIsNotClosedIsWrittenAtItsEndOfLife) {
    const TemporaryFolder folder;
    {
        TextFile file(folder.Path("a.txt"), OpenMode::kWriting, TextFormat::kSystemDefault);
        file.WriteLine(u"kept");
    }
    EXPECT_EQ(folder.Read("a.txt"), "kept\r\n");
}

TEST(TextFile, WhatCannotBeOpenedFails) {
    const TemporaryFolder folder;
    for (const OpenMode mode : {OpenMode::kWriting, OpenMode::kAppending}) {
        EXPECT_EQ(ErrorOf([&] { TextFile file(folder.Path("none/a.txt"), mode, TextFormat::kUnicode); }), 76);
        EXPECT_EQ(ErrorOf([&] { TextFile file(folder.Path(), mode, TextFormat::kUnicode); }), 75);
    }
}

TEST(TextStream, IsSavedAsTheBytesOfItsCharset) {
    const TemporaryFolder folder;
    TextStream stream(u"iso-8859-1");
    stream.WriteLine(u"M\u00E4rz");
    stream.WriteText(u"\u20AC");
    stream.WriteText(u"\u0416");
    stream.SaveToFile(folder.Path("a.txt"));
    EXPECT_EQ(folder.Read("a.txt"), "M\xE4rz\r\n\x80?");
}

TEST(TextStream, HasNoByteOrderMark) {
    const TemporaryFolder folder;
    TextStream stream(u"utf-8");
    stream.WriteText(u"\u00E9");
    stream.SaveToFile(folder.Path("a.txt"));
    EXPECT_EQ(folder.Read("a.txt"), "\xC3\xA9");
}

TEST(TextStream, ReplacesAnOldFile) {
    const TemporaryFolder folder;
    folder.Write("a.txt", "a longer text than the new one");
    TextStream stream(u"utf-8");
    stream.WriteText(u"new");
    stream.SaveToFile(folder.Path("a.txt"));
    EXPECT_EQ(folder.Read("a.txt"), "new");
}

TEST(TextStream, WithoutATextSavesAnEmptyFile) {
    const TemporaryFolder folder;
    for (const auto charset : {u"utf-8", u"iso-8859-1", u"shift-jis", u"utf-7"}) {
        TextStream(charset).SaveToFile(folder.Path("a.txt"));
        EXPECT_EQ(folder.Read("a.txt"), "");
    }
}

TEST(TextStream, ALongTextIsSavedWhole) {
    const TemporaryFolder folder;
    TextStream stream(u"utf-8");
    std::string expected;
    for (int count = 0; count < 40000; ++count) {
        stream.WriteLine(std::u16string(80, u'x'));
        expected += std::string(80, 'x') + "\r\n";
    }
    stream.SaveToFile(folder.Path("a.txt"));
    EXPECT_TRUE(folder.Read("a.txt") == expected);
}

TEST(TextStream, OfAnUnknownCharsetDoesNotComeIntoBeing) {
    EXPECT_EQ(ErrorOf([] { TextStream stream(u"none"); }), 5);
    EXPECT_EQ(ErrorOf([] { TextStream stream(u""); }), 5);
}

#ifdef _WIN32
constexpr const char* kLineEnd = "\r\n";
#else
constexpr const char* kLineEnd = "\n";
#endif

// Lines as the system's settings files end them.
std::string Ended(std::string_view lines) {
    std::string ended;
    for (const char mark : lines) ended += mark == '\n' ? kLineEnd : std::string(1, mark);
    return ended;
}

std::u16string Read(const TemporaryFolder& folder, std::u16string_view key) {
    return ReadIni(folder.Path("a.ini"), u"Settings", key).value_or(u"(none)");
}

void Write(const TemporaryFolder& folder, std::u16string_view key, std::u16string_view value) {
    WriteIni(folder.Path("a.ini"), u"Settings", key, value);
}

TEST(IniFile, WhatIsNotThereHasNoValue) {
    const TemporaryFolder folder;
    EXPECT_EQ(Read(folder, u"Key"), u"(none)");
    folder.Write("a.ini", "[Other]\nKey=1\n");
    EXPECT_EQ(Read(folder, u"Key"), u"(none)");
    folder.Write("a.ini", "[Settings]\nOther=1\n");
    EXPECT_EQ(Read(folder, u"Key"), u"(none)");
    folder.Write("a.ini", "");
    EXPECT_EQ(Read(folder, u"Key"), u"(none)");
}

TEST(IniFile, AFolderOfThatNameHasNoValueAndCannotBeWritten) {
    const TemporaryFolder folder;
    folder.MakeFolder("a.ini");
    EXPECT_EQ(Read(folder, u"Key"), u"(none)");
    EXPECT_EQ(ErrorOf([&] { Write(folder, u"Key", u"1"); }), 75);
    EXPECT_EQ(ErrorOf([&] { WriteIni(folder.Path("none/a.ini"), u"Settings", u"Key", u"1"); }), 75);
}

TEST(IniFile, AnEmptyValueIsAValue) {
    const TemporaryFolder folder;
    Write(folder, u"Key", u"");
    EXPECT_EQ(Read(folder, u"Key"), u"");
    folder.Write("a.ini", "[Settings]\r\nKey=\r\n");
    EXPECT_EQ(Read(folder, u"Key"), u"");
}

TEST(IniFile, WritingMakesFileSectionAndKey) {
    const TemporaryFolder folder;
    Write(folder, u"Key", u"one");
    EXPECT_EQ(folder.Read("a.ini"), Ended("[Settings]\nKey=one\n"));
    Write(folder, u"Other", u"two");
    Write(folder, u"Key", u"three");
    EXPECT_EQ(Read(folder, u"Key"), u"three");
    EXPECT_EQ(Read(folder, u"Other"), u"two");
    EXPECT_EQ(folder.Files(), (std::vector<std::string>{"a.ini"}));
}

TEST(IniFile, KeysAreReadWithoutRegardToCase) {
    const TemporaryFolder folder;
    Write(folder, u"DiscusWebsite", u"one");
    Write(folder, u"DiscusWebSite", u"two");
    EXPECT_EQ(Read(folder, u"DiscusWebsite"), u"two");
    EXPECT_EQ(Read(folder, u"discuswebsite"), u"two");
}

TEST(IniFile, WhatItDoesNotKnowIsKept) {
    const TemporaryFolder folder;
    folder.Write(
        "a.ini",
        "; about this file\n\n[Other]\n; about the size\nSize=12\n\n[Settings]\n# about the key\nKey=old\n"
        "Unknown=a=b\n");
    Write(folder, u"Key", u"new");
    const std::string text = folder.Read("a.ini");
    for (const auto* kept : {"; about this file\n", "[Other]\n", "; about the size\nSize=12\n",
                             "# about the key\n", "Key=new\n", "Unknown=a=b\n"}) {
        EXPECT_NE(text.find(Ended(kept)), std::string::npos) << kept;
    }
    EXPECT_EQ(text.find("old"), std::string::npos);
}

TEST(IniFile, CommentsBehindTheLastKeyAreKept) {
    const TemporaryFolder folder;
    folder.Write("a.ini", Ended("[Settings]\nKey=old\n;Other=turned off\n\n# the end\n"));
    Write(folder, u"Key", u"new");
    EXPECT_EQ(folder.Read("a.ini"), Ended("[Settings]\nKey=new\n;Other=turned off\n\n# the end\n"));
    Write(folder, u"Key", u"newer");
    EXPECT_EQ(folder.Read("a.ini"), Ended("[Settings]\nKey=newer\n;Other=turned off\n\n# the end\n"));
}

TEST(IniFile, WritingAgainAndAgainDoesNotMakeItGrow) {
    const TemporaryFolder folder;
    folder.Write("a.ini",
                 "; head\r\n\r\n[Other]\r\n; size\r\nSize=1\r\n\r\n[Settings]\r\nKey=a\r\n; end\r\n");
    Write(folder, u"Key", u"b");
    const std::string once = folder.Read("a.ini");
    for (int count = 0; count < 5; ++count) Write(folder, u"Key", u"b");
    EXPECT_EQ(folder.Read("a.ini"), once);
}

TEST(IniFile, ValuesComeBackAsTheyWereWritten) {
    const TemporaryFolder folder;
    for (const std::u16string_view value :
         {u"C:\\Discus\\", u"http://a.example/?b=c&d", u"a=b;c#d", u";x", u"#x", u"[x]", u"\"quoted\"", u"\"",
          u"'x'", u" leading", u"trailing ", u"  ", u"\" x \"", u"\ttab\t",
          u"M\u00E4rz \u20AC \u4E2D \U0001F600", u"<<<X", u"%s%n", u"\\n"}) {
        Write(folder, u"Key", value);
        Write(folder, u"Other", u"1");
        EXPECT_EQ(Read(folder, u"Key"), value);
    }
}

TEST(IniFile, QuotesAroundAValueAreNoPartOfIt) {
    const TemporaryFolder folder;
    folder.Write("a.ini", "[Settings]\nKey = \" C:\\a b \"\nOther=\"\nThird=\"\"\n");
    EXPECT_EQ(Read(folder, u"Key"), u" C:\\a b ");
    EXPECT_EQ(Read(folder, u"Other"), u"\"");
    EXPECT_EQ(Read(folder, u"Third"), u"");
    Write(folder, u"Other", u"1");
    Write(folder, u"Other", u"2");
    EXPECT_EQ(Read(folder, u"Key"), u" C:\\a b ");
}

TEST(IniFile, ValuesAreUtf8) {
    const TemporaryFolder folder;
    Write(folder, u"Key", u"M\u00E4rz");
    EXPECT_EQ(folder.Read("a.ini"), Ended("[Settings]\nKey=M\xC3\xA4rz\n"));
    folder.Write("a.ini", "\xEF\xBB\xBF[Settings]\r\nKey = M\xC3\xA4rz \r\n");
    EXPECT_EQ(Read(folder, u"Key"), u"M\u00E4rz");
}

TEST(IniFile, BytesThatAreNoUtf8AreKept) {
    const TemporaryFolder folder;
    folder.Write("a.ini", "[Settings]\nKey=M\xE4rz\n");
    EXPECT_EQ(Read(folder, u"Key"), u"M\uFFFDrz");
    Write(folder, u"Other", u"1");
    EXPECT_EQ(folder.Read("a.ini"), Ended("[Settings]\nKey=M\xE4rz\nOther=1\n"));
}

// A charset is written as a page names it: it must not bring lines of its own into the file.
TEST(IniFile, LineEndsInAValueBecomeBlanks) {
    const TemporaryFolder folder;
    Write(folder, u"Charset", u"utf-8\r\nOutput=C:\\\n[Other]\rKey=1");
    EXPECT_EQ(Read(folder, u"Charset"), u"utf-8  Output=C:\\ [Other] Key=1");
    EXPECT_EQ(Read(folder, u"Output"), u"(none)");
    EXPECT_EQ(Read(folder, u"Key"), u"(none)");
}

TEST(IniFile, ANulInAValueBecomesABlank) {
    const TemporaryFolder folder;
    Write(folder, u"Key", std::u16string_view(u"a\0b", 3));
    EXPECT_EQ(Read(folder, u"Key"), u"a b");
}

}  // namespace
}  // namespace tessaly::platform
