#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tessaly::platform {

// A path's text and back, separators as they stand. Where paths are bytes, they are UTF-8; a byte that is
// none of it travels as a lone surrogate, U+DC80 to U+DCFF, and comes back as it was.
std::filesystem::path ToNativeText(std::u16string_view text);
std::u16string FromNativeText(const std::filesystem::path& path);

}  // namespace tessaly::platform
