#include "text/split.h"

#include "text/RunTimeError.h"
#include "text/search.h"

namespace tessaly {

std::vector<std::u16string_view> Split(std::u16string_view text, std::u16string_view delimiter) {
    std::vector<std::u16string_view> pieces;
    if (text.empty()) return pieces;
    if (delimiter.empty()) return {text};
    Position from = 1;
    for (Position at = Find(text, delimiter); at != 0; at = Find(text, delimiter, from)) {
        pieces.push_back(Between(text, from, at));
        from = at + Length(delimiter);
    }
    pieces.push_back(From(text, from));
    return pieces;
}

std::u16string_view Element(const std::vector<std::u16string_view>& pieces, std::size_t index) {
    if (index >= pieces.size()) Raise(kSubscriptOutOfRange);
    return pieces[index];
}

std::u16string_view Trim(std::u16string_view text) {
    const std::size_t first = text.find_first_not_of(u' ');
    if (first == std::u16string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

}  // namespace tessaly
