#include "platform/TextFile.h"

#include <utility>

#include "platform/paths.h"

namespace tessaly::platform {

namespace {

constexpr std::size_t kMostWaiting = 1 << 16;

NativeFile Open(std::u16string_view path, OpenMode mode) {
    const auto native = ToNative(path);
    return mode == OpenMode::kWriting ? NativeFile::OpenForWriting(native)
                                      : NativeFile::OpenForAppending(native);
}

std::u16string_view CharsetOf(TextFormat format) {
    switch (format) {
        case TextFormat::kUnicode:
            return u"utf-16le";
        case TextFormat::kSystemDefault:
            return SystemDefaultCharset();
        case TextFormat::kSingleByte:
            return SingleByteCharset();
        case TextFormat::kUtf8:
            return u"utf-8";
    }
    return {};
}

}  // namespace

TextFile::TextFile(std::u16string_view path, OpenMode mode, TextFormat format)
    : file_(Open(path, mode)), encoder_(CharsetOf(format)) {
    if (format == TextFormat::kUnicode && file_.Size() == 0) waiting_ = "\xFF\xFE";
}

void TextFile::Write(std::u16string_view text) {
    encoder_.Append(text, waiting_);
    if (waiting_.size() >= kMostWaiting) Flush();
}

void TextFile::WriteLine(std::u16string_view text) {
    encoder_.Append(text, waiting_);
    Write(u"\r\n");
}

void TextFile::Close() {
    Flush();
    file_.Close();
}

void TextFile::Flush() {
    const std::string bytes = std::exchange(waiting_, {});
    file_.Write(bytes);
}

TextFile::~TextFile() {
    IgnoringErrors([this] { Close(); });
}

}  // namespace tessaly::platform
