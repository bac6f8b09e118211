#include "reader/FieldEscaping.h"
#include "reader/TagScanning.h"
#include "tests/fuzz/FuzzBoard.h"
#include "translate/DiscusProcessFormatting.h"
#include "translate/DiscusProcessLinks.h"
#include "translate/modAttachments.h"
#include "translate/modImages.h"

// Each step of a body's translation by itself, on the same body.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessaly;
    const std::u16string body = fuzzing::AsText(fuzzing::AsBytes(data, size));
    const auto state = fuzzing::Board().NewState();
    std::u16string changed = body;
    ProcessAttachments(*state, changed, 1);
    fuzzing::ExpectAtMost(changed.size(), size);
    state->CancelRequested = false;
    changed = body;
    DiscusProcessLinks(*state, changed, 1, 1);
    state->CancelRequested = false;
    IgnoringErrors([&] { fuzzing::ExpectAtMost(ProcessImages(*state, body).size(), 2 * size + 16); });
    fuzzing::ExpectAtMost(DiscusProcessFormatting(*state, body).size(), 2 * size + 16);
    fuzzing::ExpectAtMost(RemoveTagInformation(*state, body).size(), size);
    fuzzing::ExpectAtMost(EscapeField(body).size(), 3 * size);
    fuzzing::ExpectAtMost(RemoveFieldTokens(body).size(), size);
    return 0;
}
