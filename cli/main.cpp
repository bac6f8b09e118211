#include <CLI/CLI.hpp>
#include <algorithm>

#include "cli/check.h"
#include "cli/convert.h"
#include "cli/finish.h"
#include "platform/charset.h"
#include "platform/console.h"

namespace {

constexpr const char* kAbout =
    "Tessaly converts a copy of a Discus 4 message board into import files for a mybb forum.";

constexpr const char* kFooter = R"(
A run only reads the board. It DELETES the output folder and builds it anew. A check writes, creates and deletes
nothing but the reports that it is asked for.

Settings that are not given come from the .ini file beside the program, or in the user's configuration folder
where the program's own cannot be written. A run keeps each given one there for the next run.

Example, the same options for both:
  tessaly-cli check --root /srv/discus-copy --output /srv/import --website http://www.old.example/discus/ \
      --forum http://forum.new.example/ --admin Admin --html report.html

Exit status: 0 all went well, or nothing was found that ends a run or loses something; 1 something was reported
(cancelled, stopped by a check, trouble) or found; 2 wrong usage; 3 a failure that nothing trapped.)";

void AddFolders(CLI::App& command, tessaly::Options& options) {
    const std::string group = "Folders";
    command
        .add_option("--root", options.root, "Copy of the Discus installation; alone it gives the next three")
        ->type_name("DIR")
        ->group(group);
    command.add_option("--messages", options.messages, "Public message folder (discus/messages)")
        ->type_name("DIR")
        ->group(group);
    command.add_option("--secure", options.secure, "Message folder of hidden topics (discus_admin_N/secure)")
        ->type_name("DIR")
        ->group(group);
    command.add_option("--main", options.main, "Folder of the member file (discus_admin_N)")
        ->type_name("DIR")
        ->group(group);
    command.add_option("--output", options.output, "Folder of all that is written; deleted and built anew")
        ->type_name("DIR")
        ->group(group);
}

void AddFields(CLI::App& command, tessaly::Options& options) {
    const std::string group = "The two sites";
    command.add_option("--website", options.website, "Address of the old board")
        ->type_name("TEXT")
        ->group(group);
    command.add_option("--forum", options.forum, "Address of the new forum")->type_name("TEXT")->group(group);
    command.add_option("--admin", options.admin, "Name of the new forum's administrator")
        ->type_name("TEXT")
        ->group(group);
    command.add_option("--users", options.users, "Users that the new forum has already")
        ->type_name("N")
        ->group(group);
    command.add_option("--groups", options.groups, "User groups that the new forum has already (7)")
        ->type_name("N")
        ->group(group);
    command.add_option("--split-mb", options.splitMegabytes, "Size at which an import file is split (50)")
        ->type_name("N")
        ->group(group);
    command.add_option("--charset", options.charset, "Charset of the pages; without it the first page tells")
        ->type_name("NAME")
        ->group(group);
}

void AddSwitches(CLI::App& command, tessaly::Options& options) {
    const std::string group = "Leave out";
    command.add_flag("--no-attachments", options.noAttachments, "Copy no attachments")->group(group);
    command.add_flag("--no-hidden", options.noHidden, "Do not look for pages in the secure folder")
        ->group(group);
    command.add_flag("--no-redirects", options.noRedirects, "Write no redirection pages")->group(group);
    command
        .add_flag("--no-special-characters", options.noSpecialCharacters, "Leave &...; sequences as they are")
        ->group(group);
    command
        .add_flag("--no-show-progress", options.noShowProgress, "Gather no routine progress for the report")
        ->group(group);
    command.add_flag("--no-log", options.noLog, "Keep routine progress out of Log.txt")->group(group);
}

void AddProgram(CLI::App& command, tessaly::Options& options) {
    const std::string group = "The program itself";
    command.add_option("--ini", options.ini, "Another settings file")->type_name("FILE")->group(group);
    command
        .add_option("--program-folder", options.programFolder,
                    "Where Docs and the settings file are looked for")
        ->type_name("DIR")
        ->group(group);
    command.add_option("--report", options.report, "Write the outcome as JSON")
        ->type_name("FILE")
        ->group(group);
    command.add_flag("--quiet", options.quiet, "No progress line and no summary")->group(group);
}

// What a run and a check of the same board are asked with.
CLI::App& AddCommand(CLI::App& app, const char* name, const char* about, tessaly::Options& options) {
    CLI::App& command = *app.add_subcommand(name, about);
    command.footer(kFooter);
    AddFolders(command, options);
    AddFields(command, options);
    AddSwitches(command, options);
    AddProgram(command, options);
    return command;
}

