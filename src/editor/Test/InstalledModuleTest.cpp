/* The example panel, built by a project that knows nothing but the installed tree, and loaded by the
   installed editor */

#include <algorithm>
#include <filesystem>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "EnvironmentVariable.h"
#include "Process.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::IsSupersetOf;
using ::testing::Not;
namespace Fs = std::filesystem;

struct InstalledModuleTest: ::testing::Test {
    InstalledModuleTest() { Fs::copy(QUILLMERE_EXAMPLE, source, Fs::copy_options::recursive); }

    /* What a command that has to succeed prints */
    std::string run(const std::vector<std::string>& command) {
        Process process{command};
        EXPECT_EQ(process.wait(), 0) << process.out() << process.error();
        return process.out() + process.error();
    }

    void configure() {
        run({QUILLMERE_CMAKE, "-S", source, "-B", build, "-G", "Ninja",
            "-DCMAKE_PREFIX_PATH=" QUILLMERE_INSTALLED_TREE, "-DCMAKE_BUILD_TYPE=Debug",
            "-DCMAKE_CXX_COMPILER=" QUILLMERE_COMPILER, "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Werror"});
    }

    void buildModule() { run({QUILLMERE_CMAKE, "--build", build}); }

    std::vector<std::string> editorCommand(std::vector<std::string> arguments) {
        std::vector<std::string> out{
            QUILLMERE_INSTALLED_TREE "/" QUILLMERE_INSTALLED_BIN "/quillmere-editor", "--headless"};
        out.insert(out.end(), arguments.begin(), arguments.end());
        return out;
    }

    void replaceInSource(const std::string& what, const std::string& by) {
        std::string text = Testing::readFile(source + "/HelloPanel.cpp");
        const std::size_t i = text.find(what);
        ASSERT_NE(i, std::string::npos) << what;
        folder.write("source/HelloPanel.cpp", text.replace(i, what.size(), by));
    }

    Testing::TemporaryFolder folder, results;
    std::string source = folder.file("source"), build = folder.file("build");
    /* Copies of modules, as one of the programs is ended from outside */
    EnvironmentVariable temporary{"TMPDIR", results.path()};
};

TEST_F(InstalledModuleTest, ExampleIsBuiltAndLoaded) {
    configure();
    buildModule();
    const std::string conf = Testing::readFile(build + "/modules/HelloPanel.conf");
    EXPECT_THAT(conf, HasSubstr("\ntype=Debug\n"));
    EXPECT_THAT(run({"nm", "-C", "--defined-only", build + "/modules/HelloPanel.so"}),
        Not(ContainsRegex(" [^W] ImGui::| GImGui")));
    EXPECT_THAT(run(editorCommand({"--modules", build + "/modules"})),
        HasSubstr("[info] Hello from a panel, 1\n"));
}

/* An installed module is another file than the one that was linked, and a stripped one even more so */
TEST_F(InstalledModuleTest, ExampleIsInstalledBesideTheEditorsModules) {
    configure();
    buildModule();
    for(const char* const option: {"", "--strip"}) {
        std::vector<std::string> command{
            QUILLMERE_CMAKE, "--install", build, "--prefix", QUILLMERE_INSTALLED_TREE};
        if(*option)
            command.push_back(option);
        run(command);
        const std::string lines = run(editorCommand({}));
        EXPECT_THAT(lines, HasSubstr("Initializing View: ConsoleView\n"));
        EXPECT_THAT(lines, HasSubstr("[info] Hello from a panel, 1\n"));
    }
    for(const std::string& installed:
        Testing::linesOf(Testing::readFile(build + "/install_manifest.txt")))
        EXPECT_TRUE(Fs::remove(installed)) << installed;
}

TEST_F(InstalledModuleTest, ChangedExampleIsBuiltAgainWhileTheEditorRuns) {
    configure();
    buildModule();
    Process editor{editorCommand({"--modules", build + "/modules", "--size", "320x200", "--frames",
        std::to_string(std::numeric_limits<unsigned long>::max())})};
    const auto eventuallySays = [&editor](const char* const text) {
        return eventually([&] { return editor.out().find(text) != std::string::npos; });
    };
    ASSERT_TRUE(eventuallySays("[info] Hello from a panel, 1\n")) << editor.error();
    replaceInSource("Hello from a panel", "Hello again from a panel");
    buildModule();
    EXPECT_TRUE(eventuallySays("[info] Module HelloPanel (Debug build) was reloaded\n"));
    EXPECT_TRUE(eventuallySays("[info] Hello again from a panel, 1\n"));
    EXPECT_FALSE(editor.hasEnded());
    EXPECT_EQ(editor.error(), "");
}

/* A header that includes a private one, which isn't installed, stops it */
TEST_F(InstalledModuleTest, AllInstalledHeadersAreUsable) {
    const std::string include = QUILLMERE_INSTALLED_TREE "/" QUILLMERE_INSTALLED_INCLUDE;
    std::vector<std::string> headers;
    for(const auto& entry: Fs::recursive_directory_iterator{include})
        if(entry.is_regular_file())
            headers.push_back(Fs::relative(entry.path(), include).string());
    std::sort(headers.begin(), headers.end());
    EXPECT_THAT(headers,
        IsSupersetOf({"QuillmereEditor/EditorView.h", "QuillmereEditor/Tools/Log.h",
            "common/StringArrayView.h", "host/ProjectFile.h", "host/Version.h"}));

    std::string code;
    for(const std::string& header: headers)
        code += "#include \"" + header + "\"\n";
    folder.write("source/HelloPanel.cpp", code + Testing::readFile(source + "/HelloPanel.cpp"));
    configure();
    buildModule();
}

TEST_F(InstalledModuleTest, GroupThatTheAuthorWroteIsRefused) {
    folder.write("source/HelloPanel.conf", "depends=Other\n[build]\nlibrary=1.0.0\n");
    configure();
    Process process{{QUILLMERE_CMAKE, "--build", build}};
    EXPECT_NE(process.wait(), 0);
    EXPECT_THAT(process.out() + process.error(),
        HasSubstr("HelloPanel.conf: the group [build] is written by the build"));
}

TEST_F(InstalledModuleTest, AuthorsMetadataStaysInFrontOfTheGroup) {
    folder.write("source/HelloPanel.conf", "# Mine; with [brackets]\nprovides=Greeter");
    configure();
    buildModule();
    EXPECT_THAT(Testing::readFile(build + "/modules/HelloPanel.conf"),
        ::testing::StartsWith("# Mine; with [brackets]\nprovides=Greeter\n[build]\n"));
    EXPECT_THAT(run(editorCommand({"--modules", build + "/modules"})),
        HasSubstr("[info] Hello from a panel, 1\n"));
}

}}
