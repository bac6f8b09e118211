#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <limits>

#include "platform/SystemConverter.h"
#include "platform/ascii.h"
#include "platform/charset.h"
#include "text/RunTimeError.h"

namespace tessaly::platform {

namespace {

// The units in which a charset's converter differs from what the bytes are.
struct Correction {
    char16_t meant;
    char16_t converters;
};

// Converters of this family turn the three control bytes 0x1A, 0x1C and 0x7F round.
constexpr Correction kRotated[] = {{0x1A, 0x1C}, {0x1C, 0x7F}, {0x7F, 0x1A}};
// The byte of the backslash shows as a won sign there.
constexpr Correction kRotatedWithWon[] = {{0x1A, 0x1C}, {0x1C, 0x7F}, {0x7F, 0x1A}, {u'\\', u'\u20A9'}};

struct Corrections {
    const Correction* first = nullptr;
    const Correction* last = nullptr;
};

Corrections CorrectionsOf(const std::string& name) {
    if (name == "windows-31j") return {std::begin(kRotated), std::end(kRotated)};
    if (name == "iso-2022-kr") return {std::begin(kRotatedWithWon), std::end(kRotatedWithWon)};
    return {};
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
    Corrections corrections;

    ~Inner() {
        if (converter != nullptr) ucnv_close(converter);
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
    inner_->corrections = CorrectionsOf(name);
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
    const Corrections corrections = inner_->corrections;
    if (corrections.first == corrections.last) return text;
    for (char16_t& unit : text) {
        const auto* const wrong =
            std::find_if(corrections.first, corrections.last,
                         [unit](const Correction& one) { return one.converters == unit; });
        if (wrong != corrections.last) unit = wrong->meant;
    }
    return text;
}

void SystemConverter::Append(std::u16string_view text, std::string& bytes) {
    if (inner_->isUtf8) return AppendUtf8(text, bytes);
    const Corrections corrections = inner_->corrections;
    if (corrections.first == corrections.last) return inner_->Encode(text, false, bytes);
    std::u16string corrected(text);
    for (char16_t& unit : corrected) {
        const auto* const right = std::find_if(corrections.first, corrections.last,
                                               [unit](const Correction& one) { return one.meant == unit; });
        if (right != corrections.last) {
            unit = right->converters;
        } else if (unit == u'\u20A9') {
            // The won sign itself is a character that these charsets do not have.
            unit = u'?';
        }
    }
    inner_->Encode(corrected, false, bytes);
}

void SystemConverter::Finish(std::string& bytes) {
    if (inner_->isUtf8) return;
    inner_->Encode({}, true, bytes);
}

std::u16string_view SystemDefaultCharset() {
    return u"utf-8";
}

std::u16string_view SingleByteCharset() {
    return u"windows-1252";
}

}  // namespace tessaly::platform
