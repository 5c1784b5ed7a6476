/* The process of the JavaScript engine. Started by the editor, with which it shares a socket. */

#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <unistd.h>

#include <js/GCAPI.h>
#include <js/Initialization.h>
#include <js/MemoryCallbacks.h>
#include <js/Stack.h>
#include <js/Utility.h>
#include <jsapi.h>

#include "editor/script/EditorConnection.h"
#include "editor/script/MemoryLimit.h"
#include "editor/script/ScriptEngine.h"
#include "editor/script/ScriptProtocol.h"

using namespace QuillmereEngine;

namespace {

/* Half of what a process has by default: native code needs some beyond what scripts may nest */
constexpr std::size_t StackSize = std::size_t{4} << 20;

struct Arguments {
    int socket = 0, milliseconds = 0, megabytes = 0;
};

bool parseNumber(const char* const text, int& out) {
    const char* const end = text + std::strlen(text);
    const auto result = std::from_chars(text, end, out);
    return result.ec == std::errc{} && result.ptr == end && out > 0;
}

bool parseArguments(const int count, char** const values, Arguments& out) {
    return count == 4 && parseNumber(values[1], out.socket) &&
        parseNumber(values[2], out.milliseconds) && parseNumber(values[3], out.megabytes);
}

/* Nothing that is asked for after this is given, so that the script can't go on either */
void endForMemory() { _exit(ScriptExit::MemoryLimit); }

JSContext* createContext(const std::size_t memory) {
    if(!JS_Init())
        return nullptr;
    JSContext* const out = JS_NewContext(JS::DefaultHeapMaxBytes);
    if(!out || !JS::InitSelfHostedCode(out) || !limitMemory(memory))
        return nullptr;
    JS_SetGCParameter(out, JSGC_MAX_BYTES, std::uint32_t(memory));
    JS_SetNativeStackQuota(out, StackSize);
    JS::SetOutOfMemoryCallback(
        out, [](JSContext*, void*) { endForMemory(); }, nullptr);
    /* Where the engine has no way to report that there's no memory it crashes */
    js::AutoEnterOOMUnsafeRegion::setAnnotateOOMAllocationSizeCallback(
        [](std::size_t) { endForMemory(); });
    return out;
}

[[noreturn]] void serve(JSContext* const context, const Arguments& arguments) {
    EditorConnection connection{arguments.socket};
    Watchdog watchdog{arguments.socket, std::chrono::milliseconds{arguments.milliseconds},
        [context] { JS_RequestInterruptCallback(context); }};
    ScriptEngine engine{context, connection, watchdog};
    if(!engine.isValid())
        _exit(ScriptExit::NoEngine);
    for(;;) {
        const Message message = connection.receive();
        if(message.type() != "run")
            _exit(ScriptExit::BadMessage);
        connection.send(MessageWriter{"done"}.add("end", engine.run(message)).text());
    }
}

}

int main(const int count, char** const values) {
    Arguments arguments;
    if(!parseArguments(count, values, arguments)) {
        std::fputs("quillmere-script is started by quillmere-editor: expected the number of a"
                   " socket, milliseconds and megabytes\n",
            stderr);
        return ScriptExit::BadArguments;
    }
    JSContext* const context = createContext(std::size_t(arguments.megabytes) << 20);
    if(!context)
        return ScriptExit::NoEngine;
    serve(context, arguments);
}
