#include "text/RunTimeError.h"

#include <new>
#include <stdexcept>
#include <string_view>

namespace tessaly {

namespace {

std::u16string_view DescriptionOf(ErrorNumber number) {
    switch (number) {
        case kNoError:
            return u"";
        case kInvalidCall:
            return u"Invalid procedure call or argument";
        case kOverflow:
            return u"Overflow";
        case kOutOfMemory:
            return u"Out of memory";
        case kSubscriptOutOfRange:
            return u"Subscript out of range";
        case kTypeMismatch:
            return u"Type mismatch";
        case kOutOfStackSpace:
            return u"Out of stack space";
        case kFileNotFound:
            return u"File not found";
        case kDeviceError:
            return u"Device I/O error";
        case kDiskFull:
            return u"Disk full";
        case kPermissionDenied:
            return u"Permission denied";
        case kPathAccessError:
            return u"Path/File access error";
        case kPathNotFound:
            return u"Path not found";
        case kKeyExists:
            return u"This key is already associated with an element of this collection";
        case kFileNotOpened:
            return u"File could not be opened.";
        case kWriteFailed:
            return u"Write to file failed.";
    }
    return u"";
}

RunTimeError ErrorOf(ErrorNumber number) {
    return {number, std::u16string(DescriptionOf(number))};
}

}  // namespace

void Raise(ErrorNumber number) {
    throw ErrorOf(number);
}

RunTimeError CurrentError() {
    try {
        throw;
    } catch (const RunTimeError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return ErrorOf(kOutOfMemory);
    } catch (const std::length_error&) {
        return ErrorOf(kOutOfMemory);
    }
}

}  // namespace tessaly
