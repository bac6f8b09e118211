#include "control/Settings.h"

#include <gtest/gtest.h>

#include "control/SetupFolderLocations.h"
#include "control/cmdConvert.h"
#include "tests/support/Program.h"
#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

using testing::Program;
using testing::SettingIn;
using testing::TestBoard;

constexpr const char* kIni = "program/tessaly-test.ini";

int NumberOfErrorIn(void (*step)(ConversionState&), ConversionState& state) {
    return IgnoringErrors([&] { step(state); });
}

TEST(FirstStart, ShowsEveryDefault) {
    Program program;
    Form_Load(program.state);
    const ConversionState& state = program.state;
    EXPECT_EQ(state.txtDiscusWebsite.Text, u"");
    EXPECT_EQ(state.txtmybbForumAddr.Text, u"");
    EXPECT_EQ(state.txtSplitMBSize.Text, u"50");
    EXPECT_EQ(state.txtDefaultAdmin.Text, u"");
    EXPECT_EQ(state.txtDefaultUsers.Text, u"0");
    EXPECT_EQ(state.txtDefaultGroups.Text, u"7");
    EXPECT_EQ(state.txtmybbOutputFolder.Text, u"C:\\Discusware\\mybb\\Output\\");
    EXPECT_EQ(state.cboCharset.Text, u"utf-8");
    EXPECT_EQ(state.chkShowProgress.Value, 1);
    EXPECT_EQ(state.chkLogProgress.Value, 1);
    EXPECT_EQ(state.chkCreateAttachments.Value, 1);
    EXPECT_EQ(state.chkCreateHiddenTopics.Value, 1);
    EXPECT_EQ(state.chkCreateRedirectionFiles.Value, 1);
    EXPECT_EQ(state.chkFindDiscusSpecialCharacters.Value, 1);
    EXPECT_EQ(state.txtDiscusRootFolder.Text, u"C:\\Discusware\\");
    EXPECT_EQ(state.txtDiscusMessageFolder.Text, u"C:\\Discusware\\discus\\messages\\");
    EXPECT_EQ(state.txtDiscusSecureMessageFolder.Text, u"C:\\Discusware\\discus_admin_nnnnnnnnnn\\secure\\");
    EXPECT_EQ(state.txtDiscusMainFolder.Text, u"C:\\Discusware\\discus_admin_nnnnnnnnnn\\");
    EXPECT_EQ(state.txtmybbAttachmentsFolder.Text, u"C:\\Discusware\\mybb\\Output\\Attachments\\");
    EXPECT_TRUE(program.messages.empty());
}

TEST(FirstStart, FillsTheVariablesBesideTheFields) {
    Program program;
    Form_Load(program.state);
    const ConversionState& state = program.state;
    EXPECT_EQ(state.DefaultUserCount, 0);
    EXPECT_EQ(state.DefaultGroupCount, 7);
    EXPECT_TRUE(state.optCreateAttachments);
    EXPECT_TRUE(state.optCreateHiddenTopics);
    EXPECT_TRUE(state.optCreateRedirectionFiles);
    EXPECT_TRUE(state.optFindDiscusSpecialCharacters);
    EXPECT_TRUE(state.optDisplay);
    EXPECT_TRUE(state.optLog);
    EXPECT_EQ(state.DiscusRootFolder, u"C:\\Discusware\\");
    EXPECT_EQ(state.DiscusMessageFolder, u"C:\\Discusware\\discus\\messages\\");
    EXPECT_EQ(state.DiscusSecureMessageFolder, u"C:\\Discusware\\discus_admin_nnnnnnnnnn\\secure\\");
    EXPECT_EQ(state.DiscusMainFolder, u"C:\\Discusware\\discus_admin_nnnnnnnnnn\\");
    EXPECT_EQ(state.mybbOutputFolder, u"C:\\Discusware\\mybb\\Output\\");
    EXPECT_EQ(state.mybbAttachmentsFolder, u"C:\\Discusware\\mybb\\Output\\Attachments\\");
    EXPECT_EQ(state.mybbRedirectFolder, u"C:\\Discusware\\mybb\\Output\\redirect\\discus\\messages\\");
    EXPECT_EQ(state.Charset, u"");
    EXPECT_EQ(state.DiscusWebsite, u"");
    EXPECT_EQ(state.DefaultAdmin, u"");
}

