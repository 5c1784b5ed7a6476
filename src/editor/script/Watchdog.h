#ifndef Quillmere_editor_script_Watchdog_h
#define Quillmere_editor_script_Watchdog_h

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace QuillmereEngine {

/**
@brief Watches over the thread that runs scripts

On a thread of its own, as that one may be in an endless loop: asks the engine to stop a script that
runs longer than the limit, or that the editor wants to stop, for which it sends @ref ScriptStopSignal;
and ends the process when the editor is gone. That isn't left to `PR_SET_PDEATHSIG`, which comes
already at the end of the thread that started the process.
*/
class Watchdog {
public:
    using Clock = std::chrono::steady_clock;

    /** @brief Why a script is to stop */
    enum class Reason { None, TimeLimit, Stopped };

    /**
    @brief Constructor. Expects that @ref ScriptStopSignal is blocked, as the editor starts the process.
    @param socket       Connection with the editor
    @param requestStop  Asks the engine to look at @ref reason() soon. Called on the watchdog's
        thread, again and again until the script has ended.
    */
    explicit Watchdog(
        int socket, std::chrono::milliseconds limit, std::function<void()> requestStop);

    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;
    ~Watchdog();

    /** @brief A script begins. What it waits for the editor counts, too: the user waits as well. */
    void start();

    /** @brief The script has ended */
    void finish();

    /** @brief Why the running script is to stop. Any thread. */
    Reason reason() const;

private:
    void run();
    int pause();
    void readSignal();

    int _socket;
    std::chrono::milliseconds _limit;
    std::function<void()> _requestStop;
    int _signals, _wakeUps;
    mutable std::mutex _mutex;
    std::optional<Clock::time_point> _deadline;
    Reason _reason = Reason::None;
    bool _isEnding = false;
    std::thread _thread;
};

}

#endif
