/* Limits, the end of the engine, and what scripts do to the project, in the real process */

#include "editor/ScriptRunner.h"

#include <csignal>
#include <filesystem>
#include <string>

#include <gmock/gmock.h>

#include "ScriptFixture.h"
#include "editor/ProjectSession.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Engine = ScriptRunner::Engine;

constexpr const char* StartedAnew =
    " Its variables are gone, the next script starts the engine anew.";

struct ScriptRunnerTest: ScriptFixture {
    void expectStartedAnew() {
        EXPECT_EQ(runner->engine(), Engine::Ended);
        EXPECT_THAT(run("console.log(typeof kept)"),
            ElementsAre("[info] The JavaScript engine was started anew", "[info] undefined"));
        EXPECT_EQ(runner->engine(), Engine::Idle);
        EXPECT_EQ(runner->restartCount(), 1);
    }

    /* From here on it's deaf to everything */
    void stopProcess() const { kill(runner->processId(), SIGSTOP); }
};

/* Compares a string with each place in another, without ever looking for an interrupt */
constexpr const char* DeafScript = "'a'.repeat(1 << 24).indexOf('a'.repeat(1 << 23) + 'b')";

TEST(ScriptDurationTest, IsShownInSeconds) {
    EXPECT_EQ(durationText(10s), "10 s");
    EXPECT_EQ(durationText(250ms), "0.2 s");
    EXPECT_EQ(durationText(1500ms), "1.5 s");
}

TEST_F(ScriptRunnerTest, EngineStartsWithTheFirstScript) {
    EXPECT_EQ(runner->engine(), Engine::None);
    EXPECT_EQ(runner->processId(), -1);
    begin("1");
    EXPECT_EQ(runner->engine(), Engine::Running);
    runner->waitForEnd();
    EXPECT_EQ(runner->engine(), Engine::Idle);
    EXPECT_EQ(runner->restartCount(), 0);
}

TEST_F(ScriptRunnerTest, OneScriptRunsAtATime) {
    begin("console.log(1)");
    EXPECT_FALSE(runner->run("b.js", "console.log(2)", ScriptRunner::Result::Hide));
    runner->waitForEnd();
    EXPECT_THAT(lines(), ElementsAre("[info] 1"));
}

TEST_F(ScriptRunnerTest, MissingProgramIsOneLine) {
    start(farLimits(), "/nowhere/quillmere-script");
    EXPECT_FALSE(runner->run("a.js", "1", ScriptRunner::Result::Hide));
    EXPECT_THAT(lines(),
        ElementsAre("[error] Can't start the JavaScript engine /nowhere/quillmere-script: No such"
                    " file or directory"));
    EXPECT_EQ(runner->engine(), Engine::None);
}

TEST_F(ScriptRunnerTest, NothingOfTheEditorIsShared) {
    run("");
    const std::string files = "/proc/" + std::to_string(runner->processId()) + "/fd/";
    for(const char* const stream: {"0", "1", "2"})
        EXPECT_EQ(std::filesystem::read_symlink(files + stream), "/dev/null");
    for(const auto& entry: std::filesystem::directory_iterator{files}) {
        const std::string target = std::filesystem::read_symlink(entry.path()).string();
        EXPECT_TRUE(target == "/dev/null" || target.rfind("socket:", 0) == 0 ||
            target.rfind("anon_inode:", 0) == 0)
            << target;
    }
}

TEST_F(ScriptRunnerTest, EndlessScriptIsStoppedAndTheEngineGoesOn) {
    const char* const scripts[]{
        "var kept = 1; for(;;);",
        "for(;;) try { for(;;); } catch(e) {} finally { continue }",
        "(function f() { Promise.resolve().then(f) })()",
        "(async () => { await null; for(;;); })()",
        "/(x+x+)+y/.test('x'.repeat(50))",
        "console.log(new Proxy({}, {ownKeys() { for(;;); }}))",
    };
    start({300ms, 5min, 512});
    for(const char* const source: scripts) {
        EXPECT_THAT(run(source), ElementsAre("[error] a.js was stopped: it ran longer than 0.3 s"))
            << source;
        EXPECT_EQ(runner->engine(), Engine::Idle);
    }
    EXPECT_THAT(run("console.log(kept)"), ElementsAre("[info] 1"));
}

