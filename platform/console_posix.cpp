#include <unistd.h>

#include <csignal>
#include <cstdio>

#include "platform/charset.h"
#include "platform/console.h"

namespace tessaly::platform {

namespace {

volatile std::sig_atomic_t interrupted = 0;

void NoteInterrupt(int signal) {
    interrupted = 1;
    std::signal(signal, SIG_DFL);
}

void Write(std::u16string_view text, std::FILE* stream) {
    const std::string bytes = ToUtf8(text);
    std::fwrite(bytes.data(), 1, bytes.size(), stream);
    std::fflush(stream);
}

}  // namespace

std::vector<std::string> Arguments(int count, char** words) {
    return std::vector<std::string>(words, words + count);
}

void NoteInterrupts() {
    std::signal(SIGINT, NoteInterrupt);
}

bool TakeInterrupt() {
    if (interrupted == 0) return false;
    interrupted = 0;
    return true;
}

bool ErrorsGoToTerminal() {
    return ::isatty(STDERR_FILENO) == 1;
}

void WriteOutput(std::u16string_view text) {
    Write(text, stdout);
}

void WriteError(std::u16string_view text) {
    Write(text, stderr);
}

}  // namespace tessaly::platform
