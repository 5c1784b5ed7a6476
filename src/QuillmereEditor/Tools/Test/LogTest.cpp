#include "QuillmereEditor/Tools/Log.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <Corrade/Utility/Debug.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "QuillmereEditor/Tools/logLine.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using namespace Corrade;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::linesOf;
using ::testing::MatchesRegex;
using Testing::readFile;
using ::testing::StartsWith;
using Testing::TemporaryFolder;

constexpr const char* Prefix = "\\[[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}"
                               "\\.[0-9]{3}\\]";

std::tm localTime(int year, int month, int day, int hour, int minute, int second) {
    std::tm out{};
    out.tm_year = year - 1900;
    out.tm_mon = month - 1;
    out.tm_mday = day;
    out.tm_hour = hour;
    out.tm_min = minute;
    out.tm_sec = second;
    return out;
}

struct Output {
    std::string out, error;
};

template<class F> Output outputOf(const F& function) {
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    function();
    Output output;
    output.out = ::testing::internal::GetCapturedStdout();
    output.error = ::testing::internal::GetCapturedStderr();
    return output;
}

/* Leaves neither a callback nor a file to the next test */
struct LogTest: ::testing::Test {
    ~LogTest() override {
        setLogCallback(nullptr, nullptr);
        closeLogFile();
    }
};

TEST_F(LogTest, LineIsTimeLevelAndMessage) {
    const Output output = outputOf([] { log(LogLevel::Info, "Project loaded"); });
    EXPECT_TRUE(std::regex_match(
        output.out, std::regex{std::string{Prefix} + "\\[info\\] Project loaded\n"}))
        << output.out;
}

struct Level {
    const char* name;
    LogLevel level;
    const char* tag;
    bool toError;
};

struct LogLevelTest: ::testing::TestWithParam<Level> {};