TEST(FirstStart, HoldsMegabytesInTheLimitUntilARun) {
    Program program;
    Form_Load(program.state);
    EXPECT_EQ(program.state.SplitMBSize, 50);
}

TEST(FirstStart, WritesTheTwoBoxesThatTheLoadTicksAndNoOtherKey) {
    Program program;
    Form_Load(program.state);
    EXPECT_EQ(program.Setting("Display"), "1");
    EXPECT_EQ(program.Setting("Log"), "1");
    for (const auto* const key :
         {"DiscusWebsite", "mybbForumAddr", "SplitMBSize", "mybb_Admin", "mybb_Users", "mybb_Groups",
          "mybb_OutputFolder", "Charset", "CreateAttachments", "CreateHiddenTopics", "CreateRedirectionFiles",
          "FindDiscusSpecialCharacters", "DiscusRootFolder", "DiscusMessageFolder",
          "DiscusSecureMessageFolder", "DiscusMainFolder", "mybb_AttachmentsFolder"})
        EXPECT_EQ(program.Setting(key), std::nullopt) << key;
}

TEST(FirstStart, NamesTheSettingsFileAfterTheProgram) {
    Program program;
    Form_Load(program.state);
    EXPECT_EQ(program.state.IniFile, program.folder.Path("tessaly-test.ini"));
    EXPECT_EQ(program.folder.Files(), (std::vector<std::string>{"tessaly-test.ini"}));
}

TEST(FirstStart, PutsTheVersionBehindTheCaption) {
    Program program;
    Form_Load(program.state);
    EXPECT_EQ(program.state.Caption.Text, u"Tessaly - Version 1.0.0");
}

TEST(FirstStart, PreparesTheFormOnceAndBeforeTheFoldersAreFilled) {
    Program program;
    std::vector<std::u16string> shown;
    program.state.ToolboxA.FormPrepared = [&] { shown.push_back(program.state.txtDiscusRootFolder.Text); };
    Form_Load(program.state);
    EXPECT_EQ(shown, (std::vector<std::u16string>{u"C:\\Discusware"}));
}

TEST(FormLoad, ReadsEveryKey) {
    Program program(
        "DiscusWebsite=http://old.example\r\nmybbForumAddr=http://new.example\r\nSplitMBSize=8\r\n"
        "mybb_Admin=Bob\r\nmybb_Users=3\r\nmybb_Groups=9\r\nmybb_OutputFolder=/srv/out\r\nCharset=koi8-r\r\n"
        "Display=0\r\nLog=0\r\nCreateAttachments=0\r\nCreateHiddenTopics=0\r\nCreateRedirectionFiles=0\r\n"
        "FindDiscusSpecialCharacters=0\r\nDiscusRootFolder=/srv/discus\r\n"
        "DiscusMessageFolder=/srv/discus\\messages\\\r\nDiscusSecureMessageFolder=/srv/admin/secure\r\n"
        "DiscusMainFolder=/srv/admin\r\nmybb_AttachmentsFolder=/srv/attached\r\n");
    Form_Load(program.state);
    const ConversionState& state = program.state;
    EXPECT_EQ(state.txtDiscusWebsite.Text, u"http://old.example");
    EXPECT_EQ(state.txtmybbForumAddr.Text, u"http://new.example");
    EXPECT_EQ(state.txtSplitMBSize.Text, u"8");
    EXPECT_EQ(state.SplitMBSize, 8);
    EXPECT_EQ(state.txtDefaultAdmin.Text, u"Bob");
    EXPECT_EQ(state.txtDefaultUsers.Text, u"3");
    EXPECT_EQ(state.txtDefaultGroups.Text, u"9");
    EXPECT_EQ(state.txtmybbOutputFolder.Text, u"/srv/out\\");
    EXPECT_EQ(state.mybbOutputFolder, u"/srv/out\\");
    EXPECT_EQ(state.cboCharset.Text, u"koi8-r");
    EXPECT_EQ(state.Charset, u"");
    for (const CheckField* box : {&state.chkShowProgress, &state.chkLogProgress, &state.chkCreateAttachments,
                                  &state.chkCreateHiddenTopics, &state.chkCreateRedirectionFiles,
                                  &state.chkFindDiscusSpecialCharacters})
        EXPECT_EQ(box->Value, 0);
    EXPECT_FALSE(state.optDisplay);
    EXPECT_FALSE(state.optLog);
    EXPECT_FALSE(state.optCreateAttachments);
    EXPECT_FALSE(state.optCreateHiddenTopics);
    EXPECT_FALSE(state.optCreateRedirectionFiles);
    EXPECT_FALSE(state.optFindDiscusSpecialCharacters);
    EXPECT_EQ(state.DiscusRootFolder, u"/srv/discus\\");
    EXPECT_EQ(state.txtDiscusRootFolder.Text, u"/srv/discus\\");
    EXPECT_EQ(state.DiscusMessageFolder, u"/srv/discus\\messages\\");
    EXPECT_EQ(state.DiscusSecureMessageFolder, u"/srv/admin/secure\\");
    EXPECT_EQ(state.DiscusMainFolder, u"/srv/admin\\");
    EXPECT_EQ(state.txtDiscusMainFolder.Text, u"/srv/admin\\");
    EXPECT_EQ(state.mybbAttachmentsFolder, u"/srv/attached");
    EXPECT_EQ(state.txtmybbAttachmentsFolder.Text, u"/srv/attached");
}

