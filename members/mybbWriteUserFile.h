#pragma once

#include "control/modDefinitions.h"

namespace tessaly {

// Writes a row for each member but the administrator, after a cancel too, and finishes the family.
void mybbWriteUserFile(ConversionState& state);

}  // namespace tessaly
