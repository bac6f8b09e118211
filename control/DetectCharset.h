#pragma once

#include <string>
#include <string_view>

#include "control/modDefinitions.h"

namespace tessaly {

// Puts the charset that the board's first page names into `Charset` and `cboCharset`, "utf-8" when it names
// none, and the empty text when there is no page. Gives the empty text itself. Raises 76 without a message
// folder, 5 for a charset tag that no double quote ends.
std::u16string DetectCharset(ConversionState& state);

// Full path of the first file whose name holds the pattern, telling upper from lower case, among the files
// that lie just one level below the folder; empty when there is none. Raises 76 for a folder that is not
// there.
std::u16string FindTheFile(std::u16string_view folder, std::u16string_view pattern);

}  // namespace tessaly
