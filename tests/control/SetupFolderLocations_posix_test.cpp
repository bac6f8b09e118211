#include "control/SetupFolderLocations.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

using testing::TestBoard;
namespace fs = std::filesystem;

// The operator's home is a temporary folder for as long as a test runs.
class HomeAt {
  public:
    explicit HomeAt(const fs::path& folder) {
        if (const char* const old = std::getenv("HOME"); old != nullptr) old_ = old;
        ::setenv("HOME", folder.c_str(), 1);
    }
    ~HomeAt() { ::setenv("HOME", old_.c_str(), 1); }
    HomeAt(const HomeAt&) = delete;
    HomeAt& operator=(const HomeAt&) = delete;

  private:
    std::string old_;
};

// The process sees a temporary folder as the root of its file system: what a test puts at risk is that alone.
class RootAt {
  public:
    explicit RootAt(const fs::path& folder) : outside_(::open("/", O_RDONLY | O_DIRECTORY)) {
        isInside_ = ::chroot(folder.c_str()) == 0 && ::chdir("/") == 0;
    }
    ~RootAt() {
        if (isInside_ && (::fchdir(outside_) != 0 || ::chroot(".") != 0)) std::abort();
        ::close(outside_);
    }
    RootAt(const RootAt&) = delete;
    RootAt& operator=(const RootAt&) = delete;

    bool IsInside() const { return isInside_; }

  private:
    int outside_;
    bool isInside_ = false;
};

void ExpectRefused(const TestBoard& board, const std::u16string& folder) {
    ASSERT_EQ(board.messages.size(), 2u);
    EXPECT_NE(board.messages[0].find(u"is not deleted"), std::u16string::npos);
    EXPECT_EQ(board.messages[1],
              u"Files are open in " + folder + u" - Please close them then restart the conversion");
    EXPECT_TRUE(board.state.CancelRequested);
}

TEST(RefusedOutputFolder, IsTheOperatorsHome) {
    TestBoard board;
    board.folder.Write("home/letter.txt", "kept");
    const HomeAt home(board.folder.Native("home"));
    board.state.txtmybbOutputFolder.SetText(board.folder.Path("home"));
    SetupFolderLocations(board.state);
    ExpectRefused(board, board.folder.Path("home") + u"\\");
    EXPECT_EQ(board.folder.Read("home/letter.txt"), "kept");
}

TEST(RefusedOutputFolder, IsOneAboveTheOperatorsHome) {
    TestBoard board;
    board.folder.Write("homes/me/letter.txt", "kept");
    const HomeAt home(board.folder.Native("homes/me"));
    board.state.txtmybbOutputFolder.SetText(board.folder.Path("homes"));
    SetupFolderLocations(board.state);
    ExpectRefused(board, board.folder.Path("homes") + u"\\");
    EXPECT_EQ(board.folder.Read("homes/me/letter.txt"), "kept");
}

TEST(RefusedOutputFolder, IsNotOneBelowTheOperatorsHome) {
    TestBoard board;
    board.folder.Write("home/import/old.txt", "old");
    const HomeAt home(board.folder.Native("home"));
    board.state.txtmybbOutputFolder.SetText(board.folder.Path("home/import"));
    SetupFolderLocations(board.state);
    EXPECT_TRUE(board.messages.empty());
    EXPECT_FALSE(board.folder.Exists("home/import/old.txt"));
}

TEST(RefusedOutputFolder, IsALinkThatLeadsToTheSource) {
    TestBoard board;
    board.WriteBoardFile("kept");
    fs::create_directory_symlink(board.folder.Native("source"), board.folder.Native("link"));
    board.state.txtmybbOutputFolder.SetText(board.folder.Path("link"));
    SetupFolderLocations(board.state);
    ExpectRefused(board, board.folder.Path("link") + u"\\");
    EXPECT_EQ(board.folder.Read("source/discus/messages/board-topics.html"), "kept");
}

TEST(RefusedOutputFolder, IsTheRootThatABlankFieldBecomes) {
    TestBoard board;
    board.folder.Write("source/precious.txt", "kept");
    board.folder.Write("settings.ini", "");
    const RootAt root(board.folder.Native());
    if (!root.IsInside()) GTEST_SKIP() << "a root of its own needs the right to change the root";
    board.state.IniFile = u"\\settings.ini";
    board.state.ProgramFolder = u"\\no such program";
    board.state.DiscusRootFolder = u"\\source\\";
    board.state.DiscusMessageFolder = u"\\source\\discus\\messages\\";
    board.state.DiscusSecureMessageFolder = u"\\source\\discus_admin_1\\secure\\";
    board.state.DiscusMainFolder = u"\\source\\discus_admin_1\\";
    board.state.mybbOutputFolder = u"\\filled in before\\";
    board.state.txtmybbOutputFolder.SetText(u"");
    SetupFolderLocations(board.state);
    ExpectRefused(board, u"\\");
    EXPECT_TRUE(fs::exists("/source/precious.txt"));
}

TEST(RefusedOutputFolder, IsTheRootHoweverItIsWritten) {
    for (const auto* const text : {u"\\", u"/", u"//", u"\\.\\", u"/source/.."}) {
        TestBoard board;
        board.folder.Write("settings.ini", "");
        const RootAt root(board.folder.Native());
        if (!root.IsInside()) GTEST_SKIP() << "a root of its own needs the right to change the root";
        board.state.IniFile = u"\\settings.ini";
        board.state.ProgramFolder = u"\\no such program";
        board.state.DiscusRootFolder = u"\\source\\";
        board.state.DiscusMessageFolder = u"\\source\\discus\\messages\\";
        board.state.DiscusSecureMessageFolder = u"\\source\\discus_admin_1\\secure\\";
        board.state.DiscusMainFolder = u"";
        board.state.txtmybbOutputFolder.SetText(text);
        SetupFolderLocations(board.state);
        ExpectRefused(board, ToolboxLibrary::AddBackslash(text));
        EXPECT_TRUE(fs::exists("/source/discus/messages"));
    }
}

TEST(FolderSetup, DeletesALinkInTheOutputFolderAndNotWhatItLeadsTo) {
    TestBoard board;
    board.folder.Write("elsewhere/kept.txt", "kept");
    board.folder.MakeFolder("output");
    fs::create_directory_symlink(board.folder.Native("elsewhere"), board.folder.Native("output/link"));
    SetupFolderLocations(board.state);
    EXPECT_TRUE(board.messages.empty());
    EXPECT_FALSE(board.folder.Exists("output/link"));
    EXPECT_EQ(board.folder.Read("elsewhere/kept.txt"), "kept");
}

}  // namespace
}  // namespace tessaly
