#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tessaly {

// What the rows of a run do not tell and a finished forum needs; gathered only when it is wanted.
struct RunNote {
    struct TakenFile {
        std::int32_t aid;
        std::int32_t pid;  // 0 for a file of an announcement
        std::int32_t uid;
        std::int32_t size;
        std::u16string hash;
        std::u16string name;
    };

    bool IsWanted = false;
    std::vector<TakenFile> Attachments;
    std::vector<std::pair<std::int32_t, std::u16string>> ForumPages;  // fid and full path of the page
    std::vector<std::int32_t> MembersWithoutGroup;                    // member numbers
};

}  // namespace tessaly
