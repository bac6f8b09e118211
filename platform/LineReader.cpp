#include "platform/LineReader.h"

#include <utility>

#include "platform/charset.h"
#include "platform/paths.h"

namespace tessaly::platform {

namespace {

constexpr std::size_t kBlockSize = 1 << 20;

NativeFile Open(std::u16string_view path) {
    try {
        return NativeFile::OpenForReading(ToNative(path));
    } catch (const RunTimeError&) {
        Raise(kFileNotOpened);
    }
}

// The file's lines as bytes, up to the last line end of a block; what stands behind it begins the next one.
bool ReadLines(NativeFile& file, std::string& waiting, std::string& lines, bool& isAtEnd) {
    lines = std::exchange(waiting, {});
    while (!isAtEnd) {
        const std::size_t old = lines.size();
        lines.resize(old + kBlockSize);
        const std::size_t got = file.Read(lines.data() + old, kBlockSize);
        lines.resize(old + got);
        isAtEnd = got == 0;
        const std::size_t end = std::string_view(lines).substr(old).rfind('\n');
        if (isAtEnd || end == std::string::npos) continue;
        waiting = lines.substr(old + end + 1);
        lines.resize(old + end + 1);
        return true;
    }
    return !lines.empty();
}

// The bytes that windows-1252 has no characters for.
bool IsControl(char byte) {
    return std::string_view("\x81\x8D\x8F\x90\x9D").find(byte) != std::string_view::npos;
}

}  // namespace

LineReader::LineReader(std::u16string_view path, std::u16string_view charset)
    : file_(Open(path)), charset_(charset) {
}

bool LineReader::Next(std::u16string_view& line) {
    if (at_ >= block_.size() && !ReadBlock()) return false;
    const std::u16string_view rest = std::u16string_view(block_).substr(at_);
    const std::size_t end = rest.find(u'\n');
    line = rest.substr(0, end);
    at_ = end == std::u16string_view::npos ? block_.size() : at_ + end + 1;
    if (line.ends_with(u'\r')) line.remove_suffix(1);
    return true;
}

bool LineReader::ReadBlock() {
    std::string lines;
    if (!ReadLines(file_, waiting_, lines, isAtEnd_)) return false;
    block_ = Decode(lines, charset_);
    at_ = 0;
    return !block_.empty();
}

ByteLook LookAtBytes(std::u16string_view path) {
    NativeFile file = Open(path);
    ByteLook look;
    std::string waiting;
    std::string lines;
    bool isAtEnd = false;
    while (ReadLines(file, waiting, lines, isAtEnd)) {
        for (const char byte : lines) look.hasControls = look.hasControls || IsControl(byte);
        look.isUtf8 = look.isUtf8 && ToUtf8(FromUtf8(lines)) == lines;
    }
    return look;
}

}  // namespace tessaly::platform
