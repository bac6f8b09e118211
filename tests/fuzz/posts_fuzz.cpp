#include "tests/fuzz/FuzzBoard.h"
#include "translate/modMessages.h"

// The posts of one page.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessaly;
    const std::u16string page = fuzzing::AsText(fuzzing::AsBytes(data, size));
    const auto state = fuzzing::Board().NewState();
    state->optCreateRedirectionFiles = false;
    DiscusProcessPostsOnPage(*state, u"1\\1.html", u"Title", u"Topic", u"Me", u"Subject", 1, 0, 0, page);
    return 0;
}
