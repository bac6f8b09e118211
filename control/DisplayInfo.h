#pragma once

#include <string_view>

#include "control/modDefinitions.h"

namespace tessaly {

// Tells the operator something, the only way there is. It goes to the text area when forced or when progress
// is shown, to the log when forced or when progress is logged, and to the error log when asked.
void DisplayInfo(ConversionState& state, std::u16string_view text, bool forceShow, bool forceLog,
                 bool writeErrorLog);

}  // namespace tessaly
