#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <limits>
#include <span>
#include <utility>

#include "platform/SystemConverter.h"
#include "platform/ascii.h"
#include "platform/charset.h"
#include "text/RunTimeError.h"

namespace tessaly::platform {

namespace {

// A unit that a charset's converter has otherwise than the bytes mean it.
struct Correction {
    char16_t wrong;
    char16_t right;
};

using Corrections = std::span<const Correction>;

// Converters of the family of shift-jis turn three control bytes round. The byte of the backslash is a won
// sign in one charset and a yen sign in the Roman state of another: it is read as a backslash, and the signs
// themselves are characters that these charsets do not have. A logo is written as another sign.
constexpr char16_t kWon = u'\u20A9';
constexpr char16_t kYen = u'\u00A5';
constexpr char16_t kLogo = u'\uF86F';

constexpr Correction kShiftJisRead[] = {{0x1C, 0x1A}, {0x7F, 0x1C}, {0x1A, 0x7F}};
constexpr Correction kShiftJisWritten[] = {{0x1A, 0x1C}, {0x1C, 0x7F}, {0x7F, 0x1A}, {kLogo, u'?'}};
constexpr Correction kKoreanMailRead[] = {{0x1C, 0x1A}, {0x7F, 0x1C}, {0x1A, 0x7F}, {kWon, u'\\'}};
constexpr Correction kKoreanMailWritten[] = {
    {0x1A, 0x1C}, {0x1C, 0x7F}, {0x7F, 0x1A}, {u'\\', kWon}, {kWon, u'?'}};
constexpr Correction kJapaneseMailRead[] = {{kYen, u'\\'}};
constexpr Correction kJapaneseMailWritten[] = {{kYen, u'?'}, {kLogo, u'?'}};

void Correct(std::u16string& text, Corrections corrections) {
    if (corrections.empty()) return;
    for (char16_t& unit : text) {
        const auto wrong = std::ranges::find(corrections, unit, &Correction::wrong);
        if (wrong != corrections.end()) unit = wrong->right;
    }
}

// Writes "?" for what the charset does not have. The default drops characters of no width silently.
void WriteQuestionMark(const void*, UConverterFromUnicodeArgs* arguments, const UChar*, int32_t, UChar32,
                       UConverterCallbackReason reason, UErrorCode* error) {
    if (reason > UCNV_IRREGULAR) return;
    *error = U_ZERO_ERROR;
    const UChar mark[] = {u'?'};
    const UChar* source = mark;
    ucnv_cbFromUWriteUChars(arguments, &source, mark + 1, 0, error);
}

// Some converters have a replacement of their own for what does not decode.
void WriteReplacement(const void*, UConverterToUnicodeArgs* arguments, const char*, int32_t,
                      UConverterCallbackReason reason, UErrorCode* error) {
    if (reason > UCNV_IRREGULAR) return;
    *error = U_ZERO_ERROR;
    const UChar replacement = 0xFFFD;
    ucnv_cbToUWriteUChars(arguments, &replacement, 1, 0, error);
}

// The converter of utf-7 refuses the backslash, the tilde and control bytes, which pages hold as they are.
void WriteAsciiOrReplacement(const void* context, UConverterToUnicodeArgs* arguments, const char* bytes,
                             int32_t length, UConverterCallbackReason reason, UErrorCode* error) {
    const bool isAscii = length == 1 && static_cast<unsigned char>(*bytes) < 0x80;
    if (!isAscii || reason > UCNV_IRREGULAR) {
        return WriteReplacement(context, arguments, bytes, length, reason, error);
    }
    *error = U_ZERO_ERROR;
    const UChar unit = static_cast<unsigned char>(*bytes);
    ucnv_cbToUWriteUChars(arguments, &unit, 1, 0, error);
}

int32_t ToLength(std::size_t size) {
    if (size > static_cast<std::size_t>(std::numeric_limits<int32_t>::max()) / 2) Raise(kOutOfMemory);
    return static_cast<int32_t>(size);
}

std::u16string DecodeUtf8(std::string_view bytes) {
    std::u16string text(bytes.size(), u'\0');
    int32_t length = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8WithSub(text.data(), ToLength(text.size()), &length, bytes.data(), ToLength(bytes.size()),
                         0xFFFD, nullptr, &error);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

// The beginning that is ASCII, in whole blocks.
void AppendAscii(std::u16string_view& text, std::string& bytes) {
    std::size_t length = 0;
    while (text.size() - length >= kAsciiBlock && IsAsciiBlock(text.data() + length)) length += kAsciiBlock;
    const std::size_t old = bytes.size();
    bytes.resize(old + length);
    for (std::size_t at = 0; at < length; at += kAsciiBlock) {
        CopyAsciiBlock(text.data() + at, bytes.data() + old + at);
    }
    text.remove_prefix(length);
}

void AppendUtf8(std::u16string_view text, std::string& bytes) {
    AppendAscii(text, bytes);
    if (text.empty()) return;
    const std::size_t old = bytes.size();
    bytes.resize(old + text.size() * 3);
    int32_t length = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strToUTF8WithSub(bytes.data() + old, ToLength(text.size() * 3), &length, text.data(),
                       ToLength(text.size()), '?', nullptr, &error);
    bytes.resize(old + static_cast<std::size_t>(length));
}

}  // namespace

struct SystemConverter::Inner {
    bool isUtf8 = false;
    UConverter* converter = nullptr;
    Corrections read;
    Corrections written;
    bool hasText = false;

