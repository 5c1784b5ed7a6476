#include "editor/script/errorText.h"

#include <js/ErrorReport.h>
#include <js/Exception.h>
#include <js/Promise.h>
#include <js/Stack.h>
#include <jsapi.h>

#include "editor/script/ScriptContext.h"
#include "editor/script/ValueText.h"

namespace QuillmereEngine {

namespace {

/* "a.js:3:11", empty when nothing is known */
std::string placeOf(JSContext* const context, const JS::ExceptionStack& error) {
    JS::ErrorReportBuilder builder{context};
    if(!builder.init(context, error, JS::ErrorReportBuilder::NoSideEffects) ||
        !builder.report()->filename)
        return {};
    const JSErrorReport& report = *builder.report();
    /* Of a syntax error, which quotes its line, the engine counts columns from 0, else from 1 */
    const unsigned column = report.column + (report.linebuf() ? 1 : 0);
    return std::string{report.filename} + ":" + std::to_string(report.lineno) + ":" +
        std::to_string(column);
}

std::string stackOf(JSContext* const context, const JS::HandleObject stack) {
    constexpr std::size_t Indent = 4;
    JS::RootedString text{context};
    std::string out;
    if(!stack || !JS::BuildStackString(context, nullptr, stack, &text, Indent) ||
        !toUtf8(context, text, out))
        return {};
    return out;
}

std::string errorText(
    JSContext* const context, const JS::ExceptionStack& error, const char* const kind) {
    std::string what;
    if(!ScriptContext::of(context).texts.thrown(error.exception(), what))
        return {};
    const std::string place = placeOf(context, error);
    /* A syntax error has no stack, its place is what it has */
    return (place.empty() ? "" : place + ": ") + kind + " " + what + "\n" +
        stackOf(context, error.stack());
}

}

std::string takeErrorText(JSContext* const context) {
    JS::ExceptionStack error{context};
    if(!JS::StealPendingExceptionStack(context, &error))
        return {};
    std::string out = errorText(context, error, "uncaught");
    /* Nothing of what went wrong while telling what went wrong is left for the next script */
    JS_ClearPendingException(context);
    return out;
}

std::string rejectionText(JSContext* const context, const JS::HandleObject promise) {
    const JS::RootedValue reason{context, JS::GetPromiseResult(promise)};
    JS::RootedObject stack{context};
    if(reason.isObject()) {
        const JS::RootedObject object{context, &reason.toObject()};
        stack = JS::ExceptionStackOrNull(object);
    }
    const JS::ExceptionStack error{context, reason, stack};
    std::string out = errorText(context, error, "uncaught in a promise");
    JS_ClearPendingException(context);
    return out;
}

}
