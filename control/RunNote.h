#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tessaly {

// What the rows of a run do not tell and a finished forum needs; gathered only when it is wanted.
struct RunNote {
    bool IsWanted = false;
    std::vector<std::pair<std::int32_t, std::int32_t>> AttachmentPosts;  // aid and pid
    std::vector<std::pair<std::int32_t, std::u16string>> ForumPages;     // fid and full path of the page
    std::vector<std::int32_t> MembersWithoutGroup;                       // member numbers
};

}  // namespace tessaly
