/* The real program with --serve: its options, and the lines in the console's tab */

#include <filesystem>
#include <optional>
#include <regex>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ConsolePicture.h"
#include "EditorProcess.h"
#include "Process.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/* As many frames as an editor draws that only ends when the test kills it */
constexpr const char* Endless = "1000000000";

struct EditorProgramServerTest: ::testing::Test {
    EditorProgramServerTest() {
        std::filesystem::create_directory(folder.file("modules"));
        std::filesystem::create_directory(folder.file("project"));
        folder.write("project/game.json", "{}");
        folder.write("project/a.txt", "content of a");
        folder.write("outside.txt", "secret");
    }

    std::vector<std::string> command(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(),
            {"--modules", folder.file("modules"), folder.file("project/game.json")});
        return editorCommand(std::move(arguments));
    }

    static std::string curl(const std::string& url) {
        Process process{{"curl", "-q", "--silent", "--noproxy", "*", "--path-as-is", url}};
        process.wait();
        return process.out();
    }

    /* Waits for the line that names the port */
    static std::string address(Process& editor) {
        std::smatch match;
        std::string out;
        EXPECT_TRUE(eventually([&] {
            out = editor.out();
            return editor.hasEnded() ||
                std::regex_search(out, match, std::regex{"on (http://127\\.0\\.0\\.1:[0-9]+)/\n"});
        })) << editor.error();
        return match.empty() ? "" : match[1].str();
    }

    Testing::TemporaryFolder folder;
};

TEST_F(EditorProgramServerTest, ServesTheFolderOfTheProject) {
    Process editor{command({"--serve", "0", "--frames", Endless})};
    const std::string url = address(editor);
    EXPECT_EQ(curl(url + "/a.txt"), "content of a");
    EXPECT_EQ(curl(url + "/game.json"), "{}");
    EXPECT_EQ(curl(url + "/../outside.txt"), "404 Not Found\n");
    EXPECT_TRUE(eventually([&] {
        return editor.error().find("[warn] GET /../outside.txt 404 14 bytes ") != std::string::npos;
    }));
    EXPECT_THAT(editor.out(), HasSubstr("[info] GET /a.txt 200 12 bytes "));
    EXPECT_FALSE(editor.hasEnded());
}

TEST_F(EditorProgramServerTest, ServerEndsWithTheEditor) {
    const std::vector<std::string> arguments = command({"--serve", "0", "--frames", "5"});
    Process editor{arguments};
    EXPECT_EQ(editor.wait(), 0);
    EXPECT_THAT(editor.out(), HasSubstr("[info] Serving "));
    EXPECT_THAT(editor.out(),
        EndsWith("[info] No longer serving " +
            std::filesystem::canonical(folder.file("project")).string() + "\n"));
}

TEST_F(EditorProgramServerTest, ServerDoesNotKeepAHeadlessEditor) {
    Process editor{command({"--serve", "0"})};
    EXPECT_EQ(editor.wait(), 0);
}

TEST_F(EditorProgramServerTest, EditorGoesOnWhereThePortIsInUse) {
    Process editor{command({"--serve", "0", "--frames", Endless})};
    const std::string url = address(editor);
    const std::string port = url.substr(url.rfind(':') + 1);
    Process other{command({"--serve", port, "--frames", "5"})};
    EXPECT_EQ(other.wait(), 0);
    EXPECT_THAT(other.error(),
        HasSubstr("[error] Can't serve " +
            std::filesystem::canonical(folder.file("project")).string() + " on port " + port +
            ": Address already in use\n"));
    EXPECT_EQ(curl(url + "/a.txt"), "content of a");
}

TEST_F(EditorProgramServerTest, ProjectIsNeeded) {
    const EditorRun run = runEditorProgram({"--modules", folder.file("modules"), "--serve", "0"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.error, "quillmere-editor: --serve needs a project, whose folder it serves\n");
    EXPECT_EQ(run.out, "");
}

/* The error is the port's line, which is there before the first frame */
TEST_F(EditorProgramServerTest, LinesAreInTheirTab) {
    Process editor{command({"--serve", "0", "--frames", Endless})};
    const std::string url = address(editor);
    const auto show = [&](const std::string& input) {
        const std::string path = folder.file("shot.png");
        const EditorRun run = runEditorProgram({"--modules", QUILLMERE_MODULES, "--serve",
            url.substr(url.rfind(':') + 1), "--input", folder.write("input", input), "--screenshot",
            path, folder.file("project/game.json")});
        EXPECT_EQ(run.status, 0) << run.error;
        return readPicture(path);
    };
    const std::string at = " " + std::to_string(ServerTabX) + " " + std::to_string(CheckboxY) +
        "\n";
    const std::pair<int, int>
        console = show("").rows(isError),
        tab = show("frame 0 move" + at + "frame 2 down left\nframe 4 up left\n").rows(isError);
    EXPECT_EQ(console, std::pair(0, 0));
    EXPECT_GE(tab.first, FirstRowY);
    EXPECT_LE(tab.second, FirstRowY + RowHeight);
}

}}
