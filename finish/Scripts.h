#pragma once

#include <string_view>
#include <vector>

#include "finish/TableFile.h"

namespace tessaly {

// Writes "1 Check.sql" and "2 Load.sql" into a folder, which ends with a backslash. The members' names are
// those that must not be in use yet.
void WriteScripts(std::u16string_view folder, std::u16string_view prefix,
                  const std::vector<TableSummary>& tables, const std::vector<std::u16string>& memberNames);

}  // namespace tessaly
