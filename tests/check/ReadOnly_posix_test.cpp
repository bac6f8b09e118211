#include <gtest/gtest.h>

#include <map>

#include "tests/support/CheckedBoard.h"
#include "tests/support/Unprivileged.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

using testing::CheckedBoard;

// Everything that lies below a folder, with its bytes and the time of its last change.
std::map<std::string, std::pair<std::string, fs::file_time_type>> StateOf(
    const testing::TemporaryFolder& folder) {
    std::map<std::string, std::pair<std::string, fs::file_time_type>> state;
    for (const auto& entry : fs::recursive_directory_iterator(folder.Native())) {
        const std::string name = entry.path().lexically_relative(folder.Native()).generic_string();
        state[name] = {entry.is_directory() ? "folder" : folder.Read(name), entry.last_write_time()};
    }
    return state;
}

void SetModes(const testing::TemporaryFolder& folder, fs::perms modes) {
    fs::permissions(folder.Native(), modes);
    for (const auto& entry : fs::recursive_directory_iterator(folder.Native()))
        fs::permissions(entry.path(), modes);
}

TEST(ReadOnly, FoldersAreEnoughForACheckAndStayAsTheyAre) {
    CheckedBoard board;
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    board.WritePage("12/a.pdf", "file");
    board.WritePage(
        "12/12.html",
        testing::PageHead("12/Radios", "12/Radios", "Radios", "Old radios") +
            testing::Post(5, "Anna", "1043846797",
                          "&bogus; <a href=\"http://old.example/discus/messages/12/a.pdf\">a</a>"));
    board.folder.Write("output/kept.txt", "kept");
    const auto before = StateOf(board.folder);
    SetModes(board.folder, static_cast<fs::perms>(0555));
    {
        const testing::Unprivileged nobody;
        if (!nobody.IsSo()) GTEST_SKIP() << "modes do not count here";
        const BoardCheck& check = board.Check();
        EXPECT_EQ(testing::EndsOf(check), 0);
        EXPECT_EQ(check.Tally().posts, 1);
        EXPECT_EQ(check.Tally().attachments, 1);
    }
    SetModes(board.folder, static_cast<fs::perms>(0755));
    EXPECT_EQ(StateOf(board.folder), before);
}

TEST(ReadOnly, AnUploadThatMayNotBeReadEndsARunAndIsNamedOnce) {
    CheckedBoard board;
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    board.WritePage("12/a.pdf", "file");
    board.WritePage("12/12.html",
                    testing::PageHead("12/Radios", "12/Radios", "Radios", "Old radios") +
                        testing::Post(5, "Anna", "1043846797",
                                      "<!--attachment: x--><a href=\"http://old.example/discus/messages/12/"
                                      "a.pdf\" target=_blank>a</a><!--/attachment-->"));
    fs::permissions(board.folder.Native("source/discus/messages/12/a.pdf"), fs::perms::none);
    {
        const testing::Unprivileged nobody;
        if (!nobody.IsSo()) GTEST_SKIP() << "modes do not count here";
        const BoardCheck& check = board.Check();
        EXPECT_EQ(testing::EndsOf(check), 1);
        ASSERT_EQ(board.CountOf(FindingKind::kFileNotRead), 1);
        const Finding& finding = board.Of(FindingKind::kFileNotRead).front();
        EXPECT_EQ(finding.post, u"5");
        EXPECT_TRUE(finding.detail.ends_with(u"12/a.pdf"));
        EXPECT_TRUE(check.FirstEnd()->label.ends_with(u" - ProcessAttachments()"));
    }
}

TEST(ReadOnly, APageThatMayNotBeReadEndsARunAndIsNamed) {
    CheckedBoard board;
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    board.WritePage("12/12.html", "x");
    // Else the page would be read for its charset too.
    board.state.Charset = u"utf-8";
    fs::permissions(board.folder.Native("source/discus/messages/12/12.html"), fs::perms::none);
    const testing::Unprivileged nobody;
    if (!nobody.IsSo()) GTEST_SKIP() << "modes do not count here";
    board.Check();
    ASSERT_EQ(board.CountOf(FindingKind::kFileNotRead), 1);
    const Finding& finding = board.Of(FindingKind::kFileNotRead).front();
    EXPECT_TRUE(finding.page.ends_with(u"\\12\\12.html"));
    EXPECT_TRUE(finding.label.starts_with(u"3002 - GetFileDataCharset() - "));
}

TEST(ReadOnly, AFolderThatMayNotBeLookedIntoDoesNotEndTheCheck) {
    CheckedBoard board;
    board.WriteBoardFile(testing::BoardFile("Main", {}));
    board.WritePage("13/13.html", "x");
    board.folder.MakeFolder("source/discus/messages/12");
    board.state.Charset = u"utf-8";
    fs::permissions(board.folder.Native("source/discus/messages/12"), fs::perms::none);
    const testing::Unprivileged nobody;
    if (!nobody.IsSo()) GTEST_SKIP() << "modes do not count here";
    board.Check();
    EXPECT_EQ(board.CountOf(FindingKind::kUnreachedPage), 1);
}

}  // namespace
}  // namespace tessaly
