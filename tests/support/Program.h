#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "control/modDefinitions.h"
#include "tests/support/TemporaryFolder.h"

namespace tessaly::testing {

// A program in a folder of its own that has not filled its fields yet. Its settings file, tessaly-test.ini,
// holds the lines of the section "Settings" that are given; without any there is no such file.
class Program {
  public:
    explicit Program(std::string_view settings = {});

    // The value that the settings file holds under a key, none when it holds no such line.
    std::optional<std::string> Setting(std::string_view key) const;

    TemporaryFolder folder;
    ConversionState state;
    std::vector<std::u16string> messages;
    std::vector<const TextField*> focused;
};

// The value of a key, spelled just so, in the bytes of a settings file.
std::optional<std::string> SettingIn(std::string_view bytes, std::string_view key);

}  // namespace tessaly::testing
