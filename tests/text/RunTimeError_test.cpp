#include "text/RunTimeError.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>

namespace tessaly {
namespace {

template <typename Step>
RunTimeError Caught(Step&& step) {
    try {
        step();
    } catch (...) {
        return CurrentError();
    }
    return {0, u"nothing was thrown"};
}

struct Known {
    ErrorNumber error;
    int number;
    const char16_t* description;
};

TEST(RunTimeError, EachHasItsNumberAndItsDescription) {
    const Known all[] = {
        {kInvalidCall, 5, u"Invalid procedure call or argument"},
        {kOverflow, 6, u"Overflow"},
        {kOutOfMemory, 7, u"Out of memory"},
        {kSubscriptOutOfRange, 9, u"Subscript out of range"},
        {kTypeMismatch, 13, u"Type mismatch"},
        {kOutOfStackSpace, 28, u"Out of stack space"},
        {kFileNotFound, 53, u"File not found"},
        {kDeviceError, 57, u"Device I/O error"},
        {kDiskFull, 61, u"Disk full"},
        {kPermissionDenied, 70, u"Permission denied"},
        {kPathAccessError, 75, u"Path/File access error"},
        {kPathNotFound, 76, u"Path not found"},
        {kKeyExists, 457, u"This key is already associated with an element of this collection"},
        {kFileNotOpened, 3002, u"File could not be opened."},
        {kWriteFailed, 3004, u"Write to file failed."},
    };
    for (const Known& known : all) {
        const RunTimeError error = Caught([&] { Raise(known.error); });
        EXPECT_EQ(error.number, known.number);
        EXPECT_EQ(error.description, known.description) << known.number;
    }
}

TEST(RunTimeError, MemoryThatRanOutIsOutOfMemory) {
    const RunTimeError error = Caught([] { throw std::bad_alloc(); });
    EXPECT_EQ(error.number, 7);
    EXPECT_EQ(error.description, u"Out of memory");
}

TEST(RunTimeError, ATextLongerThanAnyMemoryIsOutOfMemory) {
    const RunTimeError error = Caught([] { std::string().resize(std::string().max_size() + 1); });
    EXPECT_EQ(error.number, 7);
}

TEST(RunTimeError, WhatIsNoFailureOfTheSystemsOwnIsThrownOn) {
    EXPECT_THROW(Caught([] { throw std::logic_error("a defect"); }), std::logic_error);
    EXPECT_THROW(IgnoringErrors([] { throw std::logic_error("a defect"); }), std::logic_error);
}

TEST(IgnoringErrors, GivesTheNumberOfTheFailure) {
    EXPECT_EQ(IgnoringErrors([] { Raise(kPermissionDenied); }), 70);
    EXPECT_EQ(IgnoringErrors([] { throw std::bad_alloc(); }), 7);
}

TEST(IgnoringErrors, IsZeroWhenThereWasNone) {
    int steps = 0;
    EXPECT_EQ(IgnoringErrors([&] { ++steps; }), 0);
    EXPECT_EQ(steps, 1);
}

TEST(IgnoringErrors, LeavesTheRestOfTheStepUndone) {
    int steps = 0;
    IgnoringErrors([&] {
        ++steps;
        Raise(kOverflow);
        ++steps;
    });
    EXPECT_EQ(steps, 1);
}

}  // namespace
}  // namespace tessaly
