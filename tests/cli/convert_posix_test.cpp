#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>

#include "tests/support/CommandLineBoard.h"

namespace tessaly {
namespace {

using testing::CommandLineBoard;
using testing::ProgramRun;
using testing::RunProgram;

bool Holds(const std::string& text, const std::string& what) {
    return text.find(what) != std::string::npos;
}

struct Board : CommandLineBoard {
    Board() : CommandLineBoard(TESSALY_CLI) {}

    std::vector<std::string> Arguments(const std::vector<std::string>& more) const {
        std::vector<std::string> arguments = {TESSALY_CLI, "convert"};
        for (const std::string& option : OptionsWith(more)) arguments.push_back(option);
        return arguments;
    }
};

// The program as a child whose standard error is what the test gives it. It is killed with the test when it
// has not ended by then.
class Child {
  public:
    Child(const std::vector<std::string>& arguments, int errors, const std::string& outputFile) {
        std::vector<char*> words;
        for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
        words.push_back(nullptr);
        pid_ = ::fork();
        if (pid_ != 0) return;
        const int output = ::open(outputFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        ::dup2(output, STDOUT_FILENO);
        ::dup2(errors, STDERR_FILENO);
        ::execv(words[0], words.data());
        ::_exit(127);
    }

    ~Child() {
        if (isWaitedFor_) return;
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
    }

    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    // Presses Ctrl-C and waits until the program has noticed it.
    void Interrupt() const {
        ::kill(pid_, SIGINT);
        while (HandlesInterrupts()) ::sched_yield();
    }

    void WaitUntilItHandlesInterrupts() const {
        while (IsRunning() && !HandlesInterrupts()) ::sched_yield();
    }

    void Kill(int signal) const { ::kill(pid_, signal); }

    // The status as wait gives it.
    int Wait() {
        int status = 0;
        ::waitpid(pid_, &status, 0);
        isWaitedFor_ = true;
        return status;
    }

  private:
    bool IsRunning() const {
        siginfo_t info{};
        return ::waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
               info.si_pid == 0;
    }

    bool HandlesInterrupts() const {
        std::ifstream status("/proc/" + std::to_string(pid_) + "/status");
        for (std::string line; std::getline(status, line);) {
            if (!line.starts_with("SigCgt:")) continue;
            const unsigned long long caught = std::stoull(line.substr(7), nullptr, 16);
            return (caught & (1ULL << (SIGINT - 1))) != 0;
        }
        return false;
    }

    pid_t pid_;
    bool isWaitedFor_ = false;
};

std::string ReadAll(int file) {
    std::string text;
    char piece[4096];
    for (ssize_t got = ::read(file, piece, sizeof piece); got > 0; got = ::read(file, piece, sizeof piece))
        text.append(piece, static_cast<std::size_t>(got));
    return text;
}

// A pipe without room: whoever writes to it waits until the test reads.
class FullPipe {
  public:
    FullPipe() {
        if (::pipe(ends_) != 0) return;
        ::fcntl(ends_[1], F_SETFL, O_NONBLOCK);
        const std::string piece(512, '#');
        while (::write(ends_[1], piece.data(), piece.size()) > 0) held_ += piece.size();
        ::fcntl(ends_[1], F_SETFL, 0);
    }
    ~FullPipe() {
        ::close(ends_[0]);
        CloseWriter();
    }
    FullPipe(const FullPipe&) = delete;
    FullPipe& operator=(const FullPipe&) = delete;

    int Writer() const { return ends_[1]; }

    // What others wrote, when all of them have ended.
    std::string Drain() {
        CloseWriter();
        return ReadAll(ends_[0]).substr(held_);
    }

  private:
    void CloseWriter() {
        if (ends_[1] >= 0) ::close(ends_[1]);
        ends_[1] = -1;
    }

    int ends_[2] = {-1, -1};
    std::size_t held_ = 0;
};

// The wrong number of groups brings a message box before the run: there the program waits for the pipe.
const std::vector<std::string> kMessageFirst = {"--groups", "none"};

TEST(Interrupt, CancelsTheRunEvenWhenItComesBeforeTheStart) {
    const Board board;
    FullPipe errors;
    Child child(board.Arguments(kMessageFirst), errors.Writer(), board.Native("output.txt"));
    child.WaitUntilItHandlesInterrupts();
    child.Interrupt();
    const std::string told = errors.Drain();
    const int status = child.Wait();
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 1);
    EXPECT_EQ(told, "Total Default Group of your mybb database must be filled in\n");
    EXPECT_TRUE(board.folder.Read("output.txt").starts_with("\n\nConversion Cancelled\n\n"));
    EXPECT_FALSE(board.folder.Exists("output/mybb_posts1.txt"));
}

TEST(Interrupt, EndsTheProcessAtTheSecondTime) {
    const Board board;
    FullPipe errors;
    Child child(board.Arguments(kMessageFirst), errors.Writer(), board.Native("output.txt"));
    child.WaitUntilItHandlesInterrupts();
    child.Interrupt();
    child.Kill(SIGINT);
    const int status = child.Wait();
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGINT);
    EXPECT_FALSE(board.folder.Exists("output"));
}

// A terminal of its own and what the program wrote there.
struct TerminalRun {
    TerminalRun(const Board& board, const std::vector<std::string>& more) {
        int master = -1;
        int slave = -1;
        if (::openpty(&master, &slave, nullptr, nullptr, nullptr) != 0) return;
        Child child(board.Arguments(more), slave, board.Native("output.txt"));
        ::close(slave);
        errors = ReadAll(master);
        status = child.Wait();
        ::close(master);
    }

