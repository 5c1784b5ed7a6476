#include <cstdint>
#include <iomanip>
#include <iostream>
#include <limits>
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/DebugStl.h>

#include <gtest/gtest.h>

namespace {

using namespace Corrade;
using namespace Containers::Literals;
using Utility::Debug;
using Utility::Error;
using Utility::Warning;

/* A type of the user's, with its parts in parentheses */
struct Vector {
    int x, y;
};
Debug& operator<<(Debug& debug, const Vector& value) {
    return debug << "Vector(" << Debug::nospace << value.x << Debug::nospace << "," << value.y
                 << Debug::nospace << ")";
}

/* What's printed by a line of these values */
template<class... Args> std::string printed(const Args&... args) {
    std::ostringstream out;
    {
        Debug debug{&out};
        (debug << ... << args);
    }
    return out.str();
}

TEST(DebugTest, NumbersAndPointersPrintAsExpected) {
    const struct {
        const char* name;
        std::string actual, expected;
    } cases[]{
        {"bool", printed(true, false), "true false\n"},
        {"int", printed(-3, 3u, -3l, 3ul), "-3 3 -3 3\n"},
        {"64-bit limits",
            printed(std::numeric_limits<std::int64_t>::min(),
                std::numeric_limits<std::uint64_t>::max()),
            "-9223372036854775808 18446744073709551615\n"},
        {"small ints", printed(std::int16_t(-3), std::uint8_t(3), std::uint16_t(3)), "-3 3 3\n"},
        {"char", printed('a', static_cast<unsigned char>('b')), "97 98\n"},
        {"float", printed(1.0f / 3, 100000.0f, 1000000.0f, 0.1f), "0.333333 100000 1e+06 0.1\n"},
        {"double", printed(1.0 / 3, 1.0e15, 0.1), "0.333333333333333 1e+15 0.1\n"},
        {"special float", printed(std::numeric_limits<float>::infinity(), -0.0), "inf -0\n"},
        {"nullptr", printed(nullptr), "nullptr\n"},
        {"null pointer", printed(static_cast<const int*>(nullptr)), "0x0\n"},
        {"pointer", printed(reinterpret_cast<const float*>(std::uintptr_t{0xdeadbeef})),
            "0xdeadbeef\n"},
    };
    for(const auto& i: cases)
        EXPECT_EQ(i.actual, i.expected) << i.name;
}

TEST(DebugTest, TextPrintsWithItsNulBytes) {
    char data[]{"char"};
    char* const pointer = data;
    EXPECT_EQ(printed("literal", pointer, "view"_s, Containers::MutableStringView{data},
                  Containers::String{"string"}, std::string{"standard"}),
        "literal char view char string standard\n");
    EXPECT_EQ(printed("a\0b"_s, std::string("c\0d", 3)), std::string("a\0b c\0d\n", 8));
}

TEST(DebugTest, StreamStateOfOthersDoesNotMatter) {
    std::ostringstream out;
    out << std::hex << std::setw(10) << std::setprecision(1);
    Debug{&out} << 255 << 0.25;
    EXPECT_EQ(out.str(), "255 0.25\n");
}

TEST(DebugTest, SpacesGoBetweenValues) {
    EXPECT_EQ(printed("a", "b", 3), "a b 3\n");
    EXPECT_EQ(printed("a", "", "b"), "a  b\n");
    EXPECT_EQ(printed("a\n", "b"), "a\n b\n");
}

TEST(DebugTest, ModifiersChangeSpaces) {
    std::ostringstream out;
    Debug{&out} << "a" << Debug::nospace << "b"
                << "c";
    Debug{&out} << "a" << Debug::nospace << Debug::nospace << "b"
                << "c";
    Debug{&out} << "a" << Debug::newline << "b"
                << "c";
    Debug{&out} << "a" << Debug::nospace << Debug::space << "b"
                << "c";
    Debug{&out} << "a" << Debug::newline << Debug::newline << "b";
    EXPECT_EQ(out.str(), "ab c\nab c\na\nb c\na b c\na\n\nb\n");
}

TEST(DebugTest, NothingWrittenPrintsNothing) {
    std::ostringstream out;
    { Debug{&out}; }
    Debug{&out} << Debug::nospace;
    EXPECT_EQ(out.str(), "");
    Debug{&out} << "";
    EXPECT_EQ(out.str(), "\n");
}

TEST(DebugTest, NoNewlineAtTheEndPutsExactlyTheValue) {
    std::ostringstream out;
    {
        Debug redirect{&out};
        Debug{Debug::Flag::NoNewlineAtTheEnd} << "a" << 3;
        Debug{Debug::Flag::NoNewlineAtTheEnd} << "b";
    }
    EXPECT_EQ(out.str(), "a 3b");
}

TEST(DebugTest, FlagsLastAndImmediateOnesDoNot) {
    std::ostringstream out;
    Debug debug{&out, Debug::Flag::DisableColors};
    EXPECT_TRUE(debug.flags() == Debug::Flag::DisableColors);
    EXPECT_TRUE(debug.immediateFlags() == (Debug::Flag::DisableColors | Debug::Flag::NoSpace));
    debug << "a";
    EXPECT_TRUE(debug.immediateFlags() == Debug::Flag::DisableColors);
    debug.setImmediateFlags(Debug::Flag::NoSpace);
    debug << "b"
          << "c";
    debug.setFlags(Debug::Flag::NoSpace);
    debug << "d"
          << "e";
    debug.setFlags({});
    debug << "f";
    EXPECT_EQ(out.str(), "ab cde f");
}

TEST(DebugTest, ContainersPrintInBraces) {
    const std::vector<int> empty;
    const int data[]{1, 2};
    EXPECT_EQ(printed(std::vector<int>{1, 2, 3}, empty, "x"), "{1, 2, 3} {} x\n");
    EXPECT_EQ(printed(Containers::arrayView(data)), "{1, 2}\n");
    EXPECT_EQ(printed(Containers::ArrayView<const char>{"ab", 2}), "{97, 98}\n");
    EXPECT_EQ(printed(std::vector<std::string>{"a", "b c"}), "{a, b c}\n");
    EXPECT_EQ(printed(std::vector<Vector>{{1, 2}, {3, 4}}), "{Vector(1, 2), Vector(3, 4)}\n");
}

TEST(DebugTest, ContainersInContainersStandOnLines) {
    EXPECT_EQ(printed("x", std::vector<std::vector<int>>{{1, 2}, {3}}), "x {{1, 2},\n {3}}\n");
    EXPECT_EQ(printed(std::vector<std::vector<int>>{{}, {}}), "{{},\n {}}\n");
}

TEST(DebugTest, PackedLeavesOutBracesAndSeparators) {
    std::ostringstream out;
    const std::vector<int> numbers{1, 2, 3};
    Debug{&out} << "a" << Debug::packed << numbers << "b" << numbers;
    EXPECT_EQ(out.str(), "a 123 b {1, 2, 3}\n");
}

TEST(DebugTest, OwnTypesKeepTheSpaceBeforeTheWhole) {
    EXPECT_EQ(printed("a", Vector{1, 2}, Vector{3, 4}), "a Vector(1, 2) Vector(3, 4)\n");
    std::ostringstream out;
    Debug{&out} << "a" << Debug::nospace << Vector{1, 2} << "b";
    Debug{&out} << Vector{1, 2};
    EXPECT_EQ(out.str(), "aVector(1, 2) b\nVector(1, 2)\n");
}

TEST(DebugTest, DefaultOutputsAreTheStandardOnes) {
    EXPECT_EQ(Debug::defaultOutput(), &std::cout);
    EXPECT_EQ(Warning::defaultOutput(), &std::cerr);
    EXPECT_EQ(Error::defaultOutput(), &std::cerr);
    EXPECT_EQ(Debug::output(), &std::cout);
    EXPECT_EQ(Warning::output(), &std::cerr);
    EXPECT_EQ(Error::output(), &std::cerr);
}

TEST(DebugTest, RedirectionLastsForTheScope) {
    std::ostringstream outer, inner;
    {
        Debug redirectOuter{&outer};
        Debug{} << "a";
        {
            Debug redirectInner{&inner};
            Debug{} << "b";
            EXPECT_EQ(Debug::output(), &inner);
        }
        Debug{} << "c";
    }
    EXPECT_EQ(Debug::output(), &std::cout);
    EXPECT_EQ(outer.str(), "a\nc\n");
    EXPECT_EQ(inner.str(), "b\n");
}

TEST(DebugTest, RedirectingObjectPrintsItsOwnValues) {
    std::ostringstream out;
    {
        Debug redirect{&out};
        redirect << "mine";
        Debug{} << "other";
    }
    EXPECT_EQ(out.str(), "mineother\n\n");
}

TEST(DebugTest, LineKeepsItsOutput) {
    std::ostringstream first, second;
    {
        Debug redirectFirst{&first};
        Debug line;
        Debug redirectSecond{&second};
        line << "a";
    }
    EXPECT_EQ(first.str(), "a\n");
    EXPECT_EQ(second.str(), "");
}

TEST(DebugTest, ClassesAreRedirectedApart) {
    std::ostringstream debug, warning, error;
    {
        Debug redirectDebug{&debug};
        Warning redirectWarning{&warning};
        Error redirectError{&error};
        Debug{} << "debug";
        Warning{} << "warning";
        Error{} << "error";
    }
    EXPECT_EQ(debug.str(), "debug\n");
    EXPECT_EQ(warning.str(), "warning\n");
    EXPECT_EQ(error.str(), "error\n");

    Error redirectError{&error};
    EXPECT_EQ(Debug::output(), &std::cout);
    EXPECT_EQ(Warning::output(), &std::cerr);
    EXPECT_EQ(Error::output(), &error);
}

TEST(DebugTest, NullOutputIsSilence) {
    std::ostringstream out;
    Debug redirectOut{&out};
    {
        Debug redirect{nullptr};
        Debug{} << "not" << 3 << Vector{1, 2} << std::vector<int>{1};
        EXPECT_EQ(Debug::output(), nullptr);
    }
    EXPECT_EQ(out.str(), "");
}

TEST(DebugTest, RedirectionIsOfOneThread) {
    std::ostringstream out, inThread;
    std::ostream* seen = nullptr;
    Debug redirect{&out};
    std::thread thread{[&seen, &inThread]() {
        seen = Debug::output();
        Debug redirectInThread{&inThread};
        Debug{} << "thread";
    }};
    thread.join();
    Debug{} << "main";
    EXPECT_EQ(seen, &std::cout);
    EXPECT_EQ(out.str(), "main\n");
    EXPECT_EQ(inThread.str(), "thread\n");
}

}
