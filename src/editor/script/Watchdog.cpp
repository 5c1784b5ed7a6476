#include "editor/script/Watchdog.h"

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstdint>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>
#include <utility>

#include "editor/script/ScriptProtocol.h"

namespace QuillmereEngine {

namespace {

/* A request is lost when it meets a moment in which the engine resets it */
constexpr int RepeatMilliseconds = 50;

int openSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, ScriptStopSignal);
    return signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
}

bool takeSignal(const int signals) {
    signalfd_siginfo signal;
    return read(signals, &signal, sizeof(signal)) == sizeof(signal);
}

}

Watchdog::Watchdog(
    const int socket, const std::chrono::milliseconds limit, std::function<void()> requestStop):
    _socket{socket},
    _limit{limit},
    _requestStop{std::move(requestStop)},
    _signals{openSignals()},
    _wakeUps{eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)},
    _thread{[this] { run(); }} {}

Watchdog::~Watchdog() {
    {
        const std::lock_guard<std::mutex> lock{_mutex};
        _isEnding = true;
    }
    eventfd_write(_wakeUps, 1);
    _thread.join();
    close(_signals);
    close(_wakeUps);
}

void Watchdog::start() {
    {
        const std::lock_guard<std::mutex> lock{_mutex};
        /* One for the script before. The editor repeats what is meant for this one. */
        takeSignal(_signals);
        _deadline = Clock::now() + _limit;
    }
    eventfd_write(_wakeUps, 1);
}

void Watchdog::finish() {
    const std::lock_guard<std::mutex> lock{_mutex};
    _deadline = std::nullopt;
    _reason = Reason::None;
}

Watchdog::Reason Watchdog::reason() const {
    const std::lock_guard<std::mutex> lock{_mutex};
    return _reason;
}

/* Also finds out whether the time is over. Milliseconds, or forever. */
int Watchdog::pause() {
    const std::lock_guard<std::mutex> lock{_mutex};
    if(!_deadline)
        return -1;
    const Clock::time_point now = Clock::now();
    if(_reason == Reason::None && now >= *_deadline)
        _reason = Reason::TimeLimit;
    if(_reason != Reason::None) {
        _requestStop();
        return RepeatMilliseconds;
    }
    const auto rest = std::chrono::ceil<std::chrono::milliseconds>(*_deadline - now).count();
    return int(std::min<std::int64_t>(rest, INT_MAX));
}

/* One that comes when no script is running, or not any more, is too late */
void Watchdog::readSignal() {
    const std::lock_guard<std::mutex> lock{_mutex};
    if(takeSignal(_signals) && _deadline && _reason == Reason::None)
        _reason = Reason::Stopped;
}

void Watchdog::run() {
    for(;;) {
        pollfd watched[]{{_socket, POLLRDHUP, 0}, {_signals, POLLIN, 0}, {_wakeUps, POLLIN, 0}};
        poll(watched, 3, pause());
        if(watched[0].revents)
            _exit(ScriptExit::ConnectionClosed);
        if(watched[1].revents)
            readSignal();
        eventfd_t ignored;
        eventfd_read(_wakeUps, &ignored);
        const std::lock_guard<std::mutex> lock{_mutex};
        if(_isEnding)
            return;
    }
}

}
