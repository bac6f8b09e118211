#pragma once

#include <string_view>
#include <vector>

#include "finish/Board.h"
#include "finish/TableFile.h"

namespace tessaly {

// Writes the seven tables of an indexed and numbered board into a folder, which ends with a backslash.
std::vector<TableSummary> WriteTables(Board& board, std::u16string_view folder);

// The names under which the members go, in the order of the import files, for whoever has to look for them.
std::vector<std::u16string> MemberNames(const Board& board);

}  // namespace tessaly
