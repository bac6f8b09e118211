#pragma once

#include <string>
#include <string_view>

#include "control/modDefinitions.h"

namespace tessaly {

// Turns the first image of a text into a BBCode image when its source lies on the old board; all other images
// stay. Raises 5 for a source without a double quote.
std::u16string ProcessImages(ConversionState& state, std::u16string_view text);

// The same in a routine of that label. A check goes on with the text as it was behind a failure, and is told
// of the other images: their tags are removed, and with them the images.
std::u16string TranslateImages(ConversionState& state, std::u16string_view label, std::u16string text);

}  // namespace tessaly
