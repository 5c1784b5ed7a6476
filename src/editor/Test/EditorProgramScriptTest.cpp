/* The real program running scripts */

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "EditorProcess.h"
#include "Process.h"
#include "host/ProjectFile.h"
#include "host/RapidJsonUtils.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using ::testing::HasSubstr;
using ::testing::Not;

struct EditorProgramScriptTest: ::testing::Test {
    std::vector<std::string> arguments(
        const std::string& script, std::vector<std::string> more = {}) const {
        more.insert(more.begin(),
            {"--modules", QUILLMERE_MODULES, "--script", folder.write("a.js", script), project});
        return more;
    }

    EditorRun run(const std::string& script, std::vector<std::string> more = {}) {
        return runEditorProgram(arguments(script, std::move(more)));
    }

    /* Presses Ctrl and S late enough for nothing else to be going on */
    std::string save(const int frame) const {
        std::string out;
        for(const char* const event: {"ctrl down", "s down", "s up", "ctrl up"})
            out += "frame " + std::to_string(frame) + " key " + event + "\n";
        return folder.write("input", out);
    }

    Testing::TemporaryFolder folder;
    std::string project = folder.write("game.json", "{\n    \"a\": [\n        1\n    ]\n}\n");
};

TEST_F(EditorProgramScriptTest, LinesGoToTheStandardStreams) {
    const EditorRun result = run("console.log('%s!', 'out'); console.warn('care');\n"
                                 "console.debug(1); throw new Error('end')");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("[info] out!\n"));
    EXPECT_THAT(result.out, HasSubstr("[verbose] 1\n"));
    EXPECT_THAT(result.error, HasSubstr("[warn] care\n"));
    EXPECT_THAT(
        result.error, HasSubstr("[error] " + folder.file("a.js") + ":2:25: uncaught Error: end\n"));
}

TEST_F(EditorProgramScriptTest, UnreadableScriptIsNamedBeforeAnythingOpens) {
    const std::string missing = folder.file("missing.js");
    const EditorRun result = runEditorProgram(
        {"--modules", QUILLMERE_MODULES, "--script", missing});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.error,
        "quillmere-editor: can't read script " + missing + ": No such file or directory\n");
    EXPECT_THAT(runEditorProgram({"--modules", QUILLMERE_MODULES, "--script", folder.path()}).error,
        HasSubstr(": Is a directory\n"));
}

TEST_F(EditorProgramScriptTest, HeadlessWaitsForTheEndBeforeTheLastFrame) {
    /* Far more work than two frames take */
    const EditorRun result = run("for(let i = 0; i < 2000; ++i) project.set('/a/0', i);"
                                 "for(let i = 0; i < 1e7; ++i); console.log('done')",
        {"--frames", "2"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("[info] done\n"));
}

TEST_F(EditorProgramScriptTest, LastFrameShowsWhatTheScriptDid) {
    const std::string first = folder.file("1.png"), second = folder.file("2.png");
    run("", {"--screenshot", first});
    run("for(let i = 0; i < 1e7; ++i); project.set('/objects', {x: {name: 'New'}})",
        {"--screenshot", second, "--frames", "6"});
    const Picture before = readPicture(first), after = readPicture(second);
    /* The outline's first row */
    int different = 0;
    for(int y = 28; y < 60; ++y)
        for(int x = 0; x < 200; ++x)
            different += before.at(x, y) != after.at(x, y);
    EXPECT_GT(different, 20);
}

TEST_F(EditorProgramScriptTest, ChangesAreOfTheProjectAndSaved) {
    /* The keys come while or after the script runs, so what is saved is what was before or after the
       group and never a half of it */
    const EditorRun result = run("project.group(() => { for(let i = 0; i < 300; ++i)"
                                 " project.set('/a/' + i, i) }); console.log('end')",
        {"--input", save(5), "--frames", "100"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("[info] end\n"));
    ProjectFile saved;
    ASSERT_TRUE(saved.load(project));
    const rapidjson::Value* const list = saved.getValue("/a", true);
    ASSERT_TRUE(list);
    EXPECT_TRUE(list->Size() == 1 || list->Size() == 300) << list->Size();
}

TEST_F(EditorProgramScriptTest, EndlessScriptEndsAtItsLimit) {
    const EditorRun result = run("for(;;);", {"--frames", "1"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error,
        HasSubstr("[error] " + folder.file("a.js") + " was stopped: it ran longer than 10 s\n"));
}

TEST_F(EditorProgramScriptTest, MissingEngineIsOneLineAndTheEditorGoesOn) {
    const std::string editor = folder.file("quillmere-editor");
    std::filesystem::copy_file(QUILLMERE_EDITOR_PROGRAM, editor);
    Process process{{editor, "--headless", "--modules", QUILLMERE_MODULES, "--script",
        folder.write("a.js", "1"), "--screenshot", folder.file("a.png")}};
    EXPECT_EQ(process.wait(), 0);
    EXPECT_THAT(process.error(),
        HasSubstr("[error] Can't start the JavaScript engine " + folder.file("quillmere-script") +
            ": No such file or directory\n"));
    EXPECT_TRUE(std::filesystem::exists(folder.file("a.png")));
}

/* The one child of a process, 0 if it has none */
pid_t childOf(const pid_t process) {
    const std::string id = std::to_string(process);
    pid_t out = 0;
    std::ifstream{"/proc/" + id + "/task/" + id + "/children"} >> out;
    return out;
}

/* One that nobody has waited for counts as gone */
bool isAlive(const pid_t process) {
    std::ifstream status{"/proc/" + std::to_string(process) + "/stat"};
    std::string number, name;
    char state = 'X';
    status >> number >> name >> state;
    return state != 'X' && state != 'Z';
}

TEST_F(EditorProgramScriptTest, CrashOfTheEditorLeavesNoEngine) {
    for(const char* const script: {"for(;;);", "1"}) {
        Process editor{editorCommand(arguments(script, {"--frames", "1000000000"}))};
        pid_t engine = 0;
        ASSERT_TRUE(eventually([&] { return (engine = childOf(editor.id())) != 0; }));
        kill(editor.id(), SIGKILL);
        EXPECT_EQ(editor.wait(), -SIGKILL);
        EXPECT_TRUE(eventually([&] { return !isAlive(engine); })) << script;
    }
}

}}
