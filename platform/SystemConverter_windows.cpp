#include "platform/SystemConverter.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/WindowsApi.h"
#include "platform/charset.h"

namespace tessaly::platform {

namespace {

constexpr UINT kUtf16 = 1200;
constexpr UINT kEucJp = 20932;
constexpr UINT kGb18030 = 54936;

struct NamedCodePage {
    std::string_view name;
    UINT codePage;
};

constexpr NamedCodePage kCodePages[] = {
    {"utf-16le", kUtf16},   {"utf-8", CP_UTF8},     {"utf-7", CP_UTF7},     {"gbk", 936},
    {"gb18030", kGb18030},  {"hz-gb-2312", 52936},  {"big5", 950},          {"windows-31j", 932},
    {"windows-949", 949},   {"euc-jp", kEucJp},     {"iso-2022-jp", 50220}, {"iso-2022-kr", 50225},
    {"windows-874", 874},   {"windows-1250", 1250}, {"windows-1251", 1251}, {"windows-1252", 1252},
    {"windows-1253", 1253}, {"windows-1254", 1254}, {"windows-1255", 1255}, {"windows-1256", 1256},
    {"windows-1257", 1257}, {"windows-1258", 1258}, {"iso-8859-2", 28592},  {"iso-8859-3", 28593},
    {"iso-8859-4", 28594},  {"iso-8859-5", 28595},  {"iso-8859-6", 28596},  {"iso-8859-7", 28597},
    {"iso-8859-8", 28598},  {"iso-8859-10", 28600}, {"iso-8859-13", 28603}, {"iso-8859-14", 28604},
    {"iso-8859-15", 28605}, {"koi8-r", 20866},      {"koi8-u", 21866},      {"ibm866", 866},
    {"macintosh", 10000},
};

UINT CodePageOf(const std::string& name) {
    for (const NamedCodePage& known : kCodePages) {
        if (known.name != name) continue;
        if (known.codePage == kUtf16 || ::IsValidCodePage(known.codePage) != 0) return known.codePage;
    }
    Raise(kInvalidCall);
}

// Seven-bit charsets: they shift between meanings, and the system takes no wishes for them.
bool IsShifting(UINT codePage) {
    return codePage == CP_UTF7 || codePage == 52936 || (codePage >= 50220 && codePage <= 50229);
}

bool HasAllCharacters(UINT codePage) {
    return codePage == kUtf16 || codePage == CP_UTF8 || codePage == CP_UTF7 || codePage == kGb18030;
}

// EUC-JP writes the supplementary characters of JIS X 0212 as this byte and two more. The code page has them
// in two, the second without its eighth bit.
constexpr char kThreeBytes = '\x8F';

int ToLength(std::size_t size) {
    if (size > static_cast<std::size_t>(std::numeric_limits<int>::max()) / 4) Raise(kOutOfMemory);
    return static_cast<int>(size);
}

bool IsSurrogate(char16_t unit) {
    return (unit & 0xF800) == 0xD800;
}

bool HasEighthBit(char byte) {
    return static_cast<unsigned char>(byte) >= 0x80;
}

// Units for private use that some code pages put for bytes without a character. They refuse the bytes.
bool IsByteWithoutCharacter(wchar_t unit) {
    return unit >= 0xF8F0 && unit <= 0xF8FF;
}

bool IsPair(std::u16string_view text, std::size_t at) {
    return at + 1 < text.size() && (text[at] & 0xFC00) == 0xD800 && (text[at + 1] & 0xFC00) == 0xDC00;
}

// Each lone surrogate as the replacement; pairs too, unless they are kept.
std::u16string WithSurrogatesReplaced(std::u16string_view text, bool keepsPairs, char16_t replacement) {
    std::u16string replaced;
    replaced.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!IsSurrogate(text[at])) {
            replaced += text[at];
            continue;
        }
        const bool isPair = IsPair(text, at);
        if (isPair && keepsPairs) {
            replaced += text.substr(at, 2);
        } else {
            replaced += replacement;
        }
        if (isPair) ++at;
    }
    return replaced;
}

// Appends what the bytes are; false and nothing when the flags make the system refuse them.
bool AppendUnits(UINT codePage, DWORD flags, std::string_view bytes, std::u16string& text) {
    if (bytes.empty()) return true;
    // No code page makes more units than bytes.
    std::wstring units(bytes.size(), L'\0');
    const int length = ToLength(bytes.size());
    const int got = ::MultiByteToWideChar(codePage, flags, bytes.data(), length, units.data(), length);
    if (got == 0) return false;
    text.append(units.begin(), units.begin() + got);
    return true;
}

// The head's length as a character of the code page, appended to the text; 0 when it is none.
std::size_t AppendCharacter(UINT codePage, std::string_view bytes, std::u16string& text) {
    constexpr std::size_t kLongest = 4;
    for (std::size_t length = 1; length <= std::min(kLongest, bytes.size()); ++length) {
        if (AppendUnits(codePage, MB_ERR_INVALID_CHARS, bytes.substr(0, length), text)) return length;
    }
    return 0;
}

