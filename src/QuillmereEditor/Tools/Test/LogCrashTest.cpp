#include "QuillmereEditor/Tools/Log.h"

#include <csignal>
#include <cstdlib>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include <Corrade/Utility/Debug.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/StringArrayView.h"
#include "testing/TemporaryFolder.h"

/* What the log does when the process ends, in child processes */

namespace QuillmereEngine { namespace {

using namespace Corrade;
using ::testing::IsEmpty;
using Testing::linesOf;
using Testing::readFile;
using Testing::TemporaryFolder;

struct Ended {
    int status;
    std::string output;
};

/* In a child process: `work`, with the standard output in a pipe */
template<class F> Ended childRuns(const F& work) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if(child == 0) {
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
        close(ends[1]);
        work();
        std::exit(0);
    }
    close(ends[1]);
    Ended out{};
    char buffer[4096];
    for(ssize_t size; (size = read(ends[0], buffer, sizeof(buffer))) > 0;)
        out.output.append(buffer, std::size_t(size));
    close(ends[0]);
    waitpid(child, &out.status, 0);
    return out;
}

struct Crash {
    const char* name;
    int signal;
    const char* message;
};

struct LogSignalTest: ::testing::TestWithParam<Crash> {};

TEST_P(LogSignalTest, SignalClosesTheFileAndBecomesTheExitStatus) {
    const Crash& crash = GetParam();
    const TemporaryFolder folder;
    const Ended ended = childRuns([&] {
        setLogDir(folder.path().c_str());
        for(int i = 0; i != 1000; ++i)
            log(LogLevel::Info, std::to_string(i).c_str());
        raise(crash.signal);
    });
    ASSERT_TRUE(WIFEXITED(ended.status));
    EXPECT_EQ(WEXITSTATUS(ended.status), crash.signal);

    const std::vector<std::string> printed = linesOf(ended.output);
    const std::vector<std::string> written = linesOf(readFile(folder.onlyFile()));
    ASSERT_EQ(printed.size(), 1001);
    EXPECT_EQ(printed.back(), crash.message);
    EXPECT_EQ(written, std::vector<std::string>(printed.begin(), printed.end() - 1));
}

INSTANTIATE_TEST_SUITE_P(All, LogSignalTest,
    ::testing::Values(Crash{"Interrupt", SIGINT, "Interrupted - flushing log"},
        Crash{"IllegalInstruction", SIGILL, "Illegal Instruction - flushing log"},
        Crash{"Abort", SIGABRT, "Aborted - flushing log"},
        Crash{"FloatingPoint", SIGFPE, "Floating point exception - flushing log"},
        Crash{"Segmentation", SIGSEGV, "Segmentation fault - flushing log"}),
    [](const auto& crash) { return std::string{crash.param.name}; });

/* The handler that the five signals share, reached without going through one of them */
Ended handlerGets(const int signal) {
    const TemporaryFolder folder;
    return childRuns([&] {
        setLogDir(folder.path().c_str());
        using Handler = void (*)(int);
        const Handler handler = std::signal(SIGINT, SIG_DFL);
        handler(signal);
    });
}

TEST(LogCrashTest, HandlerKnowsTheRequestToEndAndSignalsWithoutAName) {
    const Ended terminated = handlerGets(SIGTERM);
    EXPECT_EQ(terminated.output, "Termination requested - flushing log\n");
    EXPECT_EQ(WEXITSTATUS(terminated.status), SIGTERM);
    const Ended other = handlerGets(SIGBUS);
    EXPECT_EQ(other.output, "Crash - flushing log\n");
    EXPECT_EQ(WEXITSTATUS(other.status), SIGBUS);
}

TEST(LogCrashTest, RequestToEndIsLeftToItsDefaultAction) {
    const TemporaryFolder folder;
    const Ended ended = childRuns([&] {
        setLogDir(folder.path().c_str());
        raise(SIGTERM);
    });
    ASSERT_TRUE(WIFSIGNALED(ended.status));
    EXPECT_EQ(WTERMSIG(ended.status), SIGTERM);
    EXPECT_THAT(ended.output, IsEmpty());
}

TEST(LogCrashTest, NormalExitClosesTheFile) {
    const TemporaryFolder folder;
    const Ended ended = childRuns([&] {
        setLogDir(folder.path().c_str());
        log(LogLevel::Info, "last words");
    });
    EXPECT_EQ(WEXITSTATUS(ended.status), 0);
    EXPECT_EQ(readFile(folder.onlyFile()), ended.output);
}

void logGoodbye() { log(LogLevel::Info, "goodbye"); }

/* Handlers that were registered before the first line run after the thread's own data went */
TEST(LogCrashTest, ExitHandlersMayLog) {
    const Ended ended = childRuns([] {
        std::atexit(logGoodbye);
        log(LogLevel::Info, "hello");
    });
    EXPECT_EQ(WEXITSTATUS(ended.status), 0);
    const std::vector<std::string> lines = linesOf(ended.output);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[1].substr(25), "[info] goodbye");
}

TEST(LogCrashTest, FailedAssertionEndsWithTheStatusOfAnAbort) {
    const TemporaryFolder folder;
    const Ended ended = childRuns([&] {
        dup2(STDOUT_FILENO, STDERR_FILENO);
        setLogDir(folder.path().c_str());
        log(LogLevel::Info, "last words");
        StringArrayView{}.get(0);
    });
    ASSERT_TRUE(WIFEXITED(ended.status));
    EXPECT_EQ(WEXITSTATUS(ended.status), SIGABRT);
    const std::vector<std::string> lines = linesOf(ended.output);
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[1], "StringArrayView::get(): invalid index 0 for size 0");
    EXPECT_EQ(lines[2], "Aborted - flushing log");
    EXPECT_EQ(readFile(folder.onlyFile()), lines[0] + "\n");
}

TEST(LogCrashTest, SecondFolderLeavesTheFirstFileUnflushed) {
    const TemporaryFolder folder, other;
    childRuns([&] {
        setLogDir(folder.path().c_str());
        log(LogLevel::Info, "in the stream's buffer");
        setLogDir(other.path().c_str());
        _exit(0);
    });
    EXPECT_THAT(readFile(folder.onlyFile()), IsEmpty());
}

TEST(LogCrashTest, FileIsNotFlushedWithEachLine) {
    const TemporaryFolder folder;
    const Ended ended = childRuns([&] {
        setLogDir(folder.path().c_str());
        log(LogLevel::Info, "flushed to the output");
        _exit(0);
    });
    EXPECT_EQ(linesOf(ended.output).size(), 1);
    EXPECT_THAT(readFile(folder.onlyFile()), IsEmpty());
}

TEST(LogCrashTest, NoHandlerIsInstalledWithoutAFile) {
    const Ended ended = childRuns([] {
        Utility::Error silence{static_cast<std::ostream*>(nullptr)};
        setLogDir("/nonexistent");
        raise(SIGINT);
    });
    ASSERT_TRUE(WIFSIGNALED(ended.status));
    EXPECT_EQ(WTERMSIG(ended.status), SIGINT);
}

}}
