/* The real program in a window, on a display that only the test sees and with a user played by
   xdotool */

#include <cstdlib>
#include <iterator>
#include <optional>
#include <sstream>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ConsolePicture.h"
#include "EditorProcess.h"
#include "EnvironmentVariable.h"
#include "Process.h"
#include "XServer.h"

namespace QuillmereEngine { namespace {

using ::testing::HasSubstr;
using Rows = std::pair<int, int>;

struct EditorProgramWindowTest: ::testing::Test {
    void SetUp() override {
        ASSERT_NE(server.display(), "") << "no Xvfb";
        display.set(server.display());
        waylandDisplay.unset();
    }

    void start(const std::string& modules = QUILLMERE_MODULES,
        const std::vector<std::string>& options = {}) {
        std::vector<std::string> arguments{"--modules", modules, "--feed", "-"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        editor.emplace(editorCommand(arguments, WindowMode::Window));
        ASSERT_TRUE(eventually([this] { return !xdotool("search --name Quillmere").empty(); }))
            << editor->error();
        window = xdotool("search --name Quillmere");
        /* What a window manager does */
        xdotool("windowfocus " + window);
    }

    /* What it prints, without the last newline */
    static std::string xdotool(const std::string& command) {
        std::istringstream words{"xdotool " + command};
        std::vector<std::string> arguments{
            std::istream_iterator<std::string>{words}, std::istream_iterator<std::string>{}};
        Process process{arguments};
        process.wait();
        const std::string out = process.out();
        return out.substr(0, out.rfind('\n'));
    }

    static void click(const int x, const int y) {
        xdotool("mousemove " + std::to_string(x) + " " + std::to_string(y) + " click 1");
    }

    bool eventuallyShows(bool (*const looksSo)(unsigned)) {
        return eventually([&] { return server.screen().rows(looksSo) != Rows{}; });
    }

    bool eventuallyHides(bool (*const looksSo)(unsigned)) {
        return eventually([&] { return server.screen().rows(looksSo) == Rows{}; });
    }

    void requestClose() { EXPECT_TRUE(server.requestClose(std::stoul(window))); }

    /* Time on a processor in ticks, of which there are 100 in a second */
    long processorTicks() const {
        std::string stat = Testing::readFile("/proc/" + std::to_string(editor->id()) + "/stat");
        std::istringstream in{stat.substr(stat.rfind(')') + 2)};
        std::string skipped;
        for(int i = 0; i != 11; ++i)
            in >> skipped;
        long user = 0, system = 0;
        in >> user >> system;
        return user + system;
    }

    Testing::TemporaryFolder folder;
    EnvironmentVariable dataHome{"XDG_DATA_HOME", folder.path()};
    EnvironmentVariable temporary{"TMPDIR", folder.path()};
    XServer server;
    EnvironmentVariable display{"DISPLAY"}, waylandDisplay{"WAYLAND_DISPLAY"};
    std::optional<Process> editor;
    std::string window;
};

TEST_F(EditorProgramWindowTest, LineFromAPipeIsDrawnWhenItComes) {
    start();
    editor->write("plain\n");
    editor->write("an error here\n");
    EXPECT_TRUE(eventuallyShows(isError));
    EXPECT_EQ(server.screen().rows(isWarning), Rows{});
    editor->write("a warning here\n");
    EXPECT_TRUE(eventuallyShows(isWarning));
}

TEST_F(EditorProgramWindowTest, ClickReachesThePanel) {
    start();
    editor->write("an error here\n");
    ASSERT_TRUE(eventuallyShows(isError));
    click(ErrorsX, CheckboxY);
    EXPECT_TRUE(eventuallyHides(isError));
    click(ErrorsX, CheckboxY);
    EXPECT_TRUE(eventuallyShows(isError));
}

TEST_F(EditorProgramWindowTest, KeysReachThePanel) {
    start();
    editor->write("an error here\n");
    ASSERT_TRUE(eventuallyShows(isError));
    const auto background = [this] { return server.screen().at(100, FirstRowY + 1); };
    click(640, 500);
    const unsigned plain = background();
    /* More than once, as Dear ImGui doesn't see a key that goes down and up between two frames */
    EXPECT_TRUE(eventually([&] {
        xdotool("key --delay 100 ctrl+a");
        return background() != plain;
    }));
}

/* A program that draws all the time would need all of a processor. Another one's load can't make
   an idle one need more, but its start may still go on in the first of the seconds. */
TEST_F(EditorProgramWindowTest, IdleNeedsNextToNoProcessorTime) {
    start();
    editor->write("an error here\n");
    ASSERT_TRUE(eventuallyShows(isError));
    long leastTicks = sysconf(_SC_CLK_TCK);
    for(int i = 0; i != 5; ++i) {
        const long before = processorTicks();
        std::this_thread::sleep_for(std::chrono::seconds{1});
        leastTicks = std::min(leastTicks, processorTicks() - before);
    }
    EXPECT_LT(leastTicks, sysconf(_SC_CLK_TCK) / 10);
}

TEST_F(EditorProgramWindowTest, ClosingEndsItAndKeepsTheLayout) {
    start();
    editor->write("an error here\n");
    ASSERT_TRUE(eventuallyShows(isError));
    const Rows before = server.screen().rows(isError);
    /* The panel by its title bar, wherever a drag that was seen in part only has left it */
    constexpr int TitleAboveFirstRow = 45, Way = 40;
    const int goal = before.first + Way;
    ASSERT_TRUE(eventually([&] {
        const int title = server.screen().rows(isError).first - TitleAboveFirstRow;
        xdotool("mousemove 640 " + std::to_string(title) +
            " sleep 0.1 mousedown 1 sleep 0.1 mousemove 640 " +
            std::to_string(goal - TitleAboveFirstRow) + " sleep 0.1 mouseup 1 sleep 0.1");
        return server.screen().rows(isError).first == goal;
    }));
    requestClose();
    ASSERT_TRUE(eventually([this] { return editor->hasEnded(); }));
    EXPECT_EQ(editor->wait(), 0) << editor->error();
    EXPECT_THAT(Testing::readFile(folder.file("QuillmereEngine/layout.ini")),
        HasSubstr("[Window][Console]\nPos=0,360\n"));
}

TEST_F(EditorProgramWindowTest, PanelThatAcceptsTheExitKeepsItOpen) {
    start(QUILLMERE_FIXTURES "/Unsaved");
    requestClose();
    ASSERT_TRUE(
        eventually([this] { return editor->out().find("[info] Not yet\n") != std::string::npos; }));
    EXPECT_FALSE(editor->hasEnded());
    requestClose();
    ASSERT_TRUE(eventually([this] { return editor->hasEnded(); }));
    EXPECT_EQ(editor->wait(), 0);
}

/* Used to end in an assertion of Dear ImGui, which was to shut down what never began */
TEST_F(EditorProgramWindowTest, WindowThatCanNotBeDrawnToIsGivenUp) {
    /* The sanitizer wants to be the first library of all */
    const char* const options = std::getenv("ASAN_OPTIONS");
    const EnvironmentVariable sanitizer{
        "ASAN_OPTIONS", (options ? options + std::string{":"} : "") + "verify_asan_link_order=0"};
    EnvironmentVariable preload{"LD_PRELOAD"};
    preload.set(QUILLMERE_FAILING_RENDERER);
    const std::string picture = folder.file("shot.png");
    const EditorRun run = runEditorProgram(
        {"--modules", QUILLMERE_MODULES, "--screenshot", picture}, "", WindowMode::Window);
    preload.unset();
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.error,
        HasSubstr("quillmere-editor: no window, going on headless: OpenGL's functions aren't "
                  "found\n"));
    EXPECT_EQ(readPicture(picture).width, 1280);
}

}}
