#include <type_traits>

#include <Corrade/Containers/Array.h>

#include "../../Test/expectAssertion.h"

namespace {

using namespace Corrade;
using Containers::ArrayView;

constexpr int Data[]{1, 2, 3, 4, 5};

TEST(ArrayViewTest, DefaultIsNull) {
    constexpr ArrayView<int> a;
    constexpr ArrayView<int> b = nullptr;
    const ArrayView<int> c = {};
    EXPECT_EQ(a.data(), nullptr);
    EXPECT_EQ(b.size(), 0u);
    EXPECT_TRUE(c.isEmpty());
    EXPECT_FALSE(a);
}

TEST(ArrayViewTest, IsTrueForDataOfAnySize) {
    EXPECT_TRUE((ArrayView<const int>{Data, 0}));
    EXPECT_FALSE((ArrayView<const int>{nullptr, 3}));
}

TEST(ArrayViewTest, IsConstexprAndTriviallyCopyable) {
    static_assert(std::is_trivially_copyable<ArrayView<int>>::value, "");
    constexpr ArrayView<const int> a = Data;
    static_assert(a.size() == 5 && a[2] == 3 && a.front() == 1 && a.back() == 5, "");
    static_assert(a.slice(1, 3).size() == 2 && a.slice(1, 3)[0] == 2, "");
    static_assert(a.prefix(2).back() == 2 && a.exceptPrefix(2).front() == 3, "");
    static_assert(a.exceptSuffix(1).back() == 4 && a.suffix(Data + 3).size() == 2, "");
    EXPECT_EQ(a.end() - a.begin(), 5);
}

TEST(ArrayViewTest, ArrayOfStringsConvertsToBothConstnesses) {
    const char* names[]{"a", "b"};
    const ArrayView<const char*> a = names;
    const ArrayView<const char* const> b = names;
    EXPECT_EQ(a.data(), names);
    EXPECT_EQ(b.size(), 2u);
}

TEST(ArrayViewTest, ConvertsToConstOnlyOneWay) {
    static_assert(std::is_convertible<ArrayView<int>, ArrayView<const int>>::value, "");
    static_assert(!std::is_convertible<ArrayView<const int>, ArrayView<int>>::value, "");
    static_assert(!std::is_convertible<ArrayView<int>, ArrayView<float>>::value, "");
}

TEST(ArrayViewTest, DerivedOfAnotherSizeDoesNotConvert) {
    struct Base {
        int a;
    };
    struct Same: Base {};
    struct Larger: Base {
        int b;
    };
    static_assert(std::is_convertible<ArrayView<Same>, ArrayView<Base>>::value, "");
    static_assert(!std::is_convertible<Larger(&)[3], ArrayView<Base>>::value, "");
}

TEST(ArrayViewTest, FunctionsMakeViews) {
    int data[3]{1, 2, 3};
    static_assert(std::is_same<decltype(Containers::arrayView(data)), ArrayView<int>>::value, "");
    EXPECT_EQ(Containers::arrayView(data).size(), 3u);
    EXPECT_EQ(Containers::arrayView(data, 2).size(), 2u);
    EXPECT_EQ(Containers::arrayView(Containers::arrayView(data)).data(), data);
    EXPECT_EQ(Containers::arrayView({1, 2, 3})[2], 3);
    EXPECT_EQ(Containers::arrayView<std::string>({"a", "b"})[1], "b");
    EXPECT_EQ(Containers::arraySize(data), 3u);
    EXPECT_EQ(Containers::arraySize(Containers::arrayView(data, 2)), 2u);
}

TEST(ArrayViewTest, SlicesByPointerCountFromBegin) {
    const ArrayView<const int> a = Data;
    EXPECT_EQ(a.slice(Data + 1, Data + 3).data(), Data + 1);
    EXPECT_EQ(a.prefix(Data + 2).size(), 2u);
    EXPECT_EQ(a.suffix(Data + 5).size(), 0u);
    EXPECT_EQ(a.suffix(Data).size(), 5u);
}

TEST(ArrayViewTest, SliceAtTheEndsIsAllowed) {
    const ArrayView<const int> a = Data;
    EXPECT_EQ(a.slice(5, 5).size(), 0u);
    EXPECT_EQ(a.exceptPrefix(5).size(), 0u);
    EXPECT_EQ(a.exceptSuffix(5).data(), Data);
    EXPECT_EQ(ArrayView<int>{}.prefix(std::size_t{}).data(), nullptr);
}

TEST(ArrayViewTest, FrontAndBackOfEmptyAssert) {
    const ArrayView<int> a;
    EXPECT_ASSERTION(a.front(), "Containers::ArrayView::front(): view is empty");
    EXPECT_ASSERTION(a.back(), "Containers::ArrayView::back(): view is empty");
}

TEST(ArrayViewTest, SliceOutOfRangeAsserts) {
    const ArrayView<const int> a = Data;
    EXPECT_ASSERTION(
        a.slice(3, 2), "Containers::ArrayView::slice(): slice [3:2] out of range for 5 elements");
    EXPECT_ASSERTION(
        a.prefix(6), "Containers::ArrayView::slice(): slice [0:6] out of range for 5 elements");
    EXPECT_ASSERTION(a.exceptPrefix(6),
        "Containers::ArrayView::slice(): slice [6:5] out of range for 5 elements");
    EXPECT_ASSERTION(a.exceptSuffix(6),
        "Containers::ArrayView::slice(): slice [0:18446744073709551615] out of range for 5 "
        "elements");
    EXPECT_ASSERTION(a.prefix(4).slice(Data + 1, Data + 5),
        "Containers::ArrayView::slice(): slice [1:5] out of range for 4 elements");
}

}
