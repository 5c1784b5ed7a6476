#ifndef Quillmere_editor_ScriptRunner_h
#define Quillmere_editor_ScriptRunner_h

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "editor/ScriptProcess.h"

namespace QuillmereEngine {

class Message;
class ScriptProject;
class StoreLog;

/** @brief Limits as they are shown: "10 s", "0.2 s" */
std::string durationText(std::chrono::milliseconds duration);

/**
@brief Runs scripts one after the other in one engine, which it starts with the first of them

An engine that has ended, because a script went beyond its limits or for another reason, is started
anew with the next script. What scripts say and what happens to them become lines. UI thread.
*/
class ScriptRunner {
public:
    using Clock = std::chrono::steady_clock;

    enum class Engine {
        None, /**< No script has been run yet */
        Idle, /**< Waits for a script */
        Running,
        Ended /**< Is started anew with the next script */
    };

    enum class Result { Hide, Show };

    /**
    @param project  Carries out what scripts want of the project. Outlives this.
    @param log      Gets the lines. Outlives this.
    @param program  Path of quillmere-script
    @param wakeUp   Is to make the UI thread call @ref poll(). Called on another thread.
    */
    explicit ScriptRunner(ScriptProject& project, StoreLog& log, std::string program,
        const ScriptLimits& limits, std::function<void()> wakeUp);

    ScriptRunner(const ScriptRunner&) = delete;
    ScriptRunner& operator=(const ScriptRunner&) = delete;

    /** @brief Ends the engine, also in the middle of a script. Its group is committed. */
    ~ScriptRunner();

    /**
    @brief Run a script
    @param name     Of its file, for errors
    @param result   Whether its value becomes a line
    @return Whether it runs now. If not, a line says why, unless another one is running.
    */
    bool run(const std::string& name, const std::string& source, Result result);

    /** @brief Stop the running script. One that doesn't is ended together with the engine. */
    void stop();

    /**
    @brief Do what the running script wants, for some milliseconds at most, and look at its limits

    To be called between frames, after each wake-up and a few times a second.
    @return Whether another state is to be shown
    */
    bool poll();

    /** @brief Wait until no script is running, for which its limit is the longest time */
    void waitForEnd();

    Engine engine() const { return _engine; }

    bool isRunning() const { return _engine == Engine::Running; }

    /** @brief For how long the script is running. Whole seconds, 0 if there's none. */
    int elapsedSeconds() const;

    /** @brief How often the engine was started anew */
    int restartCount() const { return _restartCount; }

    const ScriptLimits& limits() const { return _limits; }

    /** @brief Process of the engine, -1 if there's none */
    pid_t processId() const { return _process ? _process->id() : -1; }

private:
    bool start();
    bool handleMessages();
    bool handle(const std::string& text);
    void scriptEnded(const Message& message);
    void fail(const std::string& problem);
    void endEngine(const std::string& line);
    std::string endOf(int status) const;

    ScriptProject& _project;
    StoreLog& _log;
    std::string _program;
    ScriptLimits _limits;
    std::function<void()> _wakeUp;
    std::unique_ptr<ScriptProcess> _process;
    Engine _engine = Engine::None;
    std::string _name;
    Clock::time_point _started, _latestEnd;
    bool _isStopWanted = false;
    int _restartCount = 0;
    int _shownSeconds = 0;
};

}

#endif
