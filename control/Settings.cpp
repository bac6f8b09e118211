#include "control/Settings.h"

#include "control/SetupFolderLocations.h"
#include "control/checking.h"
#include "platform/files.h"
#include "reader/FieldEscaping.h"
#include "text/numbers.h"
#include "text/split.h"

namespace tessaly {

namespace {

using ClickHandler = void (*)(ConversionState&);

constexpr std::u16string_view kSection = u"Settings";

std::u16string ReadSetting(const ConversionState& state, std::u16string_view key,
                           std::u16string_view missing) {
    return state.ToolboxA.ReadIniValue(kSection, key, missing, state.IniFile);
}

void FillText(ConversionState& state, std::u16string_view key, TextField& field) {
    field.SetText(StripTrailingSlash(ReadSetting(state, key, field.Text)));
}

// A value that differs from the box's is a click, which writes the key back.
void FillCheck(ConversionState& state, std::u16string_view key, CheckField& field, ClickHandler click) {
    const std::int32_t value = LeadingNumber(ReadSetting(state, key, u"1")) != 0 ? 1 : 0;
    if (value == field.Value) return;
    field.SetValue(value);
    click(state);
}

void FillFolder(ConversionState& state, std::u16string_view key, std::u16string_view missing,
                std::u16string& folder, TextField& field) {
    folder = ToolboxLibrary::AddBackslash(ReadSetting(state, key, missing));
    field.SetText(folder);
}

void TakeClick(ConversionState& state, std::u16string_view key, const CheckField& field, bool& option) {
    SaveSetting(state, key, ToText(field.Value));
    option = field.Value != 0;
}

std::u16string_view WithoutExtension(std::u16string_view fileName) {
    return fileName.substr(0, fileName.rfind(u'.'));
}

// Version numbers are ASCII.
std::u16string Version() {
    const std::string_view version = TESSALY_VERSION;
    return std::u16string(version.begin(), version.end());
}

}  // namespace

void Form_Load(ConversionState& state) {
    state.DefaultUserCount = 0;
    state.DefaultGroupCount = 7;
    state.Caption.SetText(state.Caption.Text + u" - Version " + Version());
    state.IniFile = state.SettingsFile;
    if (state.IniFile.empty()) state.IniFile = IniFileIn(state.ProgramFolder, state.ProgramName);
    FillText(state, u"DiscusWebsite", state.txtDiscusWebsite);
    FillText(state, u"mybbForumAddr", state.txtmybbForumAddr);
    FillText(state, u"SplitMBSize", state.txtSplitMBSize);
    FillText(state, u"mybb_Admin", state.txtDefaultAdmin);
    // The counts themselves stay 0 and 7 until their fields lose the focus.
    state.txtDefaultUsers.Text = ToText(state.DefaultUserCount);
    FillText(state, u"mybb_Users", state.txtDefaultUsers);
    state.txtDefaultGroups.Text = ToText(state.DefaultGroupCount);
    FillText(state, u"mybb_Groups", state.txtDefaultGroups);
    FillText(state, u"mybb_OutputFolder", state.txtmybbOutputFolder);
    state.cboCharset.SetText(ReadSetting(state, u"Charset", u"utf-8"));
    FillCheck(state, u"Display", state.chkShowProgress, chkShowProgress_Click);
    FillCheck(state, u"Log", state.chkLogProgress, chkLogProgress_Click);
    FillCheck(state, u"CreateAttachments", state.chkCreateAttachments, chkCreateAttachments_Click);
    FillCheck(state, u"CreateHiddenTopics", state.chkCreateHiddenTopics, chkCreateHiddenTopics_Click);
    FillCheck(state, u"CreateRedirectionFiles", state.chkCreateRedirectionFiles,
              chkCreateRedirectionFiles_Click);
    FillCheck(state, u"FindDiscusSpecialCharacters", state.chkFindDiscusSpecialCharacters,
              chkFindDiscusSpecialCharacters_Click);
    state.optCreateAttachments = state.chkCreateAttachments.Value != 0;
    state.optCreateHiddenTopics = state.chkCreateHiddenTopics.Value != 0;
    state.optCreateRedirectionFiles = state.chkCreateRedirectionFiles.Value != 0;
    state.optFindDiscusSpecialCharacters = state.chkFindDiscusSpecialCharacters.Value != 0;
    state.optDisplay = state.chkShowProgress.Value != 0;
    state.optLog = state.chkLogProgress.Value != 0;
    state.ToolboxA.PrepareForm();
    InitializeFolders(state);
}

void InitializeFolders(ConversionState& state) {
    FillFolder(state, u"DiscusRootFolder", u"C:\\Discusware\\", state.DiscusRootFolder,
               state.txtDiscusRootFolder);
    FillFolder(state, u"DiscusMessageFolder", u"C:\\Discusware\\discus\\messages\\",
               state.DiscusMessageFolder, state.txtDiscusMessageFolder);
    FillFolder(state, u"DiscusSecureMessageFolder", u"C:\\Discusware\\discus_admin_nnnnnnnnnn\\secure\\",
               state.DiscusSecureMessageFolder, state.txtDiscusSecureMessageFolder);
    FillFolder(state, u"DiscusMainFolder", u"C:\\Discusware\\discus_admin_nnnnnnnnnn\\",
               state.DiscusMainFolder, state.txtDiscusMainFolder);
    FillFolder(state, u"mybb_OutputFolder", u"C:\\Discusware\\mybb\\Output\\", state.mybbOutputFolder,
               state.txtmybbOutputFolder);
    state.mybbAttachmentsFolder =
        ReadSetting(state, u"mybb_AttachmentsFolder", state.mybbOutputFolder + u"Attachments\\");
    state.txtmybbAttachmentsFolder.SetText(state.mybbAttachmentsFolder);
    state.mybbRedirectFolder = state.mybbOutputFolder + u"redirect\\discus\\messages\\";
    // Megabytes in this one moment; a run computes the limit anew.
    state.SplitMBSize = ToInteger(ReadSetting(state, u"SplitMBSize", u"50"));
    state.txtSplitMBSize.SetText(ToText(state.SplitMBSize));
}

void txtDefaultAdmin_LostFocus(ConversionState& state) {
    state.DefaultAdmin = EscapeField(Trim(state.txtDefaultAdmin.Text));
    if (!state.DefaultAdmin.empty()) return SaveSetting(state, u"mybb_Admin", state.txtDefaultAdmin.Text);
    state.ShowMessage(u"Default Admin of your mybb database must be filled in");
    state.SetFocus(state.txtDefaultAdmin);
}

void txtDefaultGroups_LostFocus(ConversionState& state) {
    state.DefaultGroupCount = RoundToInteger(LeadingNumber(state.txtDefaultGroups.Text));
    if (state.DefaultGroupCount != 0)
        return SaveSetting(state, u"mybb_Groups", ToText(state.DefaultGroupCount));
    state.ShowMessage(u"Total Default Group of your mybb database must be filled in");
    state.SetFocus(state.txtDefaultGroups);
}

void txtDefaultUsers_LostFocus(ConversionState& state) {
    state.DefaultUserCount = RoundToInteger(LeadingNumber(state.txtDefaultUsers.Text));
    SaveSetting(state, u"mybb_Users", ToText(state.DefaultUserCount));
}

// The name of the Discus admin folder is not known here: the literal text goes into the fields again.
void txtDiscusRootFolder_LostFocus(ConversionState& state) {
    if (state.txtDiscusRootFolder.Text.empty()) {
        return state.ShowMessage(u"Discus Root Folder Must Be Filled In");
    }
    state.DiscusRootFolder = ToolboxLibrary::AddBackslash(state.txtDiscusRootFolder.Text);
    if (!platform::FolderExists(state.DiscusRootFolder)) {
        return state.ShowMessage(u"Discus Root Folder Must Exist!");
    }
    state.txtDiscusMessageFolder.SetText(state.DiscusRootFolder + u"discus\\messages\\");
    state.txtDiscusMainFolder.SetText(state.DiscusRootFolder + u"discus_admin_nnnnnnnnnn\\");
    state.txtDiscusSecureMessageFolder.SetText(state.DiscusRootFolder + u"discus_admin_nnnnnnnnnn\\secure\\");
    SaveSetting(state, u"DiscusRootFolder", state.txtDiscusRootFolder.Text);
    SaveSetting(state, u"DiscusMessageFolder", state.txtDiscusMessageFolder.Text);
    SaveSetting(state, u"DiscusSecureMessageFolder", state.txtDiscusSecureMessageFolder.Text);
}

void txtDiscusWebsite_LostFocus(ConversionState& state) {
    state.txtDiscusWebsite.SetText(StripTrailingSlash(state.txtDiscusWebsite.Text));
    SaveSetting(state, u"DiscusWebsite", state.txtDiscusWebsite.Text);
}

void txtmybbForumAddr_LostFocus(ConversionState& state) {
    state.txtmybbForumAddr.SetText(StripTrailingSlash(state.txtmybbForumAddr.Text));
    SaveSetting(state, u"mybbForumAddr", state.txtmybbForumAddr.Text);
}

void txtSplitMBSize_LostFocus(ConversionState& state) {
    SaveSetting(state, u"SplitMBSize", state.txtSplitMBSize.Text);
}

void txtmybbOutputFolder_LostFocus(ConversionState& state) {
    if (state.txtmybbOutputFolder.Text.empty()) {
        return state.ShowMessage(u"mybb Output Folder Must Be Filled In");
    }
    state.mybbOutputFolder = ToolboxLibrary::AddBackslash(state.txtmybbOutputFolder.Text);
    state.txtmybbAttachmentsFolder.SetText(state.mybbOutputFolder + u"Attachments\\");
    state.mybbAttachmentsFolder = state.txtmybbAttachmentsFolder.Text;
    SaveSetting(state, u"mybb_OutputFolder", state.txtmybbOutputFolder.Text);
    SaveSetting(state, u"mybb_AttachmentsFolder", state.txtmybbAttachmentsFolder.Text);
}

void chkShowProgress_Click(ConversionState& state) {
    TakeClick(state, u"Display", state.chkShowProgress, state.optDisplay);
}

void chkLogProgress_Click(ConversionState& state) {
    TakeClick(state, u"Log", state.chkLogProgress, state.optLog);
}

void chkCreateAttachments_Click(ConversionState& state) {
    TakeClick(state, u"CreateAttachments", state.chkCreateAttachments, state.optCreateAttachments);
}

void chkCreateHiddenTopics_Click(ConversionState& state) {
    TakeClick(state, u"CreateHiddenTopics", state.chkCreateHiddenTopics, state.optCreateHiddenTopics);
}

void chkCreateRedirectionFiles_Click(ConversionState& state) {
    TakeClick(state, u"CreateRedirectionFiles", state.chkCreateRedirectionFiles,
              state.optCreateRedirectionFiles);
}

void chkFindDiscusSpecialCharacters_Click(ConversionState& state) {
    TakeClick(state, u"FindDiscusSpecialCharacters", state.chkFindDiscusSpecialCharacters,
              state.optFindDiscusSpecialCharacters);
}

void cmdBrowseRoot_Click(ConversionState& state) {
    const std::u16string folder = state.ToolboxA.BrowseForFolder(state.txtDiscusRootFolder.Text);
    if (!folder.empty()) state.txtDiscusRootFolder.SetText(folder);
    txtDiscusRootFolder_LostFocus(state);
}

void cmdBrowseOutput_Click(ConversionState& state) {
    const std::u16string folder = state.ToolboxA.BrowseForFolder(state.txtmybbOutputFolder.Text);
    if (folder.empty()) return;
    state.txtmybbOutputFolder.SetText(folder);
    SetupFolderLocations(state);
}

std::u16string StripTrailingSlash(std::u16string_view text) {
    if (text.ends_with(u'/')) text.remove_suffix(1);
    return std::u16string(text);
}

std::u16string StripTrailingBackslash(std::u16string_view text) {
    if (text.ends_with(u'\\')) text.remove_suffix(1);
    return std::u16string(text);
}

std::u16string IniFileIn(std::u16string_view folder, std::u16string_view programName) {
    return ToolboxLibrary::AddBackslash(folder) + std::u16string(WithoutExtension(programName)) + u".ini";
}

void SaveSetting(ConversionState& state, std::u16string_view key, std::u16string_view value) {
    if (IsCheck(state)) return;
    state.ToolboxA.WriteIniValue(kSection, key, value, state.IniFile);
}

}  // namespace tessaly
