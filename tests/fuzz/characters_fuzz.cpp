#include "reader/SpecialCharacters.h"
#include "tests/fuzz/FuzzBoard.h"

// A character file, and a text searched with it twice.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessaly;
    const fuzzing::FuzzBoard& board = fuzzing::Board();
    const auto parts = fuzzing::Parts(fuzzing::AsBytes(data, size), 2);
    board.Write("program/Docs/koi8-r.txt", parts[0]);
    const auto state = board.NewState();
    DiscusGetReplaceableCharacterArray(*state, u"koi8-r");
    std::u16string text = fuzzing::AsText(parts[1]);
    DiscusFindSpecialCharacterSequences(*state, text);
    DiscusFindSpecialCharacterSequences(*state, text);
    board.Remove("output/Discus Special Characters.txt");
    return 0;
}
