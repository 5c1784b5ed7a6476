#include "editor/CommandLine.h"

#include <initializer_list>
#include <sstream>
#include <vector>

#include <Corrade/Containers/ArrayViewStl.h>
#include <Corrade/Utility/Debug.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Corrade;

namespace QuillmereEngine { namespace {

std::optional<CommandLine> parse(const std::vector<const char*>& arguments) {
    return parseCommandLine(arguments);
}

TEST(CommandLineTest, NothingGivenIsAWindowOfTheDefaultSize) {
    const std::optional<CommandLine> line = parse({});
    ASSERT_TRUE(line);
    EXPECT_EQ(line->action, CommandLine::Action::Run);
    EXPECT_EQ(line->display, CommandLine::Display::WindowOrHeadless);
    EXPECT_EQ(line->width, 1280);
    EXPECT_EQ(line->height, 720);
    EXPECT_FALSE(line->frames);
    EXPECT_FALSE(line->serve);
    EXPECT_EQ(line->feed, "");
}

TEST(CommandLineTest, EveryOptionReachesItsField) {
    const std::optional<CommandLine> line = parse({"--modules", "m", "--log-dir", "l", "--feed",
        "-", "--serve", "0", "--script", "s.js", "--headless", "--size", "640x360", "--frames", "7",
        "--screenshot", "p.png", "--input", "i", "project.json"});
    ASSERT_TRUE(line);
    EXPECT_EQ(line->modules, "m");
    EXPECT_EQ(line->logDir, "l");
    EXPECT_EQ(line->feed, "-");
    EXPECT_EQ(line->serve, 0);
    EXPECT_EQ(line->script, "s.js");
    EXPECT_EQ(line->display, CommandLine::Display::Headless);
    EXPECT_EQ(line->width, 640);
    EXPECT_EQ(line->height, 360);
    EXPECT_EQ(line->frames, 7u);
    EXPECT_EQ(line->screenshot, "p.png");
    EXPECT_EQ(line->input, "i");
    EXPECT_EQ(line->project, "project.json");
}

TEST(CommandLineTest, ValueMayFollowAnEqualsSign) {
    const std::optional<CommandLine> line = parse({"--feed=a=b", "--size=3x4"});
    ASSERT_TRUE(line);
    EXPECT_EQ(line->feed, "a=b");
    EXPECT_EQ(line->width, 3);
}

TEST(CommandLineTest, LastOfEqualOptionsCounts) {
    EXPECT_EQ(parse({"--feed", "a", "--feed", "b"})->feed, "b");
    EXPECT_EQ(parse({"--headless", "--window"})->display, CommandLine::Display::Window);
    EXPECT_EQ(parse({"--window", "--headless"})->display, CommandLine::Display::Headless);
}

TEST(CommandLineTest, BehindTwoDashesEverythingIsAProject) {
    EXPECT_EQ(parse({"--", "--help"})->project, "--help");
}

TEST(CommandLineTest, HelpAndVersionAreActions) {
    EXPECT_EQ(parse({"--help"})->action, CommandLine::Action::ShowHelp);
    EXPECT_EQ(parse({"-h"})->action, CommandLine::Action::ShowHelp);
    EXPECT_EQ(parse({"--version"})->action, CommandLine::Action::ShowVersion);
}

TEST(CommandLineTest, HelpNamesEveryOption) {
    for(const char* const option: {"--modules DIR", "--log-dir DIR", "--feed FILE", "--serve PORT",
            "--script FILE.js", "--headless", "--window", "--size WxH", "--frames N",
            "--screenshot FILE.png", "--input FILE", "--help", "--version", "[PROJECT.json]"})
        EXPECT_THAT(commandLineHelp(), ::testing::HasSubstr(option));
}

struct RefusedLine {
    const char* name;
    std::vector<const char*> arguments;
    const char* message;
};

struct RefusedLineTest: ::testing::TestWithParam<RefusedLine> {};

TEST_P(RefusedLineTest, SaysWhyInOneLine) {
    std::ostringstream out;
    {
        Utility::Error redirectError{&out};
        EXPECT_FALSE(parseCommandLine(GetParam().arguments));
    }
    EXPECT_EQ(out.str(), std::string{"quillmere-editor: "} + GetParam().message + "\n");
}

const RefusedLine RefusedLines[]{
    {"UnknownOption", {"--foo"}, "unknown option --foo, see --help"},
    {"UnknownShortOption", {"-x"}, "unknown option -x, see --help"},
    {"UnknownOptionWithValue", {"--foo=1"}, "unknown option --foo=1, see --help"},
    {"FlagWithValue", {"--headless=1"}, "unknown option --headless=1, see --help"},
    {"SingleDash", {"-"}, "unknown option -, see --help"},
    {"MissingValue", {"--headless", "--feed"}, "--feed expects a value"},
    {"EmptyValue", {"--feed="}, "--feed expects a value but got an empty one"},
    {"EmptyNextValue", {"--modules", ""}, "--modules expects a value but got an empty one"},
    {"TwoProjects", {"a.json", "b.json"}, "expected one project but got a.json and b.json"},
    {"SizeWithoutHeight", {"--size", "640"},
        "--size expects WIDTHxHEIGHT, each from 1 to 16384, but got 640"},
    {"SizeWithRest", {"--size", "640x360x"},
        "--size expects WIDTHxHEIGHT, each from 1 to 16384, but got 640x360x"},
    {"SizeOfNothing", {"--size", "0x360"},
        "--size expects WIDTHxHEIGHT, each from 1 to 16384, but got 0x360"},
    {"NegativeSize", {"--size", "640x-1"},
        "--size expects WIDTHxHEIGHT, each from 1 to 16384, but got 640x-1"},
    {"GreatSize", {"--size", "16385x1"},
        "--size expects WIDTHxHEIGHT, each from 1 to 16384, but got 16385x1"},
    {"SizeBeyondIntegers", {"--size", "99999999999x1"},
        "--size expects WIDTHxHEIGHT, each from 1 to 16384, but got 99999999999x1"},
    {"NoFrames", {"--frames", "0"}, "--frames expects a number from 1 but got 0"},
    {"FramesInWords", {"--frames", "ten"}, "--frames expects a number from 1 but got ten"},
    {"NegativeFrames", {"--frames", "-1"}, "--frames expects a number from 1 but got -1"},
    {"PortInWords", {"--serve", "http"}, "--serve expects a port from 0 to 65535 but got http"},
    {"GreatPort", {"--serve", "65536"}, "--serve expects a port from 0 to 65535 but got 65536"},
};

INSTANTIATE_TEST_SUITE_P(All, RefusedLineTest, ::testing::ValuesIn(RefusedLines),
    [](const auto& row) { return row.param.name; });

}}
