#include <string>
#include <type_traits>
#include <utility>

#include <Corrade/Containers/Array.h>

#include "../../Test/expectAssertion.h"

namespace {

using namespace Corrade;
using Containers::Array;
using Containers::ArrayView;

/* Counts constructions and destructions, and isn't trivial */
struct Counted {
    Counted(): value{1} { ++constructed; }
    Counted(int a, int b): value{a * b} { ++constructed; }
    Counted(const Counted& other): value{other.value} { ++constructed; }
    ~Counted() { ++destructed; }

    int value;
    static int constructed, destructed;
};
int Counted::constructed;
int Counted::destructed;

class ArrayTest: public testing::Test {
protected:
    void SetUp() override { Counted::constructed = Counted::destructed = 0; }
};

struct Call {
    int* data;
    std::size_t size;
};
Call lastCall;
int callCount;
void recordCall(int* const data, const std::size_t size) {
    lastCall = {data, size};
    ++callCount;
}

TEST_F(ArrayTest, DefaultIsNull) {
    const Array<int> a;
    const Array<int> b = nullptr;
    EXPECT_FALSE(a);
    EXPECT_EQ(a.data(), nullptr);
    EXPECT_EQ(a.size(), 0u);
    EXPECT_TRUE(a.isEmpty());
    EXPECT_EQ(a.deleter(), nullptr);
    EXPECT_EQ(b.data(), nullptr);
    EXPECT_EQ(a.begin(), a.end());
}

TEST_F(ArrayTest, SizeZeroHasNullDataWithEveryTag) {
    EXPECT_EQ((Array<int>{DefaultInit, std::size_t{}}).data(), nullptr);
    EXPECT_EQ((Array<int>{ValueInit, std::size_t{}}).data(), nullptr);
    EXPECT_EQ((Array<int>{NoInit, std::size_t{}}).data(), nullptr);
    EXPECT_EQ((Array<int>{DirectInit, std::size_t{}, 3}).data(), nullptr);
    EXPECT_EQ((Array<int>{InPlaceInit, {}}).data(), nullptr);
    EXPECT_EQ((Array<std::string>{NoInit, std::size_t{}}).data(), nullptr);
}

TEST_F(ArrayTest, ValueInitZeroes) {
    const Array<int> a{ValueInit, 3};
    const Array<int> b(std::size_t{3});
    for(std::size_t i = 0; i != 3; ++i) {
        EXPECT_EQ(a[i], 0);
        EXPECT_EQ(b[i], 0);
    }
    EXPECT_EQ(a.deleter(), nullptr);
}

TEST_F(ArrayTest, DefaultInitRunsConstructors) {
    const Array<Counted> a{DefaultInit, 3};
    EXPECT_EQ(Counted::constructed, 3);
    EXPECT_EQ(a[2].value, 1);
    EXPECT_EQ(a.deleter(), nullptr);
}

TEST_F(ArrayTest, NoInitOfTrivialTypeHasNullDeleter) {
    EXPECT_EQ((Array<int>{NoInit, 3}).deleter(), nullptr);
}

TEST_F(ArrayTest, NoInitConstructsNothingButDestroys) {
    {
        Array<Counted> a{NoInit, 3};
        EXPECT_NE(a.deleter(), nullptr);
        EXPECT_EQ(Counted::constructed, 0);
        for(Counted& i: a)
            new(&i) Counted;
    }
    EXPECT_EQ(Counted::constructed, 3);
    EXPECT_EQ(Counted::destructed, 3);
}

TEST_F(ArrayTest, NoInitKeepsExtendedAlignment) {
    struct alignas(64) Aligned {
        Aligned(): value{} {}
        int value;
    };
    Array<Aligned> a{NoInit, 3};
    for(Aligned& i: a)
        new(&i) Aligned;
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(a.data()) % 64, 0u);
}

TEST_F(ArrayTest, DirectInitGivesSameArgumentsToAll) {
    {
        const Array<Counted> a{DirectInit, 3, 2, 7};
        EXPECT_EQ(a[0].value, 14);
        EXPECT_EQ(a[2].value, 14);
    }
    EXPECT_EQ(Counted::constructed, 3);
    EXPECT_EQ(Counted::destructed, 3);

    const Array<std::string> b{DirectInit, 2, "same"};
    EXPECT_EQ(b[0], "same");
    EXPECT_EQ(b[1], "same");
}

TEST_F(ArrayTest, InPlaceInitCopiesList) {
    const Array<std::string> a{InPlaceInit, {"a", "b"}};
    ASSERT_EQ(a.size(), 2u);
    EXPECT_EQ(a.front(), "a");
    EXPECT_EQ(a.back(), "b");
}

TEST_F(ArrayTest, ListFunctionDeducesOrTakesType) {
    const auto a = Containers::array({1.5f, 2.5f});
    static_assert(std::is_same<decltype(a), const Array<float>>::value, "");
    EXPECT_EQ(a[1], 2.5f);
    const auto b = Containers::array<std::string>({"a", "b"});
    EXPECT_EQ(b[1], "b");
}

TEST_F(ArrayTest, DestructorCallsDeleterWithDataAndSize) {
    int data[4];
    callCount = 0;
    { Array<int> a{data, 4, recordCall}; }
    EXPECT_EQ(callCount, 1);
    EXPECT_EQ(lastCall.data, data);
    EXPECT_EQ(lastCall.size, 4u);
}

TEST_F(ArrayTest, DestructorCallsDeleterForNullData) {
    callCount = 0;
    { Array<int> a{nullptr, 0, recordCall}; }
    EXPECT_EQ(callCount, 1);
    EXPECT_EQ(lastCall.data, nullptr);
}

