#pragma once

#include <bitset>
#include <memory>
#include <string>
#include <string_view>

namespace tessaly {

// Tells which characters a charset has. Each is tried once.
class CharsetTest {
  public:
    explicit CharsetTest(std::u16string_view charset) : charset_(charset), known_(new Known) {}

    // The first character of a text, at or behind a place, that the charset lacks; empty when it has all.
    std::u16string_view FirstLacked(std::u16string_view text, std::size_t from = 0);

  private:
    static constexpr std::size_t kCharacters = 0x110000;

    struct Known {
        std::bitset<kCharacters> isTried;
        std::bitset<kCharacters> isLacked;
    };

    bool IsLacked(std::u16string_view character) const;

    std::u16string charset_;
    std::unique_ptr<Known> known_;
};

}  // namespace tessaly
