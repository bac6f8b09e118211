#pragma once

#include <string>
#include <string_view>

#include "control/modDefinitions.h"
#include "text/search.h"

namespace tessaly {

// The section from the open marker found at or behind `position` through the next close marker, both
// included; empty when either is missing. `position` becomes the place of the open marker (0 when there is
// none; 0 at entry counts as 1), `nextPosition` the place behind the close marker when there is one. A view
// into the text.
std::u16string_view ExtractTagSection(ConversionState& state, std::u16string_view text,
                                      std::u16string_view openMarker, std::u16string_view closeMarker,
                                      Position& position, Position& nextPosition);

// The first such section of a text.
std::u16string_view FirstTagSection(ConversionState& state, std::u16string_view text,
                                    std::u16string_view openMarker, std::u16string_view closeMarker);

// The names in a page's first Topic and Me tags, and the number before the former.
void GetTopicInfo(ConversionState& state, std::u16string_view text, std::u16string& topicName,
                  std::u16string& meName, std::u16string& topicNumber);

// The tag that opens at `position`, up to its "-->", and its exact counterpart with a slash. Raises 5 when no
// "-->" follows.
void GetPostTags(Position position, std::u16string_view text, std::u16string& openTag,
                 std::u16string& closeTag);

// The text without anything that looks like a tag: from the first "<" through the next ">", which goes
// wherever it stands in whatever case, and again from the start. A "<" that no ">" follows stays.
std::u16string RemoveTagInformation(ConversionState& state, std::u16string_view text);

// The full path of the page that a link such as /discus/messages/12/34.html leads to, in the secure folder
// when the page in hand is hidden. Raises 5 for a link whose only "/" is its first character.
std::u16string BuildTopicFilePath(const ConversionState& state, std::u16string_view link,
                                  std::u16string& fileName, std::u16string& folderNumber);

// The digits at the head of the text, blanks trimmed; leading zeros stay.
std::u16string_view LeadingDigits(std::u16string_view text);

// Notes a top as dealt with in the list on the form.
void AddProcessedFolder(ConversionState& state, std::u16string_view topNumber);

}  // namespace tessaly
