#include "platform/files.h"

#include <algorithm>
#include <filesystem>
#include <memory>

#include "platform/DeleteGuard.h"
#include "platform/Disk.h"
#include "platform/NativeFile.h"
#include "platform/NativeText.h"
#include "platform/paths.h"
#include "text/folding.h"
#include "text/search.h"
#include "text/split.h"

namespace fs = std::filesystem;

namespace tessaly::platform {

namespace {

// A file that is written beside its place and takes it when all of it is written; gone again when that fails.
// It has a short name, since the target's may be as long as a name can be, and one that no other run writes
// to.
class FileBeside {
  public:
    explicit FileBeside(const fs::path& target)
        : target_(target),
          path_(target.parent_path() / ("tessaly-" + std::to_string(ProcessNumber()) + ".part")) {}

    ~FileBeside() {
        if (!isPlaced_) IgnoringErrors([this] { RemoveFile(path_); });
    }

    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    const fs::path& Path() const { return path_; }

    void Place() {
        MoveOver(path_, target_);
        isPlaced_ = true;
    }

  private:
    fs::path target_;
    fs::path path_;
    bool isPlaced_ = false;
};

bool ComesBefore(const std::u16string& one, const std::u16string& other) {
    const auto less = [](char16_t a, char16_t b) { return Fold(a) < Fold(b); };
    if (std::ranges::lexicographical_compare(one, other, less)) return true;
    return !std::ranges::lexicographical_compare(other, one, less) && one < other;
}

// The folder itself is taken as spelled. Links lead to what they name.
std::vector<std::u16string> NamesIn(std::u16string_view folder, Kind wanted) {
    std::vector<std::u16string> names;
    for (const Entry& entry : EntriesOf(ToNative(folder))) {
        if (entry.kind == wanted) names.push_back(FromNativeText(entry.name));
    }
    std::ranges::sort(names, ComesBefore);
    return names;
}

// The folder as the guard compares it: absolute, all links followed as far as the path exists.
std::u16string Resolved(std::u16string_view folder) {
    if (Trim(folder).empty()) return {};
    return FromNativeText(CanonicalAsFarAsItExists(ToNative(folder)));
}

bool Matches(std::u16string_view name, std::u16string_view pattern) {
    const std::size_t star = pattern.find(u'*');
    if (star == std::u16string_view::npos) return name == pattern;
    const std::u16string_view head = pattern.substr(0, star);
    const std::u16string_view tail = pattern.substr(star + 1);
    return name.size() >= head.size() + tail.size() && name.starts_with(head) && name.ends_with(tail);
}

// The name as names are compared on this system.
std::u16string Compared(std::u16string_view name) {
    return kNamesIgnoreCase ? Folded(name) : std::u16string(name);
}

std::int64_t CountBelow(const fs::path& folder, std::u16string_view ending) {
    std::vector<Entry> entries;
    IgnoringErrors([&] { entries = EntriesOf(folder); });
    std::int64_t count = 0;
    for (const Entry& entry : entries) {
        if (entry.kind == Kind::kFolder) {
            if (!entry.isLink) count += CountBelow(folder / entry.name, ending);
        } else if (FromNativeText(entry.name).ends_with(ending)) {
            ++count;
        }
    }
    return count;
}

}  // namespace

bool FileExists(std::u16string_view path) {
    return KindAt(ToNative(path)) == Kind::kFile || KindAt(FindSource(path)) == Kind::kFile;
}

bool FileExistsWithin(std::u16string_view path, const std::vector<std::u16string>& folders) {
    fs::path file = ToNative(path);
    if (KindAt(file) != Kind::kFile) {
        file = FindSource(path);
        if (KindAt(file) != Kind::kFile) return false;
    }
    return LiesWithin(file, folders);
}

bool FolderExists(std::u16string_view path) {
    return KindAt(ToNative(path)) == Kind::kFolder;
}

std::string ReadWholeFile(std::u16string_view path) {
    NativeFile file = [path] {
        try {
            return OpenSource(path);
        } catch (const RunTimeError&) {
            Raise(kFileNotOpened);
        }
    }();
    // One byte more than the file has, so that the last read finds the end.
    std::string bytes(static_cast<std::size_t>(file.Size()) + 1, '\0');
    std::size_t filled = 0;
    while (const std::size_t got = file.Read(bytes.data() + filled, bytes.size() - filled)) {
        filled += got;
        if (filled == bytes.size()) bytes.resize(bytes.size() * 2);
    }
    bytes.resize(filled);
    return bytes;
}

std::int64_t FileLength(std::u16string_view path) {
    return OpenSource(path).Size();
}

void WriteWholeFile(std::u16string_view path, const std::vector<std::string>& pieces) {
    try {
        FileBeside beside(ToNative(path));
        NativeFile file = NativeFile::OpenForWriting(beside.Path());
        for (const std::string& piece : pieces) file.Write(piece);
        file.Close();
        beside.Place();
    } catch (const RunTimeError&) {
        Raise(kWriteFailed);
    }
}

void CopyFile(std::u16string_view source, std::u16string_view target) {
    NativeFile from = OpenSource(source);
    FileBeside beside(ToNative(target));
    NativeFile to = NativeFile::OpenForWriting(beside.Path());
    constexpr std::size_t kPieceSize = 1 << 18;
    const auto piece = std::make_unique_for_overwrite<char[]>(kPieceSize);
    while (const std::size_t got = from.Read(piece.get(), kPieceSize)) to.Write({piece.get(), got});
    to.Close();
    beside.Place();
}

void MakeFolders(std::u16string_view path) {
    CreateFolders(WithoutTrailingSeparator(ToNative(path)));
}

int ObstacleToFolders(std::u16string_view path) {
    fs::path folder = WithoutTrailingSeparator(ToNative(path));
    for (; folder.has_relative_path(); folder = folder.parent_path()) {
        const Kind kind = KindAt(folder);
        if (kind == Kind::kFolder) return kNoError;
        if (kind != Kind::kNothing) return kPathNotFound;
        // A link that leads nowhere.
        if (IsLink(folder)) return kPathAccessError;
        if (folder.filename().native().size() > kLongestName) return kPathAccessError;
    }
    return kNoError;
}

void RenameFolder(std::u16string_view folder, std::u16string_view name) {
    MoveOver(WithoutTrailingSeparator(ToNative(folder)), WithoutTrailingSeparator(ToNative(name)));
}

std::vector<std::u16string> Subfolders(std::u16string_view folder) {
    return NamesIn(folder, Kind::kFolder);
}

std::vector<std::u16string> Files(std::u16string_view folder) {
    return NamesIn(folder, Kind::kFile);
}

std::int64_t CountFiles(std::u16string_view folder, std::u16string_view ending) {
    return CountBelow(ToNative(folder), ending);
}

bool MayDelete(std::u16string_view folder, const Protected& kept) {
    GuardedFolders guarded{Resolved(kept.homeFolder), Resolved(kept.programFolder), {}};
    for (const std::u16string& source : kept.sourceFolders) guarded.sources.push_back(Resolved(source));
    const std::u16string reason = ReasonNotToDelete(Resolved(folder), guarded);
    if (reason.empty()) return true;
    kept.showMessage(u"The folder " + std::u16string(folder) + u" is not deleted: " + reason);
    return false;
}

void DeleteFolder(std::u16string_view folder, const Protected& kept) {
    if (!MayDelete(folder, kept)) Raise(kPermissionDenied);
    const fs::path native = WithoutTrailingSeparator(ToNative(folder));
    if (KindAt(native) != Kind::kFolder) Raise(kPathNotFound);
    RemoveFolder(native);
}

void DeleteFiles(std::u16string_view folder, std::u16string_view name) {
    const fs::path native = ToNative(folder);
    int failed = kNoError;
    for (const Entry& entry : EntriesOf(native)) {
        if (entry.kind == Kind::kFolder) continue;
        if (!Matches(Compared(FromNativeText(entry.name)), Compared(name))) continue;
        const int error = IgnoringErrors([&] { RemoveFile(native / entry.name); });
        if (error != kNoError) failed = error;
    }
    if (failed != kNoError) Raise(static_cast<ErrorNumber>(failed));
}

}  // namespace tessaly::platform