// A lead byte takes its partner along unless that is a plain ASCII character.
std::size_t UndecodableLength(UINT codePage, std::string_view bytes) {
    const bool isLead = ::IsDBCSLeadByteEx(codePage, static_cast<BYTE>(bytes[0])) != 0;
    return isLead && bytes.size() > 1 && HasEighthBit(bytes[1]) ? 2 : 1;
}

// The system has replacements of its own for what does not decode, so text that it refuses goes character by
// character.
std::u16string DecodeStrictly(UINT codePage, std::string_view bytes) {
    std::u16string text;
    if (AppendUnits(codePage, MB_ERR_INVALID_CHARS, bytes, text)) return text;
    while (!bytes.empty()) {
        std::size_t length = AppendCharacter(codePage, bytes, text);
        if (length == 0) {
            text += u'\uFFFD';
            length = UndecodableLength(codePage, bytes);
        }
        bytes.remove_prefix(length);
    }
    return text;
}

// No byte of these charsets has its eighth bit set; the text around one that has is decoded by itself.
std::u16string DecodeShifting(UINT codePage, std::string_view bytes) {
    std::u16string text;
    while (true) {
        const auto* const wrong = std::ranges::find_if(bytes, HasEighthBit);
        const auto length = static_cast<std::size_t>(wrong - bytes.begin());
        AppendUnits(codePage, 0, bytes.substr(0, length), text);
        if (length == bytes.size()) return text;
        text += u'\uFFFD';
        bytes.remove_prefix(length + 1);
    }
}

// The length of what begins with a byte that has its eighth bit set.
std::size_t EucJpLength(std::string_view bytes) {
    constexpr char kHalfWidth = '\x8E';
    const bool isLead = static_cast<unsigned char>(bytes[0]) > 0xA0;
    std::size_t longest = isLead || bytes[0] == kHalfWidth ? 2 : 1;
    if (bytes[0] == kThreeBytes) longest = 3;
    std::size_t length = 1;
    while (length < std::min(longest, bytes.size()) && HasEighthBit(bytes[length])) ++length;
    return length;
}

std::u16string DecodeEucJp(std::string_view bytes) {
    std::u16string text;
    while (!bytes.empty()) {
        const auto ascii =
            static_cast<std::size_t>(std::ranges::find_if(bytes, HasEighthBit) - bytes.begin());
        text.append(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(ascii));
        bytes.remove_prefix(ascii);
        if (bytes.empty()) break;
        const std::size_t length = EucJpLength(bytes);
        std::string character(bytes.substr(0, length));
        if (length == 3) character = {bytes[1], static_cast<char>(bytes[2] & 0x7F)};
        if (!AppendUnits(kEucJp, MB_ERR_INVALID_CHARS, character, text)) text += u'\uFFFD';
        bytes.remove_prefix(length);
    }
    return text;
}

// Of the code page's bytes, as DecodeEucJp takes them.
std::string UnfoldedEucJp(std::string_view folded) {
    std::string bytes;
    for (std::size_t at = 0; at < folded.size(); ++at) {
        if (!HasEighthBit(folded[at]) || at + 1 == folded.size()) {
            bytes += folded[at];
            continue;
        }
        const bool hasThree = !HasEighthBit(folded[at + 1]);
        if (hasThree) bytes += kThreeBytes;
        bytes += folded[at];
        bytes += static_cast<char>(folded[++at] | 0x80);
    }
    return bytes;
}

std::u16string DecodeUtf8(std::string_view bytes) {
    std::u16string text;
    AppendUnits(CP_UTF8, 0, bytes, text);
    return text;
}

std::u16string DecodeUtf16(std::string_view bytes) {
    std::u16string text;
    text.reserve(bytes.size() / 2 + 1);
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const auto low = static_cast<unsigned char>(bytes[at]);
        const auto high = static_cast<unsigned char>(bytes[at + 1]);
        text += static_cast<char16_t>(high << 8 | low);
    }
    if (bytes.size() % 2 != 0) text += u'\uFFFD';
    if (std::ranges::none_of(text, IsSurrogate)) return text;
    return WithSurrogatesReplaced(text, true, u'\uFFFD');
}

void AppendUtf16(std::u16string_view text, std::string& bytes) {
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
}

