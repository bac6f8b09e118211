#include "cli/finish.h"

#include "control/ToolboxLibrary.h"
#include "finish/FinishBoard.h"
#include "finish/FinishError.h"
#include "finish/FinishNote.h"
#include "platform/charset.h"
#include "platform/console.h"
#include "platform/paths.h"

namespace tessaly {

namespace {

std::u16string FolderText(const std::string& native) {
    const std::u16string path = platform::AbsolutePathText(platform::ToNative(platform::FromUtf8(native)));
    return ToolboxLibrary::AddBackslash(path);
}

std::u16string FolderOf(std::u16string_view file) {
    return std::u16string(file.substr(0, file.rfind(u'\\') + 1));
}

FinishOptions OptionsOf(const FinishWords& words) {
    FinishOptions options;
    options.prefix = platform::FromUtf8(words.prefix);
    options.firstForum = words.firstForum;
    options.firstThread = words.firstThread;
    options.firstPost = words.firstPost;
    options.keepPagesAsForums = words.keepPagesAsForums;
    options.forumAddress = platform::FromUtf8(words.forum);
    options.charset = platform::FromUtf8(words.charset);
    return options;
}

int Finish(const FinishOptions& options, bool isQuiet) {
    try {
        const Finished finished = FinishBoard(options);
        for (const std::u16string& warning : finished.warnings) platform::WriteError(warning + u"\n");
        if (!isQuiet) platform::WriteOutput(finished.summary);
        return finished.warnings.empty() ? kAllWell : kTrouble;
    } catch (const FinishError& error) {
        platform::WriteError(error.text + u"\n");
        return kTrouble;
    }
}

}  // namespace

int RunFinish(const FinishWords& words) {
    FinishOptions options = OptionsOf(words);
    options.folder = FolderText(words.output);
    options.programFolder = FolderOf(platform::ProgramFile());
    return Finish(options, false);
}

int FinishRun(const ConversionState& state, const Options& options) {
    const int error = IgnoringErrors([&state] { WriteFinishNote(state); });
    if (error != kNoError) {
        platform::WriteError(u"FinishNote.txt could not be written.\n");
        return kTrouble;
    }
    FinishOptions wanted = OptionsOf(options.finish);
    wanted.folder = state.mybbOutputFolder;
    wanted.programFolder = state.ProgramFolder;
    wanted.sourceFolders = SourceFolders(state);
    return Finish(wanted, options.quiet);
}

}  // namespace tessaly
