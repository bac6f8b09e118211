#include "platform/charset.h"

#include <algorithm>
#include <array>
#include <map>

#include "platform/SystemConverter.h"
#include "platform/ascii.h"
#include "text/RunTimeError.h"
#include "text/folding.h"
#include "text/split.h"

namespace tessaly::platform {

// Both directions of a charset of single bytes. A unit that the charset does not have encodes as 0, which
// stands for itself at U+0000 alone.
struct ByteTable {
    std::array<char16_t, 256> units{};
    std::array<char, 65536> bytes{};
};

namespace {

struct BrowserName {
    std::string_view name;
    std::string_view meaning;
};

// Pages call by these names what their authors' machines wrote: the wider charset.
constexpr BrowserName kBrowserNames[] = {
    {"ascii", "windows-1252"},
    {"iso-8859-1", "windows-1252"},
    {"iso8859-1", "windows-1252"},
    {"latin1", "windows-1252"},
    {"us-ascii", "windows-1252"},
    {"iso-8859-9", "windows-1254"},
    {"iso8859-9", "windows-1254"},
    {"latin5", "windows-1254"},
    {"gb2312", "gbk"},
    {"gb_2312-80", "gbk"},
    {"x-gbk", "gbk"},
    {"euc-kr", "windows-949"},
    {"ks_c_5601-1987", "windows-949"},
    {"shift-jis", "windows-31j"},
    {"shift_jis", "windows-31j"},
    {"sjis", "windows-31j"},
    {"x-sjis", "windows-31j"},
    {"tis-620", "windows-874"},
    {"iso-8859-8-i", "iso-8859-8"},
    {"utf8", "utf-8"},
    {"utf-16", "utf-16le"},
};

constexpr std::string_view kSingleByteNames[] = {
    "windows-1250", "windows-1251", "windows-1252", "windows-1253", "windows-1254", "windows-1255",
    "windows-1256", "windows-1257", "windows-1258", "windows-874",  "iso-8859-2",   "iso-8859-3",
    "iso-8859-4",   "iso-8859-5",   "iso-8859-6",   "iso-8859-7",   "iso-8859-8",   "iso-8859-10",
    "iso-8859-13",  "iso-8859-14",  "iso-8859-15",  "koi8-r",       "koi8-u",
};

bool IsNameUnit(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'0' && unit <= u'9') || unit == u'-' || unit == u'_' ||
           unit == u'.' || unit == u':';
}

// The system's converters pass over other marks in a name, or take them for wishes.
std::string CharsetMeant(std::u16string_view charset) {
    std::string name;
    for (const char16_t unit : Folded(Trim(charset))) {
        if (!IsNameUnit(unit)) Raise(kInvalidCall);
        name += static_cast<char>(unit);
    }
    for (const BrowserName& known : kBrowserNames) {
        if (known.name == name) return std::string(known.meaning);
    }
    return name;
}

std::unique_ptr<ByteTable> MakeByteTable(const std::string& name) {
    SystemConverter converter(name);
    auto table = std::make_unique<ByteTable>();
    for (std::size_t byte = 0; byte < 256; ++byte) {
        const char single = static_cast<char>(byte);
        const std::u16string text = converter.Decode({&single, 1});
        table->units[byte] = text.size() == 1 ? text.front() : u'\uFFFD';
        if (table->units[byte] != u'\uFFFD') table->bytes[table->units[byte]] = single;
    }
    return table;
}

// Made once a charset, for as long as the program runs; none when the charset is not one of single bytes.
const ByteTable* ByteTableOf(const std::string& name) {
    if (std::ranges::find(kSingleByteNames, name) == std::end(kSingleByteNames)) return nullptr;
    static std::map<std::string, std::unique_ptr<ByteTable>> tables;
    std::unique_ptr<ByteTable>& table = tables[name];
    if (table == nullptr) table = MakeByteTable(name);
    return table.get();
}

bool IsPair(char16_t one, char16_t other) {
    return (one & 0xFC00) == 0xD800 && (other & 0xFC00) == 0xDC00;
}

void AppendBytes(const ByteTable& table, std::u16string_view text, std::string& bytes) {
    const std::size_t old = bytes.size();
    bytes.resize(old + text.size());
    char* write = bytes.data() + old;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t end = std::min(at + kAsciiBlock, text.size());
        if (end - at == kAsciiBlock && IsAsciiBlock(text.data() + at)) {
            CopyAsciiBlock(text.data() + at, write);
            write += kAsciiBlock;
            at = end;
            continue;
        }
        for (; at < end; ++at) {
            const char16_t unit = text[at];
            const char byte = table.bytes[unit];
            *write++ = byte;
            if (byte != 0 || unit == 0) continue;
            write[-1] = '?';
            if (at + 1 < text.size() && IsPair(unit, text[at + 1])) ++at;
        }
    }
    bytes.resize(static_cast<std::size_t>(write - bytes.data()));
}

std::u16string DecodeBytes(const ByteTable& table, std::string_view bytes) {
    std::u16string text(bytes.size(), u'\0');
    std::size_t at = 0;
    while (at < bytes.size()) {
        const std::size_t end = std::min(at + kAsciiBlock, bytes.size());
        const auto* const block = reinterpret_cast<const unsigned char*>(bytes.data()) + at;
        if (end - at == kAsciiBlock && IsAsciiBlock(block)) {
            CopyAsciiBlock(block, text.data() + at);
            at = end;
            continue;
        }
        for (; at < end; ++at) text[at] = table.units[static_cast<unsigned char>(bytes[at])];
    }
    return text;
}

}  // namespace

std::u16string Decode(std::string_view bytes, std::u16string_view charset) {
    const std::string name = CharsetMeant(charset);
    if (const ByteTable* const table = ByteTableOf(name)) return DecodeBytes(*table, bytes);
    std::u16string text = SystemConverter(name).Decode(bytes);
    if (!text.empty() && text.front() == u'\uFEFF') text.erase(0, 1);
    return text;
}

Encoder::Encoder(std::u16string_view charset) {
    const std::string name = CharsetMeant(charset);
    table_ = ByteTableOf(name);
    if (table_ == nullptr) converter_ = std::make_unique<SystemConverter>(name);
}

Encoder::~Encoder() = default;

void Encoder::Append(std::u16string_view text, std::string& bytes) {
    if (table_ != nullptr) return AppendBytes(*table_, text, bytes);
    converter_->Append(text, bytes);
}

void Encoder::Finish(std::string& bytes) {
    if (converter_ != nullptr) converter_->Finish(bytes);
}

// Paths are ASCII for the most part.
std::string ToUtf8(std::u16string_view text) {
    const bool isAscii = std::ranges::all_of(text, [](char16_t unit) { return unit < 0x80; });
    if (isAscii) return {text.begin(), text.end()};
    std::string bytes;
    Encoder(u"utf-8").Append(text, bytes);
    return bytes;
}

std::u16string FromUtf8(std::string_view bytes) {
    return SystemConverter("utf-8").Decode(bytes);
}

}  // namespace tessaly::platform
