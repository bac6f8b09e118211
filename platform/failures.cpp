#include "platform/failures.h"

namespace tessaly::platform {

void RaiseSystemError(const std::error_code& error) {
    if (error == std::errc::no_such_file_or_directory) Raise(kFileNotFound);
    if (error == std::errc::not_a_directory) Raise(kPathNotFound);
    if (error == std::errc::no_space_on_device) Raise(kDiskFull);
    if (error == std::errc::permission_denied) Raise(kPermissionDenied);
    if (error == std::errc::operation_not_permitted) Raise(kPermissionDenied);
    if (error == std::errc::io_error) Raise(kDeviceError);
    if (error == std::errc::not_enough_memory) Raise(kOutOfMemory);
    Raise(kPathAccessError);
}

}  // namespace tessaly::platform
