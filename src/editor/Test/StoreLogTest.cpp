#include "editor/StoreLog.h"

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include "host/QuillmereEditorApplication.h"

namespace QuillmereEngine { namespace {

using ::testing::ElementsAre;
using ::testing::MatchesRegex;

constexpr std::size_t TimeSize = 25;

struct Application: QuillmereEditorApplication {
    void consoleLinesChanged() override { ++noticeCount; }
    std::atomic<int> noticeCount{0};
};

struct StoreLogTest: ::testing::Test {
    std::vector<std::string> lines() const {
        std::vector<std::string> out;
        for(std::size_t i = 0; i != store.size(); ++i)
            out.push_back(std::string{store.get(i)}.substr(TimeSize));
        return out;
    }

    Application application;
    StringArray store;
    StoreLog log{application, store, StoreLog::Echo::No};
};

TEST_F(StoreLogTest, LineBeginsAsInTheLog) {
    log.append(LogLevel::Info, "here");
    EXPECT_THAT(
        std::string{store.get(0)}, MatchesRegex(R"(\[....-..-.. ..:..:..\....\]\[info\] here)"));
}

TEST_F(StoreLogTest, LevelIsNamed) {
    log.append(LogLevel::Verbose, "a");
    log.append(LogLevel::Warn, "b");
    log.append(LogLevel::Error, "c");
    log.append(LogLevel(9), "d");
    EXPECT_THAT(lines(), ElementsAre("[verbose] a", "[warn] b", "[error] c", "[error] d"));
}

TEST_F(StoreLogTest, EachLineOfAMessageHasItsOwnPrefix) {
    log.append(LogLevel::Error, "first\nsecond\n\nlast\n");
    EXPECT_THAT(
        lines(), ElementsAre("[error] first", "[error] second", "[error] ", "[error] last"));
    EXPECT_EQ(application.noticeCount, 1);
}

TEST_F(StoreLogTest, NothingInALineHidesAPartOfIt) {
    log.append(LogLevel::Info, {"a\0b\rc\x1b[2K\n\xff", 11});
    EXPECT_THAT(lines(), ElementsAre("[info] a\\x00b\\x0dc\\x1b[2K", "[info] \\xff"));
}

TEST_F(StoreLogTest, EmptyMessageIsALine) {
    log.append(LogLevel::Info, {});
    log.append(LogLevel::Info, "");
    EXPECT_THAT(lines(), ElementsAre("[info] ", "[info] "));
}

TEST_F(StoreLogTest, EchoGoesToTheStreamsOfTheLog) {
    StoreLog echoing{application, store, StoreLog::Echo::Yes};
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    echoing.append(LogLevel::Info, "out");
    echoing.append(LogLevel::Warn, "a\nb");
    EXPECT_EQ(::testing::internal::GetCapturedStdout().substr(TimeSize), "[info] out\n");
    const std::string error = ::testing::internal::GetCapturedStderr();
    EXPECT_THAT(error, ::testing::HasSubstr("[warn] a\n"));
    EXPECT_THAT(error, ::testing::HasSubstr("[warn] b\n"));
    EXPECT_EQ(store.size(), 3u);
}

TEST_F(StoreLogTest, ThreadsAppendAtOnce) {
    std::vector<std::thread> threads;
    for(int i = 0; i != 4; ++i)
        threads.emplace_back([this] {
            for(int j = 0; j != 500; ++j)
                log.append(LogLevel::Info, "x");
        });
    for(std::thread& thread: threads)
        thread.join();
    EXPECT_EQ(store.size(), 2000u);
}

}}
