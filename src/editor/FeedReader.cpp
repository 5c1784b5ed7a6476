#include "editor/FeedReader.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/DebugStl.h>

#include "QuillmereEditor/Tools/Log.h"
#include "editor/LineLevel.h"
#include "editor/LineSplitter.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

constexpr std::size_t PieceSize = 64 * 1024;

/* How long a source has to be silent until its last line isn't waited with any more */
constexpr int PauseMilliseconds = 10;

/* One that shows the lines, and one before in which the panel may have appeared */
constexpr int FramesForLayout = 2;

void logLine(const std::string& line) { log(lineLevel(line), line.c_str()); }

std::string fileName(const std::string& path) {
    return path == "-" ? "standard input" : path.substr(path.rfind('/') + 1);
}

std::nullopt_t refuse(const std::string& path, const int error) {
    Utility::Error{} << "quillmere-editor: can't read feed" << path << Utility::Error::nospace
                     << ":" << std::strerror(error);
    return std::nullopt;
}

}

std::optional<FeedSource> FeedSource::open(const std::string& path) {
    /* Non-blocking only so that opening a named pipe doesn't wait for its writer; reading waits in
       poll() either way. The standard input is left as it is, others may share it. */
    const int descriptor = path == "-" ? fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0)
                                       : ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if(descriptor == -1)
        return refuse(path, errno);

    FeedSource out{fileName(path), descriptor};
    struct stat status;
    if(fstat(descriptor, &status) == -1)
        return refuse(path, errno);
    if(S_ISDIR(status.st_mode))
        return refuse(path, EISDIR);
    out._isRegularFile = S_ISREG(status.st_mode);
    out._size = out._isRegularFile ? std::uint64_t(status.st_size) : 0;
    return out;
}

FeedSource::FeedSource(std::string name, const int descriptor):
    _name{std::move(name)},
    _descriptor{descriptor} {}

FeedSource::FeedSource(FeedSource&& other) noexcept:
    _name{std::move(other._name)},
    _descriptor{std::exchange(other._descriptor, -1)},
    _isRegularFile{other._isRegularFile},
    _size{other._size} {}

FeedSource::~FeedSource() {
    if(_descriptor != -1)
        ::close(_descriptor);
}

FeedReader::FeedReader(
    FeedSource source, std::function<void()> changed, const std::chrono::seconds longestHold):
    _source{std::move(source)},
    _changed{std::move(changed)},
    _longestHold{longestHold},
    _stopEvent{eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)},
    _thread{[this] { run(); }} {}

FeedReader::~FeedReader() {
    {
        const std::lock_guard<std::mutex> lock{_mutex};
        _isStopping = true;
    }
    _changedNeed.notify_all();
    eventfd_write(_stopEvent, 1);
    _thread.join();
    ::close(_stopEvent);
}

FeedProgress FeedReader::progress() const {
    return {_source.name(), _bytes, _source.size(), _isFinished};
}

void FeedReader::frameDrawn() {
    {
        const std::lock_guard<std::mutex> lock{_mutex};
        if(_neededFrames > 0)
            --_neededFrames;
    }
    _changedNeed.notify_all();
}

void FeedReader::waitForNeedOrEnd() {
    std::unique_lock<std::mutex> lock{_mutex};
    _changedNeed.wait(lock, [this] { return _neededFrames > 0 || _isFinished; });
}

FeedReader::Input FeedReader::waitForInput(const int milliseconds) const {
    pollfd descriptors[]{{_source.descriptor(), POLLIN, 0}, {_stopEvent, POLLIN, 0}};
    int count;
    do
        count = poll(descriptors, 2, milliseconds);
    while(count == -1 && errno == EINTR);
    if(count == -1 || descriptors[1].revents || descriptors[0].revents & POLLNVAL)
        return Input::Stopping;
    return count ? Input::Ready : Input::Pausing;
}

void FeedReader::takeLine(const std::string& line) {
    /* A piece may hold tens of thousands of lines */
    if(_isStopping)
        return;
    if(_heldLine) {
        logLine(*_heldLine);
        _hasLinesBeforeHeld = true;
    }
    _heldLine = line;
}

void FeedReader::logHeldLine() {
    if(!_heldLine)
        return;
    if(_hasLinesBeforeHeld)
        waitForFrames();
    logLine(*_heldLine);
    _heldLine.reset();
    _hasLinesBeforeHeld = false;
}

void FeedReader::waitForFrames() {
    std::unique_lock<std::mutex> lock{_mutex};
    _neededFrames = FramesForLayout;
    lock.unlock();
    _changedNeed.notify_all();
    _changed();
    lock.lock();
    _changedNeed.wait_for(lock, _longestHold, [this] { return _neededFrames == 0 || _isStopping; });
    _neededFrames = 0;
}

void FeedReader::run() {
    LineSplitter splitter{[this](const std::string& line) { takeLine(line); }};
    std::vector<char> piece(PieceSize);
    for(;;) {
        Input input = waitForInput(_heldLine ? PauseMilliseconds : -1);
        if(input == Input::Pausing) {
            logHeldLine();
            continue;
        }
        if(input == Input::Stopping)
            break;
        const ssize_t size = read(_source.descriptor(), piece.data(), piece.size());
        if(size == -1 && (errno == EINTR || errno == EAGAIN))
            continue;
        if(size == -1)
            log(LogLevel::Error,
                ("Can't read on in " + _source.name() + ": " + std::strerror(errno)).c_str());
        if(size <= 0)
            break;
        splitter.push({piece.data(), std::size_t(size)});
        _bytes += std::uint64_t(size);
    }
    splitter.finish();
    logHeldLine();
    {
        const std::lock_guard<std::mutex> lock{_mutex};
        _isFinished = true;
    }
    _changedNeed.notify_all();
    _changed();
}

}