TEST(FormLoad, ShowsTextsWithoutOneLastSlash) {
    Program program(
        "DiscusWebsite=http://old.example//\r\nmybbForumAddr=http://new.example/\r\nmybb_Admin=Bob/\r\n"
        "mybb_Users=3/\r\nmybb_Groups=9/\r\n");
    Form_Load(program.state);
    EXPECT_EQ(program.state.txtDiscusWebsite.Text, u"http://old.example/");
    EXPECT_EQ(program.state.txtmybbForumAddr.Text, u"http://new.example");
    EXPECT_EQ(program.state.txtDefaultAdmin.Text, u"Bob");
    EXPECT_EQ(program.state.txtDefaultUsers.Text, u"3");
    EXPECT_EQ(program.state.txtDefaultGroups.Text, u"9");
}

TEST(FormLoad, ShowsASplitSizeWithoutItsLastSlashAndThenFailsOnIt) {
    Program program("SplitMBSize=50/\r\n");
    EXPECT_EQ(NumberOfErrorIn(Form_Load, program.state), 13);
    EXPECT_EQ(program.state.txtSplitMBSize.Text, u"50");
}

TEST(FormLoad, PutsABackslashBehindTheSlashOfAnOutputFolder) {
    Program program("mybb_OutputFolder=/srv/out/\r\n");
    Form_Load(program.state);
    EXPECT_EQ(program.state.txtmybbOutputFolder.Text, u"/srv/out/\\");
}

TEST(FormLoad, ShowsASavedGroupCountThatARunDoesNotUse) {
    Program program("mybb_Groups=9\r\nmybb_Users=4\r\n");
    Form_Load(program.state);
    EXPECT_EQ(program.state.txtDefaultGroups.Text, u"9");
    EXPECT_EQ(program.state.DefaultGroupCount, 7);
    EXPECT_EQ(program.state.txtDefaultUsers.Text, u"4");
    EXPECT_EQ(program.state.DefaultUserCount, 0);
    txtDefaultGroups_LostFocus(program.state);
    txtDefaultUsers_LostFocus(program.state);
    EXPECT_EQ(program.state.DefaultGroupCount, 9);
    EXPECT_EQ(program.state.DefaultUserCount, 4);
}

TEST(FormLoad, WritesBackAnOptionThatItUnticks) {
    Program program("CreateHiddenTopics=0\r\nDisplay=0\r\n");
    Form_Load(program.state);
    EXPECT_EQ(program.Setting("CreateHiddenTopics"), "0");
    EXPECT_EQ(program.Setting("CreateAttachments"), std::nullopt);
    EXPECT_EQ(program.Setting("Display"), "0");
    EXPECT_EQ(program.Setting("Log"), "1");
}

