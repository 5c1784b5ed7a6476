#ifndef Quillmere_editor_FeedReader_h
#define Quillmere_editor_FeedReader_h

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace QuillmereEngine {

/** @brief An open file whose lines are to become lines of the log */
class FeedSource {
public:
    /**
    @brief Open a file
    @param path     `-` for the standard input
    @return Nothing when it can't be read; one line on Corrade's error output says why.

    Never waits, not even for somebody to write into a named pipe.
    */
    static std::optional<FeedSource> open(const std::string& path);

    FeedSource(const FeedSource&) = delete;
    FeedSource(FeedSource&& other) noexcept;
    ~FeedSource();
    FeedSource& operator=(const FeedSource&) = delete;
    FeedSource& operator=(FeedSource&&) = delete;

    /** @brief Name to show: the file's without its folders, or "standard input" */
    const std::string& name() const { return _name; }

    int descriptor() const { return _descriptor; }

    /** @brief Whether it has an end that doesn't depend on another process */
    bool isRegularFile() const { return _isRegularFile; }

    /** @brief In bytes when it was opened, 0 if not known */
    std::uint64_t size() const { return _size; }

private:
    explicit FeedSource(std::string name, int descriptor);

    std::string _name;
    int _descriptor;
    bool _isRegularFile = false;
    std::uint64_t _size = 0;
};

/** @brief How far a feed was read */
struct FeedProgress {
    std::string name;
    std::uint64_t bytes = 0;
    /** In bytes, 0 if not known */
    std::uint64_t size = 0;
    bool isFinished = false;
};

/**
@brief Logs every line of a source, each with the level that its words tell

On a thread of its own, so that a large file or a slow pipe never holds up a frame. A regular file
is read once to its end, all else is followed until its last writer closes it.

A panel that follows its lines scrolls as far as the frame before was long, so of many lines that
come at once the last would stay out of sight. Hence the last line before a pause is held back
until frames with all lines before it were drawn.
*/
class FeedReader {
public:
    /**
    @brief Start to read
    @param changed  Called on the reader's thread after the progress changed at the end of the feed
    @param longestHold  Until a line is logged without the frames it was held back for: a window
        that isn't drawn, whatever the reason, must not hold up the log
    */
    explicit FeedReader(FeedSource source, std::function<void()> changed,
        std::chrono::seconds longestHold = std::chrono::seconds{1});

    /** @brief Stops at once, wherever the reader is */
    ~FeedReader();

    FeedReader(const FeedReader&) = delete;
    FeedReader& operator=(const FeedReader&) = delete;

    bool isRegularFile() const { return _source.isRegularFile(); }

    /** @brief Any thread */
    FeedProgress progress() const;

    /** @brief Frames to be drawn until a line that is held back is logged, 0 if none is */
    int neededFrames() const { return _neededFrames; }

    /** @brief To be called after each frame. Any thread. */
    void frameDrawn();

    /** @brief Wait until a frame is needed or everything was logged */
    void waitForNeedOrEnd();

private:
    enum class Input { Ready, Pausing, Stopping };

    void run();
    Input waitForInput(int milliseconds) const;
    void takeLine(const std::string& line);
    void logHeldLine();
    void waitForFrames();

    FeedSource _source;
    std::function<void()> _changed;
    std::chrono::seconds _longestHold;
    std::atomic<std::uint64_t> _bytes{0};
    std::atomic<bool> _isFinished{false};
    std::atomic<bool> _isStopping{false};
    /* The last line, and whether others came since the last pause. Reader's thread only. */
    std::optional<std::string> _heldLine;
    bool _hasLinesBeforeHeld = false;
    std::atomic<int> _neededFrames{0};
    std::mutex _mutex;
    std::condition_variable _changedNeed;
    /* Readable once the reader shall stop */
    int _stopEvent;
    std::thread _thread;
};

}

#endif
