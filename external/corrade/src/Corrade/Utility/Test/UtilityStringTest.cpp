#include <string>
#include <vector>

#include <Corrade/Utility/String.h>

#include <gtest/gtest.h>

namespace {

namespace String = Corrade::Utility::String;
typedef std::vector<std::string> Strings;

TEST(UtilityStringTest, SplitKeepsEmptyParts) {
    EXPECT_EQ(String::split(std::string{"/a"}, '/'), (Strings{"", "a"}));
    EXPECT_EQ(String::split(std::string{"a/"}, '/'), (Strings{"a", ""}));
    EXPECT_EQ(String::split(std::string{"/"}, '/'), (Strings{"", ""}));
    EXPECT_EQ(String::split(std::string{"a//b"}, '/'), (Strings{"a", "", "b"}));
    EXPECT_EQ(String::split(std::string{"a"}, '/'), (Strings{"a"}));
    EXPECT_EQ(String::split(std::string{}, '/'), Strings{});
    EXPECT_EQ(String::split(std::string("a\0/b", 4), '/'), (Strings{std::string("a\0", 2), "b"}));
}

TEST(UtilityStringTest, SplitWithoutEmptyPartsDropsThem) {
    EXPECT_EQ(String::splitWithoutEmptyParts(std::string{"/a//b/"}, '/'), (Strings{"a", "b"}));
    EXPECT_EQ(String::splitWithoutEmptyParts(std::string{"//"}, '/'), Strings{});
}

TEST(UtilityStringTest, JoinPutsDelimiterBetween) {
    EXPECT_EQ(String::join(Strings{"a", "", "b"}, '/'), "a//b");
    EXPECT_EQ(String::join(Strings{"a", "b"}, ", "), "a, b");
    EXPECT_EQ(String::join(Strings{""}, '/'), "");
    EXPECT_EQ(String::join(Strings{}, '/'), "");
    EXPECT_EQ(String::joinWithoutEmptyParts(Strings{"", "a", "", "b", ""}, '/'), "a/b");
    EXPECT_EQ(String::joinWithoutEmptyParts(Strings{"", "a", "b"}, ", "), "a, b");
}

TEST(UtilityStringTest, TrimCutsBothEnds) {
    EXPECT_EQ(String::trim(std::string{" \t\f\v\r\na b\n "}), "a b");
    EXPECT_EQ(String::trim(std::string{" \n"}), "");
    EXPECT_EQ(String::trim(std::string{}), "");
}

TEST(UtilityStringTest, BeginsAndEnds) {
    const std::string text = "hello";
    EXPECT_TRUE(String::beginsWith(text, std::string{"he"}));
    EXPECT_TRUE(String::beginsWith(text, 'h'));
    EXPECT_FALSE(String::beginsWith(text, std::string{"hello!"}));
    EXPECT_FALSE(String::beginsWith(std::string{}, 'h'));
    EXPECT_TRUE(String::endsWith(text, std::string{"lo"}));
    EXPECT_TRUE(String::endsWith(text, 'o'));
    EXPECT_FALSE(String::endsWith(text, std::string{"!hello"}));
    EXPECT_FALSE(String::endsWith(std::string{}, 'o'));
}

}
