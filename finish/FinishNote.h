#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "control/modDefinitions.h"

namespace tessaly {

// The working note that a run leaves beside the import files when the board is to be finished: a line each
// for the charset, the forum's address, each attachment (aid, pid, 0 for that of an announcement, member,
// size, hash and name), each page that became a forum (fid and the page's path on the old site, fid 0 for the
// front page) and each member without a group.
struct FinishNote {
    // An older note tells the post alone.
    struct Attachment {
        std::int32_t pid = 0;
        std::int32_t uid = 0;
        std::int32_t size = 0;
        std::u16string hash;
        std::u16string name;
        bool operator==(const Attachment&) const = default;
    };

    struct Page {
        std::int32_t fid;
        std::u16string path;
    };

    std::u16string charset;
    std::u16string forumAddress;
    std::map<std::int32_t, Attachment> attachments;  // by their aid
    std::vector<Page> pages;
    std::unordered_set<std::int32_t> membersWithoutGroup;
};

// Writes what the run has gathered. Raises 3004 when the file cannot be written.
void WriteFinishNote(const ConversionState& state);

// None when the folder holds no note. The folder ends with a backslash.
std::optional<FinishNote> ReadFinishNote(std::u16string_view folder);

}  // namespace tessaly
