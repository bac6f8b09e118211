#pragma once

#include <system_error>

#include "text/RunTimeError.h"

namespace tessaly::platform {

// Throws the run-time error that an error of the operating system is.
[[noreturn]] void RaiseSystemError(const std::error_code& error);

}  // namespace tessaly::platform
