#include "platform/DeleteGuard.h"

#include <algorithm>

#include "text/search.h"
#include "text/split.h"

namespace tessaly::platform {

namespace {

bool IsDriveLetter(std::u16string_view step) {
    return step.size() == 2 && step[1] == u':';
}

// The path with one kind of separator, none at its end and without the prefix of long paths; a root becomes
// the empty text.
std::u16string Plain(std::u16string_view path) {
    constexpr std::u16string_view kLongShare = u"\\\\?\\UNC\\";
    constexpr std::u16string_view kLong = u"\\\\?\\";
    std::u16string plain(path);
    ReplaceAll(plain, u"/", u"\\");
    if (StandsAt(plain, 1, kLongShare)) {
        plain.replace(0, kLongShare.size(), u"\\\\");
    } else if (plain.starts_with(kLong) && IsDriveLetter(plain.substr(kLong.size(), 2))) {
        plain.erase(0, kLong.size());
    }
    while (plain.ends_with(u'\\')) plain.pop_back();
    return plain;
}

// "\\server\share" and a device such as "\\.\C:" have four pieces.
bool IsRoot(const std::u16string& plain) {
    if (plain.empty() || IsDriveLetter(plain)) return true;
    return plain.starts_with(u"\\\\") && std::ranges::count(plain, u'\\') <= 3;
}

bool IsOrHolds(const std::u16string& folder, std::u16string_view inner) {
    const std::u16string plainInner = Plain(inner);
    if (plainInner.empty()) return false;
    return StandsAt(plainInner + u"\\", 1, folder + u"\\");
}

}  // namespace

std::u16string ReasonNotToDelete(std::u16string_view folder, const GuardedFolders& guarded) {
    if (Trim(folder).empty()) return u"no folder is named";
    const std::u16string plain = Plain(folder);
    if (IsRoot(plain)) return u"it is the root of a file system";
    if (IsOrHolds(plain, guarded.home)) return u"it is or holds your home folder";
    if (IsOrHolds(plain, guarded.program)) return u"it is or holds the program's own folder";
    for (const std::u16string& source : guarded.sources) {
        if (IsOrHolds(plain, source)) return u"it is or holds a folder of the Discus copy, " + source;
    }
    return {};
}

}  // namespace tessaly::platform
