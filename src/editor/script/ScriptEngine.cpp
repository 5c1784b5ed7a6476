#include "editor/script/ScriptEngine.h"

#include <string_view>
#include <utility>

#include <js/CompilationAndEvaluation.h>
#include <js/CompileOptions.h>
#include <js/Exception.h>
#include <js/GlobalObject.h>
#include <js/Interrupt.h>
#include <js/Realm.h>
#include <js/SourceText.h>
#include <jsapi.h>

#include "editor/script/EditorConnection.h"
#include "editor/script/consoleObject.h"
#include "editor/script/errorText.h"
#include "editor/script/projectObject.h"

namespace QuillmereEngine {

namespace {

constexpr int InfoLevel = 1, ErrorLevel = 3;

/* The interrupt callback is called without a pointer to anything but the context */
Watchdog* runningWatchdog = nullptr;

JSObject* createGlobal(JSContext* const context) {
    static constexpr JSClass Class{
        "Global", JSCLASS_GLOBAL_FLAGS, &JS::DefaultGlobalClassOps, nullptr, nullptr, nullptr};
    return JS_NewGlobalObject(
        context, &Class, nullptr, JS::FireOnNewGlobalHook, JS::RealmOptions{});
}

std::string_view withoutByteOrderMark(std::string_view source) {
    constexpr std::string_view Mark = "\xef\xbb\xbf";
    if(source.substr(0, Mark.size()) == Mark)
        source.remove_prefix(Mark.size());
    return source;
}

}

ScriptContext& ScriptContext::of(JSContext* const context) {
    return *static_cast<ScriptContext*>(JS_GetContextPrivate(context));
}

ScriptEngine::ScriptEngine(
    JSContext* const context, EditorConnection& connection, Watchdog& watchdog):
    _context{context},
    _connection{connection},
    _watchdog{watchdog},
    _jobs{context},
    _global{context, createGlobal(context)} {
    if(!_global)
        return;
    const JSAutoRealm realm{context, _global};
    _texts = std::make_unique<ValueText>(context, _global);
    _script = std::make_unique<ScriptContext>(ScriptContext{connection, *_texts});
    JS_SetContextPrivate(context, _script.get());
    runningWatchdog = &watchdog;
    _isValid = JS::InitRealmStandardClasses(context) && _texts->isValid() &&
        defineConsole(context, _global) && defineProject(context, _global) &&
        JS_AddInterruptCallback(context, interrupted);
}

bool ScriptEngine::interrupted(JSContext*) {
    return runningWatchdog->reason() == Watchdog::Reason::None;
}

const char* ScriptEngine::run(const Message& message) {
    const JSAutoRealm realm{_context, _global};
    _hasFailed = false;
    _watchdog.start();
    JS::RootedValue result{_context};
    bool isToTheEnd = evaluate(message, &result) || reportError();
    isToTheEnd = isToTheEnd && runJobs();
    if(isToTheEnd && !_hasFailed && message.flag("result"))
        isToTheEnd = showResult(result) || reportError();

    const Watchdog::Reason reason = _watchdog.reason();
    _watchdog.finish();
    _jobs.clear();
    if(isToTheEnd)
        return _hasFailed ? ScriptEnd::Failed : ScriptEnd::Finished;
    return reason == Watchdog::Reason::Stopped ? ScriptEnd::Stopped : ScriptEnd::TimeLimit;
}

bool ScriptEngine::evaluate(const Message& message, const JS::MutableHandleValue result) {
    const std::string_view text = withoutByteOrderMark(message.text("source"));
    const std::string name{message.text("name")};
    JS::CompileOptions options{_context};
    options.setFileAndLine(name.c_str(), 1);
    JS::SourceText<mozilla::Utf8Unit> source;
    return source.init(_context, text.data(), text.size(), JS::SourceOwnership::Borrowed) &&
        JS::Evaluate(_context, options, source, result);
}

/* A promise that is reported may run code of the script, which may make further jobs */
bool ScriptEngine::runJobs() {
    do {
        if(!_jobs.run([this] { reportError(); }))
            return false;
        if(!reportUnhandled())
            return false;
    } while(!_jobs.empty());
    return true;
}

bool ScriptEngine::reportUnhandled() {
    for(const JS::PersistentRootedObject& promise: _jobs.takeUnhandled()) {
        std::string text = rejectionText(_context, promise);
        if(text.empty())
            return false;
        _connection.log(ErrorLevel, std::move(text));
        _hasFailed = true;
    }
    return true;
}

bool ScriptEngine::showResult(const JS::HandleValue result) {
    std::string text;
    if(!_texts->inspect(result, text))
        return false;
    _connection.log(InfoLevel, std::move(text));
    return true;
}

bool ScriptEngine::reportError() {
    if(!JS_IsExceptionPending(_context))
        return false;
    std::string text = takeErrorText(_context);
    if(text.empty())
        return false;
    _connection.log(ErrorLevel, std::move(text));
    _hasFailed = true;
    return true;
}

}
