#include "control/RoutineHandler.h"

#include "control/checking.h"
#include "text/numbers.h"

namespace tessaly {

void RoutineHandler(ConversionState& state, std::u16string_view label, const RunTimeError& error) {
    if (IsCheck(state)) return state.Check->Failed(label, error);
    const std::u16string text =
        ToText(error.number) + std::u16string(label) + u"\r\n\r\n" + error.description;
    state.ToolboxA.RecordErrorText(text);
    state.ShowMessage(text);
    state.CancelRequested = true;
    // A debugger that hosts the program would stop here; a program on its own goes on.
    static_cast<void>(InDevelopmentHost(state));
}

bool InDevelopmentHost(const ConversionState& state) {
    constexpr std::size_t kTailLength = 7;
    const std::u16string_view name = state.ProgramName;
    if (name.size() < kTailLength) return false;
    return EqualIgnoringCase(name.substr(name.size() - kTailLength), u"GDB.EXE");
}

}  // namespace tessaly
