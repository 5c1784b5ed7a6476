/* The real program: options, exit statuses, messages */

#include <algorithm>
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "EditorProcess.h"
#include "EnvironmentVariable.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

struct EditorProgramTest: ::testing::Test {
    EditorProgramTest() { std::filesystem::create_directory(modules); }

    EditorRun run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--modules", modules});
        return runEditorProgram(std::move(arguments));
    }

    void expectRefused(const std::vector<std::string>& arguments, const std::string& message) {
        const EditorRun result = run(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.error, "quillmere-editor: " + message + "\n");
        EXPECT_EQ(result.out, "");
    }

    void expectProjectRefused(const std::string& project, const std::string& message) {
        const EditorRun result = run({project});
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.error, "ProjectFile::load(): " + message + "\n");
        EXPECT_EQ(result.out, "");
    }

    Testing::TemporaryFolder folder;
    std::string modules = folder.file("modules");
};

TEST_F(EditorProgramTest, EndsByItselfHeadless) {
    const EditorRun result = run({});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, HasSubstr("[warn] No modules in " + modules));
}

TEST_F(EditorProgramTest, ShowsHelp) {
    const EditorRun result = run({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, StartsWith("Usage: quillmere-editor"));
    EXPECT_EQ(result.error, "");
}

TEST_F(EditorProgramTest, ShowsItsVersion) {
    const EditorRun result = run({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "quillmere-editor " QUILLMERE_VERSION "\n");
}

TEST_F(EditorProgramTest, RefusesUnknownOptions) {
    expectRefused({"--colour"}, "unknown option --colour, see --help");
}

TEST_F(EditorProgramTest, RefusesAMissingModuleFolder) {
    const std::string missing = folder.file("missing");
    expectRefused({"--modules", missing}, "module folder " + missing + " does not exist");
}

TEST_F(EditorProgramTest, RefusesAModuleFolderThatIsAFile) {
    const std::string file = folder.write("file", "");
    expectRefused({"--modules", file}, "module folder " + file + " is not a folder");
}

TEST_F(EditorProgramTest, RefusesAMissingProject) {
    const std::string project = folder.file("project.json");
    expectProjectRefused(project, "can't read " + project + ": No such file or directory");
}

TEST_F(EditorProgramTest, RefusesAMalformedProjectByLineAndColumn) {
    const std::string project = folder.write("project.json", "{\n  \"a\": ,\n}");
    expectProjectRefused(project, "can't parse " + project + " line 2 column 8: Invalid value.");
}

TEST_F(EditorProgramTest, TakesAProject) {
    EXPECT_EQ(run({folder.write("project.json", "{}")}).status, 0);
}

TEST_F(EditorProgramTest, RefusesMalformedInputByLine) {
    const std::string input = folder.write("input", "frame 0 move 1 1\nframe 1 jump\n");
    expectRefused(
        {"--input", input}, input + ":2: expected move, down, up, wheel, key or text but got jump");
}

TEST_F(EditorProgramTest, RefusesMissingInput) {
    const std::string input = folder.file("input");
    expectRefused({"--input", input}, "can't read input " + input + ": No such file or directory");
}

TEST_F(EditorProgramTest, ScreenshotHasTheAskedSize) {
    for(const auto& [name, width, height]:
        {std::tuple{"1x1", 1, 1}, {"640x360", 640, 360}, {"2560x1440", 2560, 1440}}) {
        const std::string path = folder.file("shot.png");
        EXPECT_EQ(run({"--size", name, "--screenshot", path}).status, 0);
        const Picture picture = readPicture(path);
        EXPECT_EQ(picture.width, width);
        EXPECT_EQ(picture.height, height);
        EXPECT_EQ(picture.channels, 3);
    }
}

TEST_F(EditorProgramTest, DefaultSizeIs1280x720) {
    const std::string path = folder.file("shot.png");
    EXPECT_EQ(run({"--screenshot", path}).status, 0);
    const Picture picture = readPicture(path);
    EXPECT_EQ(picture.width, 1280);
    EXPECT_EQ(picture.height, 720);
}

TEST_F(EditorProgramTest, StatusBarLiesAlongTheBottom) {
    const std::string path = folder.file("shot.png");
    run({"--screenshot", path});
    const Picture picture = readPicture(path);
    EXPECT_EQ(picture.at(640, 715), picture.at(1270, 715));
    EXPECT_NE(picture.at(640, 715), picture.at(640, 600));
}

TEST_F(EditorProgramTest, SameRunGivesTheSamePicture) {
    const std::string first = folder.file("1.png"), second = folder.file("2.png");
    run({"--screenshot", first});
    run({"--screenshot", second});
    EXPECT_EQ(Testing::readFile(first), Testing::readFile(second));
}

TEST_F(EditorProgramTest, ScreenshotThatCanNotBeWrittenIsRefused) {
    const std::string path = folder.file("no/shot.png");
    const EditorRun result = run({"--screenshot", path});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.error,
        HasSubstr(
            "quillmere-editor: can't write screenshot " + path + ": No such file or directory\n"));
}

TEST_F(EditorProgramTest, OneFrameIsEnoughForAScreenshot) {
    const std::string path = folder.file("shot.png");
    EXPECT_EQ(run({"--frames", "1", "--screenshot", path}).status, 0);
    EXPECT_EQ(readPicture(path).width, 1280);
}

TEST_F(EditorProgramTest, ServingNeedsAProject) {
    expectRefused({"--serve", "0"}, "--serve needs a project, whose folder it serves");
}

struct EditorProgramDisplayTest: EditorProgramTest {
    EditorRun runWindow(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--modules", modules});
        return runEditorProgram(std::move(arguments), "", WindowMode::Window);
    }

    EnvironmentVariable display{"DISPLAY"}, waylandDisplay{"WAYLAND_DISPLAY"};
};

TEST_F(EditorProgramDisplayTest, WithoutADisplayItGoesOnHeadless) {
    display.unset();
    waylandDisplay.unset();
    const std::string path = folder.file("shot.png");
    const EditorRun result = runWindow({"--screenshot", path});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, HasSubstr("quillmere-editor: no window, going on headless: "));
    EXPECT_EQ(readPicture(path).width, 1280);
}