TEST(FormLoad, LetsASplitSizeThatIsNoNumberPass) {
    Program program("SplitMBSize=many\r\n");
    EXPECT_EQ(NumberOfErrorIn(Form_Load, program.state), 13);
    // All that is read before it is filled.
    EXPECT_EQ(program.state.DiscusRootFolder, u"C:\\Discusware\\");
    EXPECT_EQ(program.state.mybbRedirectFolder,
              u"C:\\Discusware\\mybb\\Output\\redirect\\discus\\messages\\");
    EXPECT_EQ(program.state.txtSplitMBSize.Text, u"many");
    EXPECT_TRUE(program.messages.empty());
}

TEST(FormLoad, LetsAnEmptySplitSizePassToo) {
    Program program("SplitMBSize=\r\n");
    EXPECT_EQ(NumberOfErrorIn(Form_Load, program.state), 13);
}

TEST(FormLoad, RoundsTheSplitSizeHalfToEven) {
    for (const auto& [kept, shown] :
         {std::pair{"2.5", u"2"}, {"3.5", u"4"}, {"-1", u"-1"}, {"1e2", u"100"}}) {
        Program program("SplitMBSize=" + std::string(kept) + "\r\n");
        Form_Load(program.state);
        EXPECT_EQ(program.state.txtSplitMBSize.Text, shown) << kept;
    }
}

TEST(FormLoad, TakesAnotherSettingsFileWhenOneIsNamed) {
    Program program("mybb_Admin=Beside\r\n");
    program.folder.Write("other/my.ini", "[Settings]\nmybb_Admin=Other\n");
    program.state.SettingsFile = program.folder.Path("other/my.ini");
    Form_Load(program.state);
    EXPECT_EQ(program.state.txtDefaultAdmin.Text, u"Other");
    EXPECT_EQ(SettingIn(program.folder.Read("other/my.ini"), "Log"), "1");
    EXPECT_EQ(program.Setting("Log"), std::nullopt);
}

TEST(FormLoad, NeverReadsTheKeyOfTheForumAddressThatTheFolderSetupWrites) {
    Program program("mybb_ForumAddr=http://new.example\r\n");
    Form_Load(program.state);
    EXPECT_EQ(program.state.txtmybbForumAddr.Text, u"");
}

TEST(FormLoad, KeepsTextsBeyondAscii) {
    Program program("mybb_Admin=J\xC3\xB6rg\r\n");
    Form_Load(program.state);
    EXPECT_EQ(program.state.txtDefaultAdmin.Text, u"J\u00F6rg");
    txtDefaultAdmin_LostFocus(program.state);
    EXPECT_EQ(program.Setting("mybb_Admin"), "J\xC3\xB6rg");
}

TEST(DefaultAdmin, IsTrimmedAndEscapedButKeptAsTyped) {
    Program program;
    Form_Load(program.state);
    program.state.txtDefaultAdmin.SetText(u"  O'Hara, Scarlett ");
    txtDefaultAdmin_LostFocus(program.state);
    EXPECT_EQ(program.state.DefaultAdmin, u"O({)Hara([) Scarlett");
    EXPECT_EQ(program.state.txtDefaultAdmin.Text, u"  O'Hara, Scarlett ");
    // Between quotes, which keep its blanks.
    EXPECT_EQ(program.Setting("mybb_Admin"), "\"  O'Hara, Scarlett \"");
    EXPECT_TRUE(program.messages.empty());
    EXPECT_TRUE(program.focused.empty());
}

TEST(DefaultAdmin, IsRefusedWhenBlankAndTakesTheFocusBack) {
    Program program("mybb_Admin=Bob\r\n");
    Form_Load(program.state);
    program.state.txtDefaultAdmin.SetText(u"   ");
    txtDefaultAdmin_LostFocus(program.state);
    EXPECT_EQ(program.messages,
              (std::vector<std::u16string>{u"Default Admin of your mybb database must be filled in"}));
    EXPECT_EQ(program.focused, (std::vector<const TextField*>{&program.state.txtDefaultAdmin}));
    EXPECT_EQ(program.state.DefaultAdmin, u"");
    EXPECT_EQ(program.Setting("mybb_Admin"), "Bob");
}

