#include <gtest/gtest.h>

#include "platform/files.h"
#include "platform/md5.h"
#include "tests/support/TemporaryFolder.h"

namespace tessaly::platform {
namespace {

using testing::TemporaryFolder;

Protected NothingProtected() {
    return {{}, {}, {}, [](std::u16string_view text) { ADD_FAILURE() << text.size() << " characters"; }};
}

// Six steps of 60 characters, more than the 260 that old system calls take.
std::u16string DeepFolder(const TemporaryFolder& folder) {
    std::u16string deep = folder.Path("top");
    for (int step = 0; step < 6; ++step) deep += u"\\" + std::u16string(58, u'a') + u"\u00E4\u4E2D";
    return deep;
}

TEST(LongPaths, AFileDeepDownIsWrittenReadCopiedListedAndCounted) {
    const TemporaryFolder folder;
    const std::u16string deep = DeepFolder(folder);
    MakeFolders(deep);
    WriteWholeFile(deep + u"\\one.html", {"a", "bc"});
    CopyFile(deep + u"\\one.html", deep + u"\\two.html");

    EXPECT_TRUE(FolderExists(deep));
    EXPECT_TRUE(FileExists(deep + u"\\one.html"));
    EXPECT_EQ(ReadWholeFile(deep + u"\\two.html"), "abc");
    EXPECT_EQ(FileLength(deep + u"\\two.html"), 3);
    EXPECT_EQ(Files(deep), (std::vector<std::u16string>{u"one.html", u"two.html"}));
    EXPECT_EQ(CountFiles(folder.Path("top"), u".html"), 2);
    // The MD5 of "abc" that RFC 1321 gives.
    EXPECT_EQ(Md5OfFile(deep + u"\\one.html"),
              "\x90\x01\x50\x98\x3C\xD2\x4F\xB0\xD6\x96\x3F\x7D\x28\xE1\x7F\x72");
}

TEST(FolderPaths, MayEndWithABackslash) {
    const TemporaryFolder folder;
    MakeFolders(folder.Path("top") + u"\\");
    folder.Write("top/one.html", "a");
    const std::u16string path = folder.Path("top") + u"\\";

    EXPECT_TRUE(FolderExists(path));
    EXPECT_EQ(Files(path), (std::vector<std::u16string>{u"one.html"}));
    EXPECT_EQ(CountFiles(path, u".html"), 1);
    DeleteFolder(path, NothingProtected());
    EXPECT_FALSE(folder.Exists("top"));
}

TEST(LongPaths, AFileDeepDownIsFoundWithinItsFolder) {
    const TemporaryFolder folder;
    const std::u16string deep = DeepFolder(folder);
    MakeFolders(deep);
    WriteWholeFile(deep + u"\\one.html", {"a"});

    EXPECT_TRUE(FileExistsWithin(deep + u"\\one.html", {folder.Path("top")}));
    EXPECT_FALSE(FileExistsWithin(deep + u"\\one.html", {folder.Path("other")}));
}

TEST(LongPaths, AFolderGoesWithFilesDeepDown) {
    const TemporaryFolder folder;
    const std::u16string deep = DeepFolder(folder);
    MakeFolders(deep);
    WriteWholeFile(deep + u"\\one.html", {"a"});
    DeleteFolder(folder.Path("top"), NothingProtected());

    EXPECT_FALSE(FolderExists(folder.Path("top")));
}

TEST(ReadOnlyFiles, GoWithTheirFolderAndByTheirName) {
    const TemporaryFolder folder;
    folder.Write("top/one.txt", "a");
    folder.Write("top/two.txt", "a");
    for (const char* const name : {"top/one.txt", "top/two.txt"}) {
        std::filesystem::permissions(folder.Native(name), std::filesystem::perms::owner_read);
    }
    DeleteFiles(folder.Path("top"), u"one.txt");
    EXPECT_FALSE(folder.Exists("top/one.txt"));
    DeleteFolder(folder.Path("top"), NothingProtected());
    EXPECT_FALSE(folder.Exists("top"));
}

TEST(ReadOnlyFiles, AreReplacedByAWholeFile) {
    const TemporaryFolder folder;
    folder.Write("one.txt", "old");
    std::filesystem::permissions(folder.Native("one.txt"), std::filesystem::perms::owner_read);
    WriteWholeFile(folder.Path("one.txt"), {"new"});

    EXPECT_EQ(folder.Read("one.txt"), "new");
}

}  // namespace
}  // namespace tessaly::platform
