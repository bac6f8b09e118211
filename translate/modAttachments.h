#pragma once

#include <cstdint>
#include <string>

#include "control/modDefinitions.h"

namespace tessaly {

// Takes the first attachment section out of a body: copies its file into the output folder under mybb's kind
// of name and renders its row. Gives "clip" when a file was taken, else "xx"; only then the body is changed.
std::u16string ProcessAttachments(ConversionState& state, std::u16string& body, std::int32_t memberNumber);

}  // namespace tessaly
