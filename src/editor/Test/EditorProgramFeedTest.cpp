/* The real program with a feed */

#include <algorithm>
#include <filesystem>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "EditorProcess.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using ::testing::ElementsAre;
using namespace std::string_literals;

struct EditorProgramFeedTest: ::testing::Test {
    EditorProgramFeedTest() { std::filesystem::create_directory(modules); }

    /* Lines on a standard stream from their level on, without the host's own */
    static std::vector<std::string> levelled(const std::string& text) {
        std::vector<std::string> out;
        std::istringstream in{text};
        for(std::string line; std::getline(in, line);)
            if(line.size() > 25 && line.find("No modules in") == std::string::npos)
                out.push_back(line.substr(25));
        return out;
    }

    EditorRun feed(const std::string& text) {
        return runEditorProgram(
            {"--modules", modules, "--frames", "1", "--feed", folder.write("feed", text)});
    }

    void expectRefused(const std::string& path, const std::string& why) {
        const EditorRun result = runEditorProgram({"--modules", modules, "--feed", path});
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.error, "quillmere-editor: can't read feed " + path + ": " + why + "\n");
    }

    Testing::TemporaryFolder folder;
    std::string modules = folder.file("modules");
};

TEST_F(EditorProgramFeedTest, LinesGoToTheStreamsByTheirLevel) {
    const EditorRun result = feed(
        "plain\nwarning: x\r\nE: failed\ndebug y\nstatus liberror-perl\nlast");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(levelled(result.out),
        ElementsAre(
            "[info] plain", "[verbose] debug y", "[info] status liberror-perl", "[info] last"));
    EXPECT_THAT(levelled(result.error), ElementsAre("[warn] warning: x", "[error] E: failed"));
}

TEST_F(EditorProgramFeedTest, NulsAreReplacedAndBrokenBytesPass) {
    EXPECT_THAT(levelled(feed("a\0b\n\xff\xfe\n"s).out),
        ElementsAre("[info] a\xef\xbf\xbd"
                    "b",
            "[info] \xff\xfe"));
}

TEST_F(EditorProgramFeedTest, EmptyFileHasNoLines) {
    EXPECT_THAT(levelled(feed("").out), ElementsAre());
}

TEST_F(EditorProgramFeedTest, LineOf10MegabytesStaysWhole) {
    const std::string line(10'000'000, 'x');
    EXPECT_THAT(levelled(feed("a\n" + line + "\nb\n").out),
        ElementsAre("[info] a", "[info] " + line, "[info] b"));
}

TEST_F(EditorProgramFeedTest, ManyLinesAreAllThere) {
    std::string text;
    for(int i = 0; i != 100'000; ++i)
        text += "line " + std::to_string(i) + "\n";
    const EditorRun result = feed(text);
    EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 100'000);
}

TEST_F(EditorProgramFeedTest, StandardInputIsReadUntilItCloses) {
    const EditorRun result = runEditorProgram(
        {"--modules", modules, "--feed", "-"}, "one\nan error\ntwo");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(levelled(result.out), ElementsAre("[info] one", "[info] two"));
    EXPECT_THAT(levelled(result.error), ElementsAre("[error] an error"));
}

TEST_F(EditorProgramFeedTest, RefusesAMissingFile) {
    expectRefused(folder.file("missing"), "No such file or directory");
}

TEST_F(EditorProgramFeedTest, RefusesAFolder) { expectRefused(folder.path(), "Is a directory"); }

}}
