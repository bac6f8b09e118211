#pragma once

#include <string>
#include <string_view>

#include "control/modDefinitions.h"

namespace tessaly {

// Sets the program's name and folder, and the settings file where that is not the one beside the program: the
// one given, or the user's own when the program's folder cannot be written. What is given may be empty.
void NameProgram(ConversionState& state, std::u16string_view programFolder, std::u16string_view settingsFile);

// A line that tells the operator where the settings are; empty when they lie beside the program.
std::u16string SettingsNote(const ConversionState& state);

}  // namespace tessaly
