#ifndef Quillmere_editor_ScriptProcess_h
#define Quillmere_editor_ScriptProcess_h

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <thread>

namespace QuillmereEngine {

class FrameReader;

/** @brief How far a script may go */
struct ScriptLimits {
    std::chrono::milliseconds time{10000};
    /** For what doesn't stop when it's asked to, as a native function that takes long */
    std::chrono::milliseconds grace{2000};
    int megabytes = 512;
};

/**
@brief A process of quillmere-script and the connection with it

A thread reads and writes, so that nobody else ever waits for the process. Everything else is to be
called on the UI thread.
*/
class ScriptProcess {
public:
    /**
    @brief Start a process
    @param program  Path of quillmere-script
    @param wakeUp   Called on the process's thread when there's something new. Outlives this.
    @param problem  Why there's no result
    */
    static std::unique_ptr<ScriptProcess> start(const std::string& program,
        const ScriptLimits& limits, std::function<void()> wakeUp, std::string& problem);

    ScriptProcess(const ScriptProcess&) = delete;
    ScriptProcess& operator=(const ScriptProcess&) = delete;

    /** @brief Ends the process, in which nothing is to be kept */
    ~ScriptProcess();

    /** @brief Send a message of at most @ref MaxFrameSize bytes. Doesn't wait. */
    void send(std::string_view message);

    /** @brief The next message. Nothing if there's none yet. */
    std::optional<std::string> take();

    /** @brief Wait until there's a message or the connection has ended, at most for a while */
    void wait(std::chrono::milliseconds longest);

    /** @brief Whether the connection has ended and everything that came was taken */
    bool hasEnded();

    /** @brief Ask the running script to stop */
    void interrupt();

    /** @brief End the process now */
    void kill();

    /**
    @brief Wait for the end of the process, which has to be near: after @ref hasEnded() or
        @ref kill()
    @return Exit status, or -signal
    */
    int status();

    /** @brief Why the connection can't go on, other than by its end. Else empty. */
    std::string problem();

    pid_t id() const { return _id; }

private:
    explicit ScriptProcess(pid_t id, int socket, std::function<void()> wakeUp);

    void run();
    bool pollOnce(FrameReader& reader);
    bool receive(FrameReader& reader);
    void sendSome();

    pid_t _id;
    int _socket, _wakeUps;
    std::function<void()> _wakeUp;
    bool _isReaped = false;
    int _status = 0;
    std::mutex _mutex;
    std::condition_variable _changed;
    std::deque<std::string> _received;
    std::size_t _receivedSize = 0;
    std::string _toSend;
    std::string _problem;
    bool _isClosed = false, _isEnding = false;
    std::thread _thread;
};

}

#endif
