#include "platform/clock.h"

#include <chrono>

namespace tessaly::platform {

std::time_t Now() {
    return std::time(nullptr);
}

std::int64_t SteadyMilliseconds() {
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count();
}

}  // namespace tessaly::platform
