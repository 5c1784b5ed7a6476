#include "editor/ScriptProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "editor/script/Frame.h"
#include "editor/script/ScriptProtocol.h"

extern char** environ;

namespace QuillmereEngine {

namespace {

/* The number of the socket in the process, the first one behind the standard streams */
constexpr int ProcessSocket = 3;

/* Beyond this nothing more is read: a script that prints in a loop has to wait for the UI thread */
constexpr std::size_t MaxWaitingSize = std::size_t{1} << 20;

class SpawnActions {
public:
    SpawnActions() { posix_spawn_file_actions_init(&_actions); }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;
    ~SpawnActions() { posix_spawn_file_actions_destroy(&_actions); }

    posix_spawn_file_actions_t* operator&() { return &_actions; }

private:
    posix_spawn_file_actions_t _actions;
};

/* Signals as a program has them by default, but for the one that stops a script: it may be sent before
   the process is ready for it, and waits meanwhile */
class SpawnAttributes {
public:
    SpawnAttributes() {
        posix_spawnattr_init(&_attributes);
        sigset_t all, blocked;
        sigfillset(&all);
        sigemptyset(&blocked);
        sigaddset(&blocked, ScriptStopSignal);
        posix_spawnattr_setsigdefault(&_attributes, &all);
        posix_spawnattr_setsigmask(&_attributes, &blocked);
        /* Ctrl+C in a terminal is for the editor only */
        posix_spawnattr_setpgroup(&_attributes, 0);
        posix_spawnattr_setflags(
            &_attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETPGROUP);
    }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;
    ~SpawnAttributes() { posix_spawnattr_destroy(&_attributes); }

