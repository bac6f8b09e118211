#include "translate/modImages.h"

#include "control/checking.h"
#include "reader/TagScanning.h"

namespace tessaly {

namespace {

bool IsLocal(std::u16string_view source) {
    return Contains(source, u"/discus/messages/") || Contains(source, u"/secure/");
}

}  // namespace

std::u16string ProcessImages(ConversionState& state, std::u16string_view text) {
    constexpr std::u16string_view kImage = u"<img src=";
    Position tag = Find(text, kImage);
    if (tag == 0) return std::u16string(text);
    Position behindTag = 1;
    ExtractTagSection(state, text, kImage, u">", tag, behindTag);
    // The next " alt=" may lie behind the end of the tag: the source then runs on to there.
    std::u16string source(FirstTagSection(state, text, kImage, u" alt="));
    if (!IsLocal(source)) return std::u16string(text);
    RemoveAll(source, u"<img src=\"");
    const std::u16string_view address = Between(source, 1, Find(source, u"\""));
    NotePart(state, Between(text, tag, behindTag));
    std::u16string translated(Between(text, 1, tag));
    translated += u"[img]";
    translated += address;
    translated += u"[/img]";
    translated += From(text, behindTag);
    return translated;
}

void NoteLostImages(const ConversionState& state, std::u16string_view text) {
    constexpr std::u16string_view kTag = u"<img ";
    if (!IsCheck(state)) return;
    for (Position at = Find(text, kTag); at != 0; at = Find(text, kTag, at + 1)) {
        const Position end = Find(text, u">", at);
        if (end == 0) break;
        const std::u16string_view tag = Between(text, at, end + 1);
        NotePart(state, tag);
        NoteFinding(state, IsLocal(tag) ? FindingKind::kFurtherImage : FindingKind::kImageElsewhere, tag);
    }
    NotePart(state, {});
}

}  // namespace tessaly