constexpr const char* kFinishAbout =
    "Make of a conversion's import files what a forum of the 1.8 line takes as it is";

constexpr const char* kFinishFooter = R"(
Reads the import files in the folder of --output and writes the folder "finish" beside them; an earlier one is
replaced. README.txt in it leads on. Connects to no database.

Without the note that "convert --finish" leaves, attachments find no posts, and pages that only list others are
not in the redirect map.

Example:
  tessaly-cli finish --output /srv/import --forum http://forum.new.example/

Exit status: 0 all went well, 1 something was reported, 2 wrong usage.)";

// Options that the command "finish" and "convert --finish" have in common.
std::vector<CLI::Option*> AddNumbers(CLI::App& app, tessaly::FinishWords& words, const std::string& group) {
    constexpr std::int64_t kHighestForum = 65535;
    constexpr std::int64_t kHighest = 4294967295;
    std::vector<CLI::Option*> added = {
        app.add_option("--prefix", words.prefix, "What the names of the forum's tables begin with (mybb_)")
            ->type_name("TEXT"),
        app.add_option("--first-forum", words.firstForum, "Number of the first forum (3)")
            ->type_name("N")
            ->check(CLI::Range(std::int64_t{1}, kHighestForum)),
        app.add_option("--first-thread", words.firstThread, "Number of the first thread (1)")
            ->type_name("N")
            ->check(CLI::Range(std::int64_t{1}, kHighest)),
        app.add_option("--first-post", words.firstPost, "Number of the first post, and attachment (1)")
            ->type_name("N")
            ->check(CLI::Range(std::int64_t{1}, kHighest)),
        app.add_flag("--keep-pages-as-forums", words.keepPagesAsForums,
                     "Keep a forum for each page instead of a thread in the forum above"),
    };
    for (CLI::Option* const option : added) option->group(group);
    return added;
}

void AddFinish(CLI::App& convert, tessaly::Options& options) {
    const std::string group = "Finish";
    CLI::Option* const wanted =
        convert
            .add_flag("--finish", options.isFinishWanted,
                      "Then write the folder \"finish\", from which a forum lives at once")
            ->group(group);
    for (CLI::Option* const option : AddNumbers(convert, options.finish, group)) option->needs(wanted);
}

void AddFinishCommand(CLI::App& finish, tessaly::FinishWords& words) {
    const std::string group = "Options";
    finish.footer(kFinishFooter);
    finish.add_option("--output", words.output, "Output folder of the conversion")
        ->type_name("DIR")
        ->required()
        ->group(group);
    finish.add_option("--forum", words.forum, "Address of the new forum; without it the note tells")
        ->type_name("URL")
        ->group(group);
    AddNumbers(finish, words, group);
    finish.add_option("--charset", words.charset, "Charset of the import files; without it the note tells")
        ->type_name("NAME")
        ->group(group);
}

}  // namespace

int main(int argc, char** argv) {
    tessaly::Options options;
    CLI::App app(kAbout, "tessaly-cli");
    app.set_version_flag("--version", "tessaly-cli " TESSALY_VERSION);
    app.require_subcommand(1);
    app.footer(kFooter);
    AddFinish(AddCommand(app, "convert", "Convert a board", options), options);
    tessaly::FinishWords finishWords;
    CLI::App& finish = *app.add_subcommand("finish", kFinishAbout);
    AddFinishCommand(finish, finishWords);
    CLI::App& check =
        AddCommand(app, "check", "Tell what a run would trip over or lose, and write nothing", options);
    check.add_option("--html", options.html, "Write the findings as a page to look at")
        ->type_name("FILE")
        ->group("The program itself");
    try {
        std::vector<std::string> words = tessaly::platform::Arguments(argc, argv);
        // The parser takes them from the back.
        words.erase(words.begin());
        std::ranges::reverse(words);
        app.parse(std::move(words));
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? tessaly::kAllWell : tessaly::kWrongUsage;
    }
    if (finish.parsed()) return tessaly::RunFinish(finishWords);
    const std::string wrong = tessaly::CompleteFolders(options);
    if (!wrong.empty()) {
        tessaly::platform::WriteError(tessaly::platform::FromUtf8(wrong) + u"\n");
        return tessaly::kWrongUsage;
    }
    return check.parsed() ? tessaly::RunCheck(options) : tessaly::RunConversion(options);
}