    ~Inner() {
        if (converter != nullptr) ucnv_close(converter);
    }

    void SetCorrections(const std::string& name) {
        if (name == "windows-31j") {
            read = kShiftJisRead;
            written = kShiftJisWritten;
        } else if (name == "iso-2022-kr") {
            read = kKoreanMailRead;
            written = kKoreanMailWritten;
        } else if (name == "iso-2022-jp") {
            read = kJapaneseMailRead;
            written = kJapaneseMailWritten;
        }
    }

    void Encode(std::u16string_view text, bool isLast, std::string& bytes) const {
        const UChar* source = text.data();
        const UChar* const end = source + text.size();
        UErrorCode error = U_BUFFER_OVERFLOW_ERROR;
        while (error == U_BUFFER_OVERFLOW_ERROR) {
            char piece[4096];
            char* target = piece;
            error = U_ZERO_ERROR;
            ucnv_fromUnicode(converter, &target, piece + sizeof piece, &source, end, nullptr, isLast, &error);
            bytes.append(piece, target);
        }
        if (U_FAILURE(error)) Raise(kInvalidCall);
    }
};

SystemConverter::SystemConverter(const std::string& name) : inner_(std::make_unique<Inner>()) {
    inner_->isUtf8 = name == "utf-8";
    if (inner_->isUtf8) return;
    // An empty name would open the converter of the machine's locale.
    if (name.empty()) Raise(kInvalidCall);
    UErrorCode error = U_ZERO_ERROR;
    inner_->converter = ucnv_open(name.c_str(), &error);
    if (U_FAILURE(error)) Raise(kInvalidCall);
    ucnv_setFromUCallBack(inner_->converter, WriteQuestionMark, nullptr, nullptr, nullptr, &error);
    const UConverterToUCallback toUnicode = name == "utf-7" ? WriteAsciiOrReplacement : WriteReplacement;
    ucnv_setToUCallBack(inner_->converter, toUnicode, nullptr, nullptr, nullptr, &error);
    inner_->SetCorrections(name);
}

SystemConverter::~SystemConverter() = default;

std::u16string SystemConverter::Decode(std::string_view bytes) {
    if (inner_->isUtf8) return DecodeUtf8(bytes);
    std::u16string text;
    const char* source = bytes.data();
    const char* const end = source + bytes.size();
    UErrorCode error = U_BUFFER_OVERFLOW_ERROR;
    ucnv_resetToUnicode(inner_->converter);
    text.reserve(bytes.size());
    while (error == U_BUFFER_OVERFLOW_ERROR) {
        UChar piece[4096];
        UChar* target = piece;
        error = U_ZERO_ERROR;
        ucnv_toUnicode(inner_->converter, &target, piece + std::size(piece), &source, end, nullptr, true,
                       &error);
        text.append(piece, target);
    }
    if (U_FAILURE(error)) Raise(kInvalidCall);
    Correct(text, inner_->read);
    return text;
}

void SystemConverter::Append(std::u16string_view text, std::string& bytes) {
    if (inner_->isUtf8) return AppendUtf8(text, bytes);
    if (text.empty()) return;
    inner_->hasText = true;
    if (inner_->written.empty()) return inner_->Encode(text, false, bytes);
    std::u16string corrected(text);
    Correct(corrected, inner_->written);
    inner_->Encode(corrected, false, bytes);
}

void SystemConverter::Finish(std::string& bytes) {
    // Without a text there would still be the head that iso-2022-kr writes.
    if (!std::exchange(inner_->hasText, false)) return;
    inner_->Encode({}, true, bytes);
}

std::u16string_view SystemDefaultCharset() {
    return u"utf-8";
}

std::u16string_view SingleByteCharset() {
    return u"windows-1252";
}

}  // namespace tessaly::platform
