#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "finish/Board.h"
#include "finish/TableFile.h"

namespace tessaly {

// Writes README.txt, "3 After.txt" and, when something was left over, "Left over.txt".
void WriteGuide(const Board& board, const std::vector<TableSummary>& tables, std::int64_t pages,
                std::u16string_view folder);

// What came out and what to look at, for the operator's screen.
std::u16string FinishSummary(const Board& board, const std::vector<TableSummary>& tables);

}  // namespace tessaly