TEST(DefaultGroups, AreRefusedWhen0OrNoNumber) {
    for (const auto* const text : {u"0", u"", u"seven", u"0.4", u"0.5"}) {
        Program program("mybb_Groups=9\r\n");
        Form_Load(program.state);
        program.state.txtDefaultGroups.SetText(text);
        txtDefaultGroups_LostFocus(program.state);
        EXPECT_EQ(
            program.messages,
            (std::vector<std::u16string>{u"Total Default Group of your mybb database must be filled in"}));
        EXPECT_EQ(program.focused, (std::vector<const TextField*>{&program.state.txtDefaultGroups}));
        EXPECT_EQ(program.state.DefaultGroupCount, 0);
        EXPECT_EQ(program.Setting("mybb_Groups"), "9");
    }
}

TEST(DefaultGroups, AreKeptAsTheLeadingNumberRounded) {
    Program program;
    Form_Load(program.state);
    program.state.txtDefaultGroups.SetText(u" 11.6 groups");
    txtDefaultGroups_LostFocus(program.state);
    EXPECT_EQ(program.state.DefaultGroupCount, 12);
    EXPECT_EQ(program.Setting("mybb_Groups"), "12");
    EXPECT_EQ(program.state.txtDefaultGroups.Text, u" 11.6 groups");
    EXPECT_TRUE(program.messages.empty());
}

TEST(DefaultUsers, Accept0AndWhatIsNoNumberAs0) {
    for (const auto* const text : {u"0", u"", u"none"}) {
        Program program("mybb_Users=5\r\n");
        Form_Load(program.state);
        program.state.DefaultUserCount = 5;
        program.state.txtDefaultUsers.SetText(text);
        txtDefaultUsers_LostFocus(program.state);
        EXPECT_EQ(program.state.DefaultUserCount, 0);
        EXPECT_EQ(program.Setting("mybb_Users"), "0");
        EXPECT_TRUE(program.messages.empty());
        EXPECT_TRUE(program.focused.empty());
    }
}

TEST(DefaultUsers, LetANumberBeyond32BitsPass) {
    Program program;
    Form_Load(program.state);
    program.state.txtDefaultUsers.SetText(u"2147483648");
    EXPECT_EQ(NumberOfErrorIn(txtDefaultUsers_LostFocus, program.state), 6);
}

TEST(Website, LosesOneSlashInTheFieldAndIsKept) {
    Program program;
    Form_Load(program.state);
    program.state.txtDiscusWebsite.SetText(u"http://old.example/discus//");
    txtDiscusWebsite_LostFocus(program.state);
    EXPECT_EQ(program.state.txtDiscusWebsite.Text, u"http://old.example/discus/");
    EXPECT_EQ(program.Setting("DiscusWebsite"), "http://old.example/discus/");
    EXPECT_EQ(program.state.DiscusWebsite, u"");
}

TEST(Website, IsKeptEmptyWithoutAMessage) {
    Program program("DiscusWebsite=http://old.example\r\n");
    Form_Load(program.state);
    program.state.txtDiscusWebsite.SetText(u"/");
    txtDiscusWebsite_LostFocus(program.state);
    EXPECT_EQ(program.state.txtDiscusWebsite.Text, u"");
    EXPECT_EQ(program.Setting("DiscusWebsite"), "");
    EXPECT_TRUE(program.messages.empty());
}

TEST(ForumAddress, LosesOneSlashInTheFieldAndIsKept) {
    Program program;
    Form_Load(program.state);
    program.state.txtmybbForumAddr.SetText(u"http://new.example/");
    txtmybbForumAddr_LostFocus(program.state);
    EXPECT_EQ(program.state.txtmybbForumAddr.Text, u"http://new.example");
    EXPECT_EQ(program.Setting("mybbForumAddr"), "http://new.example");
    EXPECT_EQ(program.Setting("mybb_ForumAddr"), std::nullopt);
}

