#include "platform/WindowsApi.h"
// The system's header above must come first.
#include <shellapi.h>

#include <algorithm>
#include <atomic>
#include <cstdio>

#include "platform/charset.h"
#include "platform/console.h"

namespace tessaly::platform {

namespace {

std::atomic<bool> interrupted = false;
std::atomic<bool> wasInterrupted = false;

// The system calls this on a thread of its own.
BOOL WINAPI NoteInterrupt(DWORD event) {
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) return FALSE;
    if (wasInterrupted.exchange(true)) return FALSE;
    interrupted = true;
    return TRUE;
}

bool IsConsole(HANDLE handle) {
    DWORD mode = 0;
    return ::GetConsoleMode(handle, &mode) != 0;
}

void Write(std::u16string_view text, DWORD which, std::FILE* stream) {
    const HANDLE handle = ::GetStdHandle(which);
    if (!IsConsole(handle)) {
        const std::string bytes = ToUtf8(text);
        std::fwrite(bytes.data(), 1, bytes.size(), stream);
        std::fflush(stream);
        return;
    }
    std::wstring rest(text.begin(), text.end());
    while (!rest.empty()) {
        constexpr std::size_t kAtOnce = 8192;
        DWORD put = 0;
        const DWORD size = static_cast<DWORD>(std::min(rest.size(), kAtOnce));
        if (::WriteConsoleW(handle, rest.data(), size, &put, nullptr) == 0 || put == 0) return;
        rest.erase(0, put);
    }
}

}  // namespace

std::vector<std::string> Arguments(int, char**) {
    int count = 0;
    wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int at = 0; at < count; ++at) {
        const std::wstring_view word = words[at];
        arguments.push_back(ToUtf8(std::u16string(word.begin(), word.end())));
    }
    ::LocalFree(words);
    return arguments;
}

void NoteInterrupts() {
    ::SetConsoleCtrlHandler(NoteInterrupt, TRUE);
}

bool TakeInterrupt() {
    return interrupted.exchange(false);
}

bool ErrorsGoToTerminal() {
    const HANDLE handle = ::GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    if (::GetConsoleMode(handle, &mode) == 0) return false;
    // Only then does the console obey the sequence that empties a line.
    return ::SetConsoleMode(handle, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

void WriteOutput(std::u16string_view text) {
    Write(text, STD_OUTPUT_HANDLE, stdout);
}

void WriteError(std::u16string_view text) {
    Write(text, STD_ERROR_HANDLE, stderr);
}

}  // namespace tessaly::platform
