#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace tessaly::platform {

// The operating system's converter for one charset, with the corrections that make it read and write a
// backslash and the control characters as what they are.
class SystemConverter {
  public:
    // The name in lower case, after browsers' names were mapped. Raises 5 when the system knows no such
    // charset.
    explicit SystemConverter(const std::string& name);
    ~SystemConverter();
    SystemConverter(const SystemConverter&) = delete;
    SystemConverter& operator=(const SystemConverter&) = delete;

    // The bytes of a whole text; what does not decode becomes U+FFFD.
    std::u16string Decode(std::string_view bytes);

    // Appends one piece of a text. The shift state stays for the next piece.
    void Append(std::u16string_view text, std::string& bytes);

    // Brings the shift state back to its start.
    void Finish(std::string& bytes);

  private:
    struct Inner;
    std::unique_ptr<Inner> inner_;
};

}  // namespace tessaly::platform
