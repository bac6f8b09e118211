#include "control/ToolboxLibrary.h"

#include <gtest/gtest.h>

#include <regex>

#include "tests/support/TemporaryFolder.h"
#include "text/RunTimeError.h"

namespace tessaly {
namespace {

using testing::TemporaryFolder;

bool Matches(const std::u16string& text, const std::string& pattern) {
    return std::regex_match(std::string(text.begin(), text.end()), std::regex(pattern));
}

TEST(AddBackslash, AddsOneWhereNoneIs) {
    EXPECT_EQ(ToolboxLibrary::AddBackslash(u"C:\\Discusware"), u"C:\\Discusware\\");
    EXPECT_EQ(ToolboxLibrary::AddBackslash(u"C:\\Discusware\\"), u"C:\\Discusware\\");
}

TEST(AddBackslash, LooksAtTheLastCharacterAlone) {
    EXPECT_EQ(ToolboxLibrary::AddBackslash(u""), u"\\");
    EXPECT_EQ(ToolboxLibrary::AddBackslash(u"/srv/discus/"), u"/srv/discus/\\");
    EXPECT_EQ(ToolboxLibrary::AddBackslash(u"a\\\\"), u"a\\\\");
    EXPECT_EQ(ToolboxLibrary::AddBackslash(u"a\\ "), u"a\\ \\");
}

TEST(Timer, GivesMomentsAndTheTimeBetween) {
    ToolboxLibrary toolbox;
    const std::u16string start = toolbox.StartTimer();
    const std::u16string stop = toolbox.StopTimer();
    EXPECT_TRUE(Matches(start, R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)"));
    EXPECT_TRUE(Matches(stop, R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)"));
    EXPECT_TRUE(Matches(toolbox.ElapsedTime(start, stop), R"(\d+:\d\d:\d\d)"));
}

TEST(Timer, GivesNoTimeForARunThatNeverStartedIt) {
    ToolboxLibrary toolbox;
    const std::u16string stop = toolbox.StopTimer();
    EXPECT_EQ(toolbox.ElapsedTime(u"", stop), u"");
}

TEST(IniValues, AreTheDefaultUntilTheyAreWritten) {
    const TemporaryFolder folder;
    ToolboxLibrary toolbox;
    const std::u16string file = folder.Path("new.ini");
    EXPECT_EQ(toolbox.ReadIniValue(u"Settings", u"Key", u"the default", file), u"the default");
    EXPECT_FALSE(folder.Exists("new.ini"));
    toolbox.WriteIniValue(u"Settings", u"Key", u"value", file);
    EXPECT_EQ(toolbox.ReadIniValue(u"Settings", u"Key", u"the default", file), u"value");
    EXPECT_EQ(toolbox.ReadIniValue(u"Settings", u"Other", u"the default", file), u"the default");
    EXPECT_EQ(toolbox.ReadIniValue(u"Elsewhere", u"Key", u"the default", file), u"the default");
}

TEST(IniValues, ReplaceTheOldOneAndKeepTheRest) {
    const TemporaryFolder folder;
    folder.Write("my.ini", "[Other]\r\nKey=stays\r\n[Settings]\r\nKey=old\r\nMore=stays too\r\n");
    ToolboxLibrary toolbox;
    const std::u16string file = folder.Path("my.ini");
    toolbox.WriteIniValue(u"Settings", u"Key", u"new", file);
    EXPECT_EQ(toolbox.ReadIniValue(u"Settings", u"Key", u"", file), u"new");
    EXPECT_EQ(toolbox.ReadIniValue(u"Settings", u"More", u"", file), u"stays too");
    EXPECT_EQ(toolbox.ReadIniValue(u"Other", u"Key", u"", file), u"stays");
}

TEST(IniValues, RaiseWhereTheFileCannotBeWritten) {
    const TemporaryFolder folder;
    ToolboxLibrary toolbox;
    const std::u16string file = folder.Path("nowhere") + u"\\my.ini";
    EXPECT_EQ(IgnoringErrors([&] { toolbox.WriteIniValue(u"Settings", u"Key", u"x", file); }), 75);
}

TEST(MakeFolderPath, MakesAllLevelsAndPassesOverAnExistingFolder) {
    const TemporaryFolder folder;
    ToolboxLibrary::MakeFolderPath(folder.Path("a/b/c"));
    EXPECT_TRUE(folder.Exists("a/b/c"));
    ToolboxLibrary::MakeFolderPath(folder.Path("a/b/c"));
    ToolboxLibrary::MakeFolderPath(folder.Path("a/d") + u"\\");
    EXPECT_TRUE(folder.Exists("a/d"));
    ToolboxLibrary::MakeFolderPath(folder.Path("a/d") + u"\\");
    EXPECT_TRUE(folder.Exists("a/d"));
}

TEST(BrowseForFolder, GivesNothingWhenTheOperatorBacksOutOrNoOneIsThere) {
    ToolboxLibrary toolbox;
    EXPECT_EQ(toolbox.BrowseForFolder(u"C:\\start"), u"");
    toolbox.PickFolder = [](std::u16string_view) { return std::u16string(); };
    EXPECT_EQ(toolbox.BrowseForFolder(u"C:\\start"), u"");
}

TEST(BrowseForFolder, OpensAtTheStartFolder) {
    ToolboxLibrary toolbox;
    toolbox.PickFolder = [](std::u16string_view start) { return std::u16string(start) + u"\\picked"; };
    EXPECT_EQ(toolbox.BrowseForFolder(u"C:\\start"), u"C:\\start\\picked");
}

TEST(FileExists, IsFalseForAFolderAndForNothing) {
    const TemporaryFolder folder;
    folder.Write("file.txt", "x");
    EXPECT_TRUE(ToolboxLibrary::FileExists(folder.Path("file.txt")));
    EXPECT_FALSE(ToolboxLibrary::FileExists(folder.Path()));
    EXPECT_FALSE(ToolboxLibrary::FileExists(folder.Path("other.txt")));
    EXPECT_FALSE(ToolboxLibrary::FileExists(u""));
}

TEST(FormHooks, MayBeCalledInAnyOrderAndAnyNumberOfTimes) {
    ToolboxLibrary toolbox;
    toolbox.FormWaitEnd();
    toolbox.FormWaitBegin();
    std::u16string calls;
    toolbox.WaitEnded = [&calls] { calls += u'e'; };
    toolbox.WaitBegun = [&calls] { calls += u'b'; };
    toolbox.FormPrepared = [&calls] { calls += u'p'; };
    toolbox.FormWaitEnd();
    toolbox.FormWaitEnd();
    toolbox.FormWaitBegin();
    toolbox.PrepareForm();
    EXPECT_EQ(calls, u"eebp");
}

TEST(KeepResponsive, CallsOutEachTimeWithAnIntervalOf0) {
    ToolboxLibrary toolbox;
    toolbox.EventInterval = 0;
    int calls = 0;
    toolbox.HandleEvents = [&calls] { ++calls; };
    for (int call = 0; call < 5; ++call) toolbox.KeepResponsive();
    EXPECT_EQ(calls, 5);
}

TEST(KeepResponsive, DoesNothingWhenNoOneListens) {
    ToolboxLibrary toolbox;
    toolbox.EventInterval = 0;
    toolbox.KeepResponsive();
    EXPECT_TRUE(toolbox.RecordedErrors.empty());
}

TEST(RecordErrorText, KeepsTheTextsOldestFirst) {
    ToolboxLibrary toolbox;
    toolbox.RecordErrorText(u"one");
    toolbox.RecordErrorText(u"two");
    EXPECT_EQ(toolbox.RecordedErrors, (std::vector<std::u16string>{u"one", u"two"}));
}

}  // namespace
}  // namespace tessaly
