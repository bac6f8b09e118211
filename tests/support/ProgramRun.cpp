#include "tests/support/ProgramRun.h"

#include <cstdlib>
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

int ExitStatus(int result) {
    return result;
}
#else
std::string Quoted(const std::string& argument) {
    std::string quoted = "'";
    for (const char byte : argument) quoted += byte == '\'' ? "'\\''" : std::string(1, byte);
    return quoted + "'";
}

// Ended by a signal, it has none of its own.
int ExitStatus(int result) {
    return WIFEXITED(result) ? WEXITSTATUS(result) : -1;
}
#endif

}  // namespace

ProgramRun RunProgram(const std::vector<std::string>& arguments, const std::string& workingFolder) {
    const TemporaryFolder written;
    std::string command;
    if (!workingFolder.empty()) command = "cd " + Quoted(workingFolder) + " && ";
    for (const std::string& argument : arguments) command += Quoted(argument) + " ";
    command +=
        ">" + Quoted(written.Native("output").string()) + " 2>" + Quoted(written.Native("errors").string());
#ifdef _WIN32
    // The command interpreter takes the outermost quotes away.
    command = "\"" + command + "\"";
#endif
    ProgramRun run;
    run.status = ExitStatus(std::system(command.c_str()));
    run.output = written.Read("output");
    run.errors = written.Read("errors");
    return run;
}

}  // namespace tessaly::testing
