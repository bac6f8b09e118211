#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessaly::platform {

// The folders that a delete must leave alone, as native absolute paths with all links resolved.
struct GuardedFolders {
    std::u16string home;
    std::u16string program;
    std::vector<std::u16string> sources;
};

// Why a folder must not be deleted, in words for the operator; empty when it may be. The folder is a native
// absolute path with all links resolved. Only texts are compared, ignoring case; no disk is asked.
std::u16string ReasonNotToDelete(std::u16string_view folder, const GuardedFolders& guarded);

}  // namespace tessaly::platform