TEST_F(ScriptRunnerTest, JobsOfAStoppedScriptDoNotRunLater) {
    start({300ms, 5min, 512});
    run("Promise.resolve().then(() => console.log('job')); Promise.reject(1); for(;;);");
    lines();
    EXPECT_THAT(run("console.log('next')"), ElementsAre("[info] next"));
}

TEST_F(ScriptRunnerTest, ScriptThatIsDeafToItIsEndedWithTheEngine) {
    start({1500ms, 100ms, 512});
    EXPECT_THAT(run(DeafScript),
        ElementsAre("[error] a.js was stopped together with the JavaScript engine: it didn't end by"
                    " itself after 1.5 s." +
            std::string{StartedAnew}));
    EXPECT_EQ(runner->engine(), Engine::Ended);
    EXPECT_EQ(runner->processId(), -1);
}

TEST_F(ScriptRunnerTest, ScriptThatIsDeafToTheUserIsEndedWithTheEngine) {
    start({5min, 100ms, 512});
    begin("console.log('on'); for(;;);");
    pollUntilLine();
    stopProcess();
    runner->stop();
    runner->waitForEnd();
    EXPECT_THAT(lines(),
        ElementsAre("[info] on",
            "[error] a.js was stopped together with the JavaScript engine: it didn't end when it "
            "was"
            " told to." +
                std::string{StartedAnew}));
    EXPECT_EQ(runner->engine(), Engine::Ended);
}

TEST_F(ScriptRunnerTest, UserStopsAScript) {
    begin("var kept = 1; console.log('on'); for(;;);");
    pollUntilLine();
    runner->stop();
    runner->waitForEnd();
    EXPECT_THAT(lines(), ElementsAre("[info] on", "[warn] a.js was stopped"));
    EXPECT_THAT(run("console.log(kept)"), ElementsAre("[info] 1"));
    /* At once */
    begin("for(;;);");
    runner->stop();
    runner->waitForEnd();
    EXPECT_THAT(lines(), ElementsAre("[warn] a.js was stopped"));
    EXPECT_THAT(run("console.log(kept)"), ElementsAre("[info] 1"));
    /* Too late for anything */
    runner->stop();
    EXPECT_THAT(run("console.log(kept)"), ElementsAre("[info] 1"));
}

TEST_F(ScriptRunnerTest, StopBeforeTheProcessIsReadyIsKept) {
    begin("for(;;);");
    runner->stop();
    runner->waitForEnd();
    EXPECT_THAT(lines(), ElementsAre("[warn] a.js was stopped"));
    EXPECT_EQ(runner->engine(), Engine::Idle);
}

/* None with strings only: with those the engine looks for garbage for many seconds, on a busy machine
   for minutes, before it gives up */
struct HungryScriptTest: ScriptRunnerTest, ::testing::WithParamInterface<const char*> {};

TEST_P(HungryScriptTest, EndsAtTheLimit) {
    start({5min, 5min, 64});
    EXPECT_THAT(run(GetParam()),
        ElementsAre("[error] a.js was stopped together with the JavaScript engine: it needed more"
                    " memory than 64 MB." +
            std::string{StartedAnew}));
    expectStartedAnew();
}