TEST_P(LogLevelTest, NamesTheLevelAtIndex25AndChoosesTheStream) {
    const Level& level = GetParam();
    const Output output = outputOf([&] { log(level.level, "message"); });
    const std::string& written = level.toError ? output.error : output.out;
    const std::string& other = level.toError ? output.out : output.error;
    ASSERT_GT(written.size(), 25);
    EXPECT_EQ(written.substr(25), std::string{level.tag} + " message\n");
    EXPECT_THAT(other, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, LogLevelTest,
    ::testing::Values(Level{"Verbose", LogLevel::Verbose, "[verbose]", false},
        Level{"Info", LogLevel::Info, "[info]", false},
        Level{"Warn", LogLevel::Warn, "[warn]", true},
        Level{"Error", LogLevel::Error, "[error]", true},
        Level{"BehindTheLast", LogLevel(4), "[error]", true},
        Level{"Negative", LogLevel(-1), "[error]", true},
        Level{"Least", LogLevel(std::numeric_limits<int>::min()), "[error]", true}),
    [](const auto& level) { return std::string{level.param.name}; });

TEST_F(LogTest, LevelsHaveTheirNumbers) {
    EXPECT_EQ(int(LogLevel::Verbose), 0);
    EXPECT_EQ(int(LogLevel::Info), 1);
    EXPECT_EQ(int(LogLevel::Warn), 2);
    EXPECT_EQ(int(LogLevel::Error), 3);
}

TEST_F(LogTest, NullMessageIsEmpty) {
    EXPECT_EQ(outputOf([] { log(LogLevel::Info, nullptr); }).out.substr(25), "[info] \n");
}

TEST_F(LogTest, BracesAndPercentsInAMessageMeanNothing) {
    EXPECT_EQ(outputOf([] { log(LogLevel::Info, "{} {0} %s %n"); }).out.substr(25),
        "[info] {} {0} %s %n\n");
}

TEST(LogLineTest, MillisecondsAreAlwaysThreeDigits) {
    EXPECT_EQ(logLine("[2024-03-07 09:05:02.", 1709802302005999, "info", "x"),
        "[2024-03-07 09:05:02.005][info] x\n");
    EXPECT_EQ(logLine("[T.", 0, "warn", ""), "[T.000][warn] \n");
    EXPECT_EQ(logLine("[T.", 45000, "error", "x"), "[T.045][error] x\n");
    EXPECT_EQ(logLine("[T.", 999999, "error", "x"), "[T.999][error] x\n");
}

TEST(LogLineTest, MillisecondsBeforeTheEpochCountUpwards) {
    EXPECT_EQ(logLine("[T.", -1, "info", "x"), "[T.999][info] x\n");
    EXPECT_EQ(logLine("[T.", -1000000, "info", "x"), "[T.000][info] x\n");
}

TEST(LogSecondPrefixTest, FieldsHaveTwoDigitsAndTheYearAsManyAsItNeeds) {
    EXPECT_EQ(logSecondPrefix(localTime(2024, 3, 7, 9, 5, 2)), "[2024-03-07 09:05:02.");
    EXPECT_EQ(logSecondPrefix(localTime(2024, 12, 31, 23, 59, 60)), "[2024-12-31 23:59:60.");
    EXPECT_EQ(logSecondPrefix(localTime(10000, 1, 1, 0, 0, 0)), "[10000-01-01 00:00:00.");
    EXPECT_EQ(logSecondPrefix(localTime(-5, 1, 1, 0, 0, 0)), "[-5-01-01 00:00:00.");
}

TEST(LogSecondPrefixTest, GreatestYearDoesNotOverflow) {
    std::tm time = localTime(2024, 1, 1, 0, 0, 0);
    time.tm_year = std::numeric_limits<int>::max();
    EXPECT_EQ(logSecondPrefix(time), "[2147485547-01-01 00:00:00.");
}

TEST(LogFileNameTest, HoldsFolderAndLocalTime) {
    EXPECT_EQ(logFileName("/tmp", localTime(2024, 3, 7, 9, 5, 2)),
        "/tmp/QuillmereEditor-2024-03-07-09-05-02.log");
}

/* A zone without a name in the time zone database, so that no file of the machine matters. Sets it
   back at the end. */
struct TimeZone {
    explicit TimeZone(const char* const zone) {
        if(const char* const former = std::getenv("TZ"))
            _former = former;
        setenv("TZ", zone, 1);
    }
    ~TimeZone() {
        if(_former.empty())
            unsetenv("TZ");
        else
            setenv("TZ", _former.c_str(), 1);
        tzset();
    }

private:
    std::string _former;
};

std::string loggedMinuteAndHour() {
    return outputOf([] { log(LogLevel::Info, "x"); }).out.substr(0, 17);
}

void waitForNextSecond() {
    const std::time_t now = std::time(nullptr);
    while(std::time(nullptr) == now)
        std::this_thread::sleep_for(std::chrono::milliseconds{5});
}

std::string minuteAndHourNow() {
    char text[32];
    const std::time_t now = std::time(nullptr);
    std::tm time{};
    localtime_r(&now, &time);
    std::strftime(text, sizeof(text), "[%Y-%m-%d %H:%M", &time);
    return text;
}

/* The minute may turn between the line and the comparison, so a second try is allowed */
bool logsTheTimeThatTheCalendarShows() {
    tzset();
    for(int i = 0; i != 2; ++i)
        if(loggedMinuteAndHour() == minuteAndHourNow())
            return true;
    return false;
}

TEST_F(LogTest, ChangeOfTheTimeZoneHoldsFromTheNextSecondOn) {
    const TimeZone east{"EAST-11"};
    waitForNextSecond();
    const std::string before = loggedMinuteAndHour();
    EXPECT_TRUE(logsTheTimeThatTheCalendarShows());
    const TimeZone west{"WEST+7"};
    waitForNextSecond();
    EXPECT_NE(loggedMinuteAndHour(), before);
    EXPECT_TRUE(logsTheTimeThatTheCalendarShows());
}

struct Received {
    std::vector<std::string> lines;
    std::vector<void*> userData;
};

void receive(const char* const line, void* const userData) {
    auto& received = *static_cast<Received*>(userData);
    received.lines.emplace_back(line);
    received.userData.push_back(userData);
}

TEST_F(LogTest, CallbackGetsTheLineWithoutItsNewline) {
    Received received;
    setLogCallback(receive, &received);
    const Output output = outputOf([] { log(LogLevel::Warn, "careful"); });
    ASSERT_EQ(received.lines.size(), 1);
    EXPECT_EQ(received.lines[0] + "\n", output.error);
    EXPECT_EQ(received.userData[0], &received);
}

TEST_F(LogTest, CallbackIsStoredAsAPairAndRemovedByNull) {
    Received received;
    EXPECT_EQ(getLogCallback(), (std::pair<LogCallback, void*>{nullptr, nullptr}));
    setLogCallback(receive, &received);
    EXPECT_EQ(getLogCallback(), (std::pair<LogCallback, void*>{receive, &received}));
    setLogCallback(nullptr, nullptr);
    EXPECT_EQ(getLogCallback(), (std::pair<LogCallback, void*>{nullptr, nullptr}));
    outputOf([] { log(LogLevel::Info, "nobody listens"); });
    EXPECT_THAT(received.lines, IsEmpty());
}

void logOnce(const char*, void* const userData) {
    int& depth = *static_cast<int*>(userData);
    if(depth++ == 0)
        log(LogLevel::Info, "from the callback");
}

TEST_F(LogTest, CallbackMayLog) {
    int depth = 0;
    setLogCallback(logOnce, &depth);
    const Output output = outputOf([] { log(LogLevel::Info, "outside"); });
    EXPECT_EQ(depth, 2);
    EXPECT_EQ(linesOf(output.out).size(), 2);
}

TEST_F(LogTest, FileIsNamedAfterTheTimeAndHoldsEachLine) {
    const TemporaryFolder folder;
    Received received;
    setLogCallback(receive, &received);
    const Output output = outputOf([&] {
        setLogDir(folder.path().c_str());
        ASSERT_TRUE(logFile);
        log(LogLevel::Info, "one");
        log(LogLevel::Error, "two");
        closeLogFile();
    });
    const std::string file = folder.onlyFile();
    EXPECT_TRUE(std::regex_match(std::filesystem::path{file}.filename().string(),
        std::regex{"QuillmereEditor-[0-9]{4}(-[0-9]{2}){5}\\.log"}))
        << file;
    EXPECT_EQ(readFile(file), output.out + output.error);
    EXPECT_EQ(linesOf(readFile(file)), received.lines);
}

TEST_F(LogTest, FileOfTheSameNameIsOverwritten) {
    const TemporaryFolder folder;
    /* The second may turn between the two, then there is another file; try until it doesn't */
    for(int i = 0; i != 5; ++i) {
        const std::time_t second = std::time(nullptr);
        setLogDir(folder.path().c_str());
        outputOf([] { log(LogLevel::Info, "former"); });
        closeLogFile();
        setLogDir(folder.path().c_str());
        closeLogFile();
        if(second == std::time(nullptr)) {
            std::string last;
            for(const auto& entry: std::filesystem::directory_iterator{folder.path()})
                last = std::max(last, entry.path().string());
            EXPECT_THAT(readFile(last), IsEmpty());
            return;
        }
    }
    FAIL() << "five pairs of calls took a second each";
}

TEST_F(LogTest, ClosingTwiceClosesOnce) {
    const TemporaryFolder folder;
    setLogDir(folder.path().c_str());
    ASSERT_TRUE(logFile);
    closeLogFile();
    EXPECT_FALSE(logFile);
    closeLogFile();
    EXPECT_FALSE(logFile);
    EXPECT_EQ(linesOf(outputOf([] { log(LogLevel::Info, "goes on"); }).out).size(), 1);
}

TEST_F(LogTest, MissingFolderIsReportedAndLoggingGoesOn) {
    const TemporaryFolder folder;
    const std::string missing = folder.file("missing");
    std::ostringstream message;
    {
        Utility::Error redirect{&message};
        setLogDir(missing.c_str());
    }
    EXPECT_FALSE(logFile);
    EXPECT_TRUE(std::regex_match(message.str(),
        std::regex{"Could not create log file " + missing + "/QuillmereEditor-[-0-9]+\\.log\n"}))
        << message.str();
    EXPECT_EQ(linesOf(outputOf([] { log(LogLevel::Info, "still here"); }).out).size(), 1);
}

TEST_F(LogTest, ErrorsInWritingTheFileAreIgnored) {
    logFile = std::fopen("/dev/full", "wb");
    ASSERT_TRUE(logFile);
    const Output output = outputOf([] {
        for(int i = 0; i != 1000; ++i)
            log(LogLevel::Info, "more than the stream's buffer holds");
    });
    EXPECT_EQ(linesOf(output.out).size(), 1000);
}

/* Each thread's lines, told apart by their size, too, so that a torn line shows */
void logFromThreads(const int threadCount, const int lineCount) {
    std::vector<std::thread> threads;
    for(int thread = 0; thread != threadCount; ++thread)
        threads.emplace_back([thread, lineCount] {
            for(int i = 0; i != lineCount; ++i) {
                const std::string message = std::to_string(thread) + " " + std::to_string(i) + " " +
                    std::string(std::size_t(thread * 700 + i % 50), 'x') + "end";
                log(thread % 2 ? LogLevel::Info : LogLevel::Warn, message.c_str());
            }
        });
    for(std::thread& thread: threads)
        thread.join();
}

void expectWholeLinesInOrder(
    const std::string& text, const int lineCount, const std::vector<int>& threads) {
    std::map<int, int> next;
    for(const std::string& line: linesOf(text)) {
        int thread = -1, i = -1;
        char level[8]{}, x[8000]{};
        ASSERT_EQ(
            std::sscanf(line.c_str() + 25, "[%7[a-z]] %d %d %7999s", level, &thread, &i, x), 4)
            << line;
        ASSERT_EQ(x, std::string(std::size_t(thread * 700 + i % 50), 'x') + "end");
        ASSERT_EQ(next[thread]++, i);
    }
    for(const int thread: threads)
        EXPECT_EQ(next[thread], lineCount) << thread;
}

TEST_F(LogTest, LinesOfManyThreadsStayWhole) {
    constexpr int LineCount = 2000;
    const TemporaryFolder folder;
    const Output output = outputOf([&] {
        setLogDir(folder.path().c_str());
        /* 7 * 700 characters are more than a stream's buffer */
        logFromThreads(8, LineCount);
        closeLogFile();
    });
    expectWholeLinesInOrder(output.out, LineCount, {1, 3, 5, 7});
    expectWholeLinesInOrder(output.error, LineCount, {0, 2, 4, 6});
    expectWholeLinesInOrder(readFile(folder.onlyFile()), LineCount, {0, 1, 2, 3, 4, 5, 6, 7});
}

std::atomic<int> mismatches{0};
int firstData, secondData;

void first(const char*, void* const userData) { mismatches += userData != &firstData; }
void second(const char*, void* const userData) { mismatches += userData != &secondData; }

TEST_F(LogTest, CallbackAndItsDataAreNeverMixed) {
    mismatches = 0;
    std::atomic<bool> done{false};
    outputOf([&] {
        std::thread setter{[&] {
            for(int i = 0; !done; ++i) {
                setLogCallback(first, &firstData);
                setLogCallback(nullptr, nullptr);
                setLogCallback(second, &secondData);
            }
        }};
        std::thread other{[&] {
            for(int i = 0; i != 20000; ++i) {
                const auto pair = getLogCallback();
                mismatches += (pair.first == first && pair.second != &firstData) ||
                    (pair.first == second && pair.second != &secondData) ||
                    (!pair.first && pair.second);
            }
        }};
        for(int i = 0; i != 5000; ++i)
            log(LogLevel::Info, "x");
        other.join();
        done = true;
        setter.join();
    });
    EXPECT_EQ(mismatches, 0);
}

/* Setters may meet as well */
TEST_F(LogTest, CallbackMayBeSetByManyThreads) {
    std::vector<std::thread> threads;
    for(int thread = 0; thread != 4; ++thread)
        threads.emplace_back([thread] {
            for(int i = 0; i != 5000; ++i)
                if(thread % 2)
                    setLogCallback(first, &firstData);
                else
                    setLogCallback(second, &secondData);
        });
    for(std::thread& thread: threads)
        thread.join();
    const auto [callback, userData] = getLogCallback();
    EXPECT_EQ(userData, callback == first ? &firstData : &secondData);
}

TEST_F(LogTest, SecondFolderAbandonsTheFirstFileOpen) {
    const TemporaryFolder folder, other;
    setLogDir(folder.path().c_str());
    std::FILE* const firstFile = logFile;
    outputOf([] { log(LogLevel::Info, "first"); });
    setLogDir(other.path().c_str());
    EXPECT_NE(logFile, firstFile);
    EXPECT_EQ(std::fclose(firstFile), 0);
    EXPECT_EQ(linesOf(readFile(folder.onlyFile())).size(), 1);
}

TEST(LogDeathTest, NullFolderAborts) {
    EXPECT_DEATH(setLogDir(nullptr), "^setLogDir\\(\\): expected a folder but got null\n$");
}

}}
