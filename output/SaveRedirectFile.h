#pragma once

#include <cstdint>
#include <string_view>

#include "control/modDefinitions.h"

namespace tessaly {

// Writes the redirection page of one Discus page: the template with its five placeholders replaced, below
// "redirect\" where the page lay below the Discus root. Does nothing with the option off.
void SaveRedirectFile(ConversionState& state, std::u16string_view path, std::int32_t number,
                      std::u16string_view textA, std::u16string_view textB, std::u16string_view textC);

}  // namespace tessaly
