#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/FormatStl.h>

#include "../../Test/expectAssertion.h"

namespace {

using namespace Corrade;
using namespace Containers::Literals;
using Utility::format;
using Utility::formatInto;
using Utility::formatString;

struct Case {
    const char* name;
    std::string actual, expected;
};

template<std::size_t n> void expectAll(const Case (&cases)[n]) {
    for(const Case& i: cases)
        EXPECT_EQ(i.actual, i.expected) << i.name;
}

TEST(FormatTest, PlaceholdersTakeArguments) {
    const Case cases[]{
        {"no placeholder", formatString("hello"), "hello"},
        {"empty", formatString(""), ""},
        {"in order", formatString("{} {}!", "a", 3), "a 3!"},
        {"by index", formatString("{1} {0}", "a", "b"), "b a"},
        {"after an index", formatString("{1} {} {0} {}", 1, 2, 3), "2 3 1 2"},
        {"braces", formatString("{{}} {{{}}}", 3), "{} {3}"},
        {"braces in values", formatString("{}{}", "{}", "}{"), "{}}{"},
        {"surplus argument", formatString("{}", 1, 2), "1"},
        {"index past the end", formatString("{} {} {7:.3x}", 1), "1 {} {7:.3x}"},
        {"colon alone", formatString("{:} {0:}", 1), "1 1"},
    };
    expectAll(cases);
}

TEST(FormatTest, Integers) {
    const Case cases[]{
        {"signed", formatString("{} {} {}", -1, 2l, -3ll), "-1 2 -3"},
        {"unsigned", formatString("{} {} {}", 1u, 2ul, 3ull), "1 2 3"},
        {"small", formatString("{} {}", std::int16_t(-1), std::uint16_t(65535)), "-1 65535"},
        {"char as number", formatString("{} {}", 'a', static_cast<unsigned char>(255)), "97 255"},
        {"limits",
            formatString("{} {}", std::numeric_limits<std::int64_t>::min(),
                std::numeric_limits<std::uint64_t>::max()),
            "-9223372036854775808 18446744073709551615"},
        {"int limit", formatString("{}", std::numeric_limits<int>::min()), "-2147483648"},
        {"precision", formatString("{:.2} {0:.2} {1:.2} {2:.2}", 7, 345, -7), "07 07 345 -07"},
        {"precision 0 of 0", formatString("[{:.0}] [{:.0}]", 0, 5), "[] [5]"},
        {"hexadecimal", formatString("{:x} {:X} {:.4x}", 0xbeef, 0xbeefu, 255), "beef BEEF 00ff"},
        {"octal", formatString("{:o}", 8), "10"},
        {"decimal", formatString("{:d} {:.3d}", -5, 5u), "-5 005"},
        {"character", formatString("{:c}{:c}", 'a', 98), "ab"},
        {"negative hexadecimal", formatString("{:x} {:x}", -1, -1ll), "ffffffff ffffffffffffffff"},
    };
    expectAll(cases);
    EXPECT_EQ(formatString("{:.100}", 7), std::string(99, '0') + "7");
}

TEST(FormatTest, FloatingPoint) {
    const Case cases[]{
        {"float", formatString("{} {} {}", 1.0f / 3, 1000000.0f, 0.1f), "0.333333 1e+06 0.1"},
        {"double", formatString("{} {}", 1.0 / 3, 100.0), "0.333333333333333 100"},
        {"precision", formatString("{:.3} {:.3}", 3.14159f, 3.14159), "3.14 3.14"},
        {"fixed", formatString("{:.2f} {:.0f} {:.3F}", 3.14159, 2.5, 1.0f), "3.14 2 1.000"},
        {"exponent", formatString("{:.2e} {:.2E}", 314.159, 314.159f), "3.14e+02 3.14E+02"},
        {"general", formatString("{:g} {:.2G}", 0.5, 1e10), "0.5 1E+10"},
        {"precision 0", formatString("{:.0g}", 3.7), "4"},
        {"infinite",
            formatString("{} {:F}", -std::numeric_limits<double>::infinity(),
                std::numeric_limits<double>::infinity()),
            "-inf INF"},
    };
    expectAll(cases);
    const std::string largest = formatString("{:.500f}", std::numeric_limits<double>::max());
    EXPECT_EQ(largest.size(), 309u + 1 + 500);
}

TEST(FormatTest, Strings) {
    char data[]{"data"};
    char* const pointer = data;
    const Case cases[]{
        {"pointers", formatString("{} {} {}", "literal", pointer, data), "literal data data"},
        {"view", formatString("{}", "view"_s), "view"},
        {"string", formatString("{}", Containers::String{"string"}), "string"},
        {"array view", formatString("{}", Containers::ArrayView<const char>{"array", 5}), "array"},
        {"standard", formatString("{}", std::string{"standard"}), "standard"},
        {"precision", formatString("{:.3}|{:.3}|{:.0}", "hello", "he"_s, "x"), "hel|he|"},
        {"NUL", formatString("{}", "a\0b"_s), std::string("a\0b", 3)},
        {"empty", formatString("[{}]", Containers::StringView{}), "[]"},
    };
    expectAll(cases);
}

TEST(FormatTest, ResultOfAnySizeIsAString) {
    const std::string part(300, 'x');
    const Containers::String out = format("{}{}{}", part, part, part);
    EXPECT_EQ(out, std::string(900, 'x').data());
    EXPECT_EQ(format("{}", 3), "3");
    EXPECT_TRUE(format("").isEmpty());
}

TEST(FormatTest, IntoBufferGivesBytesWritten) {
    char buffer[]{"xxxxxxxxxx"};
    EXPECT_EQ(formatInto(buffer, "a{}b", 42), 4u);
    EXPECT_EQ(std::string(buffer, 5), "a42bx");
    EXPECT_EQ(formatInto(Containers::MutableStringView{buffer, 5}, "{}", "hello"), 5u);
    EXPECT_EQ(std::string(buffer), "helloxxxxx");
}

TEST(FormatTest, IntoStringOverwritesAndGrows) {
    std::string text = "hello world";
    EXPECT_EQ(formatInto(text, 0, "{}", "J"), 1u);
    EXPECT_EQ(text, "Jello world");
    EXPECT_EQ(formatInto(text, 6, "{}{}", "everybody", "!"), 16u);
    EXPECT_EQ(text, "Jello everybody!");
    EXPECT_EQ(formatInto(text, text.size(), "{}.", 3), 18u);
    EXPECT_EQ(text, "Jello everybody!3.");
}

TEST(FormatTest, IntoFileWritesAll) {
    std::FILE* const file = std::tmpfile();
    ASSERT_NE(file, nullptr);
    formatInto(file, "{} {}\n", "line", 1);
    formatInto(file, "{}", std::string(2000, 'x'));
    std::rewind(file);
    std::string out(4000, '\0');
    out.resize(std::fread(&out[0], 1, out.size(), file));
    std::fclose(file);
    EXPECT_EQ(out, "line 1\n" + std::string(2000, 'x'));
}

TEST(FormatTest, PrintGoesToTheStandardStreams) {
    testing::internal::CaptureStdout();
    Utility::print("{}!", "out");
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "out!");
    testing::internal::CaptureStderr();
    Utility::printError("{}!", "error");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "error!");
}

