#pragma once

#include <string_view>

#include "control/modDefinitions.h"

namespace tessaly {

// Deletes a folder with all it holds, unless it is one that must be kept: a root, the operator's home, the
// program's folder, a folder of the source, or one that holds any of these. A refusal shows a message and
// raises 70, like any failed delete.
void DeleteFolder(const ConversionState& state, std::u16string_view folder);

// Whether that delete would not be refused; else the refusal's message is shown.
bool MayDeleteFolder(const ConversionState& state, std::u16string_view folder);

}  // namespace tessaly
