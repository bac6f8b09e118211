#include "control/CountPages.h"

#include "platform/files.h"
#include "text/RunTimeError.h"

namespace tessaly {

namespace {

// Each topic has a folder of its own. Beside these lie the front page and its like, which are no pages.
std::int64_t CountPagesIn(const std::u16string& folder) {
    std::int64_t count = 0;
    IgnoringErrors([&] {
        for (const std::u16string& topic : platform::Subfolders(folder)) {
            count += platform::CountFiles(ToolboxLibrary::AddBackslash(folder) + topic, u".html");
        }
    });
    return count;
}

}  // namespace

std::int64_t CountPages(const ConversionState& state) {
    std::int64_t count = CountPagesIn(state.txtDiscusMessageFolder.Text);
    if (state.chkCreateHiddenTopics.Value != 0) {
        count += CountPagesIn(state.txtDiscusSecureMessageFolder.Text);
    }
    return count;
}

}  // namespace tessaly
