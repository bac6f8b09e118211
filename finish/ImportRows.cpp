#include "finish/ImportRows.h"

#include <algorithm>

#include "finish/FinishError.h"
#include "platform/files.h"
#include "text/numbers.h"

namespace tessaly {

namespace {

constexpr int kMostLinesOfARow = 20;

bool IsDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

bool IsInteger(std::u16string_view text) {
    if (text.starts_with(u'-')) text.remove_prefix(1);
    return !text.empty() && text.size() <= 10 && std::ranges::all_of(text, IsDigit);
}

// The column at the head of a row, which goes with the comma behind it; a column that is no last one.
bool TakeFirst(std::u16string_view& row, ColumnKind kind, std::u16string_view& field) {
    const bool isText = kind == ColumnKind::kText;
    if (isText && !row.starts_with(u'"')) return false;
    const std::size_t begin = isText ? 1 : 0;
    const std::size_t end = row.find(isText ? u'"' : u',', begin);
    if (end == std::u16string_view::npos) return false;
    field = row.substr(begin, end - begin);
    row.remove_prefix(end + begin);
    if (row.empty()) return true;
    if (!row.starts_with(u',')) return false;
    row.remove_prefix(1);
    return isText || IsInteger(field);
}

// The same at the end of a row, with the comma before it.
bool TakeLast(std::u16string_view& row, ColumnKind kind, std::u16string_view& field) {
    const bool isText = kind == ColumnKind::kText;
    if (isText) {
        if (!row.ends_with(u'"')) return false;
        row.remove_suffix(1);
    }
    const std::size_t before = row.rfind(isText ? u'"' : u',');
    if (before == std::u16string_view::npos) return false;
    field = row.substr(before + 1);
    row = row.substr(0, before);
    if (!isText) return IsInteger(field);
    if (!row.ends_with(u',')) return false;
    row.remove_suffix(1);
    return true;
}

std::optional<std::int32_t> NumberOfFile(std::u16string_view name, std::u16string_view family) {
    constexpr std::u16string_view kEnding = u".txt";
    if (!name.starts_with(family) || !name.ends_with(kEnding)) return {};
    if (name.size() <= family.size() + kEnding.size()) return {};
    const std::u16string_view number =
        name.substr(family.size(), name.size() - family.size() - kEnding.size());
    if (number.size() > 9 || !std::ranges::all_of(number, IsDigit)) return {};
    return ToInteger(number);
}

}  // namespace

std::vector<std::u16string> FilesOfFamily(std::u16string_view folder, std::u16string_view family) {
    std::vector<std::pair<std::int32_t, std::u16string>> numbered;
    for (const std::u16string& name : platform::Files(folder)) {
        if (const auto number = NumberOfFile(name, family))
            numbered.emplace_back(*number, std::u16string(folder) + name);
    }
    std::ranges::sort(numbered);
    std::vector<std::u16string> files;
    files.reserve(numbered.size());
    for (auto& [number, path] : numbered) files.push_back(std::move(path));
    return files;
}

ImportRows::ImportRows(const ImportFolder& folder, std::u16string_view family,
                       std::span<const Column> columns, std::optional<FreeColumns> freeColumns)
    : charset_(folder.charset),
      files_(FilesOfFamily(folder.path, family)),
      columns_(columns),
      freeColumns_(freeColumns),
      fields_(columns.size()) {
}

bool ImportRows::Next() {
    if (!NextLine()) return false;
    if (Parse(line_)) return true;
    // A line feed of a column that is written as it stands.
    joined_ = line_;
    for (int lines = 1; lines < kMostLinesOfARow && freeColumns_ && reader_->Next(line_); ++lines) {
        joined_ += u'\n';
        joined_ += line_;
        if (Parse(joined_)) return true;
    }
    throw FinishError{u"Row " + ToText(rowNumber_) + u" of " + files_[filesRead_ - 1] +
                      u" is not one that a conversion writes. Convert the board again."};
}

std::int32_t ImportRows::Int(std::size_t column) const {
    return ToInteger(fields_[column]);
}

bool ImportRows::NextLine() {
    while (true) {
        if (reader_ && reader_->Next(line_)) {
            ++rowNumber_;
            return true;
        }
        if (filesRead_ == files_.size()) return false;
        reader_.reset();
        reader_.emplace(files_[filesRead_], charset_);
        ++filesRead_;
        rowNumber_ = 0;
    }
}

bool ImportRows::Parse(std::u16string_view row) {
    const std::size_t count = columns_.size();
    const std::size_t front = freeColumns_ ? freeColumns_->first : count - 1;
    for (std::size_t at = 0; at < front; ++at) {
        if (!TakeFirst(row, columns_[at].kind, fields_[at])) return false;
    }
    if (!freeColumns_) {
        const bool isText = columns_[count - 1].kind == ColumnKind::kText;
        if (isText) return TakeFirst(row, ColumnKind::kText, fields_[count - 1]) && row.empty();
        fields_[count - 1] = row;
        return IsInteger(row);
    }
    for (std::size_t at = count - 1; at > freeColumns_->last; --at) {
        if (!TakeLast(row, columns_[at].kind, fields_[at])) return false;
    }
    std::u16string between = u"\",";
    for (std::size_t at = freeColumns_->first + 1; at < freeColumns_->last; ++at) {
        fields_[at] = {};
        between += u"\"\",";
    }
    between += u'"';
    if (row.size() < 2 || !row.starts_with(u'"') || !row.ends_with(u'"')) return false;
    row = row.substr(1, row.size() - 2);
    const std::size_t split = row.rfind(between);
    if (split == std::u16string_view::npos) return false;
    fields_[freeColumns_->first] = row.substr(0, split);
    fields_[freeColumns_->last] = row.substr(split + between.size());
    return true;
}

}  // namespace tessaly
