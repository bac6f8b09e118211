#pragma once

#include <string>
#include <string_view>

namespace tessaly::platform {

// Two texts have the same key when databases may take them for the same name: case, accents, the kind of kana
// and blanks at the end do not count.
std::string LooseKey(std::u16string_view text);

}  // namespace tessaly::platform
