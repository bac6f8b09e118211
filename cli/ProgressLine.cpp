#include "cli/ProgressLine.h"

#include <algorithm>

#include "control/CountPages.h"
#include "platform/clock.h"
#include "platform/console.h"
#include "text/numbers.h"

namespace tessaly {

namespace {

constexpr std::u16string_view kClear = u"\r\x1B[K";

std::u16string Minutes(std::int64_t milliseconds) {
    const std::int64_t seconds = milliseconds / 1000;
    const std::u16string rest = ToText(seconds % 60);
    return ToText(seconds / 60) + (rest.size() < 2 ? u":0" : u":") + rest;
}

}  // namespace

ProgressLine::ProgressLine(const ConversionState& state)
    : state_(state), pages_(CountPages(state)), started_(platform::SteadyMilliseconds()) {
}

void ProgressLine::Show() {
    constexpr std::int64_t kBetween = 100;
    const std::int64_t now = platform::SteadyMilliseconds();
    if (now - shown_ < kBetween) return;
    shown_ = now;
    const std::int64_t elapsed = now - started_;
    const std::int64_t read = state_.Progress.PagesRead;
    std::u16string line = std::u16string(kClear) + ToText(read) + u" of " + ToText(pages_) + u" pages, " +
                          ToText(state_.Progress.RowsWritten) + u" rows, " + Minutes(elapsed) + u" elapsed";
    if (read > 0)
        line += u", " + Minutes(elapsed * std::max<std::int64_t>(0, pages_ - read) / read) + u" to go";
    platform::WriteError(line);
}

void ProgressLine::Clear() const {
    platform::WriteError(kClear);
}

}  // namespace tessaly
