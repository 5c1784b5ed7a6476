#include "editor/script/projectObject.h"

#include <optional>
#include <string>
#include <string_view>

#include <js/CallAndConstruct.h>
#include <js/CallArgs.h>
#include <js/CharacterEncoding.h>
#include <js/ErrorReport.h>
#include <js/Exception.h>
#include <js/JSON.h>
#include <js/PropertyAndElement.h>
#include <js/PropertySpec.h>
#include <js/String.h>
#include <js/ValueArray.h>
#include <jsapi.h>

#include "editor/script/EditorConnection.h"
#include "editor/script/ScriptContext.h"
#include "editor/script/ValueText.h"

namespace QuillmereEngine {

namespace {

bool fail(JSContext* const context, const std::string& message) {
    JS_ReportErrorUTF8(context, "%s", message.c_str());
    return false;
}

bool takePointer(JSContext* const context, const char* const function,
    const JS::CallArgs& arguments, std::string& out) {
    if(!arguments.get(0).isString())
        return fail(context, std::string{function} + "(): expected a pointer as a string");
    const JS::RootedString pointer{context, arguments[0].toString()};
    return toUtf8(context, pointer, out);
}

/* The editor refuses by an exception. False with that pending. */
std::optional<Message> ask(JSContext* const context, const std::string& message) {
    if(message.size() > MaxFrameSize) {
        fail(context,
            "project.set(): a value of more than " + std::to_string(MaxFrameSize >> 20) +
                " MB can't be sent");
        return {};
    }
    Message out = ScriptContext::of(context).connection.request(message);
    if(out.type() == "answer")
        return out;
    fail(context, std::string{out.text("message")});
    return {};
}

MessageWriter& addText(MessageWriter& message, const char* const name, const std::string& text) {
    return message.add(name, std::string_view{text});
}

bool get(JSContext* const context, const unsigned count, JS::Value* const values) {
    const JS::CallArgs arguments = JS::CallArgsFromVp(count, values);
    std::string pointer;
    if(!takePointer(context, "project.get", arguments, pointer))
        return false;
    MessageWriter message{"request"};
    message.add("operation", "get");
    const std::optional<Message> answer = ask(context, addText(message, "pointer", pointer).text());
    if(!answer)
        return false;
    arguments.rval().setUndefined();
    if(!answer->hasText("value"))
        return true;
    const std::string_view json = answer->text("value");
    const JS::RootedString text{
        context, JS_NewStringCopyUTF8N(context, JS::UTF8Chars{json.data(), json.size()})};
    return text && JS_ParseJSON(context, text, arguments.rval());
}

bool appendCharacters(const char16_t* const text, const std::uint32_t size, void* const out) {
    static_cast<std::u16string*>(out)->append(text, size);
    return true;
}

/* As the script's own JSON.stringify() does, so that its errors are of the script's classes, too */
bool toJson(JSContext* const context, const JS::HandleValue value, std::string& out) {
    JS::RootedValue input{context, value};
    std::u16string characters;
    if(!JS_Stringify(
           context, &input, nullptr, JS::UndefinedHandleValue, appendCharacters, &characters))
        return false;
    const JS::RootedString text{
        context, JS_NewUCStringCopyN(context, characters.data(), characters.size())};
    return text && toUtf8(context, text, out);
}

bool hasJson(const JS::HandleValue value) {
    return !value.isUndefined() && !value.isSymbol() &&
        !(value.isObject() && JS::IsCallable(&value.toObject()));
}

bool set(JSContext* const context, const unsigned count, JS::Value* const values) {
    const JS::CallArgs arguments = JS::CallArgsFromVp(count, values);
    std::string pointer, json;
    if(!takePointer(context, "project.set", arguments, pointer))
        return false;
    if(!hasJson(arguments.get(1)))
        return fail(context, "project.set(\"" + pointer + "\"): the value has no JSON");
    if(!toJson(context, arguments[1], json))
        return false;
    MessageWriter message{"request"};
    message.add("operation", "set");
    addText(message, "pointer", pointer);
    arguments.rval().setUndefined();
    return bool(ask(context, addText(message, "value", json).text()));
}

bool remove(JSContext* const context, const unsigned count, JS::Value* const values) {
    const JS::CallArgs arguments = JS::CallArgsFromVp(count, values);
    std::string pointer;
    if(!takePointer(context, "project.remove", arguments, pointer))
        return false;
    MessageWriter message{"request"};
    message.add("operation", "remove");
    arguments.rval().setUndefined();
    return bool(ask(context, addText(message, "pointer", pointer).text()));
}

/* Whatever the function does, the group is committed. What it throws is on its way meanwhile. */
bool group(JSContext* const context, const unsigned count, JS::Value* const values) {
    const JS::CallArgs arguments = JS::CallArgsFromVp(count, values);
    if(!arguments.get(0).isObject() || !JS::IsCallable(&arguments[0].toObject()))
        return fail(context, "project.group(): expected a function");
    if(!ask(context, MessageWriter{"request"}.add("operation", "begin").text()))
        return false;
    const bool isDone = JS::Call(context, JS::UndefinedHandleValue, arguments[0],
        JS::HandleValueArray::empty(), arguments.rval());
    ScriptContext::of(context).connection.request(
        MessageWriter{"request"}.add("operation", "commit").text());
    return isDone;
}

constexpr JSFunctionSpec Functions[]{
    JS_FN("get", get, 1, JSPROP_ENUMERATE),
    JS_FN("set", set, 2, JSPROP_ENUMERATE),
    JS_FN("remove", remove, 1, JSPROP_ENUMERATE),
    JS_FN("group", group, 1, JSPROP_ENUMERATE),
    JS_FS_END,
};

}

bool defineProject(JSContext* const context, const JS::HandleObject global) {
    const JS::RootedObject project{
        context, JS_DefineObject(context, global, "project", nullptr, 0)};
    return project && JS_DefineFunctions(context, project, Functions);
}

}
