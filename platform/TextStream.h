#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/charset.h"

namespace tessaly::platform {

// A text in memory, kept as the bytes of its charset, that is saved to disk whole.
class TextStream {
  public:
    // Raises 5 for an unknown charset.
    explicit TextStream(std::u16string_view charset) : encoder_(charset) {}

    void WriteText(std::u16string_view text);

    // The text with carriage return and line feed behind it.
    void WriteLine(std::u16string_view text);

    // Writes all of it to the path, replacing an existing file. Raises 3004 when that fails; the text stays.
    void SaveToFile(std::u16string_view path);

  private:
    std::string& Piece();

    Encoder encoder_;
    // Pieces of about a megabyte: a long text grows without being copied.
    std::vector<std::string> pieces_;
};

}  // namespace tessaly::platform
