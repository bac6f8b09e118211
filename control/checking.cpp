#include "control/checking.h"

#include "control/RoutineHandler.h"

namespace tessaly {

bool GoesWell(ConversionState& state, std::u16string_view label, const std::function<void()>& step) try {
    step();
    return true;
} catch (...) {
    RoutineHandler(state, label, CurrentError());
    return false;
}

}  // namespace tessaly
