/* The whole road of a line, from many threads to the file, the store and the screen */

#include <atomic>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "QuillmereEditor/Tools/Log.h"
#include "plugins/console/Test/ConsolePanel.h"
#include "testing/TemporaryFolder.h"
#include "testing/sanitizer.h"

namespace QuillmereEngine { namespace {

using Testing::ConsolePanel;
using Testing::TemporaryFolder;

constexpr int ThreadCount = 8;
/* A million in all; a sanitizer makes each line about a hundred times as slow */
constexpr int LinesPerThread = Testing::IsSanitized ? 2500 : 125000;

/* The standard streams go to nowhere while it lives */
class SilentStreams {
public:
    SilentStreams() {
        const int nowhere = open("/dev/null", O_WRONLY);
        for(const int stream: {STDOUT_FILENO, STDERR_FILENO}) {
            _saved.push_back(dup(stream));
            dup2(nowhere, stream);
        }
        close(nowhere);
    }
    SilentStreams(const SilentStreams&) = delete;
    SilentStreams& operator=(const SilentStreams&) = delete;
    ~SilentStreams() {
        for(const int stream: {STDERR_FILENO, STDOUT_FILENO}) {
            dup2(_saved.back(), stream);
            close(_saved.back());
            _saved.pop_back();
        }
    }

private:
    std::vector<int> _saved;
};

constexpr LogLevel Levels[]{LogLevel::Verbose, LogLevel::Info, LogLevel::Warn, LogLevel::Error};

/* Of a length that tells torn lines */
std::string message(const int thread, const int i) {
    return "thread " + std::to_string(thread) + " line " + std::to_string(i) + " " +
        std::string(std::size_t(i % 40), char('a' + thread));
}

void logAll(const int thread) {
    for(int i = 0; i != LinesPerThread; ++i)
        log(Levels[(thread + i) % 4], message(thread, i).c_str());
}

template<class F> void whileAllLog(const F& work) {
    std::atomic<int> running{ThreadCount};
    std::vector<std::thread> threads;
    for(int thread = 0; thread != ThreadCount; ++thread)
        threads.emplace_back([thread, &running] {
            logAll(thread);
            --running;
        });
    while(running) {
        work();
        /* A screen waits between two frames, too. Without it the threads would hardly ever get the
           lock that the panel holds while it draws. */
        std::this_thread::sleep_for(std::chrono::milliseconds{10});
    }
    for(std::thread& thread: threads)
        thread.join();
}

/* Whether each thread's lines follow each other without a gap. Takes them one at a time. */
class OrderCheck {
public:
    void add(const char* const line) {
        int thread = -1, i = -1;
        if(std::sscanf(line + 25, "[%*[a-z]] thread %d line %d", &thread, &i) != 2 || thread < 0 ||
            thread >= ThreadCount || i != _next[thread] ||
            std::string{line}.substr(std::string{line}.find(']', 25) + 2) != message(thread, i)) {
            if(++_wrong < 5)
                ADD_FAILURE() << "unexpected line: " << line;
            return;
        }
        ++_next[thread];
    }

    void expectAll() const {
        EXPECT_EQ(_wrong, 0);
        for(int thread = 0; thread != ThreadCount; ++thread)
            EXPECT_EQ(_next[thread], LinesPerThread) << "thread " << thread;
    }

private:
    int _next[ThreadCount]{};
    int _wrong = 0;
};

void expectAllLines(const StringArrayView& lines) {
    OrderCheck order;
    for(std::size_t i = 0; i != lines.size(); ++i)
        order.add(lines.get(i));
    order.expectAll();
}

void expectAllLinesInFile(const std::string& path) {
    OrderCheck order;
    for(const std::string& line: Testing::linesOf(Testing::readFile(path)))
        order.add(line.c_str());
    order.expectAll();
}

TEST(ConsoleUnderLoadTest, EveryLineOfManyThreadsArrivesWholeOnceAndInOrder) {
    const TemporaryFolder folder;
    ConsolePanel panel;
    panel.settle();
    int frameCount = 0;
    {
        const SilentStreams silence;
        setLogDir(folder.path().c_str());
        whileAllLog([&] {
            panel.input.idle();
            ++frameCount;
        });
        closeLogFile();
    }
    EXPECT_GT(frameCount, 0);
    expectAllLines(panel.consoleLines());
    expectAllLinesInFile(folder.onlyFile());
}

/* Whether what's left of each thread's lines is their end, in order */
void expectLastLines(const StringArrayView& lines) {
    std::map<int, int> next;
    for(std::size_t i = 0; i != lines.size(); ++i) {
        int thread = -1, number = -1;
        ASSERT_EQ(
            std::sscanf(lines.get(i) + 25, "[%*[a-z]] thread %d line %d", &thread, &number), 2)
            << lines.get(i);
        const auto expected = next.emplace(thread, number).first;
        ASSERT_EQ(number, expected->second) << lines.get(i);
        ++expected->second;
    }
    for(const auto& [thread, end]: next)
        EXPECT_EQ(end, LinesPerThread) << thread;
}

TEST(ConsoleUnderLoadTest, ClearButtonNeverRacesAnAppend) {
    ConsolePanel panel;
    panel.settle();
    /* The button is 26 pixels left of the window's edge, on the line of the tabs */
    const ImVec2 trash{panel.io().DisplaySize.x - 18.0f, ImGui::GetFrameHeight() + 8.0f};
    int clearCount = 0;
    {
        const SilentStreams silence;
        whileAllLog([&] {
            panel.input.click(trash);
            ++clearCount;
        });
    }
    EXPECT_GT(clearCount, 0);
    EXPECT_LT(panel.consoleLines().size(), std::size_t(ThreadCount) * LinesPerThread);
    expectLastLines(panel.consoleLines());
    panel.input.click(trash);
    EXPECT_TRUE(panel.consoleLines().isEmpty());
}

}}
