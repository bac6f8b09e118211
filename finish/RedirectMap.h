#pragma once

#include <cstdint>
#include <string_view>

#include "finish/Board.h"

namespace tessaly {

// Writes the redirect map, old path to new address, a line a page: as an nginx map and as the text of an
// Apache RewriteMap. Gives the number of pages.
std::int64_t WriteRedirectMap(const Board& board, std::u16string_view folder);

}  // namespace tessaly
