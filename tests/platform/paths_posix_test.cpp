#include "platform/paths.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/NativeText.h"
#include "platform/files.h"
#include "tests/support/TemporaryFolder.h"

namespace fs = std::filesystem;

namespace tessaly::platform {
namespace {

using testing::TemporaryFolder;

TEST(PathText, BackslashesBecomeTheMachinesSeparators) {
    EXPECT_EQ(ToNative(u"\\srv\\discus\\12.html").native(), "/srv/discus/12.html");
    EXPECT_EQ(ToNative(u"/srv/discus\\discus\\messages\\12\\12.html").native(),
              "/srv/discus/discus/messages/12/12.html");
    EXPECT_EQ(ToNative(u"/srv/discus/\\x").native(), "/srv/discus//x");
    EXPECT_EQ(ToNative(u"").native(), "");
}

TEST(PathText, APathOfTheMachineIsToldWithBackslashes) {
    EXPECT_EQ(ToPathText("/srv/discus/12.html"), u"\\srv\\discus\\12.html");
    EXPECT_EQ(ToPathText("12.html"), u"12.html");
    EXPECT_EQ(ToPathText("/"), u"\\");
}

TEST(PathText, BlanksAndLettersBeyondASCIIComeThrough) {
    EXPECT_EQ(ToNative(u"\\a b\\M\u00E4rz\\\u0416\U0001F600").native(),
              "/a b/M\xC3\xA4rz/\xD0\x96\xF0\x9F\x98\x80");
    EXPECT_EQ(ToPathText("/a b/M\xC3\xA4rz/\xD0\x96\xF0\x9F\x98\x80"), u"\\a b\\M\u00E4rz\\\u0416\U0001F600");
}

TEST(PathText, BytesThatAreNoUtf8ComeBackAsTheyWere) {
    const std::string names[] = {"caf\xE9.html",
                                 "\xFF\xFE",
                                 "\xC3",
                                 "a\xC3(b",
                                 "\xE2\x82",
                                 "\xED\xA0\x80",
                                 "\xC0\x80",
                                 "\xEF\xBF\xBD and \xE9",
                                 "\xF0\x9F\x98\x80\xE9",
                                 "\x80\xF0\x9F\x98\x80",
                                 "\xED\xB2\x80"};
    for (const std::string& name : names) EXPECT_EQ(ToNative(ToPathText(name)).native(), name) << name;
}

TEST(PathText, AByteThatIsNoUtf8TravelsAsALoneSurrogate) {
    EXPECT_EQ(ToPathText("caf\xE9"), u"caf\xDCE9");
    EXPECT_EQ(ToPathText("\xEF\xBF\xBD"), u"\uFFFD");
}

TEST(PathText, NativeSeparatorsForOtherPrograms) {
    EXPECT_EQ(WithNativeSeparators(u"/srv/out\\mybb_posts1.txt"), u"/srv/out/mybb_posts1.txt");
    EXPECT_EQ(WithNativeSeparators(u""), u"");
}

TEST(AbsolutePathText, ARelativePathBeginsInTheWorkingFolder) {
    const std::u16string here = ToPathText(fs::current_path());
    EXPECT_EQ(AbsolutePathText("out"), here + u"\\out");
    EXPECT_EQ(AbsolutePathText("./a/./out"), here + u"\\a\\out");
    EXPECT_EQ(AbsolutePathText("/srv/out"), u"\\srv\\out");
    EXPECT_EQ(AbsolutePathText("/srv/a/../out"), u"\\srv\\out");
}

// The folder is going to be deleted: it must be the one that every other program takes the path for.
TEST(AbsolutePathText, BehindALinkTwoDotsLeadToTheFolderAboveItsTarget) {
    const TemporaryFolder folder;
    folder.MakeFolder("far/away");
    fs::create_directory_symlink(folder.Native("far/away"), folder.Native("link"));
    EXPECT_EQ(AbsolutePathText(folder.Native("link/../out")), folder.Path("far/out"));
    EXPECT_EQ(AbsolutePathText(folder.Native("link/out")), folder.Path("link/out"));
}

TEST(FindSource, AFileAsSpelledIsTakenFirst) {
    const TemporaryFolder folder;
    folder.Write("Users.txt", "upper");
    folder.Write("users.txt", "lower");
    EXPECT_EQ(FindSource(folder.Path("users.txt")), folder.Native("users.txt"));
    EXPECT_EQ(FindSource(folder.Path("Users.txt")), folder.Native("Users.txt"));
}

TEST(FindSource, AFileIsFoundWhenItsCaseDiffers) {
    const TemporaryFolder folder;
    folder.Write("users.txt", "x");
    EXPECT_EQ(FindSource(folder.Path("Users.txt")), folder.Native("users.txt"));
    EXPECT_EQ(FindSource(folder.Path("USERS.TXT")), folder.Native("users.txt"));
}

TEST(FindSource, FoldersAreFoundWhenTheirCaseDiffers) {
    const TemporaryFolder folder;
    folder.Write("Discus/Messages/12/12.HTML", "x");
    EXPECT_EQ(FindSource(folder.Path("discus/messages/12/12.html")),
              folder.Native("Discus/Messages/12/12.HTML"));
    EXPECT_EQ(FindSource(folder.Path("DISCUS/Messages")), folder.Native("Discus/Messages"));
}

TEST(FindSource, LettersBeyondASCIIAreFolded) {
    const TemporaryFolder folder;
    folder.Write("m\xC3\xA4rz.txt", "x");
    EXPECT_EQ(FindSource(folder.Path("M\xC3\x84RZ.txt")), folder.Native("m\xC3\xA4rz.txt"));
}

TEST(FindSource, WhatIsNotThereIsGivenAsSpelled) {
    const TemporaryFolder folder;
    EXPECT_EQ(FindSource(folder.Path("Users.txt")), folder.Native("Users.txt"));
    EXPECT_EQ(FindSource(folder.Path("a/Users.txt")), folder.Native("a/Users.txt"));
    EXPECT_EQ(FindSource(u""), fs::path());
}

TEST(FindSource, OfTwoThatDifferInCaseTheFirstByNameIsTaken) {
    const TemporaryFolder folder;
    folder.Write("uSers.txt", "");
    folder.Write("usErs.txt", "");
    EXPECT_EQ(FindSource(folder.Path("USERS.txt")), folder.Native("uSers.txt"));
}

TEST(FindSource, SeesAFileThatWasMadeAfterAnotherLook) {
    const TemporaryFolder folder;
    EXPECT_FALSE(FileExists(folder.Path("USERS.TXT")));
    folder.Write("users.txt", "x");
    EXPECT_TRUE(FileExists(folder.Path("USERS.TXT")));
    fs::remove(folder.Native("users.txt"));
    EXPECT_FALSE(FileExists(folder.Path("USERS.TXT")));
}

TEST(LiesWithin, AFileBelowOneOfTheFolders) {
    const TemporaryFolder folder;
    folder.Write("messages/12/12.html", "x");
    const std::vector<std::u16string> folders{u"", folder.Path("secure") + u"\\",
                                              folder.Path("messages") + u"\\"};
    EXPECT_TRUE(LiesWithin(folder.Native("messages/12/12.html"), folders));
    EXPECT_TRUE(LiesWithin(folder.Native("messages/12/../12/./12.html"), folders));
    EXPECT_FALSE(LiesWithin(folder.Native("messages/12/12.html"), {u"", folder.Path("secure")}));
    EXPECT_FALSE(LiesWithin(folder.Native("messages/12/12.html"), {}));
}

TEST(LiesWithin, TwoDotsDoNotLeadOut) {
    const TemporaryFolder folder;
    folder.Write("messages/12/12.html", "x");
    folder.Write("secret.txt", "x");
    folder.Write("messages2/secret.txt", "x");
    const std::vector<std::u16string> folders{folder.Path("messages") + u"\\"};
    EXPECT_FALSE(LiesWithin(folder.Native("messages/../secret.txt"), folders));
    EXPECT_FALSE(LiesWithin(folder.Native("messages/12/../../secret.txt"), folders));
    EXPECT_FALSE(LiesWithin(folder.Native("messages2/secret.txt"), folders));
}

TEST(LiesWithin, LinksDoNotLeadOut) {
    const TemporaryFolder folder;
    folder.Write("secret.txt", "x");
    folder.Write("far/away.txt", "x");
    folder.MakeFolder("messages");
    fs::create_symlink(folder.Native("secret.txt"), folder.Native("messages/file.txt"));
    fs::create_directory_symlink(folder.Native("far"), folder.Native("messages/folder"));
    const std::vector<std::u16string> folders{folder.Path("messages")};
    EXPECT_FALSE(LiesWithin(folder.Native("messages/file.txt"), folders));
    EXPECT_FALSE(LiesWithin(folder.Native("messages/folder/away.txt"), folders));
}

TEST(LiesWithin, LinksIntoAFolderAndWithinItAreFollowed) {
    const TemporaryFolder folder;
    folder.Write("messages/12/12.html", "x");
    fs::create_directory_symlink(folder.Native("messages"), folder.Native("entry"));
    fs::create_symlink(folder.Native("messages/12/12.html"), folder.Native("messages/link.html"));
    EXPECT_TRUE(LiesWithin(folder.Native("entry/12/12.html"), {folder.Path("messages")}));
    EXPECT_TRUE(LiesWithin(folder.Native("messages/12/12.html"), {folder.Path("entry")}));
    EXPECT_TRUE(LiesWithin(folder.Native("messages/link.html"), {folder.Path("messages")}));
}

TEST(LiesWithin, TheFolderItselfDoesNotLieWithin) {
    const TemporaryFolder folder;
    folder.MakeFolder("messages");
    EXPECT_FALSE(LiesWithin(folder.Native("messages"), {folder.Path("messages")}));
    EXPECT_FALSE(LiesWithin(folder.Native("messages"), {folder.Path("messages") + u"\\"}));
}

TEST(HomeFolder, IsWhatTheEnvironmentTells) {
    const char* const old = std::getenv("HOME");
    const std::string home = old == nullptr ? "" : old;
    ::setenv("HOME", "/home/anna", 1);
    EXPECT_EQ(HomeFolder(), u"\\home\\anna");
    ::unsetenv("HOME");
    EXPECT_NE(HomeFolder(), u"");
    if (old != nullptr) ::setenv("HOME", home.c_str(), 1);
}

TEST(ProgramFile, IsTheRunningProgram) {
    EXPECT_TRUE(ToNative(ProgramFile()).is_absolute());
    EXPECT_TRUE(FileExists(ProgramFile()));
}

}  // namespace
}  // namespace tessaly::platform
