#include "check/CharsetTest.h"

#include "platform/charset.h"

namespace tessaly {

namespace {

bool IsPair(std::u16string_view text, std::size_t at) {
    return (text[at] & 0xFC00) == 0xD800 && at + 1 < text.size() && (text[at + 1] & 0xFC00) == 0xDC00;
}

std::size_t NumberOf(std::u16string_view character) {
    if (character.size() == 1) return character[0];
    return 0x10000 + ((character[0] & 0x3FFu) << 10) + (character[1] & 0x3FFu);
}

}  // namespace

std::u16string_view CharsetTest::FirstLacked(std::u16string_view text, std::size_t from) {
    for (std::size_t at = from; at < text.size(); ++at) {
        // U+FFFD stands for what could not be read in the first place.
        if (text[at] < 0x80 || text[at] == u'\uFFFD') continue;
        const std::u16string_view character = text.substr(at, IsPair(text, at) ? 2 : 1);
        const std::size_t number = NumberOf(character);
        if (!known_->isTried[number]) {
            known_->isTried.set(number);
            known_->isLacked.set(number, IsLacked(character));
        }
        if (known_->isLacked[number]) return character;
        at += character.size() - 1;
    }
    return {};
}

// Behind a letter, since a byte-order mark at the head of a text is none of its characters.
bool CharsetTest::IsLacked(std::u16string_view character) const {
    const std::u16string text = u"a" + std::u16string(character);
    std::string bytes;
    platform::Encoder encoder(charset_);
    encoder.Append(text, bytes);
    encoder.Finish(bytes);
    return platform::Decode(bytes, charset_) != text;
}

}  // namespace tessaly
