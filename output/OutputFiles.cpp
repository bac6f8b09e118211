#include "output/OutputFiles.h"

#include "control/DisplayInfo.h"
#include "control/RoutineHandler.h"
#include "control/checking.h"
#include "control/deleting.h"
#include "control/troubledFiles.h"
#include "platform/TextFile.h"
#include "platform/TextStream.h"
#include "platform/charset.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "reader/TagScanning.h"
#include "text/numbers.h"

namespace tessaly {

namespace {

using platform::OpenMode;
using platform::TextFile;
using platform::TextFormat;
using platform::TextStream;

constexpr std::u16string_view kScriptName = u"Discus Conversion Import SQL.sql";

struct Target {
    bool isBesideProgram;
    std::u16string_view name;
};

// In the order of the cleaning. The last one lies beside the program: the sequence log of the output folder
// is not among them and stays.
constexpr Target kTargets[] = {
    {false, kScriptName},
    {false, u"Log.txt"},
    {false, u"LogError.txt"},
    {false, u"mybb_threads*.txt"},
    {false, u"mybb_unknown*.txt"},
    {false, u"mybb_users*.txt"},
    {false, u"mybb_posts*.txt"},
    {false, u"mybb_forums*.txt"},
    {false, u"mybb_attachments*.txt"},
    {false, u"mybb_announcements*.txt"},
    {false, u"mybb_usergroups*.txt"},
    {false, u"InternalLinks*.txt"},
    {true, u"Discus Special Characters.txt"},
};

void CleanOutputFolder(const ConversionState& state) {
    const std::u16string docs = state.ProgramFolder + u"\\Docs\\";
    for (const Target& target : kTargets) {
        const std::u16string& folder = target.isBesideProgram ? docs : state.mybbOutputFolder;
        IgnoringErrors([&] { platform::DeleteFiles(folder, target.name); });
    }
}

void OpenLogs(ConversionState& state) {
    state.LogFile.Stream.reset();
    state.LogErrorFile.Stream = false;
    WithFile(state, state.LogFileName, [&] {
        state.LogFile.Stream =
            std::make_shared<TextFile>(state.LogFileName, OpenMode::kWriting, TextFormat::kUnicode);
    });
    WithFile(state, state.LogErrorFileName, [&] {
        TextFile errors(state.LogErrorFileName, OpenMode::kWriting, TextFormat::kUnicode);
        state.LogErrorFile.Stream = true;
        errors.WriteLine(u"\r\n");
        errors.Close();
    });
}

void Save(ConversionState& state, OutputFile& file) {
    if (IsCheck(state)) return;
    WithFile(state, file.Name, [&file] { file.Stream->SaveToFile(file.Name); });
}

// The full file takes its statement under its old name. Any "xxx" of the path is replaced from the second
// file on, in whatever case, unlike in the first name.
void Rotate(ConversionState& state, OutputFile& file, std::u16string_view table) {
    Save(state, file);
    file.Stream = std::make_shared<TextStream>(state.Charset);
    if (!table.empty()) CreateImportSQL(state, file.Name, table);
    file.Size = 0;
    file.Number = Add(file.Number, 1);
    file.Name = file.Template;
    ReplaceAll(file.Name, u"XXX", ToText(file.Number));
}

bool IsFull(const ConversionState& state, const OutputFile& file, std::u16string_view line) {
    return state.SplitMBSize >= 1 && Add(Length(line), file.Size) > state.SplitMBSize;
}

// What no file can be called, or a folder is called already, fails as writing it would.
void CheckFile(CheckListener& check, std::u16string_view path) {
    const std::u16string_view name = From(path, FindBackward(path, u"\\") + 1);
    const bool isFolder = name.empty() || name == u"." || name == u"..";
    if (isFolder || platform::ToUtf8(name).size() > platform::kLongestName) Raise(kWriteFailed);
    std::u16string file(path);
    if (check.RedirectFolders.contains(file)) Raise(kWriteFailed);
    if (LeadingDigits(name).size() == name.size()) check.RedirectFiles.insert(std::move(file));
}

}  // namespace

void mybbOpenOutputFiles(ConversionState& state) try {
    if (state.CancelRequested || IsCheck(state)) return;
    DisplayInfo(state, u"Cleaning up Output Folders - Please Wait...\r\n", true, true, false);
    CleanOutputFolder(state);
    state.ToolboxA.KeepResponsive();
    OpenLogs(state);
    if (state.optCreateAttachments) {
        IgnoringErrors([&] { DeleteFolder(state, state.mybbAttachmentsFolder); });
        IgnoringErrors([&] { ToolboxLibrary::MakeFolderPath(state.mybbAttachmentsFolder); });
    }
    state.ToolboxA.KeepResponsive();
} catch (...) {
    RoutineHandler(state, u" - mybbOpenOutputFiles()", CurrentError());
}

void WriteFileLine(ConversionState& state, std::u16string_view line, OutputFile& file,
                   std::u16string_view table, bool noSplit) try {
    if (file.Stream == nullptr) file.Stream = std::make_shared<TextStream>(state.Charset);
    if (!noSplit && IsFull(state, file, line)) Rotate(state, file, table);
    if (IsCheck(state)) {
        state.Check->RowMade(line);
    } else {
        file.Stream->WriteLine(line);
    }
    file.Size = Add(file.Size, Add(Length(line), 2));
    ++state.Progress.RowsWritten;
    state.ToolboxA.KeepResponsive();
} catch (...) {
    RoutineHandler(state, u" - WriteFileLine()", CurrentError());
}

void CreateImportSQL(ConversionState& state, std::u16string_view name, std::u16string_view table) try {
    if (IsCheck(state)) return;
    std::u16string path = platform::WithNativeSeparators(name);
    ReplaceAll(path, u"\\", u"\\\\");
    const std::u16string script = state.mybbOutputFolder + std::u16string(kScriptName);
    const std::u16string statement = u"LOAD DATA LOCAL INFILE '" + path + u"' INTO TABLE " +
                                     std::u16string(table) +
                                     u"\r\nFIELDS TERMINATED BY ','\r\n"
                                     u"ENCLOSED BY '\"'LINES TERMINATED BY '\\r\\n';\r\n\r\n";
    WithFile(state, script, [&] {
        TextFile file(script, OpenMode::kAppending, TextFormat::kSystemDefault);
        file.WriteLine(statement);
        file.Close();
    });
    state.ToolboxA.KeepResponsive();
} catch (...) {
    RoutineHandler(state, u" - CreateImportSQL()", CurrentError());
}

void WriteFileData(ConversionState& state, std::u16string_view path, std::u16string_view text) try {
    if (IsCheck(state)) return CheckFile(*state.Check, path);
    TextStream stream(state.Charset);
    stream.WriteText(text);
    WithFile(state, path, [&] { stream.SaveToFile(path); });
    state.ToolboxA.KeepResponsive();
} catch (...) {
    RoutineHandler(state, u" - WriteFileData()", CurrentError());
}

void FinishOutputFile(ConversionState& state, OutputFile& file, std::u16string_view table) {
    if (file.Stream == nullptr) return;
    Save(state, file);
    if (!table.empty()) CreateImportSQL(state, file.Name, table);
    file.Stream.reset();
}

void mybbCloseOutputFiles(ConversionState& state) {
    const struct {
        OutputFile& file;
        std::u16string_view table;
    } families[] = {
        {state.ThreadsFile, u"mybb_threads"},
        {state.UnknownFile, u"mybb_unknown"},
        {state.PostsFile, u"mybb_posts"},
        {state.UsersImportFile, u"mybb_users"},
        {state.AttachmentsFile, u"mybb_attachments"},
        {state.UserGroupsFile, u"mybb_usergroups"},
        {state.InternalLinksFile, u""},
        {state.InternalLinksUpdateFile, u""},
        {state.AnnouncementsFile, u"mybb_announcements"},
    };
    for (const auto& [file, table] : families) {
        if (file.Stream == nullptr) continue;
        IgnoringErrors([&state, &file = file] { Save(state, file); });
        if (!table.empty()) CreateImportSQL(state, file.Name, table);
        file.Stream.reset();
    }
    IgnoringErrors([&state] {
        if (state.LogFile.Stream == nullptr) return;
        WithFile(state, state.LogFileName, [&state] { state.LogFile.Stream->Close(); });
    });
    state.LogFile.Stream.reset();
    state.LogErrorFile.Stream = false;
    state.ToolboxA.KeepResponsive();
}

void BeginOutputFile(OutputFile& file, std::u16string_view templateName) {
    file.Template = templateName;
    file.Number = 1;
    file.Name = file.Template;
    ReplaceAllExactly(file.Name, u"XXX", ToText(file.Number));
}

}  // namespace tessaly
