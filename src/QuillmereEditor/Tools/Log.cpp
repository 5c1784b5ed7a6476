#include "QuillmereEditor/Tools/Log.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <string>

#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/DebugStl.h>
#include <Corrade/Utility/FormatStl.h>

#include "QuillmereEditor/Tools/logLine.h"

using namespace Corrade;

std::FILE* logFile = nullptr;

namespace {

constexpr const char* LevelNames[]{"verbose", "info", "warn", "error"};

/* The pair is guarded by a version that is odd while it's being written: readers, which are all
   threads that log, never wait for anybody but the few instructions of a writer. */
std::atomic<unsigned> _logCallbackVersion{0};
std::atomic<LogCallback> _logCallback{nullptr};
std::atomic<void*> _logCallbackUserData{nullptr};

std::tm localTime(const std::time_t time) {
    /* Unlike localtime(), localtime_r() need not look whether TZ changed */
    tzset();
    std::tm out{};
    localtime_r(&time, &out);
    return out;
}

/* Without a destructor, as lines are also logged by handlers that run at the process's exit, behind
   the destructors of this thread */
struct SecondPrefix {
    std::time_t second;
    std::size_t size;
    /* Enough for the year that comes of the greatest int, with its sign */
    char text[32];
};

/* Kept until the second is over: asking for the time zone each time would cost more than all the
   rest of a line */
Containers::StringView presentSecondPrefix() {
    thread_local SecondPrefix prefix{};
    const std::time_t now = std::time(nullptr);
    if(!prefix.size || now != prefix.second) {
        const std::string text = logSecondPrefix(localTime(now));
        prefix.size = text.copy(prefix.text, sizeof(prefix.text));
        prefix.second = now;
    }
    return {prefix.text, prefix.size};
}

std::int64_t presentMicroseconds() {
    using namespace std::chrono;
    return duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
}

LogLevel knownLevel(const LogLevel level) {
    return level < LogLevel::Verbose || level > LogLevel::Error ? LogLevel::Error : level;
}

const char* signalMessage(const int signal) {
    switch(signal) {
        case SIGINT:
            return "Interrupted - flushing log";
        case SIGILL:
            return "Illegal Instruction - flushing log";
        case SIGABRT:
            return "Aborted - flushing log";
        case SIGFPE:
            return "Floating point exception - flushing log";
        case SIGSEGV:
            return "Segmentation fault - flushing log";
        case SIGTERM:
            return "Termination requested - flushing log";
        default:
            return "Crash - flushing log";
    }
}

/* None of this may be called in a signal handler by the letter of the standard. The process is
   lost anyway, and a log with its last lines is worth the risk of a hang. */
void closeLogFileAndExit(const int signal) {
    Utility::Debug{} << signalMessage(signal);
    closeLogFile();
    std::exit(signal);
}

}

std::string logSecondPrefix(const std::tm& time) {
    /* The year may not fit into an int any more */
    return Utility::formatString("[{}-{:.2}-{:.2} {:.2}:{:.2}:{:.2}.", time.tm_year + 1900ll,
        time.tm_mon + 1, time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec);
}

std::string logLine(const Containers::StringView secondPrefix, const std::int64_t microseconds,
    const Containers::StringView levelName, const Containers::StringView message) {
    const std::int64_t inSecond = (microseconds % 1000000 + 1000000) % 1000000;
    const int milliseconds = int(inSecond / 1000);
    const char digits[]{char('0' + milliseconds / 100), char('0' + milliseconds / 10 % 10),
        char('0' + milliseconds % 10), ']', '['};

    std::string line;
    line.reserve(secondPrefix.size() + sizeof(digits) + levelName.size() + message.size() + 3);
    line.append(secondPrefix.data(), secondPrefix.size()).append(digits, sizeof(digits));
    line.append(levelName.data(), levelName.size()).append("] ");
    line.append(message.data(), message.size()).push_back('\n');
    return line;
}

std::string logLine(const LogLevel level, const Containers::StringView message) {
    return logLine(
        presentSecondPrefix(), presentMicroseconds(), LevelNames[int(knownLevel(level))], message);
}

/* Each stream gets the line in one piece, also one that doesn't fit into its buffer, as its lock is
   held meanwhile. The file is written inside of the stream's lock, so that threads that log at the
   same time wait for each other once and not twice. */
void writeLogLine(const std::string& line, std::FILE* const stream, std::FILE* const file) {
    flockfile(stream);
    fwrite_unlocked(line.data(), 1, line.size(), stream);
    fflush_unlocked(stream);
    if(file)
        std::fwrite(line.data(), 1, line.size(), file);
    funlockfile(stream);
}

std::FILE* logStream(const LogLevel level) {
    return knownLevel(level) <= LogLevel::Info ? stdout : stderr;
}

std::string logFileName(const char* const dir, const std::tm& time) {
    return Utility::formatString("{}/QuillmereEditor-{}-{:.2}-{:.2}-{:.2}-{:.2}-{:.2}.log", dir,
        time.tm_year + 1900ll, time.tm_mon + 1, time.tm_mday, time.tm_hour, time.tm_min,
        time.tm_sec);
}

void setLogCallback(const LogCallback callback, void* const userData) {
    unsigned version = _logCallbackVersion.load();
    while(version % 2 || !_logCallbackVersion.compare_exchange_weak(version, version + 1))
        version = _logCallbackVersion.load();
    _logCallback.store(callback);
    _logCallbackUserData.store(userData);
    _logCallbackVersion.store(version + 2);
}

std::pair<LogCallback, void*> getLogCallback() {
    for(;;) {
        const unsigned version = _logCallbackVersion.load();
        const std::pair<LogCallback, void*> pair{_logCallback.load(), _logCallbackUserData.load()};
        if(version % 2 == 0 && version == _logCallbackVersion.load())
            return pair;
    }
}

void setLogDir(const char* const dir) {
    CORRADE_ASSERT(dir, "setLogDir(): expected a folder but got null", );
    const std::string name = logFileName(dir, localTime(std::time(nullptr)));
    logFile = std::fopen(name.c_str(), "wb");
    if(!logFile) {
        Utility::Error{} << "Could not create log file" << name;
        return;
    }

    std::atexit(closeLogFile);
    /* Not SIGTERM: a request to end is left to its default action */
    for(const int signal: {SIGABRT, SIGFPE, SIGILL, SIGINT, SIGSEGV})
        std::signal(signal, closeLogFileAndExit);
}

void closeLogFile() {
    std::FILE* const file = logFile;
    logFile = nullptr;
    if(file)
        std::fclose(file);
}

void log(const LogLevel level, const char* const message) {
    std::string line = logLine(level, message ? message : "");
    writeLogLine(line, logStream(level), logFile);
    if(const auto [callback, userData] = getLogCallback(); callback) {
        line.pop_back();
        callback(line.c_str(), userData);
    }
}
