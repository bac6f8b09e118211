#pragma once

#include <string>
#include <string_view>

#include "control/modDefinitions.h"

namespace tessaly {

// Fills `ReplaceableCharacters` from the character file of a charset. A file that is missing or empty is
// reported, and the run goes on without it.
void DiscusGetReplaceableCharacterArray(ConversionState& state, std::u16string_view charset);

// Replaces each sequence "&...;" of 4 to 10 characters without a blank by its character, everywhere in the
// text and in whatever case. An unknown one is logged once a run and stays, in the spelling met first.
void DiscusFindSpecialCharacterSequences(ConversionState& state, std::u16string& text);

}  // namespace tessaly
