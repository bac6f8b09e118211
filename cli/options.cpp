#include "cli/options.h"

#include <algorithm>

#include "control/NameProgram.h"
#include "control/Settings.h"
#include "platform/charset.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace tessaly {

namespace {

using Handler = void (*)(ConversionState&);

std::u16string FolderText(const std::string& folder) {
    return folder.empty() ? std::u16string()
                          : platform::AbsolutePathText(platform::ToNative(platform::FromUtf8(folder)));
}

bool IsAdminFolder(const std::u16string& name) {
    constexpr std::u16string_view kPrefix = u"discus_admin_";
    return name.starts_with(kPrefix) && name.size() > kPrefix.size() &&
           name.find_first_not_of(u"0123456789", kPrefix.size()) == std::u16string::npos;
}

void Type(ConversionState& state, const std::optional<std::string>& text, TextField& field,
          Handler lostFocus) {
    if (!text) return;
    field.SetText(platform::FromUtf8(*text));
    lostFocus(state);
}

void PutFolder(const std::optional<std::string>& native, std::u16string& folder, TextField& field) {
    if (!native) return;
    const std::u16string text = FolderText(*native);
    folder = text.empty() ? text : ToolboxLibrary::AddBackslash(text);
    field.SetText(folder);
}

void Untick(ConversionState& state, bool isWanted, CheckField& field, Handler click) {
    if (!isWanted || field.Value == 0) return;
    field.SetValue(0);
    click(state);
}

}  // namespace

std::string CompleteFolders(Options& options) {
    if (!options.root || options.root->empty()) return {};
    if (!options.messages) options.messages = *options.root + "/discus/messages";
    const std::u16string root = FolderText(*options.root);
    if (!options.main && platform::FolderExists(root)) {
        std::vector<std::u16string> found = platform::Subfolders(root);
        std::erase_if(found, [](const std::u16string& name) { return !IsAdminFolder(name); });
        if (found.size() != 1) {
            return "--main is needed: there is no one folder named discus_admin_ and digits in " +
                   *options.root;
        }
        options.main = *options.root + "/" + platform::ToUtf8(found.front());
    }
    if (!options.secure && options.main) options.secure = *options.main + "/secure";
    return {};
}

void StartProgram(ConversionState& state, const Options& options) {
    NameProgram(state, FolderText(options.programFolder), FolderText(options.ini));
    Form_Load(state);
}

void FillFields(ConversionState& state, const Options& options) {
    PutFolder(options.root, state.DiscusRootFolder, state.txtDiscusRootFolder);
    PutFolder(options.messages, state.DiscusMessageFolder, state.txtDiscusMessageFolder);
    PutFolder(options.secure, state.DiscusSecureMessageFolder, state.txtDiscusSecureMessageFolder);
    PutFolder(options.main, state.DiscusMainFolder, state.txtDiscusMainFolder);
    PutFolder(options.output, state.mybbOutputFolder, state.txtmybbOutputFolder);
    if (options.output) {
        state.mybbAttachmentsFolder = state.mybbOutputFolder + u"Attachments\\";
        state.txtmybbAttachmentsFolder.SetText(state.mybbAttachmentsFolder);
        state.mybbRedirectFolder = state.mybbOutputFolder + u"redirect\\discus\\messages\\";
    }
    Type(state, options.website, state.txtDiscusWebsite, txtDiscusWebsite_LostFocus);
    Type(state, options.forum, state.txtmybbForumAddr, txtmybbForumAddr_LostFocus);
    Type(state, options.users, state.txtDefaultUsers, txtDefaultUsers_LostFocus);
    Type(state, options.groups, state.txtDefaultGroups, txtDefaultGroups_LostFocus);
    Type(state, options.splitMegabytes, state.txtSplitMBSize, txtSplitMBSize_LostFocus);
    Type(state, options.admin, state.txtDefaultAdmin, txtDefaultAdmin_LostFocus);
    if (options.charset) {
        state.cboCharset.SetText(platform::FromUtf8(*options.charset));
        state.Charset = state.cboCharset.Text;
    }
    Untick(state, options.noAttachments, state.chkCreateAttachments, chkCreateAttachments_Click);
    Untick(state, options.noHidden, state.chkCreateHiddenTopics, chkCreateHiddenTopics_Click);
    Untick(state, options.noRedirects, state.chkCreateRedirectionFiles, chkCreateRedirectionFiles_Click);
    Untick(state, options.noSpecialCharacters, state.chkFindDiscusSpecialCharacters,
           chkFindDiscusSpecialCharacters_Click);
    Untick(state, options.noShowProgress, state.chkShowProgress, chkShowProgress_Click);
    Untick(state, options.noLog, state.chkLogProgress, chkLogProgress_Click);
}

}  // namespace tessaly
