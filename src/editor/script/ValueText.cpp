#include "editor/script/ValueText.h"

#include <cstring>

#include <js/Array.h>
#include <js/CallAndConstruct.h>
#include <js/CharacterEncoding.h>
#include <js/CompilationAndEvaluation.h>
#include <js/CompileOptions.h>
#include <js/Exception.h>
#include <js/GlobalObject.h>
#include <js/Object.h>
#include <js/Promise.h>
#include <js/PropertyAndElement.h>
#include <js/Realm.h>
#include <js/SourceText.h>
#include <js/String.h>
#include <jsapi.h>

#include "editor/script/valueTextSource.h"

namespace QuillmereEngine {

namespace {

const char* className(const js::ESClass type) {
    switch(type) {
        case js::ESClass::Array:
            return "Array";
        case js::ESClass::Number:
            return "Number";
        case js::ESClass::String:
            return "String";
        case js::ESClass::Boolean:
            return "Boolean";
        case js::ESClass::RegExp:
            return "RegExp";
        case js::ESClass::Date:
            return "Date";
        case js::ESClass::Set:
            return "Set";
        case js::ESClass::Map:
            return "Map";
        case js::ESClass::Promise:
            return "Promise";
        case js::ESClass::Error:
            return "Error";
        case js::ESClass::BigInt:
            return "BigInt";
        default:
            return "Object";
    }
}

/* Proxies are seen through, but not called proxies: they are what they say they are */
bool classOf(JSContext* const context, const unsigned count, JS::Value* const values) {
    const JS::CallArgs arguments = JS::CallArgsFromVp(count, values);
    const JS::RootedObject object{context, &arguments[0].toObject()};
    js::ESClass type;
    if(!JS::GetBuiltinClass(context, object, &type))
        return false;
    JSString* const name = JS_NewStringCopyZ(context, className(type));
    if(name)
        arguments.rval().setString(name);
    return name;
}

/* Of a proxy of a promise nothing is known */
bool promiseOf(JSContext* const context, const unsigned count, JS::Value* const values) {
    const JS::CallArgs arguments = JS::CallArgsFromVp(count, values);
    const JS::RootedObject promise{context, &arguments[0].toObject()};
    const bool isPromise = JS::IsPromiseObject(promise);
    const JS::PromiseState state = isPromise ? JS::GetPromiseState(promise)
                                             : JS::PromiseState::Pending;
    const char* const name = state == JS::PromiseState::Fulfilled ? "fulfilled"
        : state == JS::PromiseState::Rejected                     ? "rejected"
                                                                  : "pending";
    JS::RootedValueArray<2> items{context};
    JSString* const text = JS_NewStringCopyZ(context, name);
    if(!text)
        return false;
    items[0].setString(text);
    if(state != JS::PromiseState::Pending)
        items[1].set(JS::GetPromiseResult(promise));
    JSObject* const out = JS::NewArrayObject(context, items);
    if(out)
        arguments.rval().setObject(*out);
    return out;
}

JSObject* createGlobal(JSContext* const context, const JS::HandleObject neighbour) {
    static constexpr JSClass Class{
        "ValueText", JSCLASS_GLOBAL_FLAGS, &JS::DefaultGlobalClassOps, nullptr, nullptr, nullptr};
    JS::RealmOptions options;
    options.creationOptions().setExistingCompartment(neighbour);
    return JS_NewGlobalObject(context, &Class, nullptr, JS::FireOnNewGlobalHook, options);
}

bool evaluate(JSContext* const context, const JS::MutableHandleValue out) {
    JS::CompileOptions options{context};
    options.setFileAndLine("console", 1);
    JS::SourceText<mozilla::Utf8Unit> source;
    return source.init(context, ValueTextSource, std::strlen(ValueTextSource),
               JS::SourceOwnership::Borrowed) &&
        JS::Evaluate(context, options, source, out);
}

JSObject* createFunctions(JSContext* const context) {
    const JS::RootedObject natives{context, JS_NewPlainObject(context)};
    JS::RootedValue function{context}, out{context};
    JS::RootedValueArray<1> arguments{context};
    if(!natives || !JS_DefineFunction(context, natives, "classOf", classOf, 1, 0) ||
        !JS_DefineFunction(context, natives, "promiseOf", promiseOf, 1, 0) ||
        !evaluate(context, &function))
        return nullptr;
    arguments[0].setObject(*natives);
    if(!JS::Call(context, JS::UndefinedHandleValue, function, arguments, &out))
        return nullptr;
    return &out.toObject();
}

}

bool toUtf8(JSContext* const context, const JS::HandleString string, std::string& out) {
    JSLinearString* const linear = JS_EnsureLinearString(context, string);
    if(!linear)
        return false;
    out.resize(JS::GetDeflatedUTF8StringLength(linear));
    JS::DeflateStringToUTF8Buffer(linear, {out.data(), out.size()});
    return true;
}

ValueText::ValueText(JSContext* const context, const JS::HandleObject global):
    _context{context},
    _functions{context} {
    const JS::RootedObject own{context, createGlobal(context, global)};
    if(!own)
        return;
    const JSAutoRealm realm{context, own};
    if(JS::InitRealmStandardClasses(context))
        _functions = createFunctions(context);
}

bool ValueText::call(
    const char* const function, const JS::HandleValue value, const JS::MutableHandleValue out) {
    const JSAutoRealm realm{_context, _functions};
    JS::RootedValueArray<1> arguments{_context};
    arguments[0].set(value);
    return JS_CallFunctionName(_context, _functions, function, arguments, out);
}

bool ValueText::text(const char* const function, const JS::HandleValue value, std::string& out) {
    JS::RootedValue result{_context};
    if(!call(function, value, &result))
        return false;
    const JS::RootedString string{_context, result.toString()};
    return toUtf8(_context, string, out);
}

bool ValueText::inspect(const JS::HandleValue value, std::string& out) {
    return text("inspect", value, out);
}

bool ValueText::format(const JS::HandleValue values, std::string& out) {
    return text("format", values, out);
}

bool ValueText::thrown(const JS::HandleValue value, std::string& out) {
    return text("thrown", value, out);
}

}
