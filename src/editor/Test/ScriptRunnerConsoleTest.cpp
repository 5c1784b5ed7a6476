/* What scripts print, what they give and how they fail, in the real process */

#include <string>

#include <gmock/gmock.h>

#include "ScriptFixture.h"

namespace QuillmereEngine { namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct ScriptRunnerConsoleTest: ScriptFixture {};

TEST_F(ScriptRunnerConsoleTest, FunctionsHaveTheirLevels) {
    EXPECT_THAT(run("console.debug(1); console.log(2); console.info(3); console.warn(4);"
                    "console.error(5)"),
        ElementsAre("[verbose] 1", "[info] 2", "[info] 3", "[warn] 4", "[error] 5"));
}

struct Row {
    const char *source, *text;
};

TEST_F(ScriptRunnerConsoleTest, ValuesAreShownAsJsonAndBeyond) {
    const Row rows[]{
        {"({a: 1, 'b c': [1, 'x', null, true], d: {}})",
            R"({"a":1,"b c":[1,"x",null,true],"d":{}})"},
        {"'a\\n\"b'", R"("a\n\"b")"},
        {"undefined", "undefined"},
        {"null", "null"},
        {"-0", "-0"},
        {"0.1", "0.1"},
        {"NaN", "NaN"},
        {"123456789012345678901234567890n", "123456789012345678901234567890n"},
        {"Symbol('s')", "Symbol(s)"},
        {"(function f() {})", "[Function: f]"},
        {"(() => {})", "[Function]"},
        {"(class C {})", "[class C]"},
        {"new (class C { x = 1 })", R"(C {"x":1})"},
        {"Object.create(null)", "{}"},
        {"({u: undefined, f() {}, [Symbol('k')]: 1n})",
            R"({"u":undefined,"f":[Function: f],[Symbol(k)]:1n})"},
        {"({get a() { throw 1 }, set b(v) {}, get c() {}, set c(v) {}})",
            R"({"a":[Getter],"b":[Setter],"c":[Getter/Setter]})"},
        {"{ let o = {n: {}}; o.n.o = o; o }", R"({"n":{"o":[Circular]}})"},
        {"{ let a = {}; [a, a] }", "[{},{}]"},
        {"[, 1]", "[<empty>,1]"},
        {"new Map([[1, {a: 2}]])", R"(Map {1 => {"a":2}})"},
        {"new Set(['x'])", R"(Set {"x"})"},
        {"new Date(0)", R"("1970-01-01T00:00:00.000Z")"},
        {"new Date(NaN)", "Invalid Date"},
        {"/a+/g", "/a+/g"},
        {"new Uint8Array([1, 2])", "Uint8Array [1,2]"},
        {"Promise.resolve([3])", "Promise {[3]}"},
        {"new Promise(() => {})", "Promise {<pending>}"},
        {"[new TypeError('t')]", "[[TypeError: t]]"},
        {"Object('s')", "[String: \"s\"]"},
        {"new Proxy({}, {ownKeys() { throw 1 }})", "[Object that can't be shown]"},
        {"Array.prototype.push = Array.prototype.join = 0; [[1], {a: 2}]", R"([[1],{"a":2}])"},
    };
    for(const Row& row: rows)
        EXPECT_EQ(valueOf(row.source), "[info] " + std::string{row.text}) << row.source;
}

TEST_F(ScriptRunnerConsoleTest, ControlCharactersCannotHideText) {
    EXPECT_THAT(run("console.log('a\\0b\\rc\\u001b[2K\\u202ed\\n%s', 'e\\x07')"),
        ElementsAre("[info] a\\x00b\\x0dc\\x1b[2K\\u{202e}d", "[info] e\\x07"));
}

TEST_F(ScriptRunnerConsoleTest, FormatsAreFilledIn) {
    const Row rows[]{
        {"'%s|%s|%s|%s', 'a', 1n, {a: 1}, Symbol('y')", R"(a|1n|{"a":1}|Symbol(y))"},
        {"'%d|%d|%d|%d', '42', 2.5, {}, 7n", "42|2.5|NaN|7n"},
        {"'%i|%i|%i', 3.9, '12px', Symbol()", "3|12|NaN"},
        {"'%f|%f', '1.5x', 2", "1.5|2"},
        {"'%o %O %j', {a: 1}, ['b'], {c: 'd'}", R"({"a":1} ["b"] {"c":"d"})"},
        {"'%cred%c.', 'color: red', ''", "red."},
        {"'%d%%', 5", "5%"},
        {"'%%'", "%%"},
        {"'%s %s', 1", "1 %s"},
        {"'%s', 'a', 'b', {c: 1}", R"(a b {"c":1})"},
        {"'%x %', 1", "%x % 1"},
        {"1, '%s', 'a'", "1 %s a"},
        {"'%s', '%s', 'x'", "%s x"},
        {"", ""},
    };
    for(const Row& row: rows)
        EXPECT_THAT(run("console.log(" + std::string{row.source} + ")"),
            ElementsAre("[info] " + std::string{row.text}))
            << row.source;
    EXPECT_THAT(run("{ let o = {}; o.o = o; console.log('%j|%o', o, o) }"),
        ElementsAre(R"([info] [Circular]|{"o":[Circular]})"));
}

TEST_F(ScriptRunnerConsoleTest, LinesOfAMessageAreLines) {
    EXPECT_THAT(run("console.warn('a\\nb')"), ElementsAre("[warn] a", "[warn] b"));
}

TEST_F(ScriptRunnerConsoleTest, TextIsUtf8) {
    EXPECT_THAT(run("console.log('\xc3\xa4 \\u{1f642} \\ud800')"),
        ElementsAre("[info] \xc3\xa4 \xf0\x9f\x99\x82 \xef\xbf\xbd"));
    EXPECT_THAT(run("\xef\xbb\xbf"
                    "console.log('after a byte order mark')"),
        ElementsAre("[info] after a byte order mark"));
}

TEST_F(ScriptRunnerConsoleTest, HugeTextIsCut) {
    const std::vector<std::string> lines = run("console.log('\xc3\xa4'.repeat(600000))");
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].size(), 7 + (1u << 20) + std::string{"... and 151424 more bytes"}.size());
    EXPECT_THAT(lines[0], ::testing::EndsWith("\xa4... and 151424 more bytes"));
}