    posix_spawnattr_t* operator&() { return &_attributes; }

private:
    posix_spawnattr_t _attributes;
};

/* Nothing is shared with the process but the socket: neither the editor's standard streams nor its
   files */
int spawn(const std::vector<std::string>& command, const int socket, pid_t& id) {
    SpawnActions actions;
    for(const int stream: {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
    posix_spawn_file_actions_adddup2(&actions, socket, ProcessSocket);
    posix_spawn_file_actions_addclosefrom_np(&actions, ProcessSocket + 1);

    SpawnAttributes attributes;
    std::vector<char*> values;
    for(const std::string& argument: command)
        values.push_back(const_cast<char*>(argument.c_str()));
    values.push_back(nullptr);
    return posix_spawn(&id, values[0], &actions, &attributes, values.data(), environ);
}

}

std::unique_ptr<ScriptProcess> ScriptProcess::start(const std::string& program,
    const ScriptLimits& limits, std::function<void()> wakeUp, std::string& problem) {
    std::array<int, 2> sockets;
    if(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.data()) != 0) {
        problem = std::strerror(errno);
        return {};
    }
    /* Where the process's end has the number that it's to have, it wouldn't be inherited */
    int inherited = sockets[1];
    if(inherited == ProcessSocket)
        inherited = fcntl(sockets[1], F_DUPFD_CLOEXEC, ProcessSocket + 1);
    pid_t id = 0;
    const int error = spawn(
        {program, std::to_string(ProcessSocket), std::to_string(limits.time.count()),
            std::to_string(limits.megabytes)},
        inherited, id);
    if(inherited != sockets[1])
        close(inherited);
    close(sockets[1]);
    if(error) {
        close(sockets[0]);
        problem = std::strerror(error);
        return {};
    }
    fcntl(sockets[0], F_SETFL, O_NONBLOCK);
    return std::unique_ptr<ScriptProcess>{new ScriptProcess{id, sockets[0], std::move(wakeUp)}};
}

ScriptProcess::ScriptProcess(const pid_t id, const int socket, std::function<void()> wakeUp):
    _id{id},
    _socket{socket},
    _wakeUps{eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)},
    _wakeUp{std::move(wakeUp)},
    _thread{[this] { run(); }} {}

ScriptProcess::~ScriptProcess() {
    {
        const std::lock_guard<std::mutex> lock{_mutex};
        _isEnding = true;
    }
    eventfd_write(_wakeUps, 1);
    _thread.join();
    kill();
    status();
    close(_socket);
    close(_wakeUps);
}

void ScriptProcess::send(const std::string_view message) {
    {
        const std::lock_guard<std::mutex> lock{_mutex};
        _toSend += encodedFrame(message);
    }
    eventfd_write(_wakeUps, 1);
}

std::optional<std::string> ScriptProcess::take() {
    std::string out;
    bool wasFull;
    {
        const std::lock_guard<std::mutex> lock{_mutex};
        if(_received.empty())
            return {};
        wasFull = _receivedSize > MaxWaitingSize;
        out = std::move(_received.front());
        _received.pop_front();
        _receivedSize -= out.size();
    }
    if(wasFull)
        eventfd_write(_wakeUps, 1);
    return out;
}

void ScriptProcess::wait(const std::chrono::milliseconds longest) {
    std::unique_lock<std::mutex> lock{_mutex};
    _changed.wait_for(lock, longest, [this] { return !_received.empty() || _isClosed; });
}

bool ScriptProcess::hasEnded() {
    const std::lock_guard<std::mutex> lock{_mutex};
    return _isClosed && _received.empty();
}

void ScriptProcess::interrupt() {
    if(!_isReaped)
        ::kill(_id, ScriptStopSignal);
}

void ScriptProcess::kill() {
    /* Once it's waited for its number may be another process's */
    if(!_isReaped)
        ::kill(_id, SIGKILL);
}

int ScriptProcess::status() {
    if(!_isReaped) {
        int status = 0;
        while(waitpid(_id, &status, 0) == -1 && errno == EINTR) {}
        _isReaped = true;
        _status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }
    return _status;
}

std::string ScriptProcess::problem() {
    const std::lock_guard<std::mutex> lock{_mutex};
    return _problem;
}

void ScriptProcess::run() {
    FrameReader reader{MaxFrameSize};
    while(pollOnce(reader)) {}
    {
        const std::lock_guard<std::mutex> lock{_mutex};
        _isClosed = true;
        _problem = reader.problem();
        if(_problem.empty() && reader.isInFrame())
            _problem = "a part of a message";
    }
    _changed.notify_all();
    _wakeUp();
}

/* False when the connection is over */
bool ScriptProcess::pollOnce(FrameReader& reader) {
    short events = 0;
    {
        const std::lock_guard<std::mutex> lock{_mutex};
        if(_isEnding)
            return false;
        if(_receivedSize <= MaxWaitingSize)
            events |= POLLIN;
        if(!_toSend.empty())
            events |= POLLOUT;
    }
    pollfd watched[]{{_socket, events, 0}, {_wakeUps, POLLIN, 0}};
    poll(watched, 2, -1);
    eventfd_t ignored;
    eventfd_read(_wakeUps, &ignored);
    if(watched[0].revents & POLLOUT)
        sendSome();
    return !(watched[0].revents & (POLLIN | POLLHUP | POLLERR)) || receive(reader);
}

/* A process that has ended takes nothing any more, but what it said before is still to be read */
void ScriptProcess::sendSome() {
    const std::lock_guard<std::mutex> lock{_mutex};
    const ssize_t size = ::send(_socket, _toSend.data(), _toSend.size(), MSG_NOSIGNAL);
    if(size > 0)
        _toSend.erase(0, std::size_t(size));
    else if(size < 0 && errno != EAGAIN && errno != EINTR)
        _toSend.clear();
}

bool ScriptProcess::receive(FrameReader& reader) {
    std::array<char, 65536> piece;
    const ssize_t size = recv(_socket, piece.data(), piece.size(), 0);
    if(size <= 0)
        return size < 0 && (errno == EAGAIN || errno == EINTR);
    reader.append({piece.data(), std::size_t(size)});
    bool isAnyNew = false;
    {
        const std::lock_guard<std::mutex> lock{_mutex};
        while(std::optional<std::string> message = reader.next()) {
            _receivedSize += message->size();
            _received.push_back(std::move(*message));
            isAnyNew = true;
        }
    }
    if(isAnyNew) {
        _changed.notify_all();
        _wakeUp();
    }
    return reader.problem().empty();
}

}
