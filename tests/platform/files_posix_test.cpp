#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "platform/TextFile.h"
#include "platform/TextStream.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Unprivileged.h"

namespace fs = std::filesystem;

namespace tessaly::platform {
namespace {

using testing::TemporaryFolder;
using testing::Unprivileged;
using Files8 = std::vector<std::string>;

constexpr fs::perms kEveryone = fs::perms::all;

template <typename Step>
int ErrorOf(Step&& step) {
    return IgnoringErrors(step);
}

Protected Unguarded() {
    Protected kept;
    kept.showMessage = [](std::u16string_view) {};
    return kept;
}

TEST(FileExists, OfAFileThatMayNotBeReadIsTrue) {
    const TemporaryFolder folder;
    folder.Write("a.txt", "x");
    fs::permissions(folder.Native("a.txt"), fs::perms::none);
    const Unprivileged nobody;
    ASSERT_TRUE(nobody.IsSo());
    EXPECT_TRUE(FileExists(folder.Path("a.txt")));
    EXPECT_EQ(ErrorOf([&] { ReadWholeFile(folder.Path("a.txt")); }), 3002);
    EXPECT_EQ(ErrorOf([&] { FileLength(folder.Path("a.txt")); }), 70);
    EXPECT_EQ(ErrorOf([&] { CopyFile(folder.Path("a.txt"), folder.Path("b.txt")); }), 70);
}

TEST(FileExists, BehindAFolderThatMayNotBeEnteredIsFalse) {
    const TemporaryFolder folder;
    folder.Write("closed/a.txt", "x");
    fs::permissions(folder.Native("closed"), fs::perms::none);
    {
        const Unprivileged nobody;
        ASSERT_TRUE(nobody.IsSo());
        EXPECT_FALSE(FileExists(folder.Path("closed/a.txt")));
        EXPECT_EQ(ErrorOf([&] { Files(folder.Path("closed")); }), 70);
        EXPECT_EQ(CountFiles(folder.Path(), u".txt"), 0);
    }
    fs::permissions(folder.Native("closed"), kEveryone);
}

TEST(FileExists, OfAPipeIsFalse) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo(folder.Native("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(FileExists(folder.Path("pipe")));
}

TEST(FileExists, OfALinkIsThatOfItsTarget) {
    const TemporaryFolder folder;
    folder.Write("a.txt", "x");
    fs::create_symlink("a.txt", folder.Native("link.txt"));
    fs::create_symlink("nowhere.txt", folder.Native("dangling.txt"));
    fs::create_symlink("loop.txt", folder.Native("loop.txt"));
    EXPECT_TRUE(FileExists(folder.Path("link.txt")));
    EXPECT_FALSE(FileExists(folder.Path("dangling.txt")));
    EXPECT_FALSE(FileExists(folder.Path("loop.txt")));
}

TEST(MakeFolders, FailsForALinkThatLeadsNowhereAsIsForetold) {
    const TemporaryFolder folder;
    fs::create_symlink("nowhere", folder.Native("dangling"));
    fs::create_symlink("loop", folder.Native("loop"));
    fs::create_directory_symlink(folder.Native(), folder.Native("here"));
    for (const char* const name : {"dangling", "dangling/a", "loop", "loop/a/b"}) {
        EXPECT_EQ(ObstacleToFolders(folder.Path(name)), 75);
        EXPECT_EQ(ErrorOf([&] { MakeFolders(folder.Path(name)); }), 75);
    }
    EXPECT_EQ(ObstacleToFolders(folder.Path("here/a")), 0);
}

TEST(Listing, OfNamesThatDifferInCaseOnlyTheCapitalComesFirst) {
    const TemporaryFolder folder;
    folder.Write("ab.html", "");
    folder.Write("AB.html", "");
    folder.Write("aB.html", "");
    EXPECT_EQ(Files(folder.Path()), (std::vector<std::u16string>{u"AB.html", u"aB.html", u"ab.html"}));
}

TEST(Spelling, WhatIsWrittenIsTakenJustAsSpelled) {
    const TemporaryFolder folder;
    folder.Write("users.txt", "old");
    WriteWholeFile(folder.Path("Users.txt"), {"new"});
    EXPECT_EQ(folder.Read("users.txt"), "old");
    EXPECT_EQ(folder.Read("Users.txt"), "new");
    CopyFile(folder.Path("users.txt"), folder.Path("USERS.txt"));
    EXPECT_EQ(folder.Read("USERS.txt"), "old");
    EXPECT_EQ(folder.Read("Users.txt"), "new");
    EXPECT_EQ(ErrorOf([&] { MakeFolders(folder.Path("A/b")); }), 0);
    EXPECT_EQ(ErrorOf([&] { MakeFolders(folder.Path("a/b")); }), 0);
    EXPECT_TRUE(folder.Exists("A/b"));
    EXPECT_TRUE(folder.Exists("a/b"));
}

TEST(Spelling, WhatIsDeletedIsTakenJustAsSpelled) {
    const TemporaryFolder folder;
    folder.Write("log.txt", "x");
    folder.Write("Out/a.txt", "x");
    DeleteFiles(folder.Path(), u"Log.txt");
    DeleteFiles(folder.Path(), u"L*.txt");
    EXPECT_EQ(ErrorOf([&] { DeleteFolder(folder.Path("out"), Unguarded()); }), 76);
    EXPECT_EQ(ErrorOf([&] { DeleteFiles(folder.Path("out"), u"a.txt"); }), 76);
    EXPECT_FALSE(FolderExists(folder.Path("out")));
    EXPECT_EQ(folder.Files(), (Files8{"Out/a.txt", "log.txt"}));
}

TEST(DeleteFolder, LinksInsideAreNotFollowed) {
    const TemporaryFolder folder;
    folder.Write("far/away.txt", "x");
    folder.Write("far.txt", "x");
    folder.Write("out/a/b.txt", "x");
    fs::create_directory_symlink(folder.Native("far"), folder.Native("out/a/folder"));
    fs::create_symlink(folder.Native("far.txt"), folder.Native("out/file"));
    fs::create_directory_symlink("..", folder.Native("out/up"));
    DeleteFolder(folder.Path("out"), Unguarded());
    EXPECT_EQ(folder.Files(), (Files8{"far.txt", "far/away.txt"}));
}

TEST(DeleteFolder, OfAFolderThatIsALinkOnlyTheLinkGoes) {
    const TemporaryFolder folder;
    for (const char16_t* const end : {u"", u"\\", u"/", u"/\\"}) {
        folder.Write("far/away.txt", "x");
        fs::create_directory_symlink(folder.Native("far"), folder.Native("out"));
        EXPECT_EQ(ErrorOf([&] { DeleteFolder(folder.Path("out") + end, Unguarded()); }), 0);
        EXPECT_FALSE(fs::is_symlink(folder.Native("out")));
        EXPECT_EQ(folder.Files(), (Files8{"far/away.txt"}));
    }
}

TEST(DeleteFolder, ALinkToAGuardedFolderIsRefused) {
    const TemporaryFolder folder;
    folder.Write("board/messages/12.html", "x");
    fs::create_directory_symlink(folder.Native("board"), folder.Native("out"));
    Protected kept = Unguarded();
    kept.sourceFolders = {folder.Path("board/messages")};
    EXPECT_EQ(ErrorOf([&] { DeleteFolder(folder.Path("out"), kept); }), 70);
    EXPECT_TRUE(fs::is_symlink(folder.Native("out")));
}

TEST(DeleteFolder, ASourceFolderThatIsNamedByALinkIsGuarded) {
    const TemporaryFolder folder;
    folder.Write("real/messages/12.html", "x");
    fs::create_directory_symlink(folder.Native("real"), folder.Native("board"));
    Protected kept = Unguarded();
    kept.sourceFolders = {folder.Path("board/messages") + u"\\"};
    EXPECT_EQ(ErrorOf([&] { DeleteFolder(folder.Path("real"), kept); }), 70);
    EXPECT_EQ(ErrorOf([&] { DeleteFolder(folder.Path("REAL"), kept); }), 70);
    EXPECT_EQ(folder.Read("real/messages/12.html"), "x");
}

TEST(DeleteFolder, WhatMayNotBeDeletedIsAPermissionDenied) {
    const TemporaryFolder folder;
    folder.Write("out/a.txt", "x");
    fs::permissions(folder.Native("out"), fs::perms::owner_read | fs::perms::owner_exec |
                                              fs::perms::others_read | fs::perms::others_exec);
    {
        const Unprivileged nobody;
        ASSERT_TRUE(nobody.IsSo());
        EXPECT_EQ(ErrorOf([&] { DeleteFolder(folder.Path("out"), Unguarded()); }), 70);
        EXPECT_EQ(ErrorOf([&] { DeleteFiles(folder.Path("out"), u"*.txt"); }), 70);
    }
    EXPECT_EQ(folder.Read("out/a.txt"), "x");
    fs::permissions(folder.Native("out"), kEveryone);
}

// Here "\" is a character of a name like any other, and only in path texts a separator.
TEST(DeleteFiles, ABackslashInANameDoesNotLeadToAnotherFolder) {
    const TemporaryFolder folder;
    folder.Write("kept.txt", "x");
    folder.MakeFolder("out/mybb_posts");
    folder.Write("out/mybb_posts\\..\\..\\kept.txt", "x");
    DeleteFiles(folder.Path("out"), u"mybb_posts*.txt");
    EXPECT_EQ(folder.Files(), (Files8{"kept.txt"}));
}

TEST(DeleteFiles, OfALinkOnlyTheLinkGoes) {
    const TemporaryFolder folder;
    folder.Write("kept.txt", "x");
    folder.MakeFolder("out");
    fs::create_symlink(folder.Native("kept.txt"), folder.Native("out/mybb_posts1.txt"));
    fs::create_symlink(folder.Native("nowhere.txt"), folder.Native("out/mybb_posts2.txt"));
    DeleteFiles(folder.Path("out"), u"mybb_posts*.txt");
    EXPECT_TRUE(fs::is_empty(folder.Native("out")));
    EXPECT_EQ(folder.Read("kept.txt"), "x");
}

TEST(DeleteFiles, AFileThatStaysDoesNotKeepTheOthers) {
    if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can make files that others may not delete";
    const TemporaryFolder folder;
    folder.MakeFolder("out");
    fs::permissions(folder.Native("out"), kEveryone | fs::perms::sticky_bit);
    for (const auto* name : {"out/mybb_posts1.txt", "out/mybb_posts3.txt"}) folder.Write(name, "theirs");
    {
        const Unprivileged nobody;
        ASSERT_TRUE(nobody.IsSo());
        for (const auto* name : {"out/mybb_posts0.txt", "out/mybb_posts2.txt", "out/mybb_posts4.txt"})
            folder.Write(name, "own");
        EXPECT_EQ(ErrorOf([&] { DeleteFiles(folder.Path("out"), u"mybb_posts*.txt"); }), 70);
    }
    EXPECT_EQ(folder.Files(), (Files8{"out/mybb_posts1.txt", "out/mybb_posts3.txt"}));
}

TEST(WriteWholeFile, IntoAFolderThatMayNotBeWrittenFailsAndKeepsTheOldFile) {
    const TemporaryFolder folder;
    folder.Write("closed/a.txt", "old");
    fs::permissions(folder.Native("closed"), fs::perms::owner_read | fs::perms::owner_exec |
                                                 fs::perms::others_read | fs::perms::others_exec);
    {
        const Unprivileged nobody;
        ASSERT_TRUE(nobody.IsSo());
        EXPECT_EQ(ErrorOf([&] { WriteWholeFile(folder.Path("closed/a.txt"), {"new"}); }), 3004);
        EXPECT_EQ(ErrorOf([&] { CopyFile(folder.Path("closed/a.txt"), folder.Path("closed/b.txt")); }), 70);
        EXPECT_EQ(ErrorOf([&] { MakeFolders(folder.Path("closed/b")); }), 70);
    }
    EXPECT_EQ(folder.Files(), (Files8{"closed/a.txt"}));
    EXPECT_EQ(folder.Read("closed/a.txt"), "old");
    fs::permissions(folder.Native("closed"), kEveryone);
}

TEST(WriteWholeFile, TakesTheLongestNameThatThereIs) {
    const TemporaryFolder folder;
    const std::string name = std::string(251, 'n') + ".txt";
    WriteWholeFile(folder.Path(name), {"text"});
    CopyFile(folder.Path(name), folder.Path(std::string(255, 'c')));
    EXPECT_EQ(folder.Files(), (Files8{std::string(255, 'c'), name}));
}

// A write that stops in the middle, for whoever runs the tests.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t size) {
        ::getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit lower{size, old_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &lower);
        handler_ = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, handler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  private:
    rlimit old_{};
    void (*handler_)(int) = SIG_DFL;
};

TEST(WriteWholeFile, LeavesTheOldFileWhenAWriteStopsInTheMiddle) {
    const TemporaryFolder folder;
    folder.Write("a.txt", "old");
    {
        const FileSizeLimit limit(1000);
        EXPECT_EQ(ErrorOf([&] {
                      WriteWholeFile(folder.Path("a.txt"), {"new", std::string(5000, 'x')});
                  }),
                  3004);
        EXPECT_EQ(ErrorOf([&] { WriteWholeFile(folder.Path("b.txt"), {std::string(5000, 'x')}); }), 3004);
    }
    EXPECT_EQ(folder.Files(), (Files8{"a.txt"}));
    EXPECT_EQ(folder.Read("a.txt"), "old");
}

TEST(CopyFile, LeavesTheOldFileWhenAWriteStopsInTheMiddle) {
    const TemporaryFolder folder;
    folder.Write("source", std::string(5000, 'x'));
    folder.Write("target", "old");
    {
        const FileSizeLimit limit(1000);
        EXPECT_NE(ErrorOf([&] { CopyFile(folder.Path("source"), folder.Path("target")); }), 0);
    }
    EXPECT_EQ(folder.Files(), (Files8{"source", "target"}));
    EXPECT_EQ(folder.Read("target"), "old");
}

class SmallDisk {
  public:
    SmallDisk() {
        folder_.MakeFolder("disk");
        isMounted_ = ::mount("tmpfs", Native().c_str(), "tmpfs", 0, "size=64k") == 0;
    }
    ~SmallDisk() {
        if (isMounted_) ::umount2(Native().c_str(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool IsThere() const { return isMounted_; }
    fs::path Native() const { return folder_.Native("disk"); }
    std::u16string Path(const std::string& name) const { return folder_.Path("disk/" + name); }
    const TemporaryFolder& Folder() const { return folder_; }

  private:
    TemporaryFolder folder_;
    bool isMounted_ = false;
};

TEST(FullDisk, AFileThatDoesNotFitFailsAndLeavesTheOldOne) {
    const SmallDisk disk;
    if (!disk.IsThere()) GTEST_SKIP() << "no disk can be mounted here";
    disk.Folder().Write("disk/a.txt", "old");
    disk.Folder().Write("big", std::string(200000, 'x'));
    EXPECT_EQ(ErrorOf([&] { WriteWholeFile(disk.Path("a.txt"), {std::string(200000, 'x')}); }), 3004);
    EXPECT_EQ(ErrorOf([&] { CopyFile(disk.Folder().Path("big"), disk.Path("a.txt")); }), 61);
    EXPECT_EQ(disk.Folder().Files("disk"), (Files8{"a.txt"}));
    EXPECT_EQ(disk.Folder().Read("disk/a.txt"), "old");
}

TEST(FullDisk, ALogThatDoesNotFitIsADiskFull) {
    const SmallDisk disk;
    if (!disk.IsThere()) GTEST_SKIP() << "no disk can be mounted here";
    TextFile log(disk.Path("Log.txt"), OpenMode::kWriting, TextFormat::kUnicode);
    EXPECT_EQ(ErrorOf([&] {
                  for (int line = 0; line < 100; ++line) log.WriteLine(std::u16string(1000, u'x'));
                  log.Close();
              }),
              61);
}

TEST(FullDisk, ATextFileTellsItWhenItIsClosed) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "this machine has no device that is always full";
    TextFile file(u"\\dev\\full", OpenMode::kAppending, TextFormat::kSystemDefault);
    file.WriteLine(u"short");
    EXPECT_EQ(ErrorOf([&] { file.Close(); }), 61);
}

TEST(TextStream, KeepsItsTextWhenSavingFails) {
    const TemporaryFolder folder;
    for (const auto charset : {u"utf-8", u"iso-2022-jp", u"iso-2022-kr"}) {
        TextStream stream(charset);
        stream.WriteLine(u"one");
        EXPECT_EQ(ErrorOf([&] { stream.SaveToFile(folder.Path("missing/a.txt")); }), 3004);
        stream.SaveToFile(folder.Path("a.txt"));
        const std::string head = std::u16string_view(charset) == u"iso-2022-kr" ? "\x1B$)C" : "";
        EXPECT_EQ(folder.Read("a.txt"), head + "one\r\n");
    }
}

class Zone {
  public:
    explicit Zone(const char* name) {
        if (const char* const old = std::getenv("TZ")) old_ = old;
        ::setenv("TZ", name, 1);
        ::tzset();
    }
    ~Zone() {
        if (old_.empty()) {
            ::unsetenv("TZ");
        } else {
            ::setenv("TZ", old_.c_str(), 1);
        }
        ::tzset();
    }
    Zone(const Zone&) = delete;
    Zone& operator=(const Zone&) = delete;

  private:
    std::string old_;
};

TEST(MomentText, IsDateAndTimeOfTheLocalClock) {
    {
        const Zone zone("UTC0");
        EXPECT_EQ(MomentText(1795198565), u"2026-11-20 18:16:05");
        EXPECT_EQ(MomentText(0), u"1970-01-01 00:00:00");
    }
    const Zone zone("EST5");
    EXPECT_EQ(MomentText(1795198565), u"2026-11-20 13:16:05");
}

}  // namespace
}  // namespace tessaly::platform
