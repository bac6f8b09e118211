#include "tests/fuzz/FuzzBoard.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

#include "platform/paths.h"

namespace fs = std::filesystem;

namespace tessaly::fuzzing {

FuzzBoard::FuzzBoard() {
    folder_ =
        (fs::temp_directory_path() / ("tessaly-fuzz-" + std::to_string(std::random_device()()))).string();
    fs::create_directories(folder_ + "/source/discus/messages/1");
    fs::create_directories(folder_ + "/source/discus_admin_1/secure/1");
    fs::create_directories(folder_ + "/output/attachments");
    Write("program/Docs/Redirect.html", "<title>CCCCC</title>AAAAA BBBBB XXXXX ZZZZZ");
    Write("program/Docs/utf-8.txt", "&auml;\t`\xC3\xA4`\t&#228;\r\n&amp;\t&amp;\t&#38;\r\n&x1;\t&y\t\r\n");
    Write("source/discus/messages/1/photo-1.jpg", "picture");
    Write("source/discus/messages/1/2.html", "<!--Me: 2/Two--><!--Post: 1--><!--Time: 1--><!--/Post: 1-->");
}

FuzzBoard::~FuzzBoard() {
    std::error_code error;
    fs::remove_all(folder_, error);
}

std::unique_ptr<ConversionState> FuzzBoard::NewState() const {
    auto state = std::make_unique<ConversionState>();
    state->ProgramFolder = Path("program");
    state->ProgramName = u"fuzz";
    // The form's load would read its file anew for each input.
    state->IniFile = Path("fuzz.ini");
    state->optCreateRedirectionFiles = true;
    state->optFindDiscusSpecialCharacters = true;
    state->optCreateAttachments = true;
    state->optCreateHiddenTopics = true;
    state->optDisplay = true;
    state->DiscusRootFolder = Path("source") + u"\\";
    state->DiscusMessageFolder = Path("source/discus/messages") + u"\\";
    state->DiscusSecureMessageFolder = Path("source/discus_admin_1/secure") + u"\\";
    state->DiscusMainFolder = Path("source/discus_admin_1") + u"\\";
    state->mybbOutputFolder = Path("output") + u"\\";
    state->mybbAttachmentsFolder = Path("output/attachments");
    state->txtDiscusRootFolder.Text = state->DiscusRootFolder;
    state->txtDiscusMessageFolder.Text = state->DiscusMessageFolder;
    state->txtDiscusSecureMessageFolder.Text = state->DiscusSecureMessageFolder;
    state->txtDiscusMainFolder.Text = state->DiscusMainFolder;
    state->txtmybbOutputFolder.Text = state->mybbOutputFolder;
    state->DiscusWebsite = u"http://old.example/discus";
    state->txtDiscusWebsite.Text = state->DiscusWebsite;
    state->txtmybbForumAddr.Text = u"http://new.example/";
    state->txtDefaultAdmin.Text = u"Admin";
    state->DefaultAdmin = u"Admin";
    state->UserFile = state->DiscusMainFolder + u"User.txt";
    state->UsersFile = state->DiscusMainFolder + u"Users.txt";
    state->BoardTopicsFile = state->DiscusMessageFolder + u"board-topics.html";
    state->DiscusCgiFile = state->DiscusMessageFolder + u"discus.cgi";
    state->MemberPostCounts.assign(101, 0);
    state->DataIndex.resize(2);
    state->Depth = 1;
    state->Charset = u"utf-8";
    state->cboCharset.Text = u"utf-8";
    state->txtSplitMBSize.Text = u"0.001";
    for (OutputFile* const file : {&state->ThreadsFile, &state->PostsFile, &state->ForumsFile,
                                   &state->UsersImportFile, &state->AttachmentsFile, &state->UserGroupsFile,
                                   &state->InternalLinksFile, &state->AnnouncementsFile}) {
        file->Name = state->mybbOutputFolder + u"rows.txt";
        file->Template = state->mybbOutputFolder + u"rowsXXX.txt";
    }
    return state;
}

void FuzzBoard::Write(const std::string& name, std::string_view bytes) const {
    const fs::path path = fs::path(folder_) / name;
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void FuzzBoard::Remove(const std::string& name) const {
    std::error_code error;
    fs::remove(fs::path(folder_) / name, error);
}

std::u16string FuzzBoard::Path(const std::string& name) const {
    return platform::ToPathText(fs::path(folder_) / name);
}

const FuzzBoard& Board() {
    static const FuzzBoard board;
    return board;
}

std::u16string AsText(std::string_view bytes) {
    std::u16string text;
    for (const char byte : bytes) text += static_cast<unsigned char>(byte);
    return text;
}

std::string_view AsBytes(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

std::vector<std::string_view> Parts(std::string_view bytes, std::size_t count) {
    std::vector<std::string_view> parts;
    while (parts.size() < count) {
        const std::size_t end =
            parts.size() + 1 == count ? bytes.size() : std::min(bytes.find('\xFF'), bytes.size());
        parts.push_back(bytes.substr(0, end));
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return parts;
}

void ExpectAtMost(std::size_t size, std::size_t most) {
    if (size > most) std::abort();
}

}  // namespace tessaly::fuzzing
