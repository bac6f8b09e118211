#include "control/modDefinitions.h"
#include "platform/charset.h"
#include "tests/fuzz/FuzzBoard.h"

// The first byte chooses the charset; the rest is decoded, and what came is encoded piece by piece.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessaly;
    if (size == 0) return 0;
    const auto& names = CharsetNames();
    const std::u16string& charset = names[1 + data[0] % (names.size() - 1)];
    const std::u16string text = platform::Decode(fuzzing::AsBytes(data + 1, size - 1), charset);
    fuzzing::ExpectAtMost(text.size(), 2 * size);
    platform::Encoder encoder(charset);
    std::string bytes;
    const std::size_t half = text.size() / 2;
    encoder.Append(std::u16string_view(text).substr(0, half), bytes);
    encoder.Append(std::u16string_view(text).substr(half), bytes);
    encoder.Finish(bytes);
    fuzzing::ExpectAtMost(bytes.size(), 16 * size + 16);
    // Any units at all, lone surrogates among them.
    std::u16string units;
    for (std::size_t at = 1; at + 1 < size; at += 2)
        units += static_cast<char16_t>(data[at] * 256 + data[at + 1]);
    encoder.Append(units, bytes);
    encoder.Finish(bytes);
    return 0;
}
