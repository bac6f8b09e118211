#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace tessaly::platform {

class SystemConverter;
struct ByteTable;

// The text that the bytes of a whole file are in a charset. Charset names are read the way browsers read them
// in a page and compared without regard to case. A byte-order mark at the head is dropped, bytes that do not
// decode become U+FFFD. Raises 5 for a name that no decoder knows.
std::u16string Decode(std::string_view bytes, std::u16string_view charset);

// Turns a text into the bytes of a charset, piece by piece; a piece ends behind a whole character. No
// byte-order mark is written. A character that the charset does not have becomes "?", one for a surrogate
// pair.
class Encoder {
  public:
    // Raises 5 for a name that no encoder knows.
    explicit Encoder(std::u16string_view charset);
    ~Encoder();
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;

    void Append(std::u16string_view text, std::string& bytes);

    // Ends the text: a stateful charset is brought back to its start state.
    void Finish(std::string& bytes);

  private:
    // Just one of the two: a table for a charset of single bytes, the system's converter for the others.
    const ByteTable* table_ = nullptr;
    std::unique_ptr<SystemConverter> converter_;
};

std::string ToUtf8(std::u16string_view text);
std::u16string FromUtf8(std::string_view bytes);

// The names of the system's own encodings: of plain text files, and of single bytes.
std::u16string_view SystemDefaultCharset();
std::u16string_view SingleByteCharset();

}  // namespace tessaly::platform
