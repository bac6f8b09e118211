#pragma once

#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>

namespace tessaly {

enum class ColumnKind { kInt, kText };

struct Column {
    std::u16string_view name;
    ColumnKind kind;
};

// Renders one row: integers bare, texts between double quotes as they stand, joined by commas, no line end.
class RowBuilder {
  public:
    // `size` is the length that the row will have at least.
    RowBuilder(std::u16string& row, std::size_t size) : row_(row) {
        row_.clear();
        row_.reserve(size);
    }

    void Int(std::int32_t value);
    void Text(std::u16string_view value);

  private:
    void Separate();

    std::u16string& row_;
    bool isFirst_ = true;
};

// A row class is declared and rendered from one list of its columns, in the table's order:
//
//     #define CLS_TBL_SOMETHING(INT, TEXT) INT(id) TEXT(name)
//     TESSALY_ROW_CLASS(clsTblSomething, CLS_TBL_SOMETHING)
//
// A column that no one sets is 0 or empty.
#define TESSALY_DECLARE_INT(name) std::int32_t name = 0;
#define TESSALY_DECLARE_TEXT(name) std::u16string name;
#define TESSALY_MEASURE_INT(name)
#define TESSALY_MEASURE_TEXT(name) size += std::size(name);
#define TESSALY_RENDER_INT(name) builder.Int(name);
#define TESSALY_RENDER_TEXT(name) builder.Text(name);
#define TESSALY_LIST_INT(name) ::tessaly::Column{u## #name, ::tessaly::ColumnKind::kInt},
#define TESSALY_LIST_TEXT(name) ::tessaly::Column{u## #name, ::tessaly::ColumnKind::kText},

#define TESSALY_ROW_CLASS(Class, COLUMNS)                                                    \
    struct Class {                                                                           \
        COLUMNS(TESSALY_DECLARE_INT, TESSALY_DECLARE_TEXT)                                   \
        static constexpr Column kColumns[] = {COLUMNS(TESSALY_LIST_INT, TESSALY_LIST_TEXT)}; \
        void BuildString(std::u16string& row) const {                                        \
            std::size_t size = 3 * std::size(kColumns);                                      \
            COLUMNS(TESSALY_MEASURE_INT, TESSALY_MEASURE_TEXT)                               \
            RowBuilder builder(row, size);                                                   \
            COLUMNS(TESSALY_RENDER_INT, TESSALY_RENDER_TEXT)                                 \
        }                                                                                    \
    };

}  // namespace tessaly