TEST_F(ArrayTest, DeleterMayBeAFunctor) {
    struct Deleter {
        void operator()(int*, std::size_t size) { *out = size; }
        std::size_t* out;
    };
    std::size_t deleted = 0;
    int data[3];
    { Array<int, Deleter> a{data, 3, Deleter{&deleted}}; }
    EXPECT_EQ(deleted, 3u);
}

TEST_F(ArrayTest, MoveConstructionEmptiesSource) {
    int data[4];
    callCount = 0;
    Array<int> a{data, 4, recordCall};
    const Array<int> b{std::move(a)};
    EXPECT_EQ(a.data(), nullptr);
    EXPECT_EQ(a.size(), 0u);
    EXPECT_EQ(a.deleter(), nullptr);
    EXPECT_EQ(b.data(), data);
    EXPECT_EQ(b.deleter(), recordCall);
    EXPECT_EQ(callCount, 0);
}

TEST_F(ArrayTest, MoveAssignmentSwaps) {
    int data[4];
    Array<int> a{data, 4, recordCall};
    Array<int> b{ValueInit, 2};
    int* const bData = b.data();
    b = std::move(a);
    EXPECT_EQ(b.data(), data);
    EXPECT_EQ(b.deleter(), recordCall);
    EXPECT_EQ(a.data(), bData);
    EXPECT_EQ(a.size(), 2u);
    EXPECT_EQ(a.deleter(), nullptr);
}

TEST_F(ArrayTest, ReleaseCallsNothing) {
    int data[4];
    callCount = 0;
    {
        Array<int> a{data, 4, recordCall};
        EXPECT_EQ(a.release(), data);
        EXPECT_EQ(a.data(), nullptr);
        EXPECT_EQ(a.size(), 0u);
        EXPECT_EQ(a.deleter(), nullptr);
    }
    EXPECT_EQ(callCount, 0);
}

TEST_F(ArrayTest, IsMoveOnlyAndMovesWithoutThrowing) {
    static_assert(!std::is_copy_constructible<Array<int>>::value, "");
    static_assert(!std::is_copy_assignable<Array<int>>::value, "");
    static_assert(std::is_nothrow_move_constructible<Array<int>>::value, "");
    static_assert(std::is_nothrow_move_assignable<Array<int>>::value, "");
}

TEST_F(ArrayTest, ElementsAreReachedByAnyInteger) {
    Array<int> a{InPlaceInit, {1, 2, 3}};
    a[std::uint8_t(1)] = 7;
    a[2l] = 9;
    const Array<int>& constant = a;
    EXPECT_EQ(constant[1], 7);
    EXPECT_EQ(constant[std::size_t{2}], 9);
    EXPECT_EQ(&a.front(), a.data());
    EXPECT_EQ(&constant.back(), constant.end() - 1);
    EXPECT_EQ(a.cbegin() + 3, a.cend());
}

TEST_F(ArrayTest, SlicesAreViews) {
    Array<int> a{InPlaceInit, {1, 2, 3, 4, 5}};
    const Array<int>& constant = a;
    static_assert(std::is_same<decltype(a.slice(1, 3)), ArrayView<int>>::value, "");
    static_assert(std::is_same<decltype(constant.slice(1, 3)), ArrayView<const int>>::value, "");

    EXPECT_EQ(a.slice(1, 3).data(), a.data() + 1);
    EXPECT_EQ(a.slice(1, 3).size(), 2u);
    EXPECT_EQ(constant.slice(a.data() + 1, a.data() + 3).size(), 2u);
    EXPECT_EQ(a.prefix(2).size(), 2u);
    EXPECT_EQ(constant.prefix(a.data() + 2).size(), 2u);
    EXPECT_EQ(a.suffix(a.data() + 2).size(), 3u);
    EXPECT_EQ(constant.exceptPrefix(2).data(), a.data() + 2);
    EXPECT_EQ(a.exceptSuffix(2).size(), 3u);
}

TEST_F(ArrayTest, ConvertsToViews) {
    static_assert(std::is_convertible<Array<int>&, ArrayView<int>>::value, "");
    static_assert(std::is_convertible<Array<int>, ArrayView<int>>::value, "");
    static_assert(!std::is_convertible<const Array<int>&, ArrayView<int>>::value, "");
    static_assert(std::is_convertible<const Array<int>&, ArrayView<const int>>::value, "");
    static_assert(std::is_convertible<Array<int>, ArrayView<const int>>::value, "");
    static_assert(!std::is_convertible<Array<int>, int*>::value, "");

    Array<int> a{ValueInit, 5};
    const Array<int>& constant = a;
    static_assert(std::is_same<decltype(arrayView(a)), ArrayView<int>>::value, "");
    static_assert(std::is_same<decltype(arrayView(constant)), ArrayView<const int>>::value, "");
    EXPECT_EQ(arrayView(a).data(), a.data());
    EXPECT_EQ(arraySize(a), 5u);
}

TEST_F(ArrayTest, FrontAndBackOfEmptyAssert) {
    Array<int> a;
    const Array<int> b;
    EXPECT_ASSERTION(a.front(), "Containers::Array::front(): array is empty");
    EXPECT_ASSERTION(b.back(), "Containers::Array::back(): array is empty");
}

TEST_F(ArrayTest, SliceOutOfRangeAssertsAsView) {
    Array<int> a{ValueInit, 5};
    EXPECT_ASSERTION(
        a.slice(3, 6), "Containers::ArrayView::slice(): slice [3:6] out of range for 5 elements");
}

}
