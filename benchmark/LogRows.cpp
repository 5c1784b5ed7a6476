#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#include <benchmark/benchmark.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>

#include "QuillmereEditor/Tools/Log.h"
#include "Ratio.h"

namespace QuillmereBenchmark {

namespace {

constexpr int LinesPerTurn = 10000;
constexpr int ThreadCount = 4;

/* Fills the line up to a hundred characters behind time and level */
const std::string Message(68, 'm');
const std::string Line = "[2024-03-07 09:05:02.045][info] " + Message + "\n";

class Folder {
public:
    Folder() {
        _path = (std::filesystem::temp_directory_path() / "quillmere-bench-XXXXXX").string();
        if(!mkdtemp(_path.data()))
            std::abort();
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() { std::filesystem::remove_all(_path); }

    std::string file(const char* const name) const { return _path + "/" + name; }
    const std::string& path() const { return _path; }

private:
    std::string _path;
};

int openFile(const std::string& name) {
    return open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
}

enum class LogFile { Closed, Open };

/* Where `log` writes, for as long as it lives: the standard output in a file, and maybe a log file */
class LogToFiles {
public:
    explicit LogToFiles(const LogFile second): _standardOutput{dup(STDOUT_FILENO)} {
        const int first = openFile(_folder.file("stdout"));
        dup2(first, STDOUT_FILENO);
        close(first);
        if(second == LogFile::Open)
            setLogDir(_folder.path().c_str());
    }
    LogToFiles(const LogToFiles&) = delete;
    LogToFiles& operator=(const LogToFiles&) = delete;
    ~LogToFiles() {
        closeLogFile();
        dup2(_standardOutput, STDOUT_FILENO);
        close(_standardOutput);
    }

private:
    Folder _folder;
    int _standardOutput;
};

template<class F> void inThreads(const F& work) {
    std::vector<std::thread> threads;
    for(int i = 0; i != ThreadCount; ++i)
        threads.emplace_back([&work] {
            for(int line = 0; line != LinesPerTurn; ++line)
                work();
        });
    for(std::thread& thread: threads)
        thread.join();
}

void logOneThread(benchmark::State& state) {
    const LogToFiles files{LogFile::Open};
    for([[maybe_unused]] auto _: state)
        for(int i = 0; i != LinesPerTurn; ++i)
            log(LogLevel::Info, Message.c_str());
}

void writeOneThread(benchmark::State& state) {
    const Folder folder;
    const int direct = openFile(folder.file("direct"));
    std::FILE* const buffered = std::fopen(folder.file("buffered").c_str(), "wb");
    for([[maybe_unused]] auto _: state)
        for(int i = 0; i != LinesPerTurn; ++i) {
            if(write(direct, Line.data(), Line.size()) != ssize_t(Line.size()))
                state.SkipWithError("cannot write");
            std::fwrite(Line.data(), 1, Line.size(), buffered);
        }
    std::fclose(buffered);
    close(direct);
}

/* To one file, as the other logger */
void logFourThreads(benchmark::State& state) {
    const LogToFiles files{LogFile::Closed};
    for([[maybe_unused]] auto _: state)
        inThreads([] { log(LogLevel::Info, Message.c_str()); });
}

void spdlogFourThreads(benchmark::State& state) {
    const Folder folder;
    const auto logger = spdlog::basic_logger_mt("bench", folder.file("spdlog"));
    logger->flush_on(spdlog::level::trace);
    for([[maybe_unused]] auto _: state)
        inThreads([&] { logger->info(Message); });
    spdlog::drop("bench");
}

}

void addLogRows() {
    addRow({"log/one-thread", "write(2) of the line and buffered fwrite to a second file", 1.3,
        logOneThread, writeOneThread});
    addRow({"log/four-threads", "spdlog basic_logger_mt, flush on every message", 1.0,
        logFourThreads, spdlogFourThreads});
}

}
