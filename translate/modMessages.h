#pragma once

#include <cstdint>
#include <string_view>

#include "control/modDefinitions.h"

namespace tessaly {

// Turns all posts of a page into rows, in the order of their dates, each followed by the attachment row of
// the same ordinal. Leaves the numbers of the first and last post and poster in the data index and the two
// times in the state. The topic's name and the two posters given are not used.
void DiscusProcessPostsOnPage(ConversionState& state, std::u16string_view pagePath,
                              std::u16string_view pageTitle, std::u16string_view topicName,
                              std::u16string_view meName, std::u16string_view subject, std::int32_t forumId,
                              std::int32_t firstPoster, std::int32_t lastPoster,
                              std::u16string_view pageData);

}  // namespace tessaly
