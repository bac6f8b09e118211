#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "output/SaveRedirectFile.h"
#include "tests/support/TestBoard.h"
#include "text/search.h"

namespace tessaly {
namespace {

using testing::TestBoard;

// The pattern that is delivered.
std::string Pattern() {
    std::ifstream file(TESSALY_SOURCE_DIR "/Docs/Redirect.html", std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

std::u16string Widened(const std::string& ascii) {
    return std::u16string(ascii.begin(), ascii.end());
}

int CountOf(const std::u16string& text, const std::u16string& what,
            Position (*find)(std::u16string_view, std::u16string_view, Position)) {
    int count = 0;
    for (Position at = find(text, what, 1); at != 0; at = find(text, what, at + 1)) ++count;
    return count;
}

// Whether the place is in the title or between the double quotes of an attribute.
bool IsTextAlone(const std::string& page, std::size_t at) {
    const std::string before = page.substr(0, at);
    const std::size_t tag = before.rfind('<');
    if (before.substr(tag).starts_with("<title>")) return true;
    const auto quotes = std::ranges::count(before.substr(tag), '"');
    return before.find('>', tag) == std::string::npos && quotes % 2 == 1;
}

TEST(RedirectTemplate, IsPlainAsciiForAnyCharset) {
    const std::string pattern = Pattern();
    EXPECT_TRUE(pattern.starts_with("<!DOCTYPE html>\n"));
    for (const char byte : pattern) EXPECT_TRUE(byte == '\n' || (byte >= ' ' && byte <= '~')) << byte;
    EXPECT_EQ(pattern.find("charset"), std::string::npos);
}

TEST(RedirectTemplate, HoldsEachPlaceholderAndNothingThatLooksLikeOne) {
    const std::u16string pattern = Widened(Pattern());
    for (const auto* const placeholder : {u"AAAAA", u"BBBBB", u"CCCCC", u"XXXXX", u"ZZZZZ"}) {
        const int count = CountOf(pattern, placeholder, FindExactly);
        EXPECT_GE(count, 1);
        EXPECT_EQ(CountOf(pattern, placeholder, Find), count);
    }
}

TEST(RedirectTemplate, LeadsToTheForumAfterAMomentAndAtOnceByALink) {
    const std::string pattern = Pattern();
    EXPECT_NE(pattern.find("<meta http-equiv=\"refresh\" content=\"5; url=ZZZZZ\">"), std::string::npos);
    EXPECT_NE(pattern.find("<a href=\"ZZZZZ\">"), std::string::npos);
}

TEST(RedirectTemplate, HasTheBoardsTextsWhereTheyAreTextAlone) {
    const std::string pattern = Pattern();
    for (const auto* const placeholder : {"AAAAA", "BBBBB", "CCCCC"}) {
        for (std::size_t at = pattern.find(placeholder); at != std::string::npos;
             at = pattern.find(placeholder, at + 1))
            EXPECT_TRUE(IsTextAlone(pattern, at)) << pattern.substr(at, 40);
    }
    EXPECT_FALSE(IsTextAlone("<p>AAAAA</p>", 3));
    EXPECT_FALSE(IsTextAlone("<p id=AAAAA></p>", 6));
    EXPECT_FALSE(IsTextAlone("<p id=\"x\">AAAAA</p>", 10));
}

TEST(RedirectTemplate, MakesNoTagOfANameThatBeginsOne) {
    TestBoard board;
    board.folder.Write("program/Docs/Redirect.html", Pattern());
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    board.WritePage("12/12.html",
                    testing::PageHead("12/Radios", "12/<script src=//evil.example/x.js ", "Radios", "Old") +
                        testing::Post(5, "Anna", "1043846797", "Hello"));
    board.Convert();
    const std::string page = board.Output("redirect/discus/messages/12/12.html");
    EXPECT_NE(page.find("<input id=\"page\" readonly "
                        "value=\"Radios (Old, <script src=//evil.example/x.js)\"></p>\n"),
              std::string::npos)
        << page;
    EXPECT_EQ(page.find("<script"), page.rfind("<script"));
}

}  // namespace
}  // namespace tessaly
