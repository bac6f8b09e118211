#include <gtest/gtest.h>

#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

using testing::TestBoard;

struct Sample {
    const char* charset;
    std::string bytes;      // a short text in the charset
    std::string utf8;       // the same text
    std::string head = "";  // what a text in the charset begins with
};

// The name of a test shows which sample it is of.
void PrintTo(const Sample& sample, std::ostream* out) {
    *out << sample.charset;
}

class EachCharset : public ::testing::TestWithParam<Sample> {};

TEST_P(EachCharset, IsReadFromThePagesAndWrittenToAllFiles) {
    const Sample& sample = GetParam();
    TestBoard board;
    board.WriteBoardFile(sample.head + testing::BoardFile("Main", {12}));
    board.WritePage("12/12.html", sample.head + "<meta content=\"text/html; charset=" + sample.charset +
                                      "\">" +
                                      testing::PageHead("12/Radios", "12/Radios", "Radios", "Old radios") +
                                      testing::Post(5, "Anna", "1043846797", sample.bytes));
    // The member file is in UTF-8 whatever the charset.
    board.WriteMembers("anna:pw:a@host.example:Anna:::1:1:2:" + sample.utf8 + "\n");
    board.Convert();
    EXPECT_EQ(board.messages.size(), 1u);
    EXPECT_EQ(board.state.Charset,
              std::u16string(sample.charset, sample.charset + std::string(sample.charset).size()));
    EXPECT_EQ(board.Output("mybb_posts1.txt"), sample.head +
                                                   R"(1,1,0,2,"Old radios",0,2,"Anna",1043846797,")" +
                                                   sample.bytes + "\",0,0,0,0,0,\"12^12^5\",1\r\n");
    const std::string group = sample.head + "8,0,\"" + sample.bytes + "\",\"\",";
    EXPECT_EQ(board.Output("mybb_usergroups1.txt").substr(0, group.size()), group);
    EXPECT_EQ(
        board.Output("Discus Conversion Import SQL.sql").find(sample.head.empty() ? "\x1B" : sample.head),
        std::string::npos)
        << "the script is not in the charset";
}

INSTANTIATE_TEST_SUITE_P(
    OnOffer, EachCharset,
    ::testing::Values(Sample{"big5", "\xA4\xA4", "\xE4\xB8\xAD"},
                      Sample{"euc-jp", "\xC6\xFC", "\xE6\x97\xA5"},
                      Sample{"euc-kr", "\xB0\xA1", "\xEA\xB0\x80"},
                      Sample{"gb2312", "\xD6\xD0", "\xE4\xB8\xAD"},
                      Sample{"iso-2022-jp", "\x1B$BF|\x1B(B", "\xE6\x97\xA5"},
                      Sample{"iso-2022-kr", "\x0E\x30\x21\x0F", "\xEA\xB0\x80", "\x1B$)C"},
                      Sample{"iso-8859-1", "\xE9\x80", "\xC3\xA9\xE2\x82\xAC"},
                      Sample{"iso-8859-2", "\xB1", "\xC4\x85"}, Sample{"iso-8859-3", "\xB1", "\xC4\xA7"},
                      Sample{"iso-8859-4", "\xB3", "\xC5\x97"}, Sample{"iso-8859-5", "\xD6", "\xD0\xB6"},
                      Sample{"iso-8859-6", "\xC7", "\xD8\xA7"}, Sample{"iso-8859-7", "\xE1", "\xCE\xB1"},
                      Sample{"iso-8859-8", "\xE0", "\xD7\x90"}, Sample{"iso-8859-9", "\xFE", "\xC5\x9F"},
                      Sample{"koi8-r", "\xD6", "\xD0\xB6"}, Sample{"shift-jis", "\x93\xFA", "\xE6\x97\xA5"},
                      Sample{"us-ascii", "\xE9", "\xC3\xA9"}, Sample{"utf-7", "+AOk--x", "\xC3\xA9-x"},
                      Sample{"utf-8", "\xE6\x97\xA5\xC3\xA9", "\xE6\x97\xA5\xC3\xA9"}),
    [](const ::testing::TestParamInfo<Sample>& shown) {
        std::string name = shown.param.charset;
        std::erase(name, '-');
        return name;
    });

}  // namespace
}  // namespace tessaly
