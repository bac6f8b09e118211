#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

namespace tessaly {

// The text's first so many characters, a pair of surrogates being one, without blanks at the end of a cut.
std::u16string CutTo(std::u16string_view text, std::size_t characters);

// Gives out names of which no database takes two for the same.
class UniqueNames {
  public:
    // The name, cut to its length; where that is taken already, with "_" and the number behind it.
    std::u16string Take(std::u16string_view name, std::size_t characters, std::int32_t number);

  private:
    bool IsFree(std::u16string_view name);

    std::unordered_set<std::string> keys_;
};

}  // namespace tessaly
