#include "translate/BuildmybbLink.h"

#include "control/RoutineHandler.h"
#include "reader/TagScanning.h"
#include "text/split.h"

namespace tessaly {

std::u16string NewTopicAddress(const ConversionState& state, const std::vector<std::u16string>& item) {
    if (item.size() < 3) Raise(kSubscriptOutOfRange);
    return state.mybbForumAddr + u"viewtopic.php?f=" + item[0] + u"&t=" + item[2];
}

std::u16string BuildmybbLink(ConversionState& state, std::u16string_view link, std::u16string_view item,
                             std::vector<std::u16string>& list) try {
    const auto parts = Split(item, u",");
    list.assign(parts.begin(), parts.end());
    const std::u16string newAddress = NewTopicAddress(state, list);
    std::u16string oldAddress(FirstTagSection(state, link, u"[url=", u"]"));
    RemoveAll(oldAddress, u"[url=");
    RemoveAll(oldAddress, u"]");
    std::u16string built(link);
    ReplaceAll(built, oldAddress, newAddress);
    return built;
} catch (...) {
    RoutineHandler(state, u" - BuildmybbLink()", CurrentError());
    return {};
}

}  // namespace tessaly
