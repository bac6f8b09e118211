#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessaly::platform {

// The value of a key, none when the file, the section or the key is not there or cannot be read.
std::optional<std::u16string> ReadIni(std::u16string_view file, std::u16string_view section,
                                      std::u16string_view key);

// Writes one key, creating what is missing and keeping the file's other sections, keys and comments. Line
// ends in the value become blanks; blanks at its ends are kept. Raises 75 when the file cannot be written.
void WriteIni(std::u16string_view file, std::u16string_view section, std::u16string_view key,
              std::u16string_view value);

}  // namespace tessaly::platform
