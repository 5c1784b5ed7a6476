#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/console/measureText.h"

using namespace QuillmereEngine;

namespace {

TEST(MeasureTextTest, EmptyTextHasNothing) {
    EXPECT_EQ(measureText("", 1).length, 0);
    EXPECT_EQ(measureText("", 1).newlineCount, 0);
    EXPECT_EQ(measureText("text", 0).length, 0);
}

TEST(MeasureTextTest, TextEndsWithItsFirstZero) {
    const std::string text{"a\nb\0c\nd", 7};
    EXPECT_EQ(measureText(text.data(), text.size()).length, 3);
    EXPECT_EQ(measureText(text.data(), text.size()).newlineCount, 1);
}

/* Exactly as large as it's said to be, so that an address sanitizer sees each byte read behind */
TEST(MeasureTextTest, FindsEndAndNewlinesInTextsOfAnySize) {
    std::mt19937 random{3};
    for(std::size_t size = 0; size != 2000; ++size) {
        std::vector<char> text(size);
        for(char& i: text)
            i = random() % 8 ? 'x' : '\n';
        if(size && random() % 2)
            text[random() % size] = '\0';
        std::size_t length = 0;
        std::size_t newlineCount = 0;
        for(; length != size && text[length] != '\0'; ++length)
            newlineCount += text[length] == '\n';
        const TextMeasure measure = measureText(text.data(), size);
        ASSERT_EQ(measure.length, length) << size;
        ASSERT_EQ(measure.newlineCount, newlineCount) << size;
    }
}

TEST(MeasureTextTest, CountsBlocksFullOfNewlines) {
    const std::string text(100000, '\n');
    EXPECT_EQ(measureText(text.data(), text.size() + 1).newlineCount, 100000);
}

}
