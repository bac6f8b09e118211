#pragma once

#include <filesystem>
#include <string>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include "text/RunTimeError.h"

namespace tessaly::platform {

// The path as system calls take it: absolute, in the form that has no limit of 260 characters.
std::wstring LongPath(const std::filesystem::path& path);

// Throws the run-time error that the last failed system call is.
[[noreturn]] void RaiseLastError();

}  // namespace tessaly::platform