bool IsLetterOfBase64(char16_t unit) {
    const bool isLetter = (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z');
    return isLetter || (unit >= u'0' && unit <= u'9') || unit == u'+' || unit == u'/';
}

bool IsPlainInUtf7(char16_t unit) {
    if (unit == u'\t' || unit == u'\n' || unit == u'\r') return true;
    return unit >= u' ' && unit <= u'}' && unit != u'+' && unit != u'\\';
}

void AppendBase64(std::u16string_view text, std::string& bytes) {
    constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr int kLetterBits = 6;
    unsigned waiting = 0;
    int bits = 0;
    for (const char16_t unit : text) {
        waiting = (waiting & 0x3F) << 16 | unit;
        for (bits += 16; bits >= kLetterBits; bits -= kLetterBits)
            bytes += kLetters[waiting >> (bits - kLetterBits) & 0x3F];
    }
    if (bits > 0) bytes += kLetters[waiting << (kLetterBits - bits) & 0x3F];
}

// The system's own encoder wraps up quotes and brackets too, which import files and pages need as they are.
void AppendUtf7(std::u16string_view text, std::string& bytes) {
    while (!text.empty()) {
        const char16_t unit = text.front();
        if (unit == u'+' || IsPlainInUtf7(unit)) {
            bytes += static_cast<char>(unit);
            if (unit == u'+') bytes += '-';
            text.remove_prefix(1);
            continue;
        }
        const auto length =
            static_cast<std::size_t>(std::ranges::find_if(text, IsPlainInUtf7) - text.begin());
        bytes += '+';
        AppendBase64(text.substr(0, length), bytes);
        text.remove_prefix(length);
        if (text.empty() || text.front() == u'-' || IsLetterOfBase64(text.front())) bytes += '-';
    }
}

// Free of lone surrogates, and of pairs where the code page has none.
void AppendBytes(UINT codePage, std::u16string_view text, std::string& bytes) {
    if (text.empty()) return;
    const bool takesWishes = !HasAllCharacters(codePage) && !IsShifting(codePage);
    const DWORD flags = takesWishes ? WC_NO_BEST_FIT_CHARS : 0;
    const char* const missing = takesWishes ? "?" : nullptr;
    std::wstring units(text.begin(), text.end());
    if (takesWishes) std::ranges::replace_if(units, IsByteWithoutCharacter, L'?');
    const int length = ToLength(units.size());
    const int size =
        ::WideCharToMultiByte(codePage, flags, units.data(), length, nullptr, 0, missing, nullptr);
    if (size <= 0) Raise(kInvalidCall);
    const std::size_t old = bytes.size();
    bytes.resize(old + static_cast<std::size_t>(size));
    ::WideCharToMultiByte(codePage, flags, units.data(), length, bytes.data() + old, size, missing, nullptr);
}

// "1252" as "windows-1252", under which charsets of single bytes have their tables.
std::string NameOf(UINT codePage) {
    for (const NamedCodePage& known : kCodePages) {
        if (known.codePage == codePage) return std::string(known.name);
    }
    return "utf-8";
}

std::u16string ActiveCharset() {
    const std::string name = NameOf(::GetACP());
    return std::u16string(name.begin(), name.end());
}

}  // namespace

struct SystemConverter::Inner {
    UINT codePage = 0;
    // Text of a shifting charset is converted as a whole, since the system keeps no state between calls.
    std::u16string waiting;
};

SystemConverter::SystemConverter(const std::string& name) : inner_(std::make_unique<Inner>()) {
    inner_->codePage = CodePageOf(name);
}

SystemConverter::~SystemConverter() = default;

std::u16string SystemConverter::Decode(std::string_view bytes) {
    const UINT codePage = inner_->codePage;
    if (codePage == CP_UTF8) return DecodeUtf8(bytes);
    if (codePage == kUtf16) return DecodeUtf16(bytes);
    if (IsShifting(codePage)) return DecodeShifting(codePage, bytes);
    if (codePage == kEucJp) return DecodeEucJp(bytes);
    return DecodeStrictly(codePage, bytes);
}

void SystemConverter::Append(std::u16string_view text, std::string& bytes) {
    const UINT codePage = inner_->codePage;
    if (IsShifting(codePage)) {
        inner_->waiting += text;
        return;
    }
    std::u16string replaced;
    if (std::ranges::any_of(text, IsSurrogate)) {
        replaced = WithSurrogatesReplaced(text, HasAllCharacters(codePage), u'?');
        text = replaced;
    }
    if (codePage == kUtf16) return AppendUtf16(text, bytes);
    if (codePage != kEucJp) return AppendBytes(codePage, text, bytes);
    std::string folded;
    AppendBytes(codePage, text, folded);
    bytes += UnfoldedEucJp(folded);
}

void SystemConverter::Finish(std::string& bytes) {
    const UINT codePage = inner_->codePage;
    const std::u16string text = std::exchange(inner_->waiting, {});
    if (codePage == CP_UTF7) return AppendUtf7(text, bytes);
    AppendBytes(codePage, WithSurrogatesReplaced(text, HasAllCharacters(codePage), u'?'), bytes);
}

std::u16string_view SystemDefaultCharset() {
    static const std::u16string charset = ActiveCharset();
    return charset;
}

std::u16string_view SingleByteCharset() {
    return SystemDefaultCharset();
}

}  // namespace tessaly::platform
