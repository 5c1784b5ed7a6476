#include "editor/script/valueTextSource.h"

namespace QuillmereEngine {

/* JavaScript, as it's about JavaScript's values: in C++ each access to one takes three lines and can
   forget a root. It runs in a realm of its own, so that a script that changes what is built in, such
   as Array.prototype, doesn't change this. */
const char* const ValueTextSource = R"js((natives => {
"use strict";

const {classOf, promiseOf} = natives;

/* What is deeper or more is left out: nobody reads it, and it may be endless */
const MaxDepth = 100;
const MaxItems = 10000;

const tag = name => name ? name + " " : "";

function ownText(object, name) {
    const property = Object.getOwnPropertyDescriptor(object, name);
    return property && typeof property.value === "string" ? property.value : "";
}

function functionText(value) {
    const isClass = /^class\b/.test(Function.prototype.toString.call(value));
    const name = ownText(value, "name");
    return `[${isClass ? "class" : "Function"}${name ? (isClass ? " " : ": ") + name : ""}]`;
}

/* Of an object that isn't a plain one */
function className(value) {
    const prototype = Object.getPrototypeOf(value);
    if(prototype === null)
        return "";
    const property = Object.getOwnPropertyDescriptor(prototype, "constructor");
    const name = property && typeof property.value === "function" ? ownText(property.value, "name") : "";
    return name === "Object" ? "" : name;
}

function propertyText(object, key, open) {
    const property = Object.getOwnPropertyDescriptor(object, key);
    if(!property)
        return "undefined";
    if(property.get || property.set)
        return property.get ? property.set ? "[Getter/Setter]" : "[Getter]" : "[Setter]";
    return text(property.value, open);
}

function joined(items, count) {
    if(count > MaxItems)
        items.push(`... ${count - MaxItems} more`);
    return items.join(",");
}

function arrayText(value, open) {
    const items = [];
    for(let i = 0; i !== Math.min(value.length, MaxItems); ++i)
        items.push(i in value ? text(value[i], open) : "<empty>");
    return `[${joined(items, value.length)}]`;
}

function mapText(value, open) {
    const items = [];
    Map.prototype.forEach.call(value, (item, key) => {
        if(items.length !== MaxItems)
            items.push(`${text(key, open)} => ${text(item, open)}`);
    });
    return `Map {${joined(items, Reflect.get(Map.prototype, "size", value))}}`;
}

function setText(value, open) {
    const items = [];
    Set.prototype.forEach.call(value, item => {
        if(items.length !== MaxItems)
            items.push(text(item, open));
    });
    return `Set {${joined(items, Reflect.get(Set.prototype, "size", value))}}`;
}

function promiseText(value, open) {
    const [state, result] = promiseOf(value);
    return `Promise {${state === "fulfilled" ? text(result, open) :
        state === "rejected" ? "<rejected> " + text(result, open) : "<pending>"}}`;
}

function plainText(value, open) {
    const keys = Reflect.ownKeys(value).filter(
        key => Object.getOwnPropertyDescriptor(value, key)?.enumerable);
    const items = keys.slice(0, MaxItems).map(key =>
        (typeof key === "symbol" ? `[${String(key)}]` : JSON.stringify(key)) + ":" +
            propertyText(value, key, open));
    return tag(className(value)) + `{${joined(items, keys.length)}}`;
}

function errorHead(value) {
    const name = String(value.name), message = String(value.message);
    return name && message ? `${name}: ${message}` : name || message;
}

function errorText(value, open) {
    if(open.length > 1)
        return `[${errorHead(value)}]`;
    const stack = typeof value.stack === "string" ? value.stack : "";
    const lines = [errorHead(value), ...stack.split("\n").filter(Boolean).map(i => "    " + i)];
    if(Object.getOwnPropertyDescriptor(value, "cause"))
        lines.push("caused by " + text(value.cause, open));
    return lines.join("\n");
}

function objectText(value, open) {
    switch(classOf(value)) {
        case "Array": return arrayText(value, open);
        case "Boolean": return `[Boolean: ${Boolean.prototype.valueOf.call(value)}]`;
        case "Number": return `[Number: ${text(Number.prototype.valueOf.call(value), open)}]`;
        case "String": return `[String: ${text(String.prototype.valueOf.call(value), open)}]`;
        case "BigInt": return `[BigInt: ${text(BigInt.prototype.valueOf.call(value), open)}]`;
        case "Date": {
            const time = Date.prototype.getTime.call(value);
            return Number.isNaN(time) ? "Invalid Date" : JSON.stringify(new Date(time));
        }
        case "RegExp": return RegExp.prototype.toString.call(value);
        case "Error": return errorText(value, open);
        case "Map": return mapText(value, open);
        case "Set": return setText(value, open);
        case "Promise": return promiseText(value, open);
    }
    if(ArrayBuffer.isView(value) && typeof value.length === "number")
        return tag(className(value)) + arrayText(value, open);
    return plainText(value, open);
}

function text(value, open) {
    switch(typeof value) {
        case "string": return JSON.stringify(value);
        case "number": return Object.is(value, -0) ? "-0" : String(value);
        case "bigint": return value + "n";
        case "function": return functionText(value);
        case "object": break;
        default: return String(value);
    }
    if(value === null)
        return "null";
    if(open.includes(value))
        return "[Circular]";
    if(open.length === MaxDepth)
        return classOf(value) === "Array" ? "[Array]" : "[Object]";
    open.push(value);
    try {
        return objectText(value, open);
    } catch(error) {
        /* A proxy or a getter may do anything */
        return "[Object that can't be shown]";
    } finally {
        open.pop();
    }
}

const inspect = value => text(value, []);
const plain = value => typeof value === "string" ? value : inspect(value);
const isNoNumber = value => typeof value === "symbol" ||
    (typeof value === "object" && value !== null) || typeof value === "function";

function jsonOrCircular(value) {
    try {
        return String(JSON.stringify(value));
    } catch(error) {
        return error.message.includes("cyclic") ? "[Circular]" : "[Object that can't be shown]";
    }
}

const Formats = {
    s: plain,
    d: value => inspect(typeof value === "bigint" ? value : isNoNumber(value) ? NaN : Number(value)),
    i: value => inspect(typeof value === "bigint" ? value : isNoNumber(value) ? NaN : parseInt(value)),
    f: value => inspect(typeof value === "symbol" ? NaN : parseFloat(plain(value))),
    j: jsonOrCircular,
    o: inspect,
    O: inspect,
    /* Styles, which lines don't have */
    c: () => ""
};

/* As the Console Standard says and as Node.js adds to it */
function format(values) {
    let next = 0;
    const parts = [];
    if(values.length > 1 && typeof values[0] === "string") {
        next = 1;
        parts.push(values[0].replace(/%([sdifjoOc%])/g, (whole, kind) => {
            if(kind === "%")
                return "%";
            return next < values.length ? Formats[kind](values[next++]) : whole;
        }));
    }
    while(next < values.length)
        parts.push(plain(values[next++]));
    return parts.join(" ");
}

/* Without a stack, which is shown apart */
function thrown(value) {
    try {
        return typeof value === "object" && value !== null && classOf(value) === "Error" ?
            errorHead(value) : inspect(value);
    } catch(error) {
        return "[Error that can't be shown]";
    }
}

return {inspect, format, thrown};
}))js";

}
