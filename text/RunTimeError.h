#pragma once

#include <string>

namespace tessaly {

// The numbers of the failures that a routine can trap.
enum ErrorNumber : int {
    kNoError = 0,
    kInvalidCall = 5,
    kOverflow = 6,
    kOutOfMemory = 7,
    kSubscriptOutOfRange = 9,
    kTypeMismatch = 13,
    kOutOfStackSpace = 28,
    kFileNotFound = 53,
    kDeviceError = 57,
    kDiskFull = 61,
    kPermissionDenied = 70,
    kPathAccessError = 75,
    kPathNotFound = 76,
    kKeyExists = 457,
    kFileNotOpened = 3002,
    kWriteFailed = 3004,
};

// A trapped failure: what every routine-wide handler shows.
struct RunTimeError {
    int number;
    std::u16string description;
};

// Throws the failure of that number with its own description.
[[noreturn]] void Raise(ErrorNumber number);

// Inside a catch block: the exception in flight as a failure. Memory that ran out is number 7; what is
// no failure of the system's own is thrown on.
RunTimeError CurrentError();

// Runs one step and swallows its failure. Gives the failure's number, 0 when there was none.
template <typename Step>
int IgnoringErrors(Step&& step) {
    try {
        step();
        return kNoError;
    } catch (...) {
        return CurrentError().number;
    }
}

}  // namespace tessaly
