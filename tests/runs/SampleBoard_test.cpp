#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "control/Settings.h"
#include "platform/charset.h"
#include "platform/paths.h"
#include "tests/support/TestBoard.h"
#include "text/search.h"

// The board under samples/ and all that a run makes of it, literally. What is expected stands in
// tests/runs/expected/SampleBoard, with "{SOURCE}", "{OUTPUT}" and "{MOMENT}" for what differs from run to
// run.

namespace tessaly {
namespace {

namespace fs = std::filesystem;

const fs::path kTree = TESSALY_SOURCE_DIR;

std::string BytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.good()) << path << " is not there";
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

std::string WithReplaced(std::string text, const std::string& what, const std::string& with) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size())) {
        text.replace(at, what.size(), with);
    }
    return text;
}

// ASCII alone, as the paths of these tests are.
std::string Narrow(std::u16string_view text) {
    return {text.begin(), text.end()};
}

class SampleBoardTest : public ::testing::Test {
  protected:
    SampleBoardTest() {
        fs::copy(kTree / "samples/board", board.folder.Native("sample"), fs::copy_options::recursive);
        fs::remove_all(board.folder.Native("program/Docs"));
        fs::copy(kTree / "Docs", board.folder.Native("program/Docs"), fs::copy_options::recursive);
        Fill(board.state.txtDiscusRootFolder, "sample");
        Fill(board.state.txtDiscusMessageFolder, "sample/discus/messages");
        Fill(board.state.txtDiscusSecureMessageFolder, "sample/discus_admin_1043846797/secure");
        Fill(board.state.txtDiscusMainFolder, "sample/discus_admin_1043846797");
        board.state.txtDiscusWebsite.SetText(u"http://www.radio-club.example/discus/");
        txtDiscusWebsite_LostFocus(board.state);
        board.state.txtmybbForumAddr.SetText(u"http://forum.radio-club.example/");
        txtmybbForumAddr_LostFocus(board.state);
        board.state.DefaultUserCount = 0;
        board.Convert();
    }

    void Fill(TextField& field, const std::string& folder) {
        field.SetText(board.folder.Path(folder) + u"\\");
    }

    std::string Expected(const std::string& name) const {
        std::u16string output = platform::WithNativeSeparators(board.folder.Path("output") + u"\\");
        ReplaceAll(output, u"\\", u"\\\\");
        const std::string bytes = BytesOf(kTree / "tests/runs/expected/SampleBoard" / name);
        return WithReplaced(WithReplaced(bytes, "{SOURCE}", Narrow(board.folder.Path("sample"))), "{OUTPUT}",
                            Narrow(output));
    }

    void ExpectFile(const std::string& name) const { EXPECT_EQ(board.Output(name), Expected(name)); }

    void ExpectCopy(const std::string& name, const std::string& source) const {
        EXPECT_EQ(board.Output("attachments/" + name), BytesOf(kTree / "samples/board" / source));
    }

    testing::TestBoard board;
};

// The moment behind a text, such as 2026-11-20 18:16:05, as "{MOMENT}".
template <typename Text>
Text WithoutMoment(Text text, const Text& before, const Text& mask) {
    const std::size_t at = text.find(before);
    EXPECT_NE(at, Text::npos);
    if (at != Text::npos) text.replace(at + before.size(), 19, mask);
    return text;
}

TEST_F(SampleBoardTest, TheOutputHoldsTheseFilesAndNoOthers) {
    EXPECT_EQ(board.folder.Files("output"), (std::vector<std::string>{
                                                "Discus Conversion Import SQL.sql",
                                                "Discus Special Characters.txt",
                                                "InternalLinks1.txt",
                                                "InternalLinksUpdate1.txt",
                                                "Log.txt",
                                                "LogError.txt",
                                                "attachments/1_2E757F5F4A1FE6EB74DE20B9324866D5",
                                                "attachments/2_BBC2783706F7D5338DA9D367106ABDC9",
                                                "attachments/3_D9CD7FF1483708FC6FB6CCE8FBB50C2F",
                                                "attachments/4_C41B81B025A6904ACC2542ABA8A026AF",
                                                "attachments/5_CEAA9D24EBF4A413D4EF8777AD8AF7FF",
                                                "attachments/6_ECEB248DE53402ED2608EF39268B71D5",
                                                "mybb_announcements1.txt",
                                                "mybb_attachments1.txt",
                                                "mybb_forums1.txt",
                                                "mybb_posts1.txt",
                                                "mybb_threads1.txt",
                                                "mybb_usergroups1.txt",
                                                "mybb_users1.txt",
                                                "redirect/discus/messages/12/130.html",
                                                "redirect/discus/messages/12/131.html",
                                                "redirect/discus/messages/20/140.html",
                                                "redirect/discus/messages/20/141.html",
                                                "redirect/discus/messages/3/110.html",
                                                "redirect/discus/messages/3/111.html",
                                                "redirect/discus/messages/3/112.html",
                                                "redirect/discus/messages/3/115.html",
                                                "redirect/discus/messages/3/120.html",
                                                "redirect/discus/messages/31/150.html",
                                                "redirect/discus/messages/31/151.html",
                                                "redirect/discus/messages/31/155.html",
                                                "redirect/discus/messages/40/40.html",
                                                "redirect/discus/messages/50/50.html",
                                                "redirect/discus_admin_1043846797/secure/31/155.html",
                                            }));
}

