#pragma once

#include <string>
#include <string_view>

#include "control/modDefinitions.h"

namespace tessaly {

// Turns the first image of a text into a BBCode image when its source lies on the old board; all other images
// stay. Raises 5 for a source without a double quote.
std::u16string ProcessImages(ConversionState& state, std::u16string_view text);

// Tells a check of the images that stay: their tags are removed, and with them the images.
void NoteLostImages(const ConversionState& state, std::u16string_view text);

}  // namespace tessaly
