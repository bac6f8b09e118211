#include "platform/Disk.h"
#include "platform/WindowsApi.h"

namespace fs = std::filesystem;

namespace tessaly::platform {

namespace {

constexpr DWORD kNone = INVALID_FILE_ATTRIBUTES;

DWORD AttributesAt(const fs::path& path) {
    return ::GetFileAttributesW(LongPath(path).c_str());
}

bool Has(DWORD attributes, DWORD flag) {
    return (attributes & flag) != 0;
}

// A handle on a file or folder itself, at the end of all links; for questions only.
class Asked {
  public:
    explicit Asked(const fs::path& path)
        : handle_(::CreateFileW(LongPath(path).c_str(), 0,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr)) {}

    ~Asked() {
        if (IsThere()) ::CloseHandle(handle_);
    }

    Asked(const Asked&) = delete;
    Asked& operator=(const Asked&) = delete;

    bool IsThere() const { return handle_ != INVALID_HANDLE_VALUE; }

    DWORD Attributes() const {
        BY_HANDLE_FILE_INFORMATION information{};
        if (!IsThere() || ::GetFileInformationByHandle(handle_, &information) == 0) return kNone;
        return information.dwFileAttributes;
    }

    // In the form without a limit; empty when the system cannot tell.
    std::wstring Path() const {
        const DWORD size = ::GetFinalPathNameByHandleW(handle_, nullptr, 0, VOLUME_NAME_DOS);
        std::wstring path(size, L'\0');
        path.resize(::GetFinalPathNameByHandleW(handle_, path.data(), size, VOLUME_NAME_DOS));
        return path;
    }

  private:
    HANDLE handle_;
};

Kind KindOf(DWORD attributes) {
    if (attributes == kNone) return Kind::kNothing;
    if (Has(attributes, FILE_ATTRIBUTE_DEVICE)) return Kind::kOther;
    return Has(attributes, FILE_ATTRIBUTE_DIRECTORY) ? Kind::kFolder : Kind::kFile;
}

// As operators know it.
fs::path WithoutLongPrefix(const std::wstring& path) {
    if (path.starts_with(L"\\\\?\\UNC\\")) return L"\\\\" + path.substr(8);
    return path.starts_with(L"\\\\?\\") ? path.substr(4) : path;
}

// A search in a folder that ends with its life.
class Search {
  public:
    explicit Search(const fs::path& folder)
        : handle_(::FindFirstFileW((fs::path(LongPath(folder)) / L"*").c_str(), &found_)) {
        if (handle_ != INVALID_HANDLE_VALUE) return;
        const DWORD error = ::GetLastError();
        // A drive that is empty has not even the entry of itself.
        if (error == ERROR_FILE_NOT_FOUND) return;
        if (KindAt(folder) != Kind::kFolder) Raise(kPathNotFound);
        ::SetLastError(error);
        RaiseLastError();
    }

    ~Search() {
        if (handle_ != INVALID_HANDLE_VALUE) ::FindClose(handle_);
    }

    Search(const Search&) = delete;
    Search& operator=(const Search&) = delete;

    bool HasFound() const { return handle_ != INVALID_HANDLE_VALUE; }
    const WIN32_FIND_DATAW& Found() const { return found_; }

    bool Next() {
        if (::FindNextFileW(handle_, &found_) != 0) return true;
        if (::GetLastError() != ERROR_NO_MORE_FILES) RaiseLastError();
        return false;
    }

  private:
    WIN32_FIND_DATAW found_{};
    HANDLE handle_;
};

void MakeWritable(const std::wstring& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes == kNone || !Has(attributes, FILE_ATTRIBUTE_READONLY)) return;
    ::SetFileAttributesW(path.c_str(), attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
}

void RemoveEmptyFolder(const fs::path& path) {
    const std::wstring native = LongPath(path);
    MakeWritable(native);
    if (::RemoveDirectoryW(native.c_str()) == 0) RaiseLastError();
}

}  // namespace

Kind KindAt(const fs::path& path) {
    const DWORD attributes = AttributesAt(path);
    if (attributes == kNone || !Has(attributes, FILE_ATTRIBUTE_REPARSE_POINT)) return KindOf(attributes);
    return KindOf(Asked(path).Attributes());
}

bool IsLink(const fs::path& path) {
    const DWORD attributes = AttributesAt(path);
    return attributes != kNone && Has(attributes, FILE_ATTRIBUTE_REPARSE_POINT);
}

std::vector<Entry> EntriesOf(const fs::path& folder) {
    if (folder.empty()) Raise(kPathNotFound);
    std::vector<Entry> entries;
    Search search(folder);
    if (!search.HasFound()) return entries;
    do {
        const fs::path name = search.Found().cFileName;
        if (name == L"." || name == L"..") continue;
        const DWORD attributes = search.Found().dwFileAttributes;
        const bool isLink = Has(attributes, FILE_ATTRIBUTE_REPARSE_POINT);
        entries.push_back({name, isLink ? KindAt(folder / name) : KindOf(attributes), isLink});
    } while (search.Next());
    return entries;
}

std::optional<fs::path> Canonical(const fs::path& path) {
    const Asked asked(path);
    if (path.empty() || !asked.IsThere()) return {};
    const std::wstring final = asked.Path();
    return WithoutLongPrefix(final.empty() ? LongPath(path) : final);
}

fs::path CanonicalAsFarAsItExists(const fs::path& path) {
    const fs::path absolute = WithoutLongPrefix(LongPath(path));
    if (const std::optional<fs::path> canonical = Canonical(absolute)) return *canonical;
    const fs::path parent = absolute.parent_path();
    if (parent.empty() || parent == absolute) return absolute;
    return CanonicalAsFarAsItExists(parent) / absolute.filename();
}

void CreateFolders(const fs::path& path) {
    if (path.empty()) Raise(kPathNotFound);
    if (KindAt(path) == Kind::kFolder) return;
    const fs::path parent = path.parent_path();
    if (!parent.empty() && parent != path) CreateFolders(parent);
    if (::CreateDirectoryW(LongPath(path).c_str(), nullptr) != 0) return;
    const DWORD error = ::GetLastError();
    if (KindAt(path) == Kind::kFolder) return;
    // A file in the way is no folder to go on in.
    if (error == ERROR_ALREADY_EXISTS) Raise(kPathNotFound);
    ::SetLastError(error);
    RaiseLastError();
}

unsigned long ProcessNumber() {
    return ::GetCurrentProcessId();
}

void MoveOver(const fs::path& path, const fs::path& target) {
    const std::wstring native = LongPath(target);
    MakeWritable(native);
    if (::MoveFileExW(LongPath(path).c_str(), native.c_str(), MOVEFILE_REPLACE_EXISTING) == 0)
        RaiseLastError();
}

void RemoveFile(const fs::path& path) {
    const std::wstring native = LongPath(path);
    MakeWritable(native);
    if (::DeleteFileW(native.c_str()) != 0) return;
    const DWORD error = ::GetLastError();
    if (error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND) RaiseLastError();
}

void RemoveFolder(const fs::path& path) {
    const DWORD attributes = AttributesAt(path);
    if (attributes == kNone) return;
    if (!Has(attributes, FILE_ATTRIBUTE_DIRECTORY)) return RemoveFile(path);
    if (Has(attributes, FILE_ATTRIBUTE_REPARSE_POINT)) return RemoveEmptyFolder(path);
    for (const Entry& entry : EntriesOf(path)) RemoveFolder(path / entry.name);
    RemoveEmptyFolder(path);
}

}  // namespace tessaly::platform