INSTANTIATE_TEST_SUITE_P(, HungryScriptTest,
    ::testing::Values("let a = []; for(;;) a.push(1, 2, 3, 4)",
        "let o = []; for(;;) o.push({a: 1})",
        "let b = []; for(;;) b.push(new ArrayBuffer(1 << 20))",
        "let c = []; for(;;) try { for(;;) c.push({}, 'x'.repeat(9999) + c.length) } catch(e) {}",
        "let m = new Map; for(let i = 0;; ++i) m.set(i, i)"),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

TEST_F(ScriptRunnerTest, StringThatIsTooLongIsAnErrorOnly) {
    EXPECT_THAT(run("let s = 'x'; for(;;) s += s"),
        ElementsAre("[error] a.js:1:22: uncaught InternalError: allocation size overflow",
            "[error]     @a.js:1:22"));
    EXPECT_EQ(runner->engine(), Engine::Idle);
}

TEST_F(ScriptRunnerTest, EngineKilledFromOutsideIsStartedAnew) {
    begin("var kept = 1; console.log('on'); for(;;);");
    pollUntilLine();
    kill(runner->processId(), SIGKILL);
    runner->waitForEnd();
    EXPECT_THAT(lines(),
        ElementsAre("[info] on",
            "[error] The JavaScript engine ended unexpectedly by signal 9 while it ran a.js." +
                std::string{StartedAnew}));
    expectStartedAnew();
}

TEST_F(ScriptRunnerTest, EngineKilledWhileIdleIsNoticed) {
    run("var kept = 1");
    kill(runner->processId(), SIGKILL);
    while(runner->engine() == Engine::Idle)
        runner->poll();
    EXPECT_THAT(lines(),
        ElementsAre("[error] The JavaScript engine ended unexpectedly by signal 9." +
            std::string{StartedAnew}));
    expectStartedAnew();
}

TEST_F(ScriptRunnerTest, LinesBeforeTheEndAreNotLost) {
    begin("for(let i = 0; i < 20000; ++i) console.log(i); let a = []; for(;;) a.push(1, 2, 3)");
    runner->waitForEnd();
    const std::vector<std::string> all = lines();
    ASSERT_EQ(all.size(), 20001u);
    EXPECT_EQ(all[19999], "[info] 19999");
}

TEST_F(ScriptRunnerTest, UiThreadIsNeverKeptForLong) {
    begin("for(;;) console.log('x'.repeat(1000))");
    /* An endless stream of lines: each call comes back nevertheless */
    for(int i = 0; i != 20; ++i)
        runner->poll();
    EXPECT_TRUE(runner->isRunning());
    runner->stop();
    runner->waitForEnd();
    EXPECT_EQ(runner->engine(), Engine::Idle);
}

TEST_F(ScriptRunnerTest, ProjectIsReadAndChanged) {
    setDocument(R"({"list": [1, {"a": "\u00e4"}], "double": 1.5})");
    EXPECT_EQ(valueOf("project.get('/list')"), "[info] [1,{\"a\":\"\xc3\xa4\"}]");
    EXPECT_EQ(valueOf("project.get('/nothing')"), "[info] undefined");
    run("project.set('/list/2', {n: 3.0, d: 0.5, l: 9007199254740991, s: '\\u00fc', z: null});"
        "project.set('/double', project.get('/double') * 2); project.remove('/list/0')");
    EXPECT_EQ(document(),
        "{\"list\":[{\"a\":\"\xc3\xa4\"},{\"n\":3,\"d\":0.5,\"l\":9007199254740991,"
        "\"s\":\"\xc3\xbc\",\"z\":null}],\"double\":3}");
    EXPECT_EQ(changes.changeCount(), 3u);
}

TEST_F(ScriptRunnerTest, RefusalIsAnExceptionAndNamesThePointer) {
    setDocument(R"({"list": [1], "text": "t"})");
    const std::string before = document();
    const std::pair<const char*, const char*> rows[]{
        {"set('text', 1)", R"(project.set("text"): not a JSON pointer)"},
        {"set('', 1)", R"(project.set(""): the root can't be changed)"},
        {"set('/text/0', 1)",
            R"(project.set("/text/0"): "/text" is neither an array nor an object)"},
        {"set('/list/-1', 1)", R"(project.set("/list/-1"): "-1" is a negative index)"},
        {"set('/list/2', 1)",
            R"(project.set("/list/2"): index 2 is beyond the size of "/list", which is 1)"},
        {"remove('/x')", R"(project.remove("/x"): nothing is there)"},
        {"get('x')", R"(project.get("x"): not a JSON pointer)"},
        {"set('/x', undefined)", R"(project.set("/x"): the value has no JSON)"},
        {"set('/x', () => 1)", R"(project.set("/x"): the value has no JSON)"},
        {"set('/x')", R"(project.set("/x"): the value has no JSON)"},
        {"set(1, 1)", "project.set(): expected a pointer as a string"},
        {"get()", "project.get(): expected a pointer as a string"},
        {"remove({})", "project.remove(): expected a pointer as a string"},
        {"group(1)", "project.group(): expected a function"},
    };
    for(const auto& [call, message]: rows)
        EXPECT_EQ(valueOf("try { project." + std::string{call} +
                      "; 0 } catch(e) { e instanceof Error && console.log(e.message) }"),
            "[info] " + std::string{message} + "\n[info] undefined");
    EXPECT_THAT(run("project.set('/list/9', 1)"),
        ElementsAre("[error] a.js:1:9: uncaught Error: project.set(\"/list/9\"): index 9 is beyond"
                    " the size of \"/list\", which is 1",
            "[error]     @a.js:1:9"));
    EXPECT_THAT(run("let c = {}; c.c = c; project.set('/x', c)"),
        ElementsAre(HasSubstr("uncaught TypeError: cyclic object value"), HasSubstr("a.js:1:")));
    EXPECT_EQ(document(), before);
    EXPECT_EQ(changes.changeCount(), 0u);
}

struct ScriptRunnerGroupTest: ScriptRunnerTest {
    ScriptRunnerGroupTest() { setDocument(R"({"a": 1, "b": 1})"); }

    /* Its changes are made when this returns */
    void beginEndless() {
        begin("project.group(() => { " + edits + " console.log('on'); for(;;); })");
        pollUntilLine();
        EXPECT_TRUE(changes.isGroupOpen());
    }

    void expectOneUndo() {
        EXPECT_FALSE(changes.isGroupOpen());
        EXPECT_FALSE(changes.isLocked());
        EXPECT_EQ(document(), R"({"a":2,"b":2})");
        changes.undoLast();
        EXPECT_EQ(document(), R"({"a":1,"b":1})");
        EXPECT_EQ(changes.appliedCount(), 0u);
    }

    const std::string edits = "project.set('/a', 2); project.set('/b', 2);";
};

TEST_F(ScriptRunnerGroupTest, IsUndoneAsOneAndGivesWhatTheFunctionGives) {
    EXPECT_EQ(valueOf("project.group(() => { " + edits + " return [3] })"), "[info] [3]");
    expectOneUndo();
}

TEST_F(ScriptRunnerGroupTest, NestedOneJoins) {
    run("project.group(() => { project.set('/a', 2); project.group(() => project.set('/b', 2)) })");
    expectOneUndo();
}

TEST_F(ScriptRunnerGroupTest, IsCommittedWhenTheFunctionThrows) {
    EXPECT_THAT(run("project.group(() => { " + edits + " throw new Error('in a group') })"),
        ElementsAre(
            HasSubstr("uncaught Error: in a group"), HasSubstr("@a.js"), HasSubstr("@a.js")));
    expectOneUndo();
}

TEST_F(ScriptRunnerGroupTest, IsCommittedWhenTheScriptIsStopped) {
    beginEndless();
    runner->stop();
    runner->waitForEnd();
    EXPECT_EQ(runner->engine(), Engine::Idle);
    expectOneUndo();
}

TEST_F(ScriptRunnerGroupTest, IsCommittedWhenTheEngineIsEnded) {
    start({5min, 100ms, 512});
    beginEndless();
    stopProcess();
    runner->stop();
    runner->waitForEnd();
    EXPECT_EQ(runner->engine(), Engine::Ended);
    expectOneUndo();
}

TEST_F(ScriptRunnerGroupTest, IsCommittedWhenMemoryIsOver) {
    start({5min, 5min, 64});
    run("project.group(() => { " + edits + " let a = []; for(;;) a.push(1, 2, 3) })");
    EXPECT_EQ(runner->engine(), Engine::Ended);
    expectOneUndo();
}

TEST_F(ScriptRunnerGroupTest, IsCommittedWhenTheEngineDies) {
    beginEndless();
    kill(runner->processId(), SIGKILL);
    runner->waitForEnd();
    expectOneUndo();
}

TEST_F(ScriptRunnerGroupTest, IsCommittedWhenTheEditorGoes) {
    beginEndless();
    runner = nullptr;
    expectOneUndo();
}

TEST_F(ScriptRunnerGroupTest, NobodyUndoesRedoesOrSavesMeanwhile) {
    const Testing::TemporaryFolder folder;
    const std::string file = folder.write("game.json", "{}");
    ProjectSession session{project, changes, file};
    changes.pushChange("/b", rapidjson::Value{5}, false);
    changes.pushChange("/b", rapidjson::Value{6}, false);
    session.undo();
    begin("project.group(() => { console.log('on'); for(;;); })");
    pollUntilLine();
    ASSERT_TRUE(changes.isLocked());
    session.undo();
    session.redo();
    EXPECT_EQ(document(), R"({"a":1,"b":5})");
    EXPECT_FALSE(session.save());
    EXPECT_EQ(Testing::readFile(file), "{}");
    runner->stop();
    runner->waitForEnd();
    session.undo();
    EXPECT_EQ(document(), R"({"a":1,"b":1})");
    EXPECT_TRUE(session.save());
}

}}
