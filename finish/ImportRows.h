#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "output/RowClass.h"
#include "platform/LineReader.h"

namespace tessaly {

// Where a run's import files lie and in which charset they are written.
struct ImportFolder {
    std::u16string path;  // ends with a backslash
    std::u16string charset;
};

// The full paths of a family's files, such as mybb_posts1.txt, in the order of their numbers.
std::vector<std::u16string> FilesOfFamily(std::u16string_view folder, std::u16string_view family);

// The place of a column in the rows of a class. A name that is not there does not compile.
template <typename RowClass>
consteval std::size_t ColumnAt(std::u16string_view name) {
    for (std::size_t at = 0; at < std::size(RowClass::kColumns); ++at) {
        if (RowClass::kColumns[at].name == name) return at;
    }
    throw "no such column";
}

// The first and the last column of a row that are written without escapes, in which quotes and commas may
// stand. Columns between the two are empty texts.
struct FreeColumns {
    std::size_t first;
    std::size_t last;
};

// The rows of a family, one after the other.
class ImportRows {
  public:
    ImportRows(const ImportFolder& folder, std::u16string_view family, std::span<const Column> columns,
               std::optional<FreeColumns> freeColumns = {});

    // Throws FinishError for what is no row of the family.
    bool Next();

    // A column of the row in hand, as it stands between its quotes; valid until the next row.
    std::u16string_view Text(std::size_t column) const { return fields_[column]; }
    std::int32_t Int(std::size_t column) const;

  private:
    bool NextLine();
    bool Parse(std::u16string_view row);

    std::u16string charset_;
    std::vector<std::u16string> files_;
    std::span<const Column> columns_;
    std::optional<FreeColumns> freeColumns_;
    std::size_t filesRead_ = 0;
    std::int64_t rowNumber_ = 0;
    std::optional<platform::LineReader> reader_;
    std::u16string_view line_;
    std::u16string joined_;
    std::vector<std::u16string_view> fields_;
};

}  // namespace tessaly
