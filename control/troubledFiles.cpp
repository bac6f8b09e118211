#include "control/troubledFiles.h"

#include <algorithm>

namespace tessaly {

std::u16string TroubledFilesText(const ConversionState& state) {
    constexpr std::size_t kMostNamed = 20;
    const auto& files = state.Progress.TroubledFiles;
    if (files.empty()) return {};
    std::u16string text =
        u"These files could not be read or written. Look for a full disk, missing rights or an open file, "
        u"and "
        u"convert again:\r\n";
    for (std::size_t at = 0; at < std::min(files.size(), kMostNamed); ++at) text += files[at] + u"\r\n";
    if (files.size() > kMostNamed) text += u"... and more\r\n";
    return text;
}

}  // namespace tessaly
