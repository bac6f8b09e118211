#include "platform/paths.h"

#include <algorithm>
#include <map>
#include <unordered_map>

#include "platform/Disk.h"
#include "platform/NativeText.h"
#include "text/folding.h"
#include "text/search.h"

namespace fs = std::filesystem;

namespace tessaly::platform {

namespace {

// The names of one folder by their folded form, as they were when the folder was last changed. A listing that
// was read right after a change is not settled: a second change in the same tick of the clock would not show.
struct Listing {
    fs::file_time_type changed;
    bool isSettled;
    std::map<std::u16string, fs::path> names;
};

Listing ReadListing(const fs::path& folder, fs::file_time_type changed) {
    const bool isSettled = fs::file_time_type::clock::now() - changed > std::chrono::seconds(2);
    Listing listing{changed, isSettled, {}};
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const fs::path name = entry->path().filename();
        const auto [place, isNew] = listing.names.try_emplace(Folded(FromNativeText(name)), name);
        if (!isNew && name < place->second) place->second = name;
    }
    return listing;
}

// Boards hold thousands of pages in a folder and links to pages that are gone, so settled listings are kept.
const Listing& ListingOf(const fs::path& folder) {
    constexpr std::size_t kMostKept = 64;
    static std::unordered_map<fs::path::string_type, Listing> kept;
    std::error_code error;
    const fs::file_time_type changed = fs::last_write_time(folder, error);
    const fs::path::string_type& key = folder.native();
    const auto known = kept.find(key);
    if (known != kept.end() && known->second.changed == changed && known->second.isSettled)
        return known->second;
    if (kept.size() >= kMostKept) kept.clear();
    return kept.insert_or_assign(key, ReadListing(folder, changed)).first->second;
}

bool Exists(const fs::path& path) {
    return KindAt(path) != Kind::kNothing;
}

// Whether `inner`, both free of links and dots, is the folder or lies below it.
bool IsBelow(const fs::path& inner, const fs::path& folder) {
    const auto [step, rest] = std::ranges::mismatch(folder, inner);
    return step == folder.end() && rest != inner.end();
}

// The quick way for nearly all files: spelled below the folder, with no step that begins with a dot and no
// links on the way.
bool LiesPlainlyWithin(const fs::path& file, const fs::path& folder) {
    const std::basic_string_view<fs::path::value_type> name = file.native();
    const std::size_t base = folder.native().size();
    if (!name.starts_with(folder.native()) || name.size() <= base) return false;
    if (name[base] != fs::path::preferred_separator) return false;
    std::size_t step = base;
    while (step < name.size()) {
        const std::size_t end = std::min(name.find(fs::path::preferred_separator, step + 1), name.size());
        if (name.substr(step + 1).starts_with('.') || IsLink(name.substr(0, end))) return false;
        step = end;
    }
    return true;
}

}  // namespace

fs::path ToNative(std::u16string_view path) {
    return ToNativeText(WithNativeSeparators(path));
}

std::u16string ToPathText(const fs::path& path) {
    std::u16string text = FromNativeText(path);
    if constexpr (fs::path::preferred_separator == '/') ReplaceAll(text, u"/", u"\\");
    return text;
}

std::u16string AbsolutePathText(const fs::path& path) {
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    // Behind a link ".." leads to the folder above the link's target.
    const bool goesUp = std::ranges::find(absolute, fs::path("..")) != absolute.end();
    if (goesUp) return ToPathText(CanonicalAsFarAsItExists(path));
    return ToPathText((error ? path : absolute).lexically_normal());
}

fs::path WithoutTrailingSeparator(const fs::path& path) {
    return path.has_filename() ? path : path.parent_path();
}

std::u16string WithNativeSeparators(std::u16string_view path) {
    std::u16string native(path);
    if constexpr (fs::path::preferred_separator == '/') ReplaceAll(native, u"\\", u"/");
    return native;
}

fs::path FindSource(std::u16string_view path) {
    fs::path spelled = ToNative(path);
    if (kNamesIgnoreCase || Exists(spelled)) return spelled;
    fs::path found;
    for (const fs::path& step : spelled) {
        fs::path next = found / step;
        if (!Exists(next)) {
            const Listing& listing = ListingOf(found.empty() ? fs::path(".") : found);
            const auto other = listing.names.find(Folded(FromNativeText(step)));
            if (other == listing.names.end()) return spelled;
            next = found / other->second;
        }
        found = std::move(next);
    }
    return found;
}

// Nearly every file is there as spelled: opening it tells as much as looking first.
NativeFile OpenSource(std::u16string_view path) {
    const fs::path spelled = ToNative(path);
    try {
        return NativeFile::OpenForReading(spelled);
    } catch (const RunTimeError&) {
        const fs::path found = FindSource(path);
        if (found == spelled) throw;
        return NativeFile::OpenForReading(found);
    }
}

bool LiesWithin(const fs::path& file, const std::vector<std::u16string>& folders) {
    for (const std::u16string& folder : folders) {
        if (!folder.empty() && LiesPlainlyWithin(file, WithoutTrailingSeparator(ToNative(folder))))
            return true;
    }
    const std::optional<fs::path> resolved = Canonical(file);
    if (!resolved) return false;
    return std::ranges::any_of(folders, [&resolved](const std::u16string& folder) {
        if (folder.empty()) return false;
        const std::optional<fs::path> canonical = Canonical(ToNative(folder));
        return canonical && IsBelow(*resolved, *canonical);
    });
}

}  // namespace tessaly::platform
