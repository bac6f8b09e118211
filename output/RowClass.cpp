#include "output/RowClass.h"

#include "text/numbers.h"

namespace tessaly {

void RowBuilder::Int(std::int32_t value) {
    Separate();
    if (value >= 0 && value <= 9) {
        row_ += static_cast<char16_t>(u'0' + value);
        return;
    }
    row_ += ToText(value);
}

void RowBuilder::Text(std::u16string_view value) {
    Separate();
    row_ += u'"';
    row_ += value;
    row_ += u'"';
}

void RowBuilder::Separate() {
    if (!isFirst_) row_ += u',';
    isFirst_ = false;
}

}  // namespace tessaly
