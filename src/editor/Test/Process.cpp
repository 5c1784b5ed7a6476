#include "Process.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include <gtest/gtest.h>

extern char** environ;

namespace QuillmereEngine {

namespace {

pid_t spawn(const std::vector<std::string>& arguments, const int input, const std::string& out,
    const std::string& error) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    for(const auto& [descriptor, path]: {std::pair{STDOUT_FILENO, out}, {STDERR_FILENO, error}})
        posix_spawn_file_actions_addopen(
            &actions, descriptor, path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);

    std::vector<char*> argv;
    for(const std::string& argument: arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    pid_t process = 0;
    EXPECT_EQ(posix_spawnp(&process, argv[0], &actions, nullptr, argv.data(), environ), 0)
        << argv[0];
    posix_spawn_file_actions_destroy(&actions);
    return process;
}

}

Process::Process(const std::vector<std::string>& arguments) {
    std::array<int, 2> pipe;
    EXPECT_EQ(pipe2(pipe.data(), O_CLOEXEC), 0);
    /* The program may end without reading all of its input */
    std::signal(SIGPIPE, SIG_IGN);
    _id = spawn(arguments, pipe[0], _files.file("out"), _files.file("error"));
    /* No process to wait for, and none that kill() may mistake 0 for */
    _hasEnded = _id == 0;
    close(pipe[0]);
    _input = pipe[1];
}

Process::~Process() {
    if(!hasEnded())
        kill(_id, SIGKILL);
    wait();
}

void Process::write(const std::string& text) {
    for(std::size_t i = 0; i < text.size();) {
        const ssize_t size = ::write(_input, text.data() + i, text.size() - i);
        if(size <= 0)
            return;
        i += std::size_t(size);
    }
}

void Process::closeInput() {
    if(const int input = std::exchange(_input, -1); input != -1)
        close(input);
}

bool Process::hasEnded() {
    if(!_hasEnded)
        _hasEnded = waitpid(_id, &_status, WNOHANG) == _id;
    return _hasEnded;
}

int Process::wait() {
    closeInput();
    if(!_hasEnded) {
        EXPECT_EQ(waitpid(_id, &_status, 0), _id);
        _hasEnded = true;
    }
    return WIFEXITED(_status) ? WEXITSTATUS(_status) : -WTERMSIG(_status);
}

}