/* As after a session that has ended, or as another user */
TEST_F(EditorProgramDisplayTest, WithAStaleDisplayItGoesOnHeadless) {
    display.set(":987654");
    waylandDisplay.unset();
    const EditorRun result = runWindow({});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, HasSubstr("quillmere-editor: no window, going on headless: "));
}

TEST_F(EditorProgramDisplayTest, WindowThatIsDemandedButCanNotOpenEndsItWithStatus1) {
    display.set(":987654");
    waylandDisplay.unset();
    const EditorRun result = runWindow({"--window"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, StartsWith("quillmere-editor: no window: "));
    EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1);
    EXPECT_EQ(result.out, "");
}

TEST_F(EditorProgramTest, LogDirectoryGetsEveryLine) {
    const std::string logs = folder.file("logs");
    std::filesystem::create_directory(logs);
    const std::string feed = folder.write("feed", "one\nan error\n");
    EXPECT_EQ(run({"--log-dir", logs, "--feed", feed}).status, 0);
    std::string text;
    for(const auto& entry: std::filesystem::directory_iterator{logs})
        text += Testing::readFile(entry.path().string());
    EXPECT_THAT(text, HasSubstr("][info] one\n"));
    EXPECT_THAT(text, HasSubstr("][error] an error\n"));
}

TEST_F(EditorProgramTest, GoesOnWithoutALogDirectory) {
    const std::string logs = folder.file("missing");
    const EditorRun result = run({"--log-dir", logs});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, HasSubstr("Could not create log file " + logs));
}

/* /proc takes no new files, whoever asks */
TEST_F(EditorProgramTest, GoesOnWithAReadOnlyLogDirectory) {
    const EditorRun result = run({"--log-dir", "/proc"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, HasSubstr("Could not create log file /proc/"));
}

}}
