#include "editor/LineSplitter.h"

#include <vector>

#include <gtest/gtest.h>

namespace QuillmereEngine { namespace {

using Lines = std::vector<std::string>;
using namespace std::string_literals;

Lines split(const std::string& text, const std::size_t pieceSize) {
    Lines out;
    LineSplitter splitter{[&out](const std::string& line) { out.push_back(line); }};
    for(std::size_t i = 0; i < text.size(); i += pieceSize)
        splitter.push(std::string_view{text}.substr(i, pieceSize));
    splitter.finish();
    return out;
}

struct SplitText {
    const char* name;
    std::string text;
    Lines lines;
};

struct LineSplitterTest: ::testing::TestWithParam<SplitText> {};

TEST_P(LineSplitterTest, GivesTheSameLinesHoweverTheBytesCome) {
    for(const std::size_t pieceSize: {1, 2, 3, 1000})
        EXPECT_EQ(split(GetParam().text, pieceSize), GetParam().lines) << pieceSize;
}

const SplitText SplitTexts[]{
    {"Nothing", "", {}},
    {"OneLine", "a\n", {"a"}},
    {"Unterminated", "a\nb", {"a", "b"}},
    {"EmptyLines", "\n\na\n\n", {"", "", "a", ""}},
    {"CarriageReturns", "a\r\nb\r\n", {"a", "b"}},
    {"OneCarriageReturnGoes", "a\r\r\n", {"a\r"}},
    {"LoneCarriageReturnStays", "a\rb\n", {"a\rb"}},
    {"CarriageReturnAtTheEndStays", "a\r", {"a\r"}},
    {"EmptyLineOfWindows", "\r\n", {""}},
    {"Nul", "a\0b\n"s,
        {"a\xef\xbf\xbd"
         "b"}},
    {"OnlyNuls", "\0\0"s, {"\xef\xbf\xbd\xef\xbf\xbd"}},
    {"NulBeforeTheEnd", "a\0\r\n"s, {"a\xef\xbf\xbd"}},
    {"BrokenUtf8Stays", "\xff\xc3\n\x80", {"\xff\xc3", "\x80"}},
};

INSTANTIATE_TEST_SUITE_P(All, LineSplitterTest, ::testing::ValuesIn(SplitTexts),
    [](const auto& row) { return row.param.name; });

TEST(LineSplitterLimitTest, EndlessLineIsCut) {
    std::vector<std::size_t> sizes;
    LineSplitter splitter{[&](const std::string& line) { sizes.push_back(line.size()); }};
    const std::string piece(1024 * 1024, 'x');
    for(std::size_t size = 0; size <= LineSplitter::MaxLineSize; size += piece.size())
        splitter.push(piece);
    splitter.finish();
    EXPECT_EQ(sizes, (std::vector<std::size_t>{LineSplitter::MaxLineSize, piece.size()}));
}

}}
