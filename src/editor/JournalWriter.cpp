#include "editor/JournalWriter.h"

#include <algorithm>
#include <utility>

namespace QuillmereEngine {

JournalWriter::JournalWriter(Report report, const Clock::duration syncDelay):
    _report{std::move(report)},
    _syncDelay{syncDelay} {}

void JournalWriter::begin(std::string name, Opener opener, const std::uint64_t offset) {
    order({Order::Kind::Begin, std::move(name), std::move(opener), offset, {}, 0},
        Clock::time_point::max());
}

void JournalWriter::append(
    const std::string_view bytes, const std::uint64_t changes, const Clock::time_point now) {
    order({Order::Kind::Append, {}, {}, 0, std::string{bytes}, changes}, now + _syncDelay);
}

void JournalWriter::remove(const Clock::time_point now) {
    order({Order::Kind::Remove, {}, {}, 0, {}, 0}, now);
}

void JournalWriter::order(Order order, const Clock::time_point due) {
    {
        const std::lock_guard<std::mutex> lock{_ordersMutex};
        const bool isSameKind = !_orders.empty() && _orders.back().kind == order.kind;
        if(isSameKind && order.kind == Order::Kind::Append) {
            _orders.back().bytes += order.bytes;
            _orders.back().changes = order.changes;
        } else {
            _orders.push_back(std::move(order));
        }
        if(due >= std::min(_ordersDue, _retryDue)) {
            _ordersDue = std::min(_ordersDue, due);
            return;
        }
        _ordersDue = due;
    }
    if(_waker)
        _waker();
}

JournalWriter::Clock::time_point JournalWriter::due() const {
    const std::lock_guard<std::mutex> lock{_ordersMutex};
    return std::min(_ordersDue, _retryDue);
}

JournalWriter::Clock::time_point JournalWriter::retryDue() const {
    const std::lock_guard<std::mutex> lock{_ordersMutex};
    return _retryDue;
}

void JournalWriter::setRetry(const Clock::time_point time) {
    const std::lock_guard<std::mutex> lock{_ordersMutex};
    _retryDue = time;
}

void JournalWriter::work(const Clock::time_point now) {
    if(now >= due())
        carryOutAll(now, Haste::None);
}

void JournalWriter::flush(const Clock::time_point now) { carryOutAll(now, Haste::Flush); }

void JournalWriter::carryOutAll(const Clock::time_point now, const Haste haste) {
    const std::lock_guard<std::mutex> working{_workMutex};
    std::deque<Order> orders;
    {
        const std::lock_guard<std::mutex> lock{_ordersMutex};
        orders = std::exchange(_orders, {});
        _ordersDue = Clock::time_point::max();
    }
    for(Order& order: orders)
        carryOut(order);
    /* What comes after a failure isn't a reason to try again at once */
    if(!_unsynced.empty() && (!_hasFailed || haste == Haste::Flush || now >= retryDue()))
        writeAndSync(now);
}

/* Bytes that are taken away again at once don't get to the disk at all */
void JournalWriter::carryOut(Order& order) {
    if(order.kind == Order::Kind::Append) {
        _unsynced += order.bytes;
        _changes = order.changes;
        return;
    }
    if(order.kind == Order::Kind::Remove)
        removeFile();
    _file = nullptr;
    _name = std::move(order.name);
    _opener = std::move(order.opener);
    _syncedSize = order.offset;
    _unsynced.clear();
    _hasFailed = false;
    setRetry(Clock::time_point::max());
}

/* One that an earlier editor left is on the disk without having been opened for this one */
void JournalWriter::removeFile() {
    std::string problem;
    if(!_file && _opener && _syncedSize != 0)
        _file = _opener(problem);
    if(_file)
        _file->remove();
}

void JournalWriter::writeAndSync(const Clock::time_point now) {
    std::string problem;
    if(tryToWrite(problem)) {
        _syncedSize += _unsynced.size();
        _unsynced.clear();
        _syncedChanges = _changes;
        setRetry(Clock::time_point::max());
        if(std::exchange(_hasFailed, false))
            _report(JournalEvent::Resumed, _name, {});
    } else {
        setRetry(now + RetryDelay);
        if(!std::exchange(_hasFailed, true))
            _report(JournalEvent::Stopped, _name, problem);
    }
}

bool JournalWriter::tryToWrite(std::string& problem) {
    if(!_file && _opener)
        _file = _opener(problem);
    return _file && _file->write(_syncedSize, _unsynced, problem) && _file->sync(problem);
}

}
