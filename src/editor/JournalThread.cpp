#include "editor/JournalThread.h"

#include <algorithm>
#include <chrono>

namespace QuillmereEngine {

namespace {

/* Waiting until the end of time overflows in some libraries */
constexpr std::chrono::hours LongestWait{1};

}

JournalThread::JournalThread(JournalWriter& writer): _writer(writer), _thread{[this] { run(); }} {
    _writer.setWaker([this] { wakeUp(); });
}

JournalThread::~JournalThread() {
    _writer.setWaker({});
    {
        const std::lock_guard<std::mutex> lock{_mutex};
        _isStopping = true;
    }
    _condition.notify_one();
    _thread.join();
    _writer.flush(JournalWriter::Clock::now());
}

void JournalThread::wakeUp() {
    {
        const std::lock_guard<std::mutex> lock{_mutex};
        _isWoken = true;
    }
    _condition.notify_one();
}

void JournalThread::run() {
    std::unique_lock<std::mutex> lock{_mutex};
    while(!_isStopping) {
        _isWoken = false;
        lock.unlock();
        const auto now = JournalWriter::Clock::now();
        _writer.work(now);
        const auto due = std::min(_writer.due(), now + LongestWait);
        lock.lock();
        _condition.wait_until(lock, due, [this] { return _isStopping || _isWoken; });
    }
}

}
