#include <cstring>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "plugins/console/WideText.h"

using namespace QuillmereEngine;

namespace {

/* Owns the memory that a WideText lies in. Both are exactly as large as they have to be, so that an
   address sanitizer sees what's read or written behind them. */
struct Converted {
    explicit Converted(const std::string& text):
        bytes(text.begin(), text.end()),
        characters(bytes.size() + 1),
        wide{characters.data(), bytes.data(), int(bytes.size())} {}

    std::vector<ImWchar> content() const {
        return {characters.begin(), characters.begin() + wide.size()};
    }

    std::vector<char> bytes;
    std::vector<WideText::Character> characters;
    WideText wide;
};

/* What Dear ImGui makes of it when it's told where the text ends */
std::vector<ImWchar> expected(const std::string& text, int& byteCount) {
    std::vector<ImWchar> out(text.size() + 1);
    const char* end = nullptr;
    const std::size_t length = std::strlen(text.c_str());
    const int size = ImTextStrFromUtf8(
        out.data(), int(out.size()), text.c_str(), text.c_str() + length, &end);
    byteCount = int(end - text.c_str());
    out.resize(std::size_t(size));
    return out;
}

void expectConverted(const std::string& text) {
    const Converted converted{text};
    int byteCount;
    ASSERT_EQ(converted.content(), expected(text, byteCount));
    ASSERT_EQ(converted.wide.byteCount(), byteCount);
    ASSERT_EQ(converted.wide.data()[converted.wide.size()], 0);
}

void expectRows(const WideText& text) {
    int row = 0;
    int begin = 0;
    for(int i = 0; i <= text.size(); ++i) {
        ASSERT_EQ(text.rowOf(i), row) << i;
        if(i == begin) {
            ASSERT_EQ(text.rowBegin(row), begin);
        }
        if(i == text.size() || text.data()[i] == '\n') {
            ASSERT_EQ(text.rowEndFrom(begin), i);
            ++row;
            begin = i + 1;
        }
    }
    ASSERT_EQ(text.rowCount(), row);
}

TEST(WideTextTest, NoTextHasOneEmptyRow) {
    const WideText text;
    EXPECT_EQ(text.size(), 0);
    EXPECT_EQ(text.rowCount(), 1);
    EXPECT_EQ(text.rowBegin(0), 0);
    EXPECT_EQ(text.rowOf(0), 0);
    EXPECT_EQ(text.data(), nullptr);
}

TEST(WideTextTest, EmptyTextHasOneEmptyRow) {
    const Converted converted{""};
    EXPECT_EQ(converted.wide.size(), 0);
    EXPECT_EQ(converted.wide.byteCount(), 0);
    expectRows(converted.wide);
}

TEST(WideTextTest, TextEndsWithItsFirstZero) {
    const Converted converted{std::string("ab\0cd", 5)};
    EXPECT_EQ(converted.content(), (std::vector<ImWchar>{'a', 'b'}));
    EXPECT_EQ(converted.wide.byteCount(), 2);
}

TEST(WideTextTest, ConvertsAsDearImGui) {
    expectConverted("plain");
    expectConverted("\xc3\xa4\xe2\x82\xac");
    expectConverted("above U+FFFF: \xf0\x9f\x98\x80.");
    expectConverted("malformed: \xff \x80 \xc0\x80 \xed\xa0\x80 \xf8\x88\x80\x80\x80 \xe2(\xa1.");
    expectConverted(std::string(1000, 'x') + "\xc3\xa4" + std::string(1000, 'y'));
}

TEST(WideTextTest, AboveBasicPlaneBecomesReplacementCharacter) {
    EXPECT_EQ(Converted{"\xf0\x9f\x98\x80"}.content(), (std::vector<ImWchar>{0xfffd}));
}

/* Dear ImGui 1.86 skips the NUL here if it isn't told of the end, and goes on behind it */
TEST(WideTextTest, SequenceCutOffByEndOfTextEnds) {
    const std::string behind("\xf0\x9f\0behind the end", 17);
    const Converted converted{behind};
    EXPECT_EQ(converted.wide.byteCount(), 2);
    for(const char* const text: {"\xf0", "\xf0\x9f", "\xf0\x9f\x98", "\xe2", "\xe2\x82", "\xc3"})
        expectConverted(text);
}

TEST(WideTextTest, ConvertsRandomBytesAsDearImGui) {
    std::mt19937 random{5};
    for(int run = 0; run != 2000; ++run) {
        std::string text;
        const bool isMostlyAscii = random() % 2;
        for(unsigned i = random() % 700; i; --i)
            text += char(isMostlyAscii && random() % 40 ? ' ' + random() % 90 : 1 + random() % 255);
        expectConverted(text);
        if(HasFatalFailure())
            return;
    }
}

TEST(WideTextTest, KnowsRowsAroundBordersOfItsIndex) {
    for(const int size: {4095, 4096, 4097, 8191, 8192, 8193, 20000})
        for(const int period: {1, 2, 100, 4096, 4097, 30000}) {
            std::string text(std::size_t(size), 'x');
            for(int i = period - 1; i < size; i += period)
                text[std::size_t(i)] = '\n';
            expectRows(Converted{text}.wide);
        }
}

TEST(WideTextTest, KnowsRowsOfRandomTexts) {
    std::mt19937 random{6};
    for(int run = 0; run != 30; ++run) {
        std::string text;
        for(unsigned i = random() % 15000; i; --i)
            text += random() % 60 ? random() % 50 ? "x" : "\xe2\x82\xac" : "\n";
        expectRows(Converted{text}.wide);
    }
}

}