TEST(FormatTest, MalformedFormatAsserts) {
    EXPECT_ASSERTION(format("a}b"), "Utility::format(): mismatched }");
    EXPECT_ASSERTION(format("}"), "Utility::format(): mismatched }");
    EXPECT_ASSERTION(format("{", 1), "Utility::format(): unexpected end of format string");
    EXPECT_ASSERTION(format("{12", 1), "Utility::format(): unexpected end of format string");
    EXPECT_ASSERTION(format("{a}", 1), "Utility::format(): unknown placeholder content: a");
    EXPECT_ASSERTION(format("{0 }", 1), "Utility::format(): unknown placeholder content:  ");
    EXPECT_ASSERTION(format("{:y}", 1), "Utility::format(): invalid type specifier: y");
    EXPECT_ASSERTION(
        format("{:.x}", 1), "Utility::format(): invalid character in precision specifier: x");
}

TEST(FormatTest, TypeOfAnotherKindAsserts) {
    EXPECT_ASSERTION(format("{:d}", "text"),
        "Utility::format(): type specifier can't be used for a string value");
    EXPECT_ASSERTION(
        format("{:f}", 3), "Utility::format(): floating-point type used for an integral value");
    EXPECT_ASSERTION(
        format("{:f}", 3ull), "Utility::format(): floating-point type used for an integral value");
    EXPECT_ASSERTION(
        format("{:x}", 3.0), "Utility::format(): integral type used for a floating-point value");
    EXPECT_ASSERTION(
        format("{:c}", 3.0f), "Utility::format(): integral type used for a floating-point value");
    EXPECT_ASSERTION(
        format("{:c}", 3ll), "Utility::format(): character type used for a 64-bit value");
}

TEST(FormatTest, HugeNumbersInFormatAreHarmless) {
    EXPECT_EQ(formatString("{99999999999999999999999}", 1), "{99999999999999999999999}");
    EXPECT_EQ(formatString("{:.99999999999999999999999}", "text"), "text");
}

TEST(FormatTest, BufferTooSmallAsserts) {
    char buffer[4];
    /* Whether the byte behind a number counts isn't promised */
    EXPECT_EXIT(formatInto(buffer, "{}", 12345), testing::KilledBySignal(SIGABRT),
        testing::AnyOf("Utility::formatInto(): buffer too small, expected at least 5 but got 4\n",
            "Utility::formatInto(): buffer too small, expected at least 6 but got 4\n"));
}

}
