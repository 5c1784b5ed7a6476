#include <type_traits>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "../../Test/expectAssertion.h"

namespace {

using namespace Corrade;
using namespace Containers::Literals;
using Containers::ArrayView;
using Containers::MutableStringView;
using Containers::String;
using Containers::StringView;
using Containers::StringViewFlag;
using Containers::StringViewFlags;

TEST(StringViewTest, DefaultIsNullAndGlobal) {
    static_assert(sizeof(StringView) == 16, "");
    constexpr StringView a;
    constexpr StringView b = nullptr;
    EXPECT_EQ(a.data(), nullptr);
    EXPECT_EQ(b.size(), 0u);
    EXPECT_TRUE(a.flags() == StringViewFlag::Global);
    EXPECT_FALSE(a);
}

TEST(StringViewTest, FlagsFollowTheSource) {
    char data[]{"hello"};
    const char* const null = nullptr;
    const StringViewFlags none;
    EXPECT_TRUE(StringView{data}.flags() == StringViewFlag::NullTerminated);
    EXPECT_TRUE(StringView{null}.flags() == StringViewFlag::Global);
    EXPECT_TRUE((StringView{data, 3}).flags() == none);
    EXPECT_TRUE(StringView{ArrayView<const char>{data}}.flags() == none);
    EXPECT_TRUE(StringView{String{data}}.flags() == StringViewFlag::NullTerminated);
    EXPECT_TRUE("hello"_s.flags() == (StringViewFlag::Global | StringViewFlag::NullTerminated));
    EXPECT_TRUE((StringView{data, StringViewFlag::Global}).flags() >= StringViewFlag::Global);
}

TEST(StringViewTest, IsTrueWithAtLeastOneByte) {
    EXPECT_FALSE(""_s);
    EXPECT_TRUE(""_s.isEmpty());
    EXPECT_NE(""_s.data(), nullptr);
    EXPECT_TRUE("\0"_s);
    static_assert(!std::is_convertible<StringView, bool>::value, "");
}

TEST(StringViewTest, IsConstexpr) {
    constexpr StringView a = "hello"_s;
    static_assert(a.size() == 5 && a[1] == 'e' && a.front() == 'h' && a.back() == 'o', "");
    static_assert(a.slice(1, 3).size() == 2 && a.prefix(2).back() == 'e', "");
    static_assert(a.exceptPrefix(2).front() == 'l' && a.exceptSuffix(1).back() == 'l', "");
    static_assert(a.flags() >= StringViewFlag::Global && !a.isEmpty(), "");
    EXPECT_EQ(a.cend() - a.cbegin(), 5);
}

TEST(StringViewTest, SlicesKeepNulOnlyAtTheEnd) {
    constexpr StringView a = "hello"_s;
    EXPECT_TRUE(a.prefix(4).flags() == StringViewFlag::Global);
    EXPECT_TRUE(a.exceptPrefix(2).flags() == a.flags());
    EXPECT_TRUE(a.suffix(a.begin() + 2).flags() == a.flags());
    EXPECT_TRUE(a.slice(a.begin(), a.end()).flags() == a.flags());
    EXPECT_TRUE(StringView{String{"hello"}}.prefix(2).flags() == StringViewFlags{});
}

TEST(StringViewTest, MutableOneWritesAndConverts) {
    char data[]{"hello"};
    const MutableStringView a = data;
    a[0] = 'j';
    a.slice(1, 2).front() = 'a';
    const StringView b = a;
    EXPECT_EQ(b, "jallo");
    EXPECT_TRUE(b.flags() == StringViewFlag::NullTerminated);
    const ArrayView<char> c = a;
    EXPECT_EQ(c.size(), 5u);
    static_assert(!std::is_convertible<StringView, MutableStringView>::value, "");
    static_assert(std::is_convertible<StringView, ArrayView<const char>>::value, "");
}

TEST(StringViewTest, ComparesBytesAsUnsigned) {
    EXPECT_TRUE("a"_s < "b"_s);
    EXPECT_TRUE("a"_s < "\xff"_s);
    EXPECT_TRUE("a"_s < "aa"_s);
    EXPECT_TRUE("aa"_s > "a"_s);
    EXPECT_TRUE("a"_s <= "a"_s && "a"_s >= "a"_s);
    EXPECT_FALSE("b"_s <= "a"_s);
    EXPECT_TRUE("a\0b"_s != "a\0c"_s);
    EXPECT_TRUE("a\0"_s != "a"_s);
    EXPECT_TRUE(StringView{} == ""_s);
    EXPECT_FALSE(StringView{} < ""_s);
    EXPECT_TRUE(StringView{} < "a"_s);
}

TEST(StringViewTest, ComparesWithAllThatConverts) {
    char data[]{"abc"};
    EXPECT_TRUE("abc"_s == "abc");
    EXPECT_TRUE("abc" == "abc"_s);
    EXPECT_TRUE("abc"_s == MutableStringView{data});
    EXPECT_TRUE(String{"abc"} == "abc"_s);
    EXPECT_TRUE("abd"_s != String{"abc"});
}

TEST(StringViewTest, PrefixAndSuffix) {
    EXPECT_TRUE("hello"_s.hasPrefix("he"));
    EXPECT_TRUE("hello"_s.hasPrefix('h'));
    EXPECT_TRUE("hello"_s.hasPrefix(""));
    EXPECT_FALSE("he"_s.hasPrefix("hello"));
    EXPECT_FALSE(""_s.hasPrefix('h'));
    EXPECT_TRUE("hello"_s.hasSuffix("llo"));
    EXPECT_TRUE("hello"_s.hasSuffix('o'));
    EXPECT_FALSE("hello"_s.hasSuffix("hell"));
    EXPECT_FALSE(""_s.hasSuffix('o'));
    EXPECT_EQ("hello"_s.exceptPrefix("he"), "llo");
    EXPECT_EQ("hello"_s.exceptSuffix("lo"), "hel");
}

TEST(StringViewTest, FindGivesThePart) {
    constexpr StringView a = "hello, hello"_s;
    EXPECT_EQ(a.find("llo").data(), a.data() + 2);
    EXPECT_EQ(a.find("llo").size(), 3u);
    EXPECT_EQ(a.find('l').data(), a.data() + 2);
    EXPECT_EQ(a.find("nope").data(), nullptr);
    EXPECT_EQ(a.find('x').data(), nullptr);
    EXPECT_EQ("a\0b"_s.find("\0b"_s).size(), 2u);
    EXPECT_EQ(""_s.find('x').data(), nullptr);
    EXPECT_TRUE(a.contains("o, h"));
    EXPECT_TRUE(a.contains(','));
    EXPECT_FALSE(a.contains("hello!"));
    EXPECT_FALSE(StringView{}.contains("a"));
}

TEST(StringViewTest, PlusJoins) {
    EXPECT_EQ("a\0"_s + "b"_s, "a\0b"_s);
    EXPECT_EQ(StringView{} + StringView{}, "");
}

TEST(StringViewTest, FrontAndBackOfEmptyAssert) {
    EXPECT_ASSERTION(""_s.front(), "Containers::StringView::front(): view is empty");
    EXPECT_ASSERTION(""_s.back(), "Containers::StringView::back(): view is empty");
}

TEST(StringViewTest, SliceOutOfRangeAsserts) {
    EXPECT_ASSERTION("hello"_s.slice(3, 6),
        "Containers::StringView::slice(): slice [3:6] out of range for 5 elements");
    EXPECT_ASSERTION("hello"_s.exceptPrefix(6),
        "Containers::StringView::slice(): slice [6:5] out of range for 5 elements");
}

TEST(StringViewTest, ExceptPartThatIsNotThereAsserts) {
    EXPECT_ASSERTION("hello"_s.exceptPrefix("ello"),
        "Containers::StringView::exceptPrefix(): string doesn't begin with ello");
    EXPECT_ASSERTION("hello"_s.exceptSuffix("hell"),
        "Containers::StringView::exceptSuffix(): string doesn't end with hell");
}

}
