#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "control/modDefinitions.h"

namespace tessaly {

// Writes one forum row under the next number and enters the number under the name, the last forum of a name
// winning. `parentList` loses its trailing comma; its last number is the forum's parent. The order is not
// used.
void mybbWriteForumsFile(ConversionState& state, std::u16string_view name, std::int32_t& forumCounter,
                         std::int32_t forumOrder, std::u16string& parentList, std::u16string_view stype,
                         std::u16string_view description);

// The number of the forum that was entered last under a name. Raises 5 for a name that was not.
std::int32_t ForumIdOf(ConversionState& state, std::u16string_view name);

}  // namespace tessaly