TEST_F(SampleBoardTest, EveryRowOfEveryImportFile) {
    ExpectFile("mybb_forums1.txt");
    ExpectFile("mybb_threads1.txt");
    ExpectFile("mybb_posts1.txt");
    ExpectFile("mybb_users1.txt");
    ExpectFile("mybb_usergroups1.txt");
    ExpectFile("mybb_attachments1.txt");
    ExpectFile("mybb_announcements1.txt");
}

TEST_F(SampleBoardTest, TheScriptLoadsEachFileOnce) {
    ExpectFile("Discus Conversion Import SQL.sql");
}

TEST_F(SampleBoardTest, TheLinksAndTheirUpdateWhichKnowsNoTopic) {
    ExpectFile("InternalLinks1.txt");
    ExpectFile("InternalLinksUpdate1.txt");
}

TEST_F(SampleBoardTest, TheOneSequenceWithoutACharacter) {
    ExpectFile("Discus Special Characters.txt");
}

TEST_F(SampleBoardTest, TheLog) {
    EXPECT_EQ(WithoutMoment<std::u16string>(board.Log(), u"Conversion Start Time: ", u"{MOMENT}"),
              platform::Decode(Expected("Log.txt"), u"utf-8"));
}

// Its first line is in UTF-16, the others are not.
TEST_F(SampleBoardTest, TheErrorLog) {
    const std::string log = board.Output("LogError.txt");
    EXPECT_EQ(log.substr(0, 10), std::string("\xFF\xFE\r\0\n\0\r\0\n\0", 10));
    EXPECT_EQ(WithoutMoment<std::string>(log.substr(10), "Conversion Start Time: ", "{MOMENT}"),
              Expected("LogError.txt"));
}

TEST_F(SampleBoardTest, TheCopiesOfTheUploads) {
    ExpectCopy("1_2E757F5F4A1FE6EB74DE20B9324866D5", "discus/messages/3/chassis-1151.png");
    ExpectCopy("2_BBC2783706F7D5338DA9D367106ABDC9", "discus/messages/3/parts-list-1152.txt");
    ExpectCopy("3_D9CD7FF1483708FC6FB6CCE8FBB50C2F", "discus/messages/12/meter-manual-1301.txt");
    ExpectCopy("4_C41B81B025A6904ACC2542ABA8A026AF", "discus/messages/12/signal-tracer-1311.pdf");
    ExpectCopy("5_CEAA9D24EBF4A413D4EF8777AD8AF7FF", "discus/messages/31/fair-poster-1511.png");
    ExpectCopy("6_ECEB248DE53402ED2608EF39268B71D5", "discus_admin_1043846797/secure/31/accounts-1551.txt");
}

TEST_F(SampleBoardTest, RedirectionPagesOfATopicOfAHiddenOneAndOfAPageInAnArchive) {
    ExpectFile("redirect/discus/messages/20/141.html");
    ExpectFile("redirect/discus/messages/31/155.html");
    ExpectFile("redirect/discus_admin_1043846797/secure/31/155.html");
    ExpectFile("redirect/discus/messages/3/112.html");
}

TEST_F(SampleBoardTest, TheSummaryIsTheOnlyMessageAndTheCharsetIsThatOfThePages) {
    ASSERT_EQ(board.messages.size(), 1u);
    EXPECT_TRUE(board.messages[0].starts_with(u"Conversion Start: "));
    EXPECT_EQ(board.state.Charset, u"iso-8859-1");
    EXPECT_EQ(board.state.txtMsgCount.Text, u"43");
    const std::vector<std::u16string> folders = {u"3", u"12", u"20", u"31", u"40", u"50"};
    EXPECT_EQ(board.state.cboProcessedFolders.Items, folders);
}

}  // namespace
}  // namespace tessaly
