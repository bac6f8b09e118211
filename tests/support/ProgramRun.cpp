#include "tests/support/ProgramRun.h"

#include <cstdlib>
#include <filesystem>
#ifndef _WIN32
#include <sys/wait.h>
#endif

namespace tessaly::testing {

namespace {

#ifdef _WIN32
// Arguments of tests hold no double quotes.
std::string Quoted(const std::string& argument) {
    return "\"" + argument + "\"";
}

// The command interpreter takes the outermost quotes away.
int Status(const std::string& command) {
    const std::u8string quoted = u8"\"" + std::u8string(command.begin(), command.end()) + u8"\"";
    return ::_wsystem(std::filesystem::path(quoted).c_str());
}

constexpr const char* kEnter = "cd /d ";

// As the program wrote it, before the system's library made the line ends.
std::string Told(const std::string& bytes) {
    std::string told;
    for (std::size_t at = 0; at < bytes.size(); ++at)
        if (bytes.compare(at, 2, "\r\n") != 0) told += bytes[at];
    return told;
}
#else
std::string Quoted(const std::string& argument) {
    std::string quoted = "'";
    for (const char byte : argument) quoted += byte == '\'' ? "'\\''" : std::string(1, byte);
    return quoted + "'";
}

// Ended by a signal, it has none of its own.
int Status(const std::string& command) {
    const int result = std::system(command.c_str());
    return WIFEXITED(result) ? WEXITSTATUS(result) : -1;
}

constexpr const char* kEnter = "cd ";

std::string Told(const std::string& bytes) {
    return bytes;
}
#endif

}  // namespace

ProgramRun RunProgram(const std::vector<std::string>& arguments, const std::string& workingFolder) {
    const TemporaryFolder written;
    std::string command;
    if (!workingFolder.empty()) command = kEnter + Quoted(workingFolder) + " && ";
    for (const std::string& argument : arguments) command += Quoted(argument) + " ";
    command += ">" + Quoted(Utf8(written.Native("output"))) + " 2>" + Quoted(Utf8(written.Native("errors")));
    ProgramRun run;
    run.status = Status(command);
    run.output = Told(written.Read("output"));
    run.errors = Told(written.Read("errors"));
    return run;
}

}  // namespace tessaly::testing
