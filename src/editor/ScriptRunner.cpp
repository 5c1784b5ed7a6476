#include "editor/ScriptRunner.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "editor/ScriptProject.h"
#include "editor/StoreLog.h"
#include "editor/script/Message.h"
#include "editor/script/ScriptProtocol.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

using namespace std::chrono_literals;

/* Less than a frame, so that the editor draws on while a script keeps it busy */
constexpr auto LongestPoll = 8ms;

/* A script that has got its answer often has the next request soon */
constexpr auto NextRequestWait = 1ms;

constexpr const char* StartedAnew =
    " Its variables are gone, the next script starts the engine anew.";

LogLevel levelOf(const Message& message) {
    const int level = message.number("level", int(LogLevel::Error));
    return LogLevel(std::clamp(level, int(LogLevel::Verbose), int(LogLevel::Error)));
}

Containers::StringView viewOf(const std::string_view text) { return {text.data(), text.size()}; }

}

std::string durationText(const std::chrono::milliseconds duration) {
    const auto tenths = duration.count() / 100;
    std::string out = std::to_string(tenths / 10);
    if(tenths % 10)
        out += "." + std::to_string(tenths % 10);
    return out + " s";
}

ScriptRunner::ScriptRunner(ScriptProject& project, StoreLog& log, std::string program,
    const ScriptLimits& limits, std::function<void()> wakeUp):
    _project{project},
    _log{log},
    _program{std::move(program)},
    _limits{limits},
    _wakeUp{std::move(wakeUp)} {}

ScriptRunner::~ScriptRunner() {
    _process = nullptr;
    _project.scriptEnded();
}

bool ScriptRunner::run(const std::string& name, const std::string& source, const Result result) {
    poll();
    if(isRunning())
        return false;
    const std::string message = MessageWriter{"run"}
                                    .add("name", std::string_view{name})
                                    .add("source", std::string_view{source})
                                    .add("result", result == Result::Show)
                                    .text();
    if(message.size() > MaxFrameSize) {
        _log.append(LogLevel::Error, viewOf(name + " is too large to be run"));
        return false;
    }
    if(!_process && !start())
        return false;
    _process->send(message);
    _name = name;
    _started = Clock::now();
    _latestEnd = _started + _limits.time + _limits.grace;
    _shownSeconds = 0;
    _isStopWanted = false;
    _engine = Engine::Running;
    return true;
}

bool ScriptRunner::start() {
    std::string problem;
    _process = ScriptProcess::start(_program, _limits, _wakeUp, problem);
    if(!_process) {
        _log.append(LogLevel::Error,
            viewOf("Can't start the JavaScript engine " + _program + ": " + problem));
        return false;
    }
    if(_engine == Engine::Ended) {
        ++_restartCount;
        _log.append(LogLevel::Info, "The JavaScript engine was started anew");
    }
    return true;
}

void ScriptRunner::stop() {
    if(!isRunning())
        return;
    _isStopWanted = true;
    _latestEnd = std::min(_latestEnd, Clock::now() + _limits.grace);
}

bool ScriptRunner::poll() {
    if(!_process)
        return false;
    /* Before the messages: one that has come says that the script wasn't too late */
    const Clock::time_point now = Clock::now();
    const Engine before = _engine;
    handleMessages();
    if(isRunning() && _isStopWanted)
        _process->interrupt();
    if(_process && _process->hasEnded())
        fail(_process->problem());
    else if(isRunning() && now >= _latestEnd)
        endEngine(_name + " was stopped together with the JavaScript engine: it didn't end " +
            (_isStopWanted ? "when it was told to."
                           : "by itself after " + durationText(_limits.time) + "."));
    return _engine != before || std::exchange(_shownSeconds, elapsedSeconds()) != elapsedSeconds();
}

/* False if the connection is over */
bool ScriptRunner::handleMessages() {
    const Clock::time_point end = Clock::now() + LongestPoll;
    do {
        std::optional<std::string> message = _process->take();
        if(!message && isRunning()) {
            _process->wait(NextRequestWait);
            message = _process->take();
        }
        if(!message)
            return true;
        if(!handle(*message)) {
            fail("it sent something that is not a message");
            return false;
        }
    } while(Clock::now() < end);
    return true;
}

bool ScriptRunner::handle(const std::string& text) {
    const std::optional<Message> message = Message::parse(text);
    if(!message || !isRunning())
        return false;
    if(message->type() == "log")
        _log.append(levelOf(*message), viewOf(message->text("text")));
    else if(message->type() == "request")
        _process->send(_project.answer(*message));
    else if(message->type() == "done")
        scriptEnded(*message);
    else
        return false;
    return true;
}

void ScriptRunner::scriptEnded(const Message& message) {
    _engine = Engine::Idle;
    _project.scriptEnded();
    if(message.text("end") == ScriptEnd::TimeLimit)
        _log.append(LogLevel::Error,
            viewOf(_name + " was stopped: it ran longer than " + durationText(_limits.time)));
    else if(message.text("end") == ScriptEnd::Stopped)
        _log.append(LogLevel::Warn, viewOf(_name + " was stopped"));
}

void ScriptRunner::waitForEnd() {
    while(isRunning()) {
        _process->wait(50ms);
        poll();
    }
}

int ScriptRunner::elapsedSeconds() const {
    return isRunning()
        ? int(std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - _started).count())
        : 0;
}

std::string ScriptRunner::endOf(const int status) const {
    const std::string how = status < 0 ? "by signal " + std::to_string(-status)
                                       : "with exit status " + std::to_string(status);
    return "The JavaScript engine ended unexpectedly " + how +
        (isRunning() ? " while it ran " + _name : "") + ".";
}

void ScriptRunner::fail(const std::string& problem) {
    if(!problem.empty())
        return endEngine("The JavaScript engine was ended: " + problem + ".");
    const int status = _process->status();
    if(status == ScriptExit::MemoryLimit && isRunning())
        return endEngine(_name +
            " was stopped together with the JavaScript engine: it needed more"
            " memory than " +
            std::to_string(_limits.megabytes) + " MB.");
    endEngine(endOf(status));
}

void ScriptRunner::endEngine(const std::string& line) {
    _process = nullptr;
    _engine = Engine::Ended;
    _project.scriptEnded();
    _log.append(LogLevel::Error, viewOf(line + StartedAnew));
}

}