TEST(SplitSize, IsKeptAsTypedWithoutACheck) {
    Program program;
    Form_Load(program.state);
    program.state.txtSplitMBSize.SetText(u"a lot");
    txtSplitMBSize_LostFocus(program.state);
    EXPECT_EQ(program.Setting("SplitMBSize"), "a lot");
    EXPECT_EQ(program.state.SplitMBSize, 50);
    EXPECT_TRUE(program.messages.empty());
}

TEST(RootFolder, MustBeFilledInButDoesNotTakeTheFocusBack) {
    Program program;
    Form_Load(program.state);
    program.state.txtDiscusRootFolder.SetText(u"");
    txtDiscusRootFolder_LostFocus(program.state);
    EXPECT_EQ(program.messages, (std::vector<std::u16string>{u"Discus Root Folder Must Be Filled In"}));
    EXPECT_TRUE(program.focused.empty());
    EXPECT_EQ(program.state.DiscusRootFolder, u"C:\\Discusware\\");
    EXPECT_EQ(program.Setting("DiscusRootFolder"), std::nullopt);
}

TEST(RootFolder, MustExistAndTheVariableKeepsWhatWasRead) {
    Program program;
    Form_Load(program.state);
    program.state.txtDiscusRootFolder.SetText(program.folder.Path("nowhere"));
    txtDiscusRootFolder_LostFocus(program.state);
    EXPECT_EQ(program.messages, (std::vector<std::u16string>{u"Discus Root Folder Must Exist!"}));
    EXPECT_EQ(program.state.DiscusRootFolder, program.folder.Path("nowhere") + u"\\");
    EXPECT_EQ(program.state.txtDiscusMessageFolder.Text, u"C:\\Discusware\\discus\\messages\\");
    EXPECT_EQ(program.Setting("DiscusRootFolder"), std::nullopt);
}

TEST(RootFolder, FillsTheFoldersBelowItWithTheLiteralAdminFolder) {
    Program program("DiscusMainFolder=/srv/discus_admin_104\r\n");
    program.folder.MakeFolder("copy");
    Form_Load(program.state);
    const std::u16string root = program.folder.Path("copy") + u"\\";
    program.state.txtDiscusRootFolder.SetText(program.folder.Path("copy"));
    txtDiscusRootFolder_LostFocus(program.state);
    const ConversionState& state = program.state;
    EXPECT_EQ(state.DiscusRootFolder, root);
    EXPECT_EQ(state.txtDiscusRootFolder.Text, program.folder.Path("copy"));
    EXPECT_EQ(state.txtDiscusMessageFolder.Text, root + u"discus\\messages\\");
    EXPECT_EQ(state.txtDiscusMainFolder.Text, root + u"discus_admin_nnnnnnnnnn\\");
    EXPECT_EQ(state.txtDiscusSecureMessageFolder.Text, root + u"discus_admin_nnnnnnnnnn\\secure\\");
    // The variables of the three follow at the next run.
    EXPECT_EQ(state.DiscusMessageFolder, u"C:\\Discusware\\discus\\messages\\");
    Program again("mybb_Users=0\r\n");
    again.state.SettingsFile = state.IniFile;
    Form_Load(again.state);
    EXPECT_EQ(again.state.DiscusRootFolder, root);
    EXPECT_EQ(again.state.DiscusMessageFolder, root + u"discus\\messages\\");
    EXPECT_EQ(again.state.DiscusSecureMessageFolder, root + u"discus_admin_nnnnnnnnnn\\secure\\");
    EXPECT_EQ(again.state.DiscusMainFolder, u"/srv/discus_admin_104\\") << "this key is not written here";
    EXPECT_TRUE(program.messages.empty());
}

TEST(OutputFolder, MustBeFilledIn) {
    Program program;
    Form_Load(program.state);
    program.state.txtmybbOutputFolder.SetText(u"");
    txtmybbOutputFolder_LostFocus(program.state);
    EXPECT_EQ(program.messages, (std::vector<std::u16string>{u"mybb Output Folder Must Be Filled In"}));
    EXPECT_TRUE(program.focused.empty());
    EXPECT_EQ(program.state.mybbOutputFolder, u"C:\\Discusware\\mybb\\Output\\");
    EXPECT_EQ(program.Setting("mybb_OutputFolder"), std::nullopt);
}

