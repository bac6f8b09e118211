#include "platform/files.h"

#include <gtest/gtest.h>

#include "platform/md5.h"
#include "tests/support/TemporaryFolder.h"

namespace fs = std::filesystem;

namespace tessaly::platform {
namespace {

using testing::TemporaryFolder;
using Names = std::vector<std::u16string>;
using Files8 = std::vector<std::string>;

template <typename Step>
int ErrorOf(Step&& step) {
    return IgnoringErrors(step);
}

// The texts that a refused delete shows.
struct Refusals {
    Protected kept;
    std::vector<std::u16string> messages;

    Refusals() {
        kept.showMessage = [this](std::u16string_view text) { messages.emplace_back(text); };
    }
};

TEST(FileExists, OfAFile) {
    const TemporaryFolder folder;
    folder.Write("a.txt", "");
    EXPECT_TRUE(FileExists(folder.Path("a.txt")));
    EXPECT_FALSE(FileExists(folder.Path("b.txt")));
    EXPECT_FALSE(FileExists(folder.Path("missing/a.txt")));
    EXPECT_FALSE(FileExists(folder.Path("a.txt/b.txt")));
    EXPECT_FALSE(FileExists(u""));
    EXPECT_FALSE(FileExists(folder.Path(std::string(5000, 'x'))));
}

TEST(FileExists, AFolderIsNoFile) {
    const TemporaryFolder folder;
    folder.MakeFolder("a.txt");
    EXPECT_FALSE(FileExists(folder.Path("a.txt")));
    EXPECT_FALSE(FileExists(folder.Path("a.txt") + u"\\"));
}

TEST(FileExists, IgnoresCaseWhereNothingStandsAsSpelled) {
    const TemporaryFolder folder;
    folder.Write("Discus/users.txt", "");
    EXPECT_TRUE(FileExists(folder.Path("discus/Users.txt")));
    EXPECT_FALSE(FileExists(folder.Path("discus/User.txt")));
}

TEST(FolderExists, TellsAFolderJustAsSpelled) {
    const TemporaryFolder folder;
    folder.MakeFolder("a/b");
    folder.Write("file", "");
    EXPECT_TRUE(FolderExists(folder.Path("a/b")));
    EXPECT_TRUE(FolderExists(folder.Path("a/b") + u"\\"));
    EXPECT_FALSE(FolderExists(folder.Path("file")));
    EXPECT_FALSE(FolderExists(folder.Path("c")));
    EXPECT_FALSE(FolderExists(u""));
}

TEST(ReadWholeFile, GivesAllBytes) {
    const TemporaryFolder folder;
    std::string bytes(
        "\xEF\xBB\xBF"
        "a\0b\r\n\x1A",
        9);
    for (int round = 0; round < 5; ++round) {
        folder.Write("a.bin", bytes);
        EXPECT_EQ(ReadWholeFile(folder.Path("a.bin")), bytes);
        EXPECT_EQ(FileLength(folder.Path("a.bin")), static_cast<std::int64_t>(bytes.size()));
        for (int doubling = 0; doubling < 4; ++doubling) bytes += bytes;
    }
    folder.Write("empty", "");
    EXPECT_EQ(ReadWholeFile(folder.Path("empty")), "");
}

TEST(ReadWholeFile, FindsAFileWhoseCaseDiffers) {
    const TemporaryFolder folder;
    folder.Write("Users.TXT", "x");
    EXPECT_EQ(ReadWholeFile(folder.Path("users.txt")), "x");
    EXPECT_EQ(FileLength(folder.Path("users.txt")), 1);
}

TEST(ReadWholeFile, OfWhatCannotBeOpenedFails) {
    const TemporaryFolder folder;
    folder.MakeFolder("folder");
    EXPECT_EQ(ErrorOf([&] { ReadWholeFile(folder.Path("missing")); }), 3002);
    EXPECT_EQ(ErrorOf([&] { ReadWholeFile(folder.Path("missing/missing")); }), 3002);
    EXPECT_EQ(ErrorOf([&] { ReadWholeFile(folder.Path("folder")); }), 3002);
    EXPECT_EQ(ErrorOf([] { ReadWholeFile(u""); }), 3002);
    EXPECT_EQ(ErrorOf([&] { FileLength(folder.Path("missing")); }), 53);
}

TEST(WriteWholeFile, WritesThePiecesOneBehindTheOther) {
    const TemporaryFolder folder;
    WriteWholeFile(folder.Path("a.txt"), {"one", "", "two\r\n", std::string("\0", 1)});
    EXPECT_EQ(folder.Read("a.txt"), std::string("onetwo\r\n\0", 9));
    WriteWholeFile(folder.Path("empty"), {});
    EXPECT_EQ(folder.Read("empty"), "");
}

TEST(WriteWholeFile, ReplacesAnOldFileAndLeavesNothingBesideIt) {
    const TemporaryFolder folder;
    folder.Write("a.txt", "a longer text than the new one");
    WriteWholeFile(folder.Path("a.txt"), {"new"});
    EXPECT_EQ(folder.Read("a.txt"), "new");
    EXPECT_EQ(folder.Files(), (Files8{"a.txt"}));
}

TEST(WriteWholeFile, LeavesAloneWhatAnotherRunIsWriting) {
    const TemporaryFolder folder;
    folder.Write("a.txt.part", "another run's");
    folder.Write("tessaly-0.part", "another run's");
    WriteWholeFile(folder.Path("a.txt"), {"own"});
    EXPECT_EQ(folder.Read("a.txt"), "own");
    EXPECT_EQ(folder.Read("a.txt.part"), "another run's");
    EXPECT_EQ(folder.Read("tessaly-0.part"), "another run's");
    EXPECT_EQ(folder.Files().size(), 3u);
}

TEST(WriteWholeFile, OntoAFolderFailsAndLeavesItAsItWas) {
    const TemporaryFolder folder;
    folder.Write("a.txt/inside", "x");
    EXPECT_EQ(ErrorOf([&] { WriteWholeFile(folder.Path("a.txt"), {"new"}); }), 3004);
    EXPECT_EQ(folder.Files(), (Files8{"a.txt/inside"}));
}

TEST(WriteWholeFile, IntoAMissingFolderFails) {
    const TemporaryFolder folder;
    EXPECT_EQ(ErrorOf([&] { WriteWholeFile(folder.Path("missing/a.txt"), {"new"}); }), 3004);
    EXPECT_EQ(folder.Files(), Files8{});
    EXPECT_EQ(ErrorOf([] { WriteWholeFile(u"", {"new"}); }), 3004);
}

TEST(CopyFile, CopiesOverWhateverStandsAtTheTarget) {
    const TemporaryFolder folder;
    folder.Write("source.bin", std::string("a\0b", 3));
    folder.Write("target.bin", "something longer");
    CopyFile(folder.Path("source.bin"), folder.Path("target.bin"));
    CopyFile(folder.Path("source.bin"), folder.Path("other.bin"));
    EXPECT_EQ(folder.Read("target.bin"), std::string("a\0b", 3));
    EXPECT_EQ(folder.Read("other.bin"), std::string("a\0b", 3));
    EXPECT_EQ(folder.Files(), (Files8{"other.bin", "source.bin", "target.bin"}));
}

TEST(CopyFile, FindsASourceWhoseCaseDiffers) {
    const TemporaryFolder folder;
    folder.Write("Photo.JPG", "x");
    CopyFile(folder.Path("photo.jpg"), folder.Path("1_A"));
    EXPECT_EQ(folder.Read("1_A"), "x");
}

TEST(CopyFile, WhatCannotBeCopiedFailsAndLeavesNothing) {
    const TemporaryFolder folder;
    folder.Write("source", "x");
    folder.MakeFolder("folder");
    EXPECT_EQ(ErrorOf([&] { CopyFile(folder.Path("missing"), folder.Path("target")); }), 53);
    EXPECT_EQ(ErrorOf([&] { CopyFile(folder.Path("source"), folder.Path("none/target")); }), 76);
    EXPECT_NE(ErrorOf([&] { CopyFile(folder.Path("folder"), folder.Path("target")); }), 0);
    EXPECT_NE(ErrorOf([&] { CopyFile(folder.Path("source"), folder.Path("folder")); }), 0);
    EXPECT_EQ(folder.Files(), (Files8{"source"}));
    EXPECT_TRUE(fs::is_directory(folder.Native("folder")));
}

TEST(MakeFolders, MakesEveryMissingParent) {
    const TemporaryFolder folder;
    MakeFolders(folder.Path("a/b/c") + u"\\");
    EXPECT_TRUE(fs::is_directory(folder.Native("a/b/c")));
    MakeFolders(folder.Path("a/b/d"));
    EXPECT_TRUE(fs::is_directory(folder.Native("a/b/d")));
}

TEST(MakeFolders, OfAFolderThatIsThereDoesNothing) {
    const TemporaryFolder folder;
    folder.Write("a/file", "x");
    MakeFolders(folder.Path("a"));
    MakeFolders(folder.Path("a") + u"\\");
    EXPECT_EQ(folder.Files(), (Files8{"a/file"}));
}

TEST(MakeFolders, WhereAFileStandsInTheWayFails) {
    const TemporaryFolder folder;
    folder.Write("a", "x");
    EXPECT_EQ(ErrorOf([&] { MakeFolders(folder.Path("a")); }), 76);
    EXPECT_EQ(ErrorOf([&] { MakeFolders(folder.Path("a") + u"\\"); }), 76);
    EXPECT_EQ(ErrorOf([&] { MakeFolders(folder.Path("a/b/c")); }), 76);
    EXPECT_NE(ErrorOf([] { MakeFolders(u""); }), 0);
    EXPECT_EQ(folder.Read("a"), "x");
}

TEST(MakeFolders, FailsForWhatStandsInTheWayAsIsForetold) {
    const TemporaryFolder folder;
    folder.Write("a/file", "x");
    for (const std::u16string& path :
         {folder.Path("a/file"), folder.Path("a/file") + u"\\", folder.Path("a/file/b/c")}) {
        EXPECT_EQ(ObstacleToFolders(path), 76);
        EXPECT_EQ(ErrorOf([&] { MakeFolders(path); }), 76);
    }
    const std::u16string tooLong = folder.Path("a/" + std::string(256, 'x') + "/b");
    EXPECT_EQ(ObstacleToFolders(tooLong), 75);
    for (const std::u16string& path :
         {folder.Path("a"), folder.Path("a/b/c"), folder.Path("a/" + std::string(255, 'x') + "/b")}) {
        EXPECT_EQ(ObstacleToFolders(path), 0);
        EXPECT_EQ(ErrorOf([&] { MakeFolders(path); }), 0);
    }
    EXPECT_EQ(ObstacleToFolders(u""), 0);
}

TEST(Listing, NamesComeInTheirOrderIgnoringCase) {
    const TemporaryFolder folder;
    for (const auto* name : {"b.txt", "A.txt", "a2.txt", "C.txt", "10.txt", "9.txt", "_.txt", "\xC3\xA4.txt"})
        folder.Write(name, "");
    folder.MakeFolder("Z");
    folder.MakeFolder("y");
    EXPECT_EQ(Files(folder.Path()),
              (Names{u"10.txt", u"9.txt", u"_.txt", u"A.txt", u"a2.txt", u"b.txt", u"C.txt", u"\u00E4.txt"}));
    EXPECT_EQ(Subfolders(folder.Path()), (Names{u"y", u"Z"}));
}

TEST(Listing, OfAFolderThatIsNotThereFails) {
    const TemporaryFolder folder;
    folder.Write("file", "");
    EXPECT_EQ(ErrorOf([&] { Files(folder.Path("missing")); }), 76);
    EXPECT_EQ(ErrorOf([&] { Subfolders(folder.Path("missing")); }), 76);
    EXPECT_EQ(ErrorOf([&] { Files(folder.Path("file")); }), 76);
    EXPECT_EQ(ErrorOf([] { Files(u""); }), 76);
}

TEST(Listing, OfAnEmptyFolderIsEmpty) {
    const TemporaryFolder folder;
    EXPECT_EQ(Files(folder.Path()), Names{});
    EXPECT_EQ(Subfolders(folder.Path() + u"\\"), Names{});
}

TEST(CountFiles, CountsFilesOfAnEndingAtAnyDepth) {
    const TemporaryFolder folder;
    folder.Write("a.html", "");
    folder.Write("12/12.html", "");
    folder.Write("12/34/5.html", "");
    folder.Write("12/34/5.htm", "");
    folder.MakeFolder("folder.html");
    EXPECT_EQ(CountFiles(folder.Path(), u".html"), 3);
    EXPECT_EQ(CountFiles(folder.Path("missing"), u".html"), 0);
    EXPECT_EQ(CountFiles(u"", u".html"), 0);
}

TEST(DeleteFolder, DeletesAFolderWithAllItHolds) {
    const TemporaryFolder folder;
    folder.Write("out/a/b/c.txt", "x");
    folder.Write("out/d.txt", "x");
    folder.Write("other/e.txt", "x");
    Refusals refusals;
    DeleteFolder(folder.Path("out"), refusals.kept);
    EXPECT_EQ(folder.Files(), (Files8{"other/e.txt"}));
    EXPECT_FALSE(folder.Exists("out"));
    EXPECT_TRUE(refusals.messages.empty());
}

TEST(DeleteFolder, ASeparatorAtTheEndChangesNothing) {
    const TemporaryFolder folder;
    folder.Write("out/a.txt", "x");
    Refusals refusals;
    DeleteFolder(folder.Path("out") + u"\\", refusals.kept);
    EXPECT_FALSE(folder.Exists("out"));
}

TEST(DeleteFolder, ReadOnlyFilesGoToo) {
    const TemporaryFolder folder;
    folder.Write("out/a.txt", "x");
    fs::permissions(folder.Native("out/a.txt"), fs::perms::owner_read);
    Refusals refusals;
    DeleteFolder(folder.Path("out"), refusals.kept);
    EXPECT_FALSE(folder.Exists("out"));
}

TEST(DeleteFolder, AFolderThatIsNotThereIsAPathNotFound) {
    const TemporaryFolder folder;
    Refusals refusals;
    EXPECT_EQ(ErrorOf([&] { DeleteFolder(folder.Path("out"), refusals.kept); }), 76);
    EXPECT_TRUE(refusals.messages.empty());
}

TEST(DeleteFolder, AFileIsNoFolderAndStays) {
    const TemporaryFolder folder;
    folder.Write("thesis.doc", "x");
    Refusals refusals;
    EXPECT_EQ(ErrorOf([&] { DeleteFolder(folder.Path("thesis.doc"), refusals.kept); }), 76);
    EXPECT_EQ(folder.Read("thesis.doc"), "x");
}

TEST(DeleteFolder, WhatHoldsASourceFolderIsRefusedWithFolderAndReason) {
    const TemporaryFolder folder;
    folder.Write("board/messages/12.html", "x");
    Refusals refusals;
    refusals.kept.sourceFolders = {u"", folder.Path("board/messages") + u"\\"};
    EXPECT_EQ(ErrorOf([&] { DeleteFolder(folder.Path("board"), refusals.kept); }), 70);
    EXPECT_EQ(ErrorOf([&] { DeleteFolder(folder.Path("board/messages") + u"\\", refusals.kept); }), 70);
    ASSERT_EQ(refusals.messages.size(), 2u);
    EXPECT_TRUE(
        refusals.messages[0].starts_with(u"The folder " + folder.Path("board") + u" is not deleted: "));
    EXPECT_NE(refusals.messages[0].find(u"it is or holds a folder of the Discus copy"), std::u16string::npos);
    EXPECT_EQ(folder.Read("board/messages/12.html"), "x");
}

TEST(DeleteFolder, HomeAndProgramAreRefused) {
    const TemporaryFolder folder;
    folder.Write("home/anna/a.txt", "x");
    folder.Write("program/tessaly", "x");
    Refusals refusals;
    refusals.kept.homeFolder = folder.Path("home/anna");
    refusals.kept.programFolder = folder.Path("program");
    EXPECT_EQ(ErrorOf([&] { DeleteFolder(folder.Path("home"), refusals.kept); }), 70);
    EXPECT_EQ(ErrorOf([&] { DeleteFolder(folder.Path("program"), refusals.kept); }), 70);
    EXPECT_EQ(ErrorOf([&] { DeleteFolder(folder.Path("program") + u"\\.", refusals.kept); }), 70);
    EXPECT_EQ(ErrorOf([&] { DeleteFolder(folder.Path("x/../home"), refusals.kept); }), 70);
    EXPECT_EQ(refusals.messages.size(), 4u);
    EXPECT_EQ(folder.Files(), (Files8{"home/anna/a.txt", "program/tessaly"}));
}

// No test calls a delete with a text that a wrong guard would let through to something real: these name
// nothing, or the root, which only a guard that is wrong twice could let through.
TEST(DeleteFolder, ATextThatNamesNothingIsRefused) {
    Refusals refusals;
    EXPECT_EQ(ErrorOf([&] { DeleteFolder(u"", refusals.kept); }), 70);
    EXPECT_EQ(ErrorOf([&] { DeleteFolder(u"   ", refusals.kept); }), 70);
    ASSERT_EQ(refusals.messages.size(), 2u);
    EXPECT_EQ(refusals.messages[0], u"The folder  is not deleted: no folder is named");
    EXPECT_EQ(refusals.messages[1], u"The folder     is not deleted: no folder is named");
}

TEST(DeleteFiles, DeletesOneFileByItsName) {
    const TemporaryFolder folder;
    folder.Write("Log.txt", "");
    folder.Write("LogError.txt", "");
    folder.Write("below/Log.txt", "");
    DeleteFiles(folder.Path(), u"Log.txt");
    EXPECT_EQ(folder.Files(), (Files8{"LogError.txt", "below/Log.txt"}));
}

TEST(DeleteFiles, AStarStandsForAnyText) {
    const TemporaryFolder folder;
    for (const auto* name : {"mybb_posts1.txt", "mybb_posts12.txt", "mybb_posts.txt", "mybb_posts1.sql",
                             "my_mybb_posts1.txt", "mybb_threads1.txt", "below/mybb_posts1.txt"})
        folder.Write(name, "");
    DeleteFiles(folder.Path() + u"\\", u"mybb_posts*.txt");
    EXPECT_EQ(folder.Files(), (Files8{"below/mybb_posts1.txt", "my_mybb_posts1.txt", "mybb_posts1.sql",
                                      "mybb_threads1.txt"}));
}

TEST(DeleteFiles, HeadAndTailOfAPatternDoNotShareCharacters) {
    const TemporaryFolder folder;
    folder.Write("aba", "");
    folder.Write("ababa", "");
    DeleteFiles(folder.Path(), u"ab*ba");
    EXPECT_EQ(folder.Files(), (Files8{"aba"}));
}

TEST(DeleteFiles, FoldersStay) {
    const TemporaryFolder folder;
    folder.Write("mybb_posts1.txt/inside.txt", "");
    DeleteFiles(folder.Path(), u"mybb_posts*.txt");
    EXPECT_EQ(folder.Files(), (Files8{"mybb_posts1.txt/inside.txt"}));
}

TEST(DeleteFiles, WhatIsNotThereIsNoFailure) {
    const TemporaryFolder folder;
    EXPECT_EQ(ErrorOf([&] { DeleteFiles(folder.Path(), u"Log.txt"); }), 0);
    EXPECT_EQ(ErrorOf([&] { DeleteFiles(folder.Path(), u"mybb_posts*.txt"); }), 0);
    EXPECT_EQ(ErrorOf([&] { DeleteFiles(folder.Path("missing"), u"Log.txt"); }), 76);
}

TEST(Md5, OfTheExamplesOfItsDefinition) {
    const TemporaryFolder folder;
    const struct {
        std::string text;
        std::string_view digest;
    } all[] = {
        {"", "d41d8cd98f00b204e9800998ecf8427e"},
        {"a", "0cc175b9c0f1b6a831c399e269772661"},
        {"abc", "900150983cd24fb0d6963f7d28e17f72"},
        {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
        {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
         "d174ab98d277d9f5a5611c2c9f419d9f"},
        {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
         "57edf4a22be3c955ac49da2e2107b67a"},
        {std::string(1000000, 'a'), "7707d6ae4e027c70eea2a935c2296f21"},
    };
    for (const auto& [text, digest] : all) {
        folder.Write("File.bin", text);
        std::string digits;
        for (const char byte : Md5OfFile(folder.Path("file.bin"))) {
            digits += "0123456789abcdef"[static_cast<unsigned char>(byte) >> 4];
            digits += "0123456789abcdef"[static_cast<unsigned char>(byte) & 15];
        }
        EXPECT_EQ(digits, digest);
    }
}

TEST(Md5, OfWhatCannotBeReadFails) {
    const TemporaryFolder folder;
    EXPECT_EQ(ErrorOf([&] { Md5OfFile(folder.Path("missing")); }), 53);
    EXPECT_EQ(ErrorOf([&] { Md5OfFile(folder.Path()); }), 75);
}

}  // namespace
}  // namespace tessaly::platform
