#pragma once

#include <string>
#include <string_view>

#include "control/modDefinitions.h"

namespace tessaly {

// The whole text of a source file without its NUL characters. An empty charset stands for `Charset`, and that
// empty for "utf-8". With `findSequences` special character sequences are exchanged. A file that cannot be
// read gives the empty text and asks the run to stop.
void GetFileDataCharset(ConversionState& state, std::u16string_view path, std::u16string& text,
                        std::u16string_view charset, bool findSequences);

// The same as "us-ascii"; a sequence search changes nothing in the text.
void GetFileDataANSI(ConversionState& state, std::u16string_view path, std::u16string& text,
                     bool findSequences);

}  // namespace tessaly
