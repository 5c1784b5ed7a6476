/* The real program with the real console: what its pictures show */

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ConsolePicture.h"
#include "EditorProcess.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using Rows = std::pair<int, int>;

struct EditorProgramConsoleTest: ::testing::Test {
    Picture show(const std::string& feed, const std::string& input = {},
        const std::string& size = "1280x720") {
        const std::string path = folder.file("shot.png");
        const EditorRun result = runEditorProgram(
            {"--modules", QUILLMERE_MODULES, "--size", size, "--feed", folder.write("feed", feed),
                "--input", folder.write("input", input), "--screenshot", path});
        EXPECT_EQ(result.status, 0) << result.error;
        return readPicture(path);
    }

    static std::string click(const int frame, const int x, const int y) {
        const std::string begin = "frame " + std::to_string(frame);
        return begin + " move " + std::to_string(x) + " " + std::to_string(y) + "\n" + "frame " +
            std::to_string(frame + 2) + " down left\nframe " + std::to_string(frame + 4) +
            " up left\n";
    }

    Testing::TemporaryFolder folder;
};

TEST_F(EditorProgramConsoleTest, ErrorsAreRedAndWarningsAmberInTheirRows) {
    const Picture picture = show("plain\nan error here\na warning here\nplain\n");
    const Rows error = picture.rows(isError), warning = picture.rows(isWarning);
    ASSERT_GT(error.second, error.first);
    ASSERT_GT(warning.second, warning.first);
    EXPECT_LE(error.second - error.first, RowHeight);
    EXPECT_LE(warning.second - warning.first, RowHeight);
    /* The brackets of both rows begin at the same height */
    EXPECT_EQ(warning.first - error.first, RowHeight);
}

TEST_F(EditorProgramConsoleTest, PlainLinesHaveNoColor) {
    const Picture picture = show("plain\nliberror-perl\n");
    EXPECT_EQ(picture.rows(isError), Rows(0, 0));
    EXPECT_EQ(picture.rows(isWarning), Rows(0, 0));
}

TEST_F(EditorProgramConsoleTest, ErrorsCanBeHidden) {
    const std::string feed = "an error here\na warning here\n";
    const Picture before = show(feed), after = show(feed, click(0, ErrorsX, CheckboxY));
    EXPECT_EQ(after.rows(isError), Rows(0, 0));
    /* The warning moves up into the error's row */
    EXPECT_EQ(after.rows(isWarning).first, before.rows(isError).first);
}

TEST_F(EditorProgramConsoleTest, OtherTabsShowOtherLines) {
    const std::string feed = "an error here\n";
    EXPECT_EQ(show(feed, click(0, ServerTabX, CheckboxY)).rows(isError), Rows(0, 0));
    EXPECT_EQ(show(feed, click(0, ServerTabX, CheckboxY) + click(10, ConsoleTabX, CheckboxY))
                  .rows(isError),
        show(feed).rows(isError));
}

TEST_F(EditorProgramConsoleTest, NewestLineOfALongFeedIsShown) {
    constexpr int StatusBarHeight = 23;
    std::string feed;
    for(int i = 0; i != 1000; ++i)
        feed += "line\n";
    for(const char* const size: {"640x360", "1280x720", "2560x1440"}) {
        const Picture picture = show(feed + "an error here\n", {}, size);
        const Rows error = picture.rows(isError);
        ASSERT_GT(error.second, error.first) << size;
        /* Above the status bar and the panel for scripts, which follows the picture's height */
        const int end = (picture.height - StatusBarHeight) * 610 / 697;
        EXPECT_GT(error.first, end - 4 * RowHeight) << size;
        EXPECT_LT(error.second, end) << size;
    }
}

TEST_F(EditorProgramConsoleTest, LineOf10MegabytesIsShownFromItsBegin) {
    const Picture picture = show("error " + std::string(10'000'000, 'x') + "\n");
    EXPECT_NE(picture.rows(isError), Rows(0, 0));
}

}}
