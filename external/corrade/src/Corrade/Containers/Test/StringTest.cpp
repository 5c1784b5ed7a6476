#include <utility>

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/Tags.h>

#include "../../Test/expectAssertion.h"

namespace {

using namespace Corrade;
using namespace Containers::Literals;
using Containers::ArrayView;
using Containers::MutableStringView;
using Containers::String;
using Containers::StringView;

TEST(StringTest, EmptyHasDataAndNul) {
    const String a;
    const String b = static_cast<const char*>(nullptr);
    EXPECT_FALSE(a);
    EXPECT_TRUE(a.isEmpty());
    ASSERT_NE(a.data(), nullptr);
    EXPECT_EQ(*a.data(), '\0');
    ASSERT_NE(b.data(), nullptr);
    EXPECT_EQ(b.size(), 0u);
}

TEST(StringTest, ConstructsFromEveryKindOfText) {
    char data[]{"hello"};
    const String fromView = "hello"_s;
    const String fromMutable = MutableStringView{data};
    const String fromArray = ArrayView<const char>{data, 5};
    const String fromPointer = data;
    const String fromPart{data, 4};
    EXPECT_EQ(fromView, "hello");
    EXPECT_EQ(fromMutable, "hello");
    EXPECT_EQ(fromArray, "hello");
    EXPECT_EQ(fromPointer, "hello");
    EXPECT_EQ(fromPart, "hell");
    EXPECT_EQ(fromPart.data()[4], '\0');
    EXPECT_EQ(String("a\0b"_s).size(), 3u);
}

TEST(StringTest, TagsSetSizeAndContents) {
    EXPECT_EQ((String{ValueInit, 3}), "\0\0\0"_s);
    EXPECT_EQ((String{DirectInit, 3, 'x'}), "xxx");
    String a{NoInit, 100};
    EXPECT_EQ(a.size(), 100u);
    EXPECT_EQ(a.data()[100], '\0');
}

TEST(StringTest, CopyHasItsOwnData) {
    const String a = "a text that is too long to be stored in place";
    String b = a;
    b[0] = 'A';
    EXPECT_EQ(a[0], 'a');
    b = a;
    EXPECT_EQ(b, a);
    EXPECT_NE(b.data(), a.data());
}

TEST(StringTest, MoveLeavesSourceEmpty) {
    String a = "a text that is too long to be stored in place";
    String b = std::move(a);
    EXPECT_TRUE(a.isEmpty());
    EXPECT_NE(a.data(), nullptr);
    String c = "short";
    const String d = std::move(c);
    EXPECT_TRUE(c.isEmpty());
    EXPECT_EQ(d, "short");
    static_assert(std::is_nothrow_move_constructible<String>::value, "");
}

TEST(StringTest, ElementsCanBeWritten) {
    String a = "hello";
    a.front() = 'j';
    a.back() = 'y';
    a[1] = 'a';
    a.slice(2, 4)[0] = 'm';
    *a.begin() = 'J';
    const String& constant = a;
    EXPECT_EQ(constant, "Jamly");
    EXPECT_EQ(constant.front(), 'J');
    EXPECT_EQ(constant.cend() - constant.cbegin(), 5);
}

TEST(StringTest, ActsAsStringView) {
    const String a = "hello";
    EXPECT_EQ(a.slice(1, 3), "el");
    EXPECT_EQ(a.prefix(2), "he");
    EXPECT_EQ(a.exceptPrefix(2), "llo");
    EXPECT_EQ(a.exceptPrefix("he"), "llo");
    EXPECT_EQ(a.exceptSuffix(2), "hel");
    EXPECT_EQ(a.exceptSuffix("lo"), "hel");
    EXPECT_TRUE(a.hasPrefix("he") && a.hasPrefix('h') && a.hasSuffix("lo") && a.hasSuffix('o'));
    EXPECT_TRUE(a.contains("ell") && a.contains('e') && !a.contains('x'));
    EXPECT_EQ(a.find("l").data(), a.data() + 2);
    EXPECT_EQ(a.find('x').data(), nullptr);
}

TEST(StringTest, ConvertsToViews) {
    String a = "hello";
    const StringView b = a;
    const MutableStringView c = a;
    const ArrayView<const char> d = a;
    EXPECT_EQ(b.data(), a.data());
    EXPECT_EQ(c.size(), 5u);
    EXPECT_EQ(d.size(), 5u);
}

TEST(StringTest, NullOfSomeSizeAsserts) {
    EXPECT_ASSERTION((String{nullptr, 3}), "Containers::String: received a null string of size 3");
}

}