    std::string errors;
    int status = -1;
};

TEST(ProgressLine, TellsPagesAndRowsOnATerminalAndIsGoneAtTheEnd) {
    const Board board;
    board.folder.Write("source/discus/messages/12/99.HTML", "no page");
    board.folder.Write("source/discus_admin_1043846797/secure/7/7.html", "a page");
    const TerminalRun run(board, {});
    EXPECT_EQ(run.status, 0);
    // 12.html and 7.html; the board file is no page.
    EXPECT_TRUE(run.errors.starts_with("\r\x1B[K0 of 2 pages, 0 rows, 0:00 elapsed")) << run.errors;
    EXPECT_TRUE(run.errors.ends_with("\r\x1B[K"));
    EXPECT_TRUE(board.folder.Read("output.txt").starts_with("Conversion Start: 2"));
}

TEST(ProgressLine, IsLeftOutWhenQuiet) {
    const Board board;
    const TerminalRun run(board, {"--quiet"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
}

TEST(ProgressLine, MakesRoomForAMessage) {
    const Board board;
    const TerminalRun run(board, {"--secure", board.Native("nowhere")});
    EXPECT_TRUE(WIFEXITED(run.status));
    EXPECT_TRUE(Holds(run.errors, "\r\x1B[K\\"));
    EXPECT_TRUE(Holds(run.errors, "nowhere\\ - Discus Secure Message Folder Must Exist"));
}

TEST(ProgressLine, MakesRoomForAFailureThatNothingTrapped) {
    const Board board;
    const TerminalRun run(board, {"--split-mb", "4096"});
    EXPECT_TRUE(WIFEXITED(run.status));
    EXPECT_TRUE(Holds(run.errors, "\r\x1B[KRun-time error 6 - Overflow"));
}

// Runs the program without any rights of root's, which no folder holds back.
ProgramRun RunUnprivileged(const std::vector<std::string>& arguments) {
    std::vector<std::string> words;
    if (::geteuid() == 0) words = {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return RunProgram(words);
}

bool CanRunUnprivileged() {
    return RunUnprivileged({TESSALY_CLI, "--version"}).status == 0;
}

TEST(OutputFolder, ThatCannotBeMadeIsTold) {
    if (!CanRunUnprivileged()) GTEST_SKIP() << "needs setpriv, and the program where all can run it";
    const Board board;
    board.folder.MakeFolder("locked");
    std::filesystem::permissions(board.folder.Native("locked"), std::filesystem::perms(0555));
    std::filesystem::permissions(board.folder.Native("program"), std::filesystem::perms(0777));
    const ProgramRun run = RunUnprivileged(board.Arguments({"--output", board.Native("locked/output")}));
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Holds(run.errors, "70 - SetupFolderLocations()\n\nPermission denied\n")) << run.errors;
    EXPECT_TRUE(Holds(run.output, "Conversion Cancelled"));
    EXPECT_FALSE(board.folder.Exists("locked/output"));
}

TEST(OutputFolder, ThatCannotBeDeletedIsToldAsFilesThatAreOpen) {
    if (!CanRunUnprivileged()) GTEST_SKIP() << "needs setpriv, and the program where all can run it";
    const Board board;
    board.folder.Write("output/old/kept.txt", "kept");
    std::filesystem::permissions(board.folder.Native("output/old"), std::filesystem::perms(0555));
    std::filesystem::permissions(board.folder.Native("program"), std::filesystem::perms(0777));
    const ProgramRun run = RunUnprivileged(board.Arguments({}));
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Holds(run.errors, "Files are open in "));
    EXPECT_TRUE(Holds(run.errors, "output\\ - Please close them then restart the conversion\n"));
    EXPECT_EQ(board.folder.Read("output/old/kept.txt"), "kept");
}

TEST(SourceFile, ThatCannotBeReadIsToldAndEndsTheRunAsACancel) {
    if (!CanRunUnprivileged()) GTEST_SKIP() << "needs setpriv, and the program where all can run it";
    const Board board;
    board.folder.MakeFolder("free");
    std::filesystem::permissions(board.folder.Native("free"), std::filesystem::perms(0777));
    std::filesystem::permissions(board.folder.Native("program"), std::filesystem::perms(0777));
    std::filesystem::permissions(board.folder.Native("source/discus/messages/12/12.html"),
                                 std::filesystem::perms(0));
    const ProgramRun run =
        RunUnprivileged(board.Arguments({"--charset", "utf-8", "--output", board.Native("free/output")}));
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Holds(run.errors, "3002 - GetFileDataCharset() - "));
    EXPECT_TRUE(Holds(run.errors, "\n\nFile could not be opened.\n"));
    EXPECT_TRUE(Holds(run.output, "Conversion Cancelled"));
    // The walk goes on with the empty text: a forum without a name.
    EXPECT_TRUE(
        Holds(board.folder.Read("free/output/mybb_forums1.txt"), "\r\n2,\"\",\"\",\"\",\"f\",1,\"1\""));
}

}  // namespace
}  // namespace tessaly
