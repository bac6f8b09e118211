#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/TextFile.h"

namespace tessaly {

// Which characters a column's texts hold.
enum class Reach { kAscii, kSixteenBits, kBeyond };

// What a table must offer for one column.
struct ColumnNeed {
    std::u16string_view name;
    std::size_t characters = 0;
    std::size_t bytes = 0;
    Reach reach = Reach::kAscii;
};

// A column that has the same value in all rows, as SQL writes it.
struct Constant {
    std::u16string_view name;
    std::u16string_view value;
};

// What was written for one table. The first column is the row's number.
struct TableSummary {
    std::u16string_view table;  // without its prefix
    std::vector<ColumnNeed> columns;
    std::span<const Constant> constants;
    std::int64_t rows = 0;
    std::int64_t firstNumber = 0;
    std::int64_t lastNumber = 0;
};

// The rows of one table in UTF-8: columns with tabs between them, backslash escapes, a line feed behind each
// row.
class TableFile {
  public:
    TableFile(std::u16string_view folder, std::u16string_view table,
              std::span<const std::u16string_view> columns, std::span<const Constant> constants);

    void Int(std::int64_t value);
    void Text(std::u16string_view value);
    void EndRow();

    TableSummary Close();

  private:
    void Separate();

    platform::TextFile file_;
    TableSummary summary_;
    std::u16string row_;
    std::size_t column_ = 0;
};

// The name of a table's file.
std::u16string TableFileName(std::u16string_view table);

}  // namespace tessaly
