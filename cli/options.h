#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "control/modDefinitions.h"

namespace tessaly {

// What the operator types about finishing a board. Texts are UTF-8, folders native paths.
struct FinishWords {
    std::string output;
    std::string prefix = "mybb_";
    std::int64_t firstForum = 3;
    std::int64_t firstThread = 1;
    std::int64_t firstPost = 1;
    bool keepPagesAsForums = false;
    std::string forum;
    std::string charset;
};

// What the operator types on the command line. Texts are UTF-8, folders native paths.
struct Options {
    std::optional<std::string> root;
    std::optional<std::string> messages;
    std::optional<std::string> secure;
    std::optional<std::string> main;
    std::optional<std::string> output;
    std::optional<std::string> website;
    std::optional<std::string> forum;
    std::optional<std::string> admin;
    std::optional<std::string> users;
    std::optional<std::string> groups;
    std::optional<std::string> splitMegabytes;
    std::optional<std::string> charset;
    bool noAttachments = false;
    bool noHidden = false;
    bool noRedirects = false;
    bool noSpecialCharacters = false;
    bool noShowProgress = false;
    bool noLog = false;
    std::string ini;
    std::string programFolder;
    std::string report;
    std::string html;
    bool quiet = false;
    bool isFinishWanted = false;
    FinishWords finish;
};

// Fills in the folders that follow from the root alone. Gives what is wrong in words, empty when nothing is.
std::string CompleteFolders(Options& options);

// Plays the operator: starts the program's state, puts each option into its field and runs the field's
// handler.
void StartProgram(ConversionState& state, const Options& options);
void FillFields(ConversionState& state, const Options& options);

}  // namespace tessaly
