#ifndef Quillmere_editor_Test_Process_h
#define Quillmere_editor_Test_Process_h

#include <chrono>
#include <string>
#include <sys/types.h>
#include <thread>
#include <vector>

#include "testing/TemporaryFolder.h"

namespace QuillmereEngine {

/**
@brief Another program that runs beside the test

Its standard input is a pipe, its standard output and error go to files.
*/
class Process {
public:
    /** @param arguments    The first is the program, looked for in `PATH` unless it's a path */
    explicit Process(const std::vector<std::string>& arguments);

    /** @brief Kills the program if it still runs */
    ~Process();

    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    pid_t id() const { return _id; }

    /** @brief Write to its standard input. A program that has ended doesn't read it. */
    void write(const std::string& text);

    void closeInput();

    bool hasEnded();

    /**
    @brief Close its standard input and wait for its end
    @return Exit status, or -signal
    */
    int wait();

    /** @brief What it has written so far */
    std::string out() const { return Testing::readFile(_files.file("out")); }
    std::string error() const { return Testing::readFile(_files.file("error")); }

private:
    Testing::TemporaryFolder _files;
    pid_t _id = 0;
    int _input = -1;
    int _status = 0;
    bool _hasEnded = false;
};

/**
@brief Wait until a condition holds
@return Whether it ever did. Gives up after a time that only a hanging program needs.
*/
template<class F> bool eventually(F condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes{1};
    while(!condition()) {
        if(std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds{10});
    }
    return true;
}

}

#endif
