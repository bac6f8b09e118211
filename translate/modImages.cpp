#include "translate/modImages.h"

#include "reader/TagScanning.h"

namespace tessaly {

std::u16string ProcessImages(ConversionState& state, std::u16string_view text) {
    constexpr std::u16string_view kImage = u"<img src=";
    Position tag = Find(text, kImage);
    if (tag == 0) return std::u16string(text);
    Position behindTag = 1;
    ExtractTagSection(state, text, kImage, u">", tag, behindTag);
    // The next " alt=" may lie behind the end of the tag: the source then runs on to there.
    std::u16string source(FirstTagSection(state, text, kImage, u" alt="));
    if (!Contains(source, u"/discus/messages/") && !Contains(source, u"/secure/"))
        return std::u16string(text);
    RemoveAll(source, u"<img src=\"");
    const std::u16string_view address = Between(source, 1, Find(source, u"\""));
    std::u16string translated(Between(text, 1, tag));
    translated += u"[img]";
    translated += address;
    translated += u"[/img]";
    translated += From(text, behindTag);
    return translated;
}

}  // namespace tessaly
