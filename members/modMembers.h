#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "control/modDefinitions.h"

namespace tessaly {

// Reads the member file into the members' collections, the administrator as number 1 before all others.
// Reports nothing and ignores its own failures; does nothing after a cancel.
void DiscusReadUserFile(ConversionState& state);

// Adds one member from the fields of his line: name, password, e-mail, real name, two unread, registration
// time, address, time of the last post, groups. Gives the member's number. A name that is taken gets the
// number behind it, the real name behind a blank, the user name behind "_".
std::int32_t DiscusAddMember(ConversionState& state, const std::vector<std::u16string_view>& fields);

// Adds the groups of a line, each at its first sighting. The names are cleaned in place.
void DiscusAddGroups(ConversionState& state, std::vector<std::u16string>& names);

}  // namespace tessaly