TEST(OutputFolder, TakesTheAttachmentsFolderWithItAndIsKeptAsTyped) {
    Program program;
    Form_Load(program.state);
    program.state.txtmybbOutputFolder.SetText(u"D:\\import");
    txtmybbOutputFolder_LostFocus(program.state);
    EXPECT_EQ(program.state.mybbOutputFolder, u"D:\\import\\");
    EXPECT_EQ(program.state.txtmybbOutputFolder.Text, u"D:\\import");
    EXPECT_EQ(program.state.mybbAttachmentsFolder, u"D:\\import\\Attachments\\");
    EXPECT_EQ(program.state.txtmybbAttachmentsFolder.Text, u"D:\\import\\Attachments\\");
    EXPECT_EQ(program.Setting("mybb_OutputFolder"), "D:\\import");
    EXPECT_EQ(program.Setting("mybb_AttachmentsFolder"), "D:\\import\\Attachments\\");
    EXPECT_EQ(program.state.mybbRedirectFolder,
              u"C:\\Discusware\\mybb\\Output\\redirect\\discus\\messages\\");
}

TEST(CheckBoxes, WriteTheirValueAndSetTheirOptionAtAClick) {
    Program program;
    Form_Load(program.state);
    ConversionState& state = program.state;
    const struct {
        const char* key;
        CheckField& box;
        bool& option;
        void (*click)(ConversionState&);
    } boxes[] = {
        {"Display", state.chkShowProgress, state.optDisplay, chkShowProgress_Click},
        {"Log", state.chkLogProgress, state.optLog, chkLogProgress_Click},
        {"CreateAttachments", state.chkCreateAttachments, state.optCreateAttachments,
         chkCreateAttachments_Click},
        {"CreateHiddenTopics", state.chkCreateHiddenTopics, state.optCreateHiddenTopics,
         chkCreateHiddenTopics_Click},
        {"CreateRedirectionFiles", state.chkCreateRedirectionFiles, state.optCreateRedirectionFiles,
         chkCreateRedirectionFiles_Click},
        {"FindDiscusSpecialCharacters", state.chkFindDiscusSpecialCharacters,
         state.optFindDiscusSpecialCharacters, chkFindDiscusSpecialCharacters_Click},
    };
    for (const auto& [key, box, option, click] : boxes) {
        box.SetValue(0);
        click(state);
        EXPECT_EQ(program.Setting(key), "0") << key;
        EXPECT_FALSE(option) << key;
        box.SetValue(1);
        click(state);
        EXPECT_EQ(program.Setting(key), "1") << key;
        EXPECT_TRUE(option) << key;
    }
}

TEST(BrowseRoot, StartsAtTheFieldsTextAndTakesTheFolderThatIsPicked) {
    Program program;
    program.folder.MakeFolder("copy");
    Form_Load(program.state);
    std::u16string start;
    program.state.ToolboxA.PickFolder = [&](std::u16string_view folder) {
        start = folder;
        return program.folder.Path("copy");
    };
    cmdBrowseRoot_Click(program.state);
    EXPECT_EQ(start, u"C:\\Discusware\\");
    EXPECT_EQ(program.state.txtDiscusRootFolder.Text, program.folder.Path("copy"));
    EXPECT_EQ(program.state.txtDiscusMessageFolder.Text,
              program.folder.Path("copy") + u"\\discus\\messages\\");
    EXPECT_TRUE(program.messages.empty());
}

TEST(BrowseRoot, ChecksThePresentTextAgainWhenTheOperatorBacksOut) {
    Program program;
    Form_Load(program.state);
    program.state.ToolboxA.PickFolder = [](std::u16string_view) { return std::u16string(); };
    program.state.txtDiscusRootFolder.SetText(u"");
    cmdBrowseRoot_Click(program.state);
    program.state.txtDiscusRootFolder.SetText(program.folder.Path("nowhere"));
    cmdBrowseRoot_Click(program.state);
    EXPECT_EQ(program.messages, (std::vector<std::u16string>{u"Discus Root Folder Must Be Filled In",
                                                             u"Discus Root Folder Must Exist!"}));
    EXPECT_EQ(program.state.txtDiscusRootFolder.Text, program.folder.Path("nowhere"));
}

