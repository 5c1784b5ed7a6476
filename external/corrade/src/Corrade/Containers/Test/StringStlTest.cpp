#include <string>
#include <type_traits>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/Containers/StringView.h>

#include <gtest/gtest.h>

namespace {

using namespace Corrade;
using namespace Containers::Literals;
using Containers::MutableStringView;
using Containers::String;
using Containers::StringView;

TEST(StringStlTest, StandardStringConvertsToAllKinds) {
    std::string text("a\0b", 3);
    const StringView a = text;
    const StringView b{text};
    const MutableStringView c = text;
    const String d = text;
    const String e{text};
    EXPECT_EQ(a.data(), text.data());
    EXPECT_TRUE(a.flags() == Containers::StringViewFlag::NullTerminated);
    EXPECT_EQ(b.size(), 3u);
    EXPECT_EQ(c.data(), text.data());
    EXPECT_EQ(d, "a\0b"_s);
    EXPECT_EQ(e, d);
    static_assert(!std::is_convertible<const std::string&, MutableStringView>::value, "");
}

TEST(StringStlTest, ViewConvertsToStandardString) {
    constexpr StringView view = "a\0b"_s;
    const std::string a = view;
    const std::string b{view};
    const std::string c(view);
    std::string d;
    d = view;
    const std::string expected("a\0b", 3);
    EXPECT_EQ(a, expected);
    EXPECT_EQ(b, expected);
    EXPECT_EQ(c, expected);
    EXPECT_EQ(d, expected);
    const std::string null = StringView{};
    EXPECT_EQ(null, "");
}

TEST(StringStlTest, StringConvertsToStandardString) {
    const String string = "text";
    const std::string a = string;
    const std::string b{string};
    const std::string c(string);
    std::string d;
    d = string;
    EXPECT_EQ(a, "text");
    EXPECT_EQ(b, "text");
    EXPECT_EQ(c, "text");
    EXPECT_EQ(d, "text");
}

TEST(StringStlTest, BothKindsCompare) {
    const std::string text = "text";
    EXPECT_TRUE(text == "text"_s);
    EXPECT_TRUE("text"_s == text);
    EXPECT_TRUE(String{"text"} == text);
    EXPECT_TRUE(text != String{"test"});
    EXPECT_TRUE("a"_s < text);
}

}
