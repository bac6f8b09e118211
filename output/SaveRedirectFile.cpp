#include "output/SaveRedirectFile.h"

#include "control/RoutineHandler.h"
#include "control/Settings.h"
#include "control/checking.h"
#include "output/OutputFiles.h"
#include "platform/charset.h"
#include "platform/files.h"
#include "text/numbers.h"
#include "text/split.h"

namespace tessaly {

namespace {

std::u16string BaseFolder(const ConversionState& state) {
    std::u16string messages = state.HiddenTopic ? state.DiscusSecureMessageFolder : state.DiscusMessageFolder;
    RemoveAll(messages, state.DiscusRootFolder);
    return StripTrailingBackslash(ToolboxLibrary::AddBackslash(state.mybbOutputFolder) + u"redirect\\" +
                                  messages);
}

// Fails as making the folder would. A file in its way is told once.
void CheckFolder(CheckListener& check, std::u16string_view folder) {
    const std::u16string path = StripTrailingBackslash(folder);
    const std::u16string_view name = From(path, FindBackward(path, u"\\") + 1);
    if (platform::ToUtf8(name).size() > platform::kLongestName) Raise(kPathAccessError);
    check.RedirectFolders.insert(path);
    if (check.RedirectFiles.erase(path) > 0) Raise(kPathNotFound);
}

}  // namespace

void SaveRedirectFile(ConversionState& state, std::u16string_view path, std::int32_t number,
                      std::u16string_view textA, std::u16string_view textB, std::u16string_view textC) try {
    if (!state.optCreateRedirectionFiles) return;
    std::u16string below(path);
    RemoveAll(below, state.DiscusSecureMessageFolder);
    RemoveAll(below, state.DiscusMessageFolder);
    const auto steps = Split(below, u"\\");
    const std::u16string folder =
        ToolboxLibrary::AddBackslash(BaseFolder(state)) + std::u16string(Element(steps, 0));
    const std::u16string file = ToolboxLibrary::AddBackslash(folder) + std::u16string(Element(steps, 1));
    if (IsCheck(state)) {
        CheckFolder(*state.Check, folder);
        return WriteFileData(state, file, {});
    }
    ToolboxLibrary::MakeFolderPath(folder);
    std::u16string page = state.RedirectTemplate;
    ReplaceAll(page, u"AAAAA", textA);
    ReplaceAll(page, u"BBBBB", textB);
    ReplaceAll(page, u"XXXXX", ToText(number) + u".0");
    ReplaceAll(page, u"CCCCC", textC);
    ReplaceAll(page, u"ZZZZZ", state.txtmybbForumAddr.Text);
    WriteFileData(state, file, page);
} catch (...) {
    RoutineHandler(state, u" - SaveRedirectFile()", CurrentError());
}

}  // namespace tessaly
