#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/NativeFile.h"
#include "platform/charset.h"

namespace tessaly::platform {

enum class OpenMode { kWriting, kAppending };

enum class TextFormat {
    kUnicode,        // 16-bit units, low byte first, a byte-order mark at the head of the file
    kSystemDefault,  // the system's own encoding of text files
    kSingleByte,     // the system's code page of single bytes
    kUtf8,           // without a byte-order mark
};

// A text file written line by line. What was written is on disk when the file is closed, or sooner.
class TextFile {
  public:
    // Opens the file, creating it if needed.
    TextFile(std::u16string_view path, OpenMode mode, TextFormat format);

    // The text as it stands.
    void Write(std::u16string_view text);

    // The text with carriage return and line feed behind it.
    void WriteLine(std::u16string_view text);

    // Raises what writing the rest raises. A file that is not closed is closed at its end of life, silently.
    void Close();

    ~TextFile();
    TextFile(const TextFile&) = delete;
    TextFile& operator=(const TextFile&) = delete;

  private:
    void Flush();

    NativeFile file_;
    Encoder encoder_;
    std::string waiting_;
};

}  // namespace tessaly::platform
