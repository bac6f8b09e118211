#pragma once

#include <string>
#include <string_view>

#include "control/modDefinitions.h"

namespace tessaly {

// Fills the fields from the .ini file, as the main form's load does. A split size in the file that is no
// number raises 13, which nothing traps.
void Form_Load(ConversionState& state);

// Reads the folders from the .ini file into the variables and the fields.
void InitializeFolders(ConversionState& state);

// What each field does when it loses the focus: check, take over, save.
void txtDefaultAdmin_LostFocus(ConversionState& state);
void txtDefaultGroups_LostFocus(ConversionState& state);
void txtDefaultUsers_LostFocus(ConversionState& state);
void txtDiscusRootFolder_LostFocus(ConversionState& state);
void txtDiscusWebsite_LostFocus(ConversionState& state);
void txtmybbForumAddr_LostFocus(ConversionState& state);
void txtSplitMBSize_LostFocus(ConversionState& state);
void txtmybbOutputFolder_LostFocus(ConversionState& state);

// What a click on each check box does, its value being the new one already: saves it and sets its option.
void chkShowProgress_Click(ConversionState& state);
void chkLogProgress_Click(ConversionState& state);
void chkCreateAttachments_Click(ConversionState& state);
void chkCreateHiddenTopics_Click(ConversionState& state);
void chkCreateRedirectionFiles_Click(ConversionState& state);
void chkFindDiscusSpecialCharacters_Click(ConversionState& state);

// The two browse buttons. Picking a folder with the second deletes it when it exists.
void cmdBrowseRoot_Click(ConversionState& state);
void cmdBrowseOutput_Click(ConversionState& state);

// The text without a last "/", or without a last "\".
std::u16string StripTrailingSlash(std::u16string_view text);
std::u16string StripTrailingBackslash(std::u16string_view text);

// The settings file of a program in a folder: named like the program.
std::u16string IniFileIn(std::u16string_view folder, std::u16string_view programName);

// Writes one key of the section "Settings".
void SaveSetting(ConversionState& state, std::u16string_view key, std::u16string_view value);

}  // namespace tessaly
