#include "output/SaveRedirectFile.h"

#include <gtest/gtest.h>

#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

using testing::TestBoard;

// A board with an empty output folder and a template of just the placeholders.
struct RedirectBoard : TestBoard {
    RedirectBoard() {
        state.Charset = u"utf-8";
        state.RedirectTemplate = u"AAAAA|BBBBB|XXXXX|CCCCC|ZZZZZ";
    }

    std::u16string PublicPage(std::u16string_view below) const {
        return state.DiscusMessageFolder + std::u16string(below);
    }
};

constexpr const char* kPage = "redirect/discus/messages/12/345.html";

TEST(SaveRedirectFile, WritesThePageWhereItLayBelowTheDiscusRoot) {
    RedirectBoard board;
    SaveRedirectFile(board.state, board.PublicPage(u"12\\345.html"), 12, u"the subject", u"the name",
                     u"the title");
    EXPECT_EQ(board.folder.Files("output"), (std::vector<std::string>{kPage}));
    EXPECT_EQ(board.Output(kPage), "the subject|the name|12.0|the title|http://new.example/");
    EXPECT_TRUE(board.messages.empty());
}

TEST(SaveRedirectFile, DoesNothingWithTheOptionOffWhateverItIsGiven) {
    RedirectBoard board;
    board.state.optCreateRedirectionFiles = false;
    SaveRedirectFile(board.state, board.PublicPage(u"12\\345.html"), 12, u"a", u"b", u"c");
    SaveRedirectFile(board.state, u"", 0, u"", u"", u"");
    EXPECT_FALSE(board.folder.Exists("output"));
    EXPECT_TRUE(board.messages.empty());
}

TEST(SaveRedirectFile, PutsAHiddenTopicBelowThePathOfTheSecureFolder) {
    RedirectBoard board;
    board.state.HiddenTopic = true;
    SaveRedirectFile(board.state, board.state.DiscusSecureMessageFolder + u"12\\345.html", 1, u"a", u"b",
                     u"c");
    EXPECT_EQ(board.folder.Files("output"),
              (std::vector<std::string>{"redirect/discus_admin_1/secure/12/345.html"}));
}

TEST(SaveRedirectFile, TakesTheBaseByTheFlagAndNotByThePage) {
    RedirectBoard board;
    board.state.HiddenTopic = true;
    SaveRedirectFile(board.state, board.PublicPage(u"12\\345.html"), 1, u"a", u"b", u"c");
    EXPECT_EQ(board.folder.Files("output"),
              (std::vector<std::string>{"redirect/discus_admin_1/secure/12/345.html"}));
}

TEST(SaveRedirectFile, ReplacesAPlaceholderInSmallLettersToo) {
    RedirectBoard board;
    board.state.RedirectTemplate = u"aaaaa bBbBb xxxxx ccccc Zzzzz";
    SaveRedirectFile(board.state, board.PublicPage(u"12\\345.html"), -3, u"a", u"b", u"c");
    EXPECT_EQ(board.Output(kPage), "a b -3.0 c http://new.example/");
}

TEST(SaveRedirectFile, ReplacesAllOccurrences) {
    RedirectBoard board;
    board.state.RedirectTemplate = u"AAAAAAAAAAA XXXXX XXXXX";
    SaveRedirectFile(board.state, board.PublicPage(u"12\\345.html"), 5, u"-", u"b", u"c");
    EXPECT_EQ(board.Output(kPage), "--A 5.0 5.0");
}

TEST(SaveRedirectFile, ReplacesAPlaceholderThatAnEarlierTextBroughtIn) {
    RedirectBoard board;
    board.state.RedirectTemplate = u"AAAAA/CCCCC";
    SaveRedirectFile(board.state, board.PublicPage(u"12\\345.html"), 7, u"BBBBB", u"XXXXX", u"AAAAA");
    // AAAAA becomes BBBBB, that XXXXX, that 7.0; what CCCCC brings in comes too late for AAAAA.
    EXPECT_EQ(board.Output(kPage), "7.0/AAAAA");
}

TEST(SaveRedirectFile, TakesTheForumAddressFromTheFieldAsItIsNow) {
    RedirectBoard board;
    board.state.RedirectTemplate = u"ZZZZZ";
    board.state.mybbForumAddr = u"not this";
    board.state.txtmybbForumAddr.SetText(u" typed during the run ");
    SaveRedirectFile(board.state, board.PublicPage(u"12\\345.html"), 1, u"", u"", u"");
    EXPECT_EQ(board.Output(kPage), " typed during the run ");
}

