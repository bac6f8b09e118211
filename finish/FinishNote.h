#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "control/modDefinitions.h"

namespace tessaly {

// The working note that a run leaves beside the import files when the board is to be finished: a line each
// for the charset, the forum's address, each attachment (aid and pid), each page that became a forum (fid and
// the page's path on the old site, fid 0 for the front page) and each member without a group.
struct FinishNote {
    struct Page {
        std::int32_t fid;
        std::u16string path;
    };

    std::u16string charset;
    std::u16string forumAddress;
    std::unordered_map<std::int32_t, std::int32_t> pidsByAid;
    std::vector<Page> pages;
    std::unordered_set<std::int32_t> membersWithoutGroup;
};

// Writes what the run has gathered. Raises 3004 when the file cannot be written.
void WriteFinishNote(const ConversionState& state);

// None when the folder holds no note. The folder ends with a backslash.
std::optional<FinishNote> ReadFinishNote(std::u16string_view folder);

}  // namespace tessaly
