#include "editor/LineLevel.h"

#include <gtest/gtest.h>

namespace QuillmereEngine { namespace {

struct LevelOfLine {
    const char* name;
    std::string_view line;
    LogLevel level;
};

struct LineLevelTest: ::testing::TestWithParam<LevelOfLine> {};

TEST_P(LineLevelTest, FollowsTheFirstSeverityWord) {
    EXPECT_EQ(lineLevel(GetParam().line), GetParam().level);
}

constexpr auto Verbose = LogLevel::Verbose;
constexpr auto Info = LogLevel::Info;
constexpr auto Warn = LogLevel::Warn;
constexpr auto Error = LogLevel::Error;

const LevelOfLine LevelsOfLines[]{
    {"Empty", "", Info},
    {"NoWord", "-- ... //", Info},
    {"Plain", "status installed libc-bin:amd64 2.36", Info},
    {"Fatal", "fatal: not a repository", Error},
    {"Critical", "CRITICAL temperature", Error},
    {"SingleError", "E: error: x", Error},
    {"Errors", "3 errors", Error},
    {"Fail", "fail", Error},
    {"Fails", "it fails.", Error},
    {"Failed", "Failed!", Error},
    {"Failure", "(failure)", Error},
    {"NoSuchPlural", "failures", Info},
    {"SingleWarn", "warn", Warn},
    {"Warning", "[WARNING] disk", Warn},
    {"Warnings", "2 warnings", Warn},
    {"Warned", "warned", Info},
    {"Debug", "debug: x", Verbose},
    {"Trace", "Trace x", Verbose},
    {"SingleVerbose", "x verbose", Verbose},
    {"AnyCase", "eRrOr", Error},
    {"FirstWordCounts", "warning: error", Warn},
    {"InfoIsNoSeverityWord", "info: error", Error},
    {"PackageName", "status installed liberror-perl:all", Info},
    {"PackageNameWithDigit", "libgpg-error0", Info},
    {"JoinedByDash", "error-prone", Info},
    {"JoinedByDashInFront", "gpg-error", Info},
    {"JoinedByUnderscore", "last_error", Info},
    {"JoinedByDot", "error.log", Info},
    {"JoinedBySlash", "/var/error", Info},
    {"SlashInFront", "/error /", Error},
    {"DigitInFront", "2error", Info},
    {"DigitBehind", "error2", Info},
    {"DotAtTheEnd", "error.", Error},
    {"DotBeforeSpace", "error. Then", Error},
    {"DashesInFront", "--error", Error},
    {"DashBehind", "error-", Error},
    {"TwoJoiners", "foo._error", Error},
    {"TwoJoinersBehind", "error--x", Error},
    {"UnderscoresAround", "_error_", Error},
    {"ColonsAround", "a:error:b", Error},
    {"Brackets", "<error>", Error},
    {"LetterOutsideOfAscii",
        "\xc3\xa9"
        "error",
        Info},
    {"LetterOutsideOfAsciiBehind", "error\xc3\xa9", Info},
    {"CyrillicBehindDash", "error-\xd0\xb6", Info},
    {"TypographicQuotes",
        "\xe2\x80\x98"
        "error\xe2\x80\x99",
        Error},
    {"GermanQuotes",
        "\xc2\xab"
        "error\xc2\xbb",
        Error},
    {"BrokenByteInFront",
        "\xff"
        "error",
        Error},
    {"CutSequenceInFront",
        "\xc3"
        "error",
        Error},
    {"CutSequenceAtTheEnd", "error\xe4", Error},
    {"LoneContinuation",
        "\x80"
        "error\x80",
        Error},
    {"JoinerAtTheVeryEnd", "x error-", Error},
    {"NulBytes", std::string_view{"\0error\0", 7}, Error},
};

INSTANTIATE_TEST_SUITE_P(All, LineLevelTest, ::testing::ValuesIn(LevelsOfLines),
    [](const auto& row) { return row.param.name; });

}}
