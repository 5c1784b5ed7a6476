#ifndef QuillmerePortableFileDialogs_subset_process_h
#define QuillmerePortableFileDialogs_subset_process_h

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

extern char** environ;

/** @file
@brief Helpers as child processes
*/

namespace pfd { namespace internal {

/**
@brief The environment of a helper

GTK and Qt print names in the locale's encoding, with a question mark for each letter that this one
doesn't have, so a locale without UTF-8 is replaced by one with.
*/
inline std::vector<std::string> helper_environment() {
    std::string locale;
    for(const char* const name: {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* const value = std::getenv(name);
        if(locale.empty() && value)
            locale = value;
    }
    const bool unicode = locale.find("UTF-8") != std::string::npos ||
        locale.find("utf8") != std::string::npos || locale.find("UTF8") != std::string::npos ||
        locale.find("utf-8") != std::string::npos;

    std::vector<std::string> out;
    for(char** i = environ; i && *i; ++i)
        if(unicode || std::strncmp(*i, "LC_ALL=", 7) != 0)
            out.push_back(*i);
    if(!unicode)
        out.push_back("LC_ALL=C.UTF-8");
    return out;
}

/** @brief A pointer to each string and a null one behind. Valid as long as the strings are. */
inline std::vector<char*> pointers_to(const std::vector<std::string>& strings) {
    std::vector<char*> out;
    for(const std::string& i: strings)
        out.push_back(const_cast<char*>(i.c_str()));
    out.push_back(nullptr);
    return out;
}

/**
@brief A program that runs

Gets its arguments as they are, no shell sees them. Its input is empty, its errors go where ours go.
Unless it's detached, the destructor closes its output and waits for its end.
*/
class process {
public:
    /** @brief What becomes of the standard output */
    enum class output { discarded, captured };

    /**
    @param command  Path of the program and its arguments. Empty: nothing is started, as when it
        can't be.
    */
    process(const std::vector<std::string>& command, output mode) {
        if(!command.empty())
            start(command, mode);
    }

    process(const process&) = delete;
    process& operator=(const process&) = delete;

    /* Nobody wants the output any more, and keeping it could run out of memory */
    ~process() {
        close_output();
        while(_id > 0 && waitpid(_id, nullptr, 0) < 0 && errno == EINTR) {}
    }

    /**
    @brief Wait until it has ended, without a limit
    @return What it wrote till then; nothing if it failed or was killed, and in a second call

    Doesn't wait for processes that it left behind, even though they may hold its output open.
    */
    std::string wait() {
        std::string out;
        while(_id > 0) {
            if(has_ended(_output < 0 ? 0 : WNOHANG))
                read_available(out);
            else
                read_next(out);
        }
        close_output();
        return _failed ? std::string{} : out;
    }

    /** @brief Leave it alone. A thread waits for it, so that it doesn't stay as a zombie. */
    void detach() {
        const pid_t id = _id;
        _id = -1;
        close_output();
        if(id <= 0)
            return;
        try {
            std::thread{[id]() {
                while(waitpid(id, nullptr, 0) < 0 && errno == EINTR) {}
            }}.detach();
        } catch(const std::system_error&) {
            /* No thread to be had: a zombie until we end ourselves */
        }
    }

private:
    void start(const std::vector<std::string>& command, const output mode) {
        const std::vector<std::string> environment = helper_environment();
        int ends[2]{-1, -1};
        if(mode == output::captured && !open_pipe(ends))
            return;

        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        if(mode == output::captured)
            posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        else
            posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawnattr_t attributes;
        posix_spawnattr_init(&attributes);
        reset_signals(attributes);

        if(posix_spawn(&_id, command.front().c_str(), &actions, &attributes,
               pointers_to(command).data(), pointers_to(environment).data()) != 0)
            _id = -1;
        posix_spawnattr_destroy(&attributes);
        posix_spawn_file_actions_destroy(&actions);
        if(ends[1] >= 0)
            close(ends[1]);
        _output = ends[0];
    }

    /* Not even for a moment are there ends that another thread's child would inherit. macOS has no such call. */
    static bool make_pipe(int (&ends)[2]) {
#ifdef __APPLE__
        return pipe(ends) == 0;
#else
        return pipe2(ends, O_CLOEXEC) == 0;
#endif
    }

    /* Other helpers don't inherit it. Its ends are 3 and above: a child's standard streams, which
       may be closed in ours, are replaced one after the other. */
    static bool open_pipe(int (&ends)[2]) {
        if(!make_pipe(ends))
            return false;
        for(int& end: ends) {
            const int raised = fcntl(end, F_DUPFD_CLOEXEC, 3);
            close(end);
            end = raised;
        }
        if(ends[0] >= 0 && ends[1] >= 0)
            return true;
        for(const int end: ends)
            if(end >= 0)
                close(end);
        return false;
    }

    /* What we block and ignore is inherited, and is no business of the helper's */
    static void reset_signals(posix_spawnattr_t& attributes) {
        sigset_t blocked, standard;
        sigemptyset(&blocked);
        sigemptyset(&standard);
        for(const int signal: {SIGCHLD, SIGHUP, SIGINT, SIGPIPE, SIGQUIT, SIGTERM})
            sigaddset(&standard, signal);
        posix_spawnattr_setsigmask(&attributes, &blocked);
        posix_spawnattr_setsigdefault(&attributes, &standard);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }

    bool has_ended(const int flags) {
        int status;
        const pid_t ended = waitpid(_id, &status, flags);
        if(ended == 0 || (ended < 0 && errno == EINTR))
            return false;
        /* With SIGCHLD ignored, or somebody else waiting for all children, nobody can tell how it
           ended; what it wrote has to do */
        _failed = ended > 0 && !(WIFEXITED(status) && WEXITSTATUS(status) == 0);
        _id = -1;
        return true;
    }

    /* Waits for output, but not for long: nothing that can be polled everywhere tells that a
       process has ended, and its output stays open if it left children behind */
    void read_next(std::string& out) {
        constexpr int tick = 20;
        pollfd waited{_output, POLLIN, 0};
        if(_output >= 0 && poll(&waited, 1, tick) > 0 && !read_some(out))
            close_output();
    }

    /* All that is in the pipe by now. Not until its end, which children may put off. */
    void read_available(std::string& out) {
        int size = 0;
        if(_output < 0 || ioctl(_output, FIONREAD, &size) != 0)
            return;
        for(const std::size_t end = out.size() + std::size_t(size); out.size() < end;)
            if(!read_some(out))
                return;
    }

    bool read_some(std::string& out) {
        char buffer[4096];
        const ssize_t size = read(_output, buffer, sizeof(buffer));
        if(size > 0)
            out.append(buffer, std::size_t(size));
        return size > 0 || (size < 0 && errno == EINTR);
    }

    void close_output() {
        if(_output >= 0)
            close(_output);
        _output = -1;
    }

    pid_t _id = -1;
    int _output = -1;
    bool _failed = false;
};

}}

#endif
