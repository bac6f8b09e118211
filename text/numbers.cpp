#include "text/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "text/RunTimeError.h"
#include "text/split.h"

namespace tessaly {

namespace {

bool IsDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

bool IsSign(char16_t unit) {
    return unit == u'+' || unit == u'-';
}

std::size_t SkipDigits(std::u16string_view text, std::size_t at) {
    while (at < text.size() && IsDigit(text[at])) ++at;
    return at;
}

// The length of the exponent that begins at `at`, 0 where none does.
std::size_t ExponentLength(std::u16string_view text, std::size_t at) {
    if (at >= text.size() || (text[at] != u'e' && text[at] != u'E')) return 0;
    std::size_t digits = at + 1;
    if (digits < text.size() && IsSign(text[digits])) ++digits;
    const std::size_t end = SkipDigits(text, digits);
    return end == digits ? 0 : end - at;
}

// The length of the longest beginning that is a decimal number, 0 where there is none.
std::size_t DecimalLength(std::u16string_view text) {
    const std::size_t whole = !text.empty() && IsSign(text[0]) ? 1 : 0;
    std::size_t end = SkipDigits(text, whole);
    std::size_t digits = end - whole;
    if (end < text.size() && text[end] == u'.') {
        const std::size_t fraction = SkipDigits(text, end + 1);
        digits += fraction - end - 1;
        end = fraction;
    }
    if (digits == 0) return 0;
    return end + ExponentLength(text, end);
}

// Whether a number too large or too small for a double is the former: the place of its first digit tells.
bool IsLarge(std::string_view number) {
    const std::size_t exponentAt = number.find_first_of("eE");
    const std::string_view mantissa = number.substr(0, exponentAt);
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t first = mantissa.find_first_of("123456789");
    double place = static_cast<double>(point) - static_cast<double>(first);
    if (exponentAt != std::string_view::npos) {
        std::string_view exponent = number.substr(exponentAt + 1);
        if (exponent.front() == '+') exponent.remove_prefix(1);
        int power = 0;
        const auto read = std::from_chars(exponent.data(), exponent.data() + exponent.size(), power);
        if (read.ec != std::errc()) power = exponent.front() == '-' ? -1000000000 : 1000000000;
        place += power;
    }
    return place > 0;
}

double ValueOf(std::u16string_view decimal) {
    std::string number(decimal.begin(), decimal.end());
    if (number.front() == '+') number.erase(0, 1);
    double value = 0;
    const auto read = std::from_chars(number.data(), number.data() + number.size(), value);
    if (read.ec == std::errc()) return value;
    if (!IsLarge(number)) return 0;
    const double huge = std::numeric_limits<double>::infinity();
    return number.front() == '-' ? -huge : huge;
}

std::int32_t InRange(std::int64_t number) {
    if (number < std::numeric_limits<std::int32_t>::min()) Raise(kOverflow);
    if (number > std::numeric_limits<std::int32_t>::max()) Raise(kOverflow);
    return static_cast<std::int32_t>(number);
}

}  // namespace

double LeadingNumber(std::u16string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(u" \t\r\n"), text.size()));
    const std::size_t length = DecimalLength(text);
    return length == 0 ? 0 : ValueOf(text.substr(0, length));
}

bool IsNumeric(std::u16string_view text) {
    const std::u16string_view trimmed = Trim(text);
    return !trimmed.empty() && DecimalLength(trimmed) == trimmed.size();
}

std::int32_t ToInteger(std::u16string_view text) {
    if (!IsNumeric(text)) Raise(kTypeMismatch);
    return RoundToInteger(ValueOf(Trim(text)));
}

std::int32_t RoundToInteger(double number) {
    const double rounded = std::nearbyint(number);
    if (!(std::abs(rounded) <= 2147483648.0)) Raise(kOverflow);
    return InRange(static_cast<std::int64_t>(rounded));
}

std::int32_t Add(std::int32_t one, std::int32_t other) {
    return InRange(std::int64_t{one} + other);
}

std::int32_t Subtract(std::int32_t one, std::int32_t other) {
    return InRange(std::int64_t{one} - other);
}

std::u16string ToText(std::int64_t number) {
    char digits[24];
    const auto written = std::to_chars(digits, digits + sizeof digits, number);
    return std::u16string(digits, written.ptr);
}

}  // namespace tessaly
