#include "reader/TagScanning.h"

#include "control/RoutineHandler.h"
#include "reader/RemoveTags.h"
#include "text/split.h"

namespace tessaly {

namespace {

// The number and the name in a page's first tag of a kind; the first "/" divides them.
void ReadTagValue(ConversionState& state, std::u16string_view text, std::u16string_view openMarker,
                  std::u16string& number, std::u16string& name) {
    std::u16string value(FirstTagSection(state, text, openMarker, u"-->"));
    RemoveAll(value, u"-->");
    RemoveAll(value, openMarker);
    number = LeadingDigits(value);
    name = RemoveTagInformation(state, Trim(From(value, Find(value, u"/") + 1)));
}

}  // namespace

std::u16string_view ExtractTagSection(ConversionState& state, std::u16string_view text,
                                      std::u16string_view openMarker, std::u16string_view closeMarker,
                                      Position& position, Position& nextPosition) {
    if (position == 0) position = 1;
    position = Find(text, openMarker, position);
    std::u16string_view section;
    if (position != 0) {
        const Position close = Find(text, closeMarker, position + Length(openMarker));
        if (close != 0) {
            nextPosition = close + Length(closeMarker);
            section = Between(text, position, nextPosition);
        }
    }
    state.ToolboxA.KeepResponsive();
    return section;
}

std::u16string_view FirstTagSection(ConversionState& state, std::u16string_view text,
                                    std::u16string_view openMarker, std::u16string_view closeMarker) {
    Position position = 1;
    Position nextPosition = 1;
    return ExtractTagSection(state, text, openMarker, closeMarker, position, nextPosition);
}

void GetTopicInfo(ConversionState& state, std::u16string_view text, std::u16string& topicName,
                  std::u16string& meName, std::u16string& topicNumber) try {
    std::u16string unusedNumber;
    ReadTagValue(state, text, u"<!--Topic: ", topicNumber, topicName);
    ReadTagValue(state, text, u"<!--Me: ", unusedNumber, meName);
} catch (...) {
    RoutineHandler(state, u" - GetTopicInfo()", CurrentError());
}

void GetPostTags(Position position, std::u16string_view text, std::u16string& openTag,
                 std::u16string& closeTag) {
    openTag.clear();
    closeTag.clear();
    const Position end = Find(text, u"-->", position);
    openTag = Between(text, position, end);
    openTag += u"-->";
    closeTag = openTag.substr(0, 4) + u"/" + std::u16string(From(openTag, 5));
}

std::u16string RemoveTagInformation(ConversionState& state, std::u16string_view text) try {
    std::u16string bare = RemoveTags(text);
    state.ToolboxA.KeepResponsive();
    return bare;
} catch (...) {
    RoutineHandler(state, u" - RemoveTagInformation()", CurrentError());
    return {};
}

std::u16string BuildTopicFilePath(const ConversionState& state, std::u16string_view link,
                                  std::u16string& fileName, std::u16string& folderNumber) {
    const Position last = FindBackward(link, u"/");
    fileName = From(link, last + 1);
    const Position before = FindBackward(link, u"/", last - 1);
    folderNumber = LeadingDigits(From(link, before + 1));
    const std::u16string& folder =
        state.HiddenTopic ? state.DiscusSecureMessageFolder : state.DiscusMessageFolder;
    return folder + folderNumber + u"\\" + fileName;
}

std::u16string_view LeadingDigits(std::u16string_view text) {
    const std::u16string_view trimmed = Trim(text);
    return trimmed.substr(0, trimmed.find_first_not_of(u"0123456789"));
}

void AddProcessedFolder(ConversionState& state, std::u16string_view topNumber) {
    state.cboProcessedFolders.AddItem(std::u16string(topNumber));
}

}  // namespace tessaly
