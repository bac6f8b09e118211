#pragma once

#include <cstdint>
#include <ctime>
#include <string>

namespace tessaly::platform {

// The present moment in whole seconds.
std::time_t Now();

// A moment as local time: 2026-11-20 18:16:05.
std::u16string MomentText(std::time_t moment);

// Milliseconds of a clock that never goes back.
std::int64_t SteadyMilliseconds();

}  // namespace tessaly::platform
