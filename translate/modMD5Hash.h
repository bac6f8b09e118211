#pragma once

#include <string>
#include <string_view>

namespace tessaly {

// The MD5 of a source file as 32 hexadecimal digits in upper case. Raises what reading raises.
std::u16string MD5HashString(std::u16string_view path);

}  // namespace tessaly