TEST_F(ScriptRunnerConsoleTest, ErrorHasItsStackWhenPrinted) {
    EXPECT_THAT(run("function f() {\n  console.log(new RangeError('r')) }\nf()"),
        ElementsAre("[info] RangeError: r", "[info]     f@a.js:2:15", "[info]     @a.js:3:1"));
    EXPECT_THAT(run("console.log(new Error('outer', {cause: 'inner'}))"),
        ElementsAre("[info] Error: outer", "[info]     @a.js:1:13", "[info] caused by \"inner\""));
}

TEST_F(ScriptRunnerConsoleTest, UncaughtErrorNamesFileLineAndStack) {
    EXPECT_THAT(run("function f() {\n  throw new Error('boom')\n}\n\nf()"),
        ElementsAre("[error] a.js:2:9: uncaught Error: boom", "[error]     f@a.js:2:9",
            "[error]     @a.js:5:1"));
    EXPECT_THAT(run("undefinedName"),
        ElementsAre("[error] a.js:1:1: uncaught ReferenceError: undefinedName is not defined",
            "[error]     @a.js:1:1"));
    EXPECT_THAT(run("\n throw {a: 1}"),
        ElementsAre("[error] a.js:2:2: uncaught {\"a\":1}", "[error]     @a.js:2:2"));
}

TEST_F(ScriptRunnerConsoleTest, SyntaxErrorNamesFileLineAndColumn) {
    EXPECT_THAT(run("let x;\nlet 3"),
        ElementsAre("[error] a.js:2:5: uncaught SyntaxError: unexpected token: numeric literal"));
    EXPECT_THAT(run("eval('let 3')"),
        ElementsAre(::testing::HasSubstr("uncaught SyntaxError: unexpected token"),
            "[error]     @a.js:1:1"));
}

TEST_F(ScriptRunnerConsoleTest, UnhandledRejectionsAreErrors) {
    EXPECT_THAT(run("Promise.reject(new TypeError('no'));\nPromise.reject('text');"
                    "Promise.reject(1).catch(() => {})"),
        ElementsAre("[error] a.js:1:16: uncaught in a promise TypeError: no",
            "[error]     @a.js:1:16", "[error] uncaught in a promise \"text\""));
    EXPECT_THAT(run("async function f() {\n await null; throw new Error('late') }\nf()"),
        ElementsAre("[error] a.js:2:20: uncaught in a promise Error: late",
            "[error]     f@a.js:2:20", "[error]     async*@a.js:3:1"));
}

TEST_F(ScriptRunnerConsoleTest, JobsOfPromisesRunToTheirEnd) {
    EXPECT_THAT(run("(async () => { for(let i = 0; i < 3; ++i) { await null; console.log(i) } })();"
                    "console.log('first')"),
        ElementsAre("[info] first", "[info] 0", "[info] 1", "[info] 2"));
}

TEST_F(ScriptRunnerConsoleTest, ErrorThatCannotBeShownIsAnError) {
    EXPECT_THAT(run("throw new Proxy({}, {get() { throw 1 }, ownKeys() { throw 2 }})"),
        ElementsAre(
            "[error] a.js:1:7: uncaught [Object that can't be shown]", "[error]     @a.js:1:7"));
    EXPECT_THAT(run("let e = new Error('x'); Object.defineProperty(e, 'name', {get() { throw 1 }});"
                    "throw e"),
        ElementsAre(::testing::HasSubstr("uncaught [Error that can't be shown]"),
            ::testing::HasSubstr("a.js:1:")));
}

TEST_F(ScriptRunnerConsoleTest, ResultIsShownOnlyIfWanted) {
    EXPECT_EQ(valueOf("1 + 2"), "[info] 3");
    EXPECT_THAT(run("1 + 2"), IsEmpty());
    EXPECT_EQ(valueOf("throw 1"), "[error] a.js:1:1: uncaught 1\n[error]     @a.js:1:1");
}

TEST_F(ScriptRunnerConsoleTest, VariablesPersist) {
    run("var a = 1; let b = 2; const c = 3; function f() { return a + b + c }");
    EXPECT_EQ(valueOf("f()"), "[info] 6");
    /* Also after an error */
    run("b = 10; throw 1");
    EXPECT_EQ(valueOf("f()"), "[info] 14");
}

}}