TEST(BrowseOutput, DoesNothingWhenTheOperatorBacksOut) {
    TestBoard board;
    board.folder.Write("output/kept.txt", "kept");
    board.state.ToolboxA.PickFolder = [](std::u16string_view) { return std::u16string(); };
    const std::string settings = board.folder.Read(kIni);
    cmdBrowseOutput_Click(board.state);
    EXPECT_EQ(board.Output("kept.txt"), "kept");
    EXPECT_EQ(board.folder.Read(kIni), settings);
    EXPECT_TRUE(board.messages.empty());
    EXPECT_FALSE(board.state.CancelRequested);
}

TEST(BrowseOutput, DeletesAnExistingFolderThatIsPickedWithoutAWord) {
    TestBoard board;
    board.folder.Write("other/precious.txt", "gone");
    std::u16string start;
    board.state.ToolboxA.PickFolder = [&](std::u16string_view folder) {
        start = folder;
        return board.folder.Path("other");
    };
    cmdBrowseOutput_Click(board.state);
    EXPECT_EQ(start, board.folder.Path("output") + u"\\");
    EXPECT_FALSE(board.folder.Exists("other/precious.txt"));
    EXPECT_TRUE(board.folder.Exists("other/Attachments"));
    EXPECT_TRUE(board.folder.Exists("other/redirect/discus/messages"));
    EXPECT_EQ(board.state.txtmybbOutputFolder.Text, board.folder.Path("other"));
    EXPECT_EQ(board.state.mybbOutputFolder, board.folder.Path("other") + u"\\");
    EXPECT_TRUE(board.messages.empty());
}

TEST(BrowseOutput, LeavesACancelBehindWhenTheFoldersAreNotInOrder) {
    TestBoard board;
    board.state.DiscusRootFolder.clear();
    board.folder.Write("other/kept.txt", "kept");
    board.state.ToolboxA.PickFolder = [&](std::u16string_view) { return board.folder.Path("other"); };
    cmdBrowseOutput_Click(board.state);
    EXPECT_EQ(board.messages,
              (std::vector<std::u16string>{u"Source of your Discus Root Folder must be filled in"}));
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_EQ(board.folder.Read("other/kept.txt"), "kept");
    // The next run reads the fields anew and is not cancelled by that.
    board.WriteBoardFile("no category");
    board.Convert();
    EXPECT_FALSE(board.state.Progress.WasCancelled);
}

TEST(TwoKeys, AreWrittenByTheFolderSetupAndReadByNothing) {
    TestBoard board;
    board.state.DiscusWebsite = u"http://old.example/kept";
    board.state.mybbForumAddr = u"http://new.example/kept";
    SetupFolderLocations(board.state);
    const std::string settings = board.folder.Read(kIni);
    EXPECT_EQ(SettingIn(settings, "mybb_ForumAddr"), "http://new.example/kept");
    EXPECT_EQ(SettingIn(settings, "mybbForumAddr"), std::nullopt);
    EXPECT_EQ(SettingIn(settings, "DiscusWebSite"), "http://old.example/kept");
}

TEST(StripTrailing, TakesOneCharacterAtTheEndAlone) {
    EXPECT_EQ(StripTrailingSlash(u""), u"");
    EXPECT_EQ(StripTrailingSlash(u"/"), u"");
    EXPECT_EQ(StripTrailingSlash(u"a//"), u"a/");
    EXPECT_EQ(StripTrailingSlash(u"a\\"), u"a\\");
    EXPECT_EQ(StripTrailingBackslash(u""), u"");
    EXPECT_EQ(StripTrailingBackslash(u"\\"), u"");
    EXPECT_EQ(StripTrailingBackslash(u"a\\\\"), u"a\\");
    EXPECT_EQ(StripTrailingBackslash(u"a/"), u"a/");
}

}  // namespace
}  // namespace tessaly
