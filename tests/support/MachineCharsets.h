#pragma once

#include <cstdlib>
#include <string>
#include <string_view>

namespace tessaly::testing {

// A machine that lacks charsets names them; Wine does, which stands in for Windows.
inline bool IsThere(std::u16string_view charset) {
    const char* const missing = std::getenv("TESSALY_MISSING_CHARSETS");
    const std::string name(charset.begin(), charset.end());
    return missing == nullptr || std::string_view(missing).find(name) == std::string_view::npos;
}

}  // namespace tessaly::testing
