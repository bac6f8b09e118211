#pragma once

#include <string>
#include <string_view>

#include "platform/NativeFile.h"

namespace tessaly::platform {

// The lines of a text file, read block by block, so that a file of any size takes little memory. It serves
// charsets in which a line feed is never part of another character; a line begins in the charset's start
// state, as encoders leave it behind a line end.
class LineReader {
  public:
    // Raises 3002 when the file cannot be opened.
    LineReader(std::u16string_view path, std::u16string_view charset);

    // The next line without its line end, LF or CR LF; valid until the next call. False at the end of the
    // file.
    bool Next(std::u16string_view& line);

  private:
    bool ReadBlock();

    NativeFile file_;
    std::u16string charset_;
    std::string waiting_;  // bytes behind the last line end that was read
    std::u16string block_;
    std::size_t at_ = 0;
    bool isAtEnd_ = false;
};

// Whether all bytes of a file are well-formed UTF-8, and whether one of them is no character of the charset
// that browsers take for iso-8859-1.
struct ByteLook {
    bool isUtf8 = true;
    bool hasControls = false;
};
ByteLook LookAtBytes(std::u16string_view path);

}  // namespace tessaly::platform
