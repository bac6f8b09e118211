#pragma once

#include <cstdint>
#include <string>

namespace tessaly {

struct clsMember {
    std::u16string username;
    std::int32_t PostCount = 0;
    std::int32_t RegisteredDate = 0;
    std::u16string RealName;
    std::int32_t LastLogin = 0;
    std::u16string email;
    std::int32_t lastpost = 0;
    std::u16string password;
    std::int32_t ID = 0;
    std::u16string Groups;
    std::u16string IPAddr;
};

}  // namespace tessaly
