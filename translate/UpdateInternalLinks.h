#pragma once

#include "control/modDefinitions.h"

namespace tessaly {

// Goes through the internal links file and writes the update file, with the new address of each link whose
// topic is known. Makes no file when there are no links.
void UpdateInternalLinks(ConversionState& state);

}  // namespace tessaly
