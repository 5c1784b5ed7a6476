#include <array>
#include <string>
#include <type_traits>
#include <vector>

#include <Corrade/Containers/ArrayViewStl.h>

#include <gtest/gtest.h>

namespace {

using namespace Corrade;
using Containers::ArrayView;

template<class Container> constexpr bool convertsAsExpected() {
    return std::is_convertible<Container&, ArrayView<int>>::value &&
        !std::is_convertible<const Container&, ArrayView<int>>::value &&
        !std::is_convertible<Container, ArrayView<int>>::value &&
        std::is_convertible<Container&, ArrayView<const int>>::value &&
        std::is_convertible<const Container&, ArrayView<const int>>::value &&
        std::is_convertible<Container, ArrayView<const int>>::value &&
        !std::is_convertible<Container&, ArrayView<float>>::value;
}

std::size_t total(const ArrayView<const std::string> strings) {
    std::size_t out = 0;
    for(const std::string& string: strings)
        out += string.size();
    return out;
}

TEST(ArrayViewStlTest, OnlyNonConstLvalueConvertsToMutableView) {
    static_assert(convertsAsExpected<std::vector<int>>(), "");
    static_assert(convertsAsExpected<std::array<int, 3>>(), "");
}

TEST(ArrayViewStlTest, ViewsPointToTheContainer) {
    std::vector<int> vector{1, 2, 3};
    std::array<int, 2> array{{1, 2}};
    const ArrayView<int> a = vector;
    const ArrayView<const int> b = array;
    EXPECT_EQ(a.data(), vector.data());
    EXPECT_EQ(a.size(), 3u);
    EXPECT_EQ(b.data(), array.data());
    EXPECT_EQ(b.size(), 2u);
}

TEST(ArrayViewStlTest, TemporaryVectorCanBeAnArgument) {
    EXPECT_EQ(total(std::vector<std::string>{"one", "three"}), 8u);
}

TEST(ArrayViewStlTest, FunctionKeepsConstness) {
    std::vector<int> vector{1, 2, 3};
    const std::vector<int>& constant = vector;
    static_assert(std::is_same<decltype(Containers::arrayView(vector)), ArrayView<int>>::value, "");
    static_assert(
        std::is_same<decltype(Containers::arrayView(constant)), ArrayView<const int>>::value, "");
    EXPECT_EQ(Containers::arrayView(constant).size(), 3u);
}

}
