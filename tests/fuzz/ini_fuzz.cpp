#include "control/Settings.h"
#include "tests/fuzz/FuzzBoard.h"

// A settings file as the form's load finds it, with one key written back.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessaly;
    const fuzzing::FuzzBoard& board = fuzzing::Board();
    board.Write("fuzz.ini", fuzzing::AsBytes(data, size));
    ConversionState state;
    state.ProgramFolder = board.Path("program");
    state.SettingsFile = board.Path("fuzz.ini");
    IgnoringErrors([&] { Form_Load(state); });
    IgnoringErrors([&] { SaveSetting(state, u"mybb_Admin", fuzzing::AsText(fuzzing::AsBytes(data, size))); });
    return 0;
}
