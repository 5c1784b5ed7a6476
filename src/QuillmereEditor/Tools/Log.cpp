#include "QuillmereEditor/Tools/Log.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
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

/* Kept until the second is over: asking for the time zone each time would cost more than all the
   rest of a line */
const std::string& presentSecondPrefix() {
    thread_local std::time_t second = 0;
    thread_local std::string prefix;
    const std::time_t now = std::time(nullptr);
    if(prefix.empty() || now != second) {
        prefix = logSecondPrefix(localTime(now));
        second = now;
    }
    return prefix;
}

int presentMilliseconds() {
    using namespace std::chrono;
    const auto sinceEpoch = system_clock::now().time_since_epoch();
    return int(duration_cast<microseconds>(sinceEpoch).count() % 1000000 / 1000);
}

std::string formatLine(const LogLevel level, const char* const message) {
    const std::string& prefix = presentSecondPrefix();
    const int milliseconds = presentMilliseconds();
    const char digits[]{char('0' + milliseconds / 100), char('0' + milliseconds / 10 % 10),
        char('0' + milliseconds % 10), ']', '['};
    const char* const name = LevelNames[int(level)];
    const std::size_t messageSize = std::strlen(message);

    std::string line;
    line.reserve(prefix.size() + sizeof(digits) + std::strlen(name) + messageSize + 3);
    line.append(prefix).append(digits, sizeof(digits)).append(name).append("] ");
    line.append(message, messageSize).push_back('\n');
    return line;
}

/* Each stream gets the line in one piece, also one that doesn't fit into its buffer, as its lock is
   held meanwhile. The file is written inside of the stream's lock, so that threads that log at the
   same time wait for each other once and not twice. */
void write(const std::string& line, std::FILE* const stream) {
    flockfile(stream);
    fwrite_unlocked(line.data(), 1, line.size(), stream);
    fflush_unlocked(stream);
    if(std::FILE* const file = logFile)
        std::fwrite(line.data(), 1, line.size(), file);
    funlockfile(stream);
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

void log(LogLevel level, const char* const message) {
    if(level < LogLevel::Verbose || level > LogLevel::Error)
        level = LogLevel::Error;

    std::string line = formatLine(level, message ? message : "");
    write(line, level <= LogLevel::Info ? stdout : stderr);
    if(const auto [callback, userData] = getLogCallback(); callback) {
        line.pop_back();
        callback(line.c_str(), userData);
    }
}
