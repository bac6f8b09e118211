#pragma once

#include <cstdint>
#include <string>

namespace tessaly {

struct clsGroup {
    std::u16string name;
    std::int32_t ID = 0;
};

}  // namespace tessaly