TEST(SaveRedirectFile, LetsTheLaterOfTwoPagesOfOnePathReplaceTheEarlier) {
    RedirectBoard board;
    SaveRedirectFile(board.state, board.PublicPage(u"12\\345.html"), 1, u"first", u"", u"");
    SaveRedirectFile(board.state, board.PublicPage(u"12\\345.html"), 2, u"2", u"", u"");
    EXPECT_EQ(board.Output(kPage), "2||2.0||http://new.example/");
}

TEST(SaveRedirectFile, IgnoresWhatStandsBehindTheFileName) {
    RedirectBoard board;
    SaveRedirectFile(board.state, board.PublicPage(u"12\\345.html\\more\\steps"), 1, u"", u"", u"");
    EXPECT_EQ(board.folder.Files("output"), (std::vector<std::string>{kPage}));
}

TEST(SaveRedirectFile, FindsTheFoldersInThePathWhateverTheirCase) {
    RedirectBoard board;
    std::u16string path = board.PublicPage(u"12\\345.html");
    ReplaceAll(path, u"messages", u"MESSAGES");
    SaveRedirectFile(board.state, path, 1, u"", u"", u"");
    EXPECT_EQ(board.folder.Files("output"), (std::vector<std::string>{kPage}));
}

TEST(SaveRedirectFile, AddsTheBackslashThatTheOutputFolderLacks) {
    RedirectBoard board;
    board.state.mybbOutputFolder.pop_back();
    SaveRedirectFile(board.state, board.PublicPage(u"12\\345.html"), 1, u"", u"", u"");
    EXPECT_EQ(board.folder.Files("output"), (std::vector<std::string>{kPage}));
}

TEST(SaveRedirectFile, EndsInAFailureForAPathWithoutAFolder) {
    RedirectBoard board;
    SaveRedirectFile(board.state, board.PublicPage(u"345.html"), 1, u"", u"", u"");
    EXPECT_EQ(board.messages,
              (std::vector<std::u16string>{u"9 - SaveRedirectFile()\r\n\r\nSubscript out of range"}));
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_FALSE(board.folder.Exists("output"));
}

TEST(SaveRedirectFile, EndsInAFailureForAnEmptyPath) {
    RedirectBoard board;
    SaveRedirectFile(board.state, u"", 1, u"", u"", u"");
    EXPECT_EQ(board.messages,
              (std::vector<std::u16string>{u"9 - SaveRedirectFile()\r\n\r\nSubscript out of range"}));
}

TEST(SaveRedirectFile, PutsPagesDirectlyBelowRedirectWhenTheyLieDirectlyInTheRoot) {
    RedirectBoard board;
    board.state.DiscusRootFolder = board.state.DiscusMessageFolder;
    SaveRedirectFile(board.state, board.PublicPage(u"12\\345.html"), 1, u"", u"", u"");
    EXPECT_EQ(board.folder.Files("output"), (std::vector<std::string>{"redirect/12/345.html"}));
}

TEST(SaveRedirectFile, LeavesTheWritingToItsOwnHandler) {
    RedirectBoard board;
    board.folder.MakeFolder(std::string("output/") + kPage);
    SaveRedirectFile(board.state, board.PublicPage(u"12\\345.html"), 1, u"", u"", u"");
    EXPECT_EQ(board.messages,
              (std::vector<std::u16string>{u"3004 - WriteFileData()\r\n\r\nWrite to file failed."}));
}

TEST(SaveRedirectFile, WritesThePageInTheCharsetOfTheRun) {
    RedirectBoard board;
    board.state.Charset = u"iso-8859-2";
    board.state.RedirectTemplate = u"AAAAA";
    SaveRedirectFile(board.state, board.PublicPage(u"12\\345.html"), 1, u"\u0105", u"", u"");
    EXPECT_EQ(board.Output(kPage), "\xB1");
}

TEST(SaveRedirectFile, KeepsEveryPageBelowTheOutputFolder) {
    RedirectBoard board;
    SaveRedirectFile(board.state, board.PublicPage(u"12\\.."), 1, u"", u"", u"");
    EXPECT_EQ(board.messages,
              (std::vector<std::u16string>{u"3004 - WriteFileData()\r\n\r\nWrite to file failed."}));
    EXPECT_TRUE(board.folder.Files("output").empty());
}

}  // namespace
}  // namespace tessaly
