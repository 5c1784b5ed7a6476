#ifndef Quillmere_editor_JournalWriter_h
#define Quillmere_editor_JournalWriter_h

#include <atomic>
#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

#include "editor/JournalFile.h"

namespace QuillmereEngine {

/** @brief What becomes of a journal, for people */
enum class JournalEvent {
    Stopped, /**< It can't be written any more. The writer tries again from time to time. */
    Resumed  /**< It could be written again, all that was missing included */
};

/**
@brief Brings a journal's bytes to the disk a while after they came

Takes orders from one thread without ever waiting for the disk, and carries them out, in their order,
on another one that calls @ref work() when @ref due() says so, see @ref JournalThread. Time is what
the callers say.

Bytes are kept until it's known that they are on the disk. After a failure they are all written again
at the same place: the system may have dropped what it couldn't bring to the disk, and it says so only
once. So the journal goes on as if nothing had happened when a full disk has room again.
*/
class JournalWriter {
public:
    using Clock = std::chrono::steady_clock;

    /** @brief Opens the file of a journal, or gives null and the reason */
    using Opener = std::function<std::unique_ptr<JournalFile>(std::string& problem)>;

    /** @brief Told on the thread that works. @p problem is empty but for `Stopped`. */
    using Report = std::function<void(
        JournalEvent event, const std::string& name, const std::string& problem)>;

    /** From the first byte that came to the sync. The other half of the second in which an edit is
        to be on the disk is the disk's. */
    static constexpr std::chrono::milliseconds SyncDelay{500};

    /** From a failure to the next attempt */
    static constexpr std::chrono::milliseconds RetryDelay{5000};

    explicit JournalWriter(Report report, Clock::duration syncDelay = SyncDelay);

    /**
    @brief Say who is to be told that something is due earlier than it was
    @param waker    Called on the thread that gives orders. Empty, as at first, for nobody.
    */
    void setWaker(std::function<void()> waker) { _waker = std::move(waker); }

    /**
    @brief Begin a journal. The one before, if it wasn't removed, stays as far as it's on the disk.
    @param name     For reports
    @param opener   Called when the first bytes are due, and after a failure again
    @param offset   Where in the file to go on, 0 in a new one
    */
    void begin(std::string name, Opener opener, std::uint64_t offset);

    /**
    @brief Append to the journal
    @param bytes    Copied
    @param changes  How many changes are in the journal with these bytes, see @ref syncedChanges()
    */
    void append(std::string_view bytes, std::uint64_t changes, Clock::time_point now);

    /** @brief Take the journal away, also if it's not even on the disk yet */
    void remove(Clock::time_point now);

    /** @brief When there's something to do, the end of time if there's nothing */
    Clock::time_point due() const;

    /** @brief Do what's due */
    void work(Clock::time_point now);

    /** @brief Do everything that was ordered, due or not, on this thread. Waits for the disk. */
    void flush(Clock::time_point now);

    /** @brief As many changes as @ref append() named are on the disk for sure. Any thread. */
    std::uint64_t syncedChanges() const { return _syncedChanges; }

private:
    struct Order {
        enum class Kind { Begin, Append, Remove } kind;
        std::string name;
        Opener opener;
        std::uint64_t offset = 0;
        std::string bytes;
        std::uint64_t changes = 0;
    };

    enum class Haste { None, Flush };

    void order(Order order, Clock::time_point due);
    void carryOutAll(Clock::time_point now, Haste haste);
    void carryOut(Order& order);
    void removeFile();
    void writeAndSync(Clock::time_point now);
    bool tryToWrite(std::string& problem);
    Clock::time_point retryDue() const;
    void setRetry(Clock::time_point time);

    const Report _report;
    const Clock::duration _syncDelay;
    std::function<void()> _waker;

    /* Guards what follows, and is held for moments only */
    mutable std::mutex _ordersMutex;
    std::deque<Order> _orders;
    Clock::time_point _ordersDue = Clock::time_point::max();
    Clock::time_point _retryDue = Clock::time_point::max();

    /* Held by who works, guards what follows */
    std::mutex _workMutex;
    std::string _name;
    Opener _opener;
    std::unique_ptr<JournalFile> _file;
    std::uint64_t _syncedSize = 0;
    std::string _unsynced;
    std::uint64_t _changes = 0;
    bool _hasFailed = false;

    std::atomic<std::uint64_t> _syncedChanges{0};
};

}

#endif
