#pragma once

#include <cstdint>
#include <string_view>

#include "control/modDefinitions.h"

namespace tessaly {

// Walks one page and all below it, depth first. `pageName` is a top's number or, with `pageNameIsPath`, the
// full path of a page. For each page it writes the forum row, the posts, the thread row and the
// announcements.
void DiscusProcessBoardTopics(ConversionState& state, std::u16string_view pageName,
                              std::u16string_view categoryName, std::int32_t parentForumId,
                              bool pageNameIsPath);

// Resizes the data index to the elements 0 to `depth`; new ones are blank.
void ResetDataIndex(ConversionState& state, std::int32_t depth);

// Blanks one element, but for its position of the Top search; its topic number becomes "0".
void InitDataIndex(ConversionState& state, std::int32_t depth);

// Writes the thread row of the page in hand. A poster number of 0 stands for member 1; `spare` is not read.
void mybbWriteThreadsFile(ConversionState& state, std::u16string_view subject, std::int32_t forumId,
                          std::int32_t firstPostId, std::int32_t lastPostId, std::int32_t firstPosterId,
                          std::int32_t lastPosterId, bool spare);

}  // namespace tessaly
