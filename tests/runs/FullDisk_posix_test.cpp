#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>

#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

using testing::TestBoard;

// A file system of one megabyte at a folder, seen by this process alone, until the end of life.
class SmallDisk {
  public:
    explicit SmallDisk(const std::filesystem::path& folder) : folder_(folder) {
        if (::unshare(CLONE_NEWNS) != 0) return;
        if (::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return;
        isMounted_ = ::mount("none", folder.c_str(), "tmpfs", 0, "size=1m") == 0;
    }
    ~SmallDisk() {
        if (isMounted_) ::umount2(folder_.c_str(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool IsMounted() const { return isMounted_; }

  private:
    std::filesystem::path folder_;
    bool isMounted_ = false;
};

struct Board : TestBoard {
    Board() {
        folder.MakeFolder("small");
        state.optLog = false;
        state.txtmybbOutputFolder.SetText(folder.Path("small/output"));
        WriteBoardFile(testing::BoardFile("Main", {12}));
    }

    void WritePosts(int count, std::size_t length) const {
        std::string page = testing::PageHead("12/Radios", "12/Radios", "Radios", "Old radios");
        for (int post = 1; post <= count; ++post)
            page += testing::Post(post, "Anna", std::to_string(post), std::string(length, 'x'));
        WritePage("12/12.html", page);
    }
};

TEST(FullDisk, LeavesWholeFilesOrNoneAndTakesTheClosingSteps) {
    Board board;
    board.WritePosts(15, 100000);
    const SmallDisk disk(board.folder.Native("small"));
    if (!disk.IsMounted()) GTEST_SKIP() << "a disk of its own needs the right to mount";
    board.Convert();
    ASSERT_EQ(board.messages.size(), 2u);
    EXPECT_EQ(board.messages[0], u"3004 - DiscusProcessDiscusMainBoardFile() - " +
                                     board.folder.Path("source/discus/messages/board-topics.html") +
                                     u"\r\n\r\nWrite to file failed.");
    EXPECT_TRUE(board.messages[1].starts_with(u"\r\n\r\nConversion Cancelled\r\n\r\n"));
    EXPECT_EQ(board.folder.Files("small/output"),
              (std::vector<std::string>{"Discus Conversion Import SQL.sql", "Log.txt", "LogError.txt",
                                        "mybb_forums1.txt", "mybb_threads1.txt", "mybb_users1.txt",
                                        "redirect/discus/messages/12/12.html"}));
    EXPECT_EQ(testing::Lines(board.folder.Read("small/output/mybb_forums1.txt")).size(), 3u);
    EXPECT_TRUE(board.state.cmdConvert.Enabled);
}

TEST(FullDisk, StopsARunThatSplitsAtTheFirstFileThatDoesNotFit) {
    Board board;
    board.WritePosts(15, 100000);
    board.state.txtSplitMBSize.SetText(u"0.25");  // 262,144 characters: two posts a file
    const SmallDisk disk(board.folder.Native("small"));
    if (!disk.IsMounted()) GTEST_SKIP() << "a disk of its own needs the right to mount";
    board.Convert();
    ASSERT_GE(board.messages.size(), 2u);
    EXPECT_EQ(board.messages[0], u"3004 - WriteFileLine()\r\n\r\nWrite to file failed.");
    EXPECT_TRUE(board.messages.back().starts_with(u"\r\n\r\nConversion Cancelled\r\n\r\n"));
    for (const std::string& name : board.folder.Files("small/output")) {
        EXPECT_FALSE(name.ends_with(".part")) << name;
        if (!name.starts_with("mybb_posts")) continue;
        EXPECT_EQ(testing::Lines(board.folder.Read("small/output/" + name)).size(), 3u) << name;
    }
}

}  // namespace
}  // namespace tessaly
