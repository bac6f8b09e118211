#pragma once

#include <string>

namespace tessaly {

// Why a board cannot be finished, in words for the operator.
struct FinishError {
    std::u16string text;
};

}  // namespace tessaly
