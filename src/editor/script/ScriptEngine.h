#ifndef Quillmere_editor_script_ScriptEngine_h
#define Quillmere_editor_script_ScriptEngine_h

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

#include <js/RootingAPI.h>
#include <js/TypeDecls.h>

#include "editor/script/JobQueue.h"
#include "editor/script/ScriptContext.h"
#include "editor/script/ValueText.h"
#include "editor/script/Watchdog.h"

namespace QuillmereEngine {

class EditorConnection;
class Message;

/**
@brief The JavaScript engine with its one global object, in which variables persist

One in a process. Never destroyed: the process ends by `_exit()`, as nothing in it has to be kept.
*/
class ScriptEngine {
public:
    /** @param context  A context that has its self-hosted code. Has a memory limit already. */
    explicit ScriptEngine(JSContext* context, EditorConnection& connection, Watchdog& watchdog);

    /** @brief Whether the engine was able to make its objects */
    bool isValid() const { return _isValid; }

    /**
    @brief Run a script and all jobs of promises that it makes
    @param message  As the editor sends it to run a script
    @return One of @ref ScriptEnd

    Errors and, if it's wanted, the result go to the console.
    */
    const char* run(const Message& message);

private:
    bool evaluate(const Message& message, JS::MutableHandleValue result);
    bool runJobs();
    bool reportUnhandled();
    bool showResult(JS::HandleValue result);
    /* False if there's none because the script was stopped */
    bool reportError();
    static bool interrupted(JSContext* context);

    JSContext* _context;
    EditorConnection& _connection;
    Watchdog& _watchdog;
    JobQueue _jobs;
    JS::PersistentRootedObject _global;
    std::unique_ptr<ValueText> _texts;
    std::unique_ptr<ScriptContext> _script;
    bool _isValid = false, _hasFailed = false;
};

}

#endif
