#include "control/DetectCharset.h"

#include <algorithm>

#include "control/Settings.h"
#include "platform/files.h"
#include "reader/SourceFiles.h"
#include "text/folding.h"

namespace tessaly {

namespace {

std::u16string CharsetOfPage(std::u16string_view page) {
    constexpr std::u16string_view kTag = u"text/html; charset=";
    const Position tag = FindExactly(page, kTag);
    if (tag == 0) return u"utf-8";
    const Position value = tag + Length(kTag);
    return InLowerCase(Between(page, value, Find(page, u"\"", value)));
}

}  // namespace

std::u16string DetectCharset(ConversionState& state) {
    const std::u16string path = FindTheFile(state.txtDiscusMessageFolder.Text, u".html");
    if (ToolboxLibrary::FileExists(path)) {
        std::u16string page;
        GetFileDataANSI(state, path, page, false);
        state.Charset = CharsetOfPage(page);
    }
    state.cboCharset.SetText(state.Charset);
    SaveSetting(state, u"Charset", state.Charset);
    return {};
}

// Hits on deeper levels would be dropped, so they are not looked for.
std::u16string FindTheFile(std::u16string_view folder, std::u16string_view pattern) {
    for (const std::u16string& subfolder : platform::Subfolders(folder)) {
        const std::u16string path = ToolboxLibrary::AddBackslash(folder) + subfolder;
        const auto files = platform::Files(path);
        const auto holdsPattern = [pattern](const std::u16string& file) {
            return FindExactly(file, pattern) != 0;
        };
        const auto file = std::ranges::find_if(files, holdsPattern);
        if (file != files.end()) return path + u"\\" + *file;
    }
    return {};
}

}  // namespace tessaly
