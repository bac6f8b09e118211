#include "finish/TableFile.h"

#include <algorithm>

#include "text/numbers.h"
#include "text/search.h"

namespace tessaly {

namespace {

std::u16string_view EscapeOf(char16_t unit) {
    switch (unit) {
        case u'\t':
            return u"\\t";
        case u'\n':
            return u"\\n";
        case u'\r':
            return u"\\r";
        case u'\0':
            return u"\\0";
        default:
            return u"\\\\";
    }
}

void AppendEscaped(std::u16string& row, std::u16string_view text) {
    constexpr std::u16string_view kEscaped(u"\\\t\n\r\0", 5);
    Position from = 1;
    for (Position at = FindFirstOf(text, kEscaped); at != 0; at = FindFirstOf(text, kEscaped, from)) {
        row += Between(text, from, at);
        row += EscapeOf(text[static_cast<std::size_t>(at) - 1]);
        from = at + 1;
    }
    row += From(text, from);
}

void Note(ColumnNeed& need, std::u16string_view text) {
    std::size_t halves = 0;
    std::size_t bytes = 0;
    char16_t all = 0;
    for (const char16_t unit : text) {
        const bool isHalf = (unit & 0xF800) == 0xD800;
        halves += isHalf ? 1 : 0;
        bytes += isHalf || (unit >= 0x80 && unit < 0x800) ? 2 : unit < 0x80 ? 1 : 3;
        all = static_cast<char16_t>(all | unit);
    }
    need.characters = std::max(need.characters, text.size() - halves / 2);
    need.bytes = std::max(need.bytes, bytes);
    if (halves > 0) need.reach = Reach::kBeyond;
    if (all >= 0x80) need.reach = std::max(need.reach, Reach::kSixteenBits);
}

}  // namespace

TableFile::TableFile(std::u16string_view folder, std::u16string_view table,
                     std::span<const std::u16string_view> columns, std::span<const Constant> constants)
    : file_(std::u16string(folder) + TableFileName(table), platform::OpenMode::kWriting,
            platform::TextFormat::kUtf8) {
    summary_.table = table;
    summary_.constants = constants;
    for (const std::u16string_view column : columns) summary_.columns.push_back({column});
}

void TableFile::Int(std::int64_t value) {
    Separate();
    if (column_ == 1) {
        const bool isFirst = summary_.rows == 0;
        summary_.firstNumber = isFirst ? value : std::min(summary_.firstNumber, value);
        summary_.lastNumber = isFirst ? value : std::max(summary_.lastNumber, value);
    }
    row_ += ToText(value);
}

void TableFile::Text(std::u16string_view value) {
    Separate();
    Note(summary_.columns[column_ - 1], value);
    AppendEscaped(row_, value);
}

void TableFile::EndRow() {
    row_ += u'\n';
    file_.Write(row_);
    row_.clear();
    column_ = 0;
    ++summary_.rows;
}

TableSummary TableFile::Close() {
    file_.Close();
    return summary_;
}

void TableFile::Separate() {
    if (column_ > 0) row_ += u'\t';
    ++column_;
}

std::u16string TableFileName(std::u16string_view table) {
    return std::u16string(table) + u".txt";
}

}  // namespace tessaly
