#include "editor/script/consoleObject.h"

#include <string>
#include <utility>

#include <js/Array.h>
#include <js/CallArgs.h>
#include <js/PropertyAndElement.h>
#include <js/PropertySpec.h>
#include <js/ValueArray.h>

#include "editor/script/EditorConnection.h"
#include "editor/script/ScriptContext.h"
#include "editor/script/ValueText.h"

namespace QuillmereEngine {

namespace {

/* Levels of the log */
template<int level>
bool write(JSContext* const context, const unsigned count, JS::Value* const values) {
    const JS::CallArgs arguments = JS::CallArgsFromVp(count, values);
    const JS::RootedObject array{
        context, JS::NewArrayObject(context, JS::HandleValueArray{arguments})};
    if(!array)
        return false;
    const JS::RootedValue value{context, JS::ObjectValue(*array)};
    const ScriptContext& script = ScriptContext::of(context);
    std::string text;
    if(!script.texts.format(value, text))
        return false;
    script.connection.log(level, std::move(text));
    arguments.rval().setUndefined();
    return true;
}

constexpr JSFunctionSpec Functions[]{
    JS_FN("debug", write<0>, 0, JSPROP_ENUMERATE),
    JS_FN("log", write<1>, 0, JSPROP_ENUMERATE),
    JS_FN("info", write<1>, 0, JSPROP_ENUMERATE),
    JS_FN("warn", write<2>, 0, JSPROP_ENUMERATE),
    JS_FN("error", write<3>, 0, JSPROP_ENUMERATE),
    JS_FS_END,
};

}

bool defineConsole(JSContext* const context, const JS::HandleObject global) {
    const JS::RootedObject console{
        context, JS_DefineObject(context, global, "console", nullptr, 0)};
    return console && JS_DefineFunctions(context, console, Functions);
}

}
