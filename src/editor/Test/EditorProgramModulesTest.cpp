/* The real program with modules that are good, bad and exchanged */

#include <algorithm>
#include <filesystem>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "EditorProcess.h"
#include "EnvironmentVariable.h"
#include "Process.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using ::testing::HasSubstr;
using ::testing::Not;
namespace Fs = std::filesystem;

struct EditorProgramModulesTest: ::testing::Test {
    void install(const std::string& fixture, const std::string& name) {
        for(const char* const suffix: {".conf", ".so"})
            Fs::copy_file(QUILLMERE_FIXTURES "/" + fixture + "/" + name + suffix,
                folder.file(name + suffix), Fs::copy_options::overwrite_existing);
    }

    EditorRun run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--modules", folder.path()});
        return runEditorProgram(std::move(arguments));
    }

    Testing::TemporaryFolder folder, results;
};

TEST_F(EditorProgramModulesTest, EveryBadModuleHasItsLineAndTheGoodOneIsDrawn) {
    for(const char* const name:
        {"WrongVersion", "WrongInterface", "MissingSymbol", "NotAPanel", "ThrowingConstructor"})
        install(name, name);
    install("Panel1", "Fixture");
    const std::string whole = Testing::readFile(folder.file("Fixture.so"));
    folder.write("Half.so", whole.substr(0, whole.size() / 2));
    Fs::copy_file(folder.file("Fixture.conf"), folder.file("Half.conf"));
    folder.write("Text.so", "this is no module");
    folder.write("Text.conf", "");

    const EditorRun result = run({});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("Initializing View: Fixture\n"));
    for(const char* const message:
        {"WrongVersion.so can't be loaded: PluginManager::Manager::load(): wrong version",
            "WrongInterface.so can't be loaded: PluginManager::Manager::load(): wrong interface",
            "MissingSymbol.so can't be loaded: PluginManager::Manager::load(): cannot get "
            "instancer",
            "NotAPanel.so can't be loaded: expected a panel",
            "ThrowingConstructor.so can't be loaded: no panel today",
            "Text.so can't be loaded: its .conf has no group [build]"})
        EXPECT_THAT(result.error, HasSubstr(message));
    EXPECT_THAT(result.error, HasSubstr("Half.so isn't loaded yet: its file has "));
    EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 7);
}

TEST_F(EditorProgramModulesTest, PanelThatThrowsIsClosedAndTheOthersGoOn) {
    install("Throwing", "Throwing");
    install("Panel1", "Fixture");
    const EditorRun result = run({"--frames", "5"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(
        result.error, HasSubstr("[error] Module Throwing was closed: the panel has had enough"));
    EXPECT_THAT(result.out, HasSubstr("[info] Fixture 1 was drawn three times"));
}

TEST_F(EditorProgramModulesTest, ChangedModuleTakesOverWhileTheProgramRuns) {
    install("Panel1", "Fixture");
    /* The copy of the module, as the program is ended from outside */
    const EnvironmentVariable temporary{"TMPDIR", results.path()};
    Process editor{editorCommand({"--modules", folder.path(), "--size", "64x64", "--frames",
        std::to_string(std::numeric_limits<unsigned long>::max())})};
    const auto eventuallySays = [&editor](const char* const text) {
        return eventually([&] { return editor.out().find(text) != std::string::npos; });
    };
    ASSERT_TRUE(eventuallySays("[info] Fixture 1 was drawn three times\n"));
    install("Panel2", "Fixture");
    EXPECT_TRUE(
        eventuallySays("[info] Module Fixture (" QUILLMERE_BUILD_TYPE " build) was reloaded\n"));
    EXPECT_TRUE(eventuallySays("[info] Fixture 2 was drawn three times\n"));
    EXPECT_FALSE(editor.hasEnded());
}

TEST_F(EditorProgramModulesTest, PanelIsDrawn) {
    const std::string without = results.file("without.png"), with = results.file("with.png");
    run({"--screenshot", without});
    install("Panel1", "Fixture");
    run({"--screenshot", with});
    EXPECT_NE(Testing::readFile(without), Testing::readFile(with));
}

TEST_F(EditorProgramModulesTest, NothingIsLeftBehind) {
    install("Panel1", "Fixture");
    const EnvironmentVariable temporary{"TMPDIR", results.path()};
    run({});
    EXPECT_TRUE(Fs::is_empty(results.path()));
}

}}
