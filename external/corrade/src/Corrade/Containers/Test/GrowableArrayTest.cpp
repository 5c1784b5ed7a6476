#include <string>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>

#include "../../Test/expectAssertion.h"

namespace {

using namespace Corrade;
using Containers::Array;
using Containers::ArrayAllocator;
using Containers::arrayAppend;
using Containers::arrayCapacity;
using Containers::arrayIsGrowable;
using Containers::ArrayMallocAllocator;
using Containers::ArrayNewAllocator;
using Containers::arrayRemoveSuffix;
using Containers::arrayReserve;
using Containers::arrayResize;
using Containers::ArrayView;

/* Capacities that an array goes through with single appends */
template<class T> std::vector<std::size_t> growth(const std::size_t steps) {
    Array<T> a;
    std::vector<std::size_t> out;
    while(out.size() != steps) {
        arrayAppend(a, T{});
        if(out.empty() || out.back() != arrayCapacity(a))
            out.push_back(arrayCapacity(a));
    }
    return out;
}

template<std::size_t size> struct Bytes { char data[size]; };
struct alignas(16) Aligned16 {
    char data[16];
};
/* Isn't trivial, so it goes through the other allocator */
struct Text {
    std::string value;
};
/* Counts what's alive */
struct Alive {
    Alive() { ++count; }
    explicit Alive(int) { ++count; }
    Alive(const Alive&) { ++count; }
    Alive(Alive&&) noexcept { ++count; }
    ~Alive() { --count; }
    Alive& operator=(const Alive&) = default;
    static int count;
};
int Alive::count;

typedef std::vector<std::size_t> Sizes;

TEST(GrowableArrayTest, CapacityGrowsInSteps) {
    EXPECT_EQ(growth<char>(7), (Sizes{8, 24, 56, 88, 136, 208, 316}));
    EXPECT_EQ(growth<int>(6), (Sizes{2, 6, 14, 22, 34, 52}));
    EXPECT_EQ(growth<double>(6), (Sizes{1, 3, 7, 11, 17, 26}));
    EXPECT_EQ(growth<Bytes<12>>(5), (Sizes{1, 2, 4, 8, 12}));
    EXPECT_EQ(growth<Aligned16>(5), (Sizes{1, 3, 5, 8, 12}));
    EXPECT_EQ(growth<Bytes<32>>(6), (Sizes{1, 2, 3, 4, 6, 9}));
    static_assert(sizeof(Text) == 32, "expected the standard string to have 32 bytes");
    EXPECT_EQ(growth<Text>(6), (Sizes{1, 2, 3, 4, 6, 9}));
}

TEST(GrowableArrayTest, AllocatorFollowsTriviality) {
    static_assert(std::is_same<ArrayAllocator<int>, ArrayMallocAllocator<int>>::value, "");
    static_assert(
        std::is_same<ArrayAllocator<std::string>, ArrayNewAllocator<std::string>>::value, "");
}

TEST(GrowableArrayTest, FixedArrayBecomesGrowableByAppend) {
    Array<int> a{InPlaceInit, {1, 2, 3}};
    EXPECT_FALSE(arrayIsGrowable(a));
    EXPECT_EQ(arrayCapacity(a), 3u);
    arrayAppend(a, 4);
    EXPECT_TRUE(arrayIsGrowable(a));
    EXPECT_EQ(a.deleter(), ArrayAllocator<int>::deleter);
    /* Counts as capacity 0, so there is no more than is needed */
    EXPECT_EQ(arrayCapacity(a), 4u);
    EXPECT_EQ(a[0] + a[1] + a[2] + a[3], 10);
}

TEST(GrowableArrayTest, ReleasedDataStayGrowable) {
    Array<int> a;
    arrayReserve(a, 10);
    arrayAppend(a, {1, 2});
    auto* const deleter = a.deleter();
    const std::size_t size = a.size();
    Array<int> b{a.release(), size, deleter};
    EXPECT_TRUE(arrayIsGrowable(b));
    EXPECT_EQ(arrayCapacity(b), 10u);
    EXPECT_FALSE(arrayIsGrowable(a));
}

TEST(GrowableArrayTest, AppendConvertsToElementType) {
    Array<std::string> strings;
    EXPECT_EQ(arrayAppend(strings, "one"), "one");
    const std::string two = "two";
    const std::string& appended = arrayAppend(strings, two);
    EXPECT_EQ(&appended, &strings.back());
    std::string three = "three, long enough for an allocation";
    arrayAppend(strings, std::move(three));
    arrayAppend(strings, InPlaceInit, two, std::size_t{1});
    ASSERT_EQ(strings.size(), 4u);
    EXPECT_EQ(strings[1], "two");
    EXPECT_EQ(strings[3], "wo");
    EXPECT_EQ(strings[2], "three, long enough for an allocation");
}

TEST(GrowableArrayTest, AppendInPlaceUsesBraces) {
    struct Pair {
        int a, b;
    };
    Array<Pair> a;
    EXPECT_EQ(arrayAppend(a, InPlaceInit, 1, 2).b, 2);
}

TEST(GrowableArrayTest, AppendTakesMoveOnlyElements) {
    Array<Array<int>> a;
    arrayAppend(a, Array<int>{ValueInit, 3});
    arrayAppend(a, InPlaceInit, ValueInit, std::size_t{2});
    EXPECT_EQ(a[0].size(), 3u);
    EXPECT_EQ(a[1].size(), 2u);
}

TEST(GrowableArrayTest, AppendListGivesNewPart) {
    Array<int> a{InPlaceInit, {1}};
    const int more[]{2, 3, 4};
    const ArrayView<int> part = arrayAppend(a, ArrayView<const int>{more});
    EXPECT_EQ(part.data(), a.data() + 1);
    EXPECT_EQ(part.size(), 3u);
    EXPECT_EQ(arrayAppend(a, {5, 6})[1], 6);
    const ArrayView<int> open = arrayAppend(a, NoInit, 2);
    EXPECT_EQ(open.data(), a.data() + 6);
    EXPECT_EQ(open.size(), 2u);
    EXPECT_EQ(a.size(), 8u);
}

TEST(GrowableArrayTest, AppendOfNothingLeavesFreshArrayNull) {
    Array<int> a;
    arrayAppend(a, ArrayView<const int>{});
    arrayAppend(a, NoInit, std::size_t{});
    EXPECT_EQ(a.data(), nullptr);
    EXPECT_FALSE(arrayIsGrowable(a));
}

TEST(GrowableArrayTest, ReserveIsExact) {
    Array<int> a;
    EXPECT_EQ(arrayReserve(a, 17), 17u);
    EXPECT_TRUE(arrayIsGrowable(a));
    EXPECT_EQ(arrayCapacity(a), 17u);
    EXPECT_EQ(a.size(), 0u);
    EXPECT_EQ(arrayReserve(a, 3), 17u);
    EXPECT_EQ(arrayReserve(a, 18), 18u);
}

TEST(GrowableArrayTest, ReserveOfNoMoreThanSizeLeavesFixedArray) {
    Array<int> a{ValueInit, 5};
    const int* const data = a.data();
    EXPECT_EQ(arrayReserve(a, 5), 5u);
    EXPECT_EQ(a.data(), data);
    EXPECT_FALSE(arrayIsGrowable(a));
}

TEST(GrowableArrayTest, ResizeToSameSizeLeavesFixedArray) {
    Array<int> a{ValueInit, 5};
    arrayResize(a, 5);
    EXPECT_FALSE(arrayIsGrowable(a));
}

TEST(GrowableArrayTest, ResizeOfFixedArrayIsExact) {
    Array<int> a{InPlaceInit, {1, 2, 3}};
    arrayResize(a, 5);
    EXPECT_TRUE(arrayIsGrowable(a));
    EXPECT_EQ(arrayCapacity(a), 5u);
    EXPECT_EQ(a[2], 3);
    EXPECT_EQ(a[4], 0);

    Array<int> b{InPlaceInit, {1, 2, 3}};
    arrayResize(b, NoInit, 2);
    EXPECT_EQ(arrayCapacity(b), 2u);
    EXPECT_EQ(b[1], 2);
}

TEST(GrowableArrayTest, ResizeKeepsCapacityWhenShrinking) {
    Array<int> a;
    arrayResize(a, ValueInit, 10);
    arrayResize(a, 4);
    EXPECT_EQ(a.size(), 4u);
    EXPECT_EQ(arrayCapacity(a), 10u);
    arrayResize(a, DirectInit, 8, 7);
    EXPECT_EQ(arrayCapacity(a), 10u);
    EXPECT_EQ(a[3], 0);
    EXPECT_EQ(a[4], 7);
    EXPECT_EQ(a[7], 7);
    arrayResize(a, NoInit, 21);
    EXPECT_EQ(arrayCapacity(a), 21u);
    EXPECT_EQ(a[7], 7);
}

TEST(GrowableArrayTest, ElementsAreDestroyedOnce) {
    Alive::count = 0;
    {
        Array<Alive> a{DefaultInit, 2};
        for(int i = 0; i != 10; ++i)
            arrayAppend(a, InPlaceInit, i);
        EXPECT_EQ(Alive::count, 12);
        arrayResize(a, 20);
        EXPECT_EQ(Alive::count, 20);
        arrayResize(a, DefaultInit, 5);
        EXPECT_EQ(Alive::count, 5);
        arrayRemoveSuffix(a, 2);
        EXPECT_EQ(Alive::count, 3);
        arrayReserve(a, 100);
        EXPECT_EQ(Alive::count, 3);
    }
    EXPECT_EQ(Alive::count, 0);
}

TEST(GrowableArrayTest, RemoveSuffixOfNothingLeavesFixedArray) {
    Array<int> a{ValueInit, 3};
    arrayRemoveSuffix(a, 0);
    EXPECT_FALSE(arrayIsGrowable(a));
}

TEST(GrowableArrayTest, RemoveSuffixMakesFixedArrayGrowable) {
    Array<int> a{InPlaceInit, {1, 2, 3}};
    arrayRemoveSuffix(a);
    EXPECT_TRUE(arrayIsGrowable(a));
    EXPECT_EQ(a.size(), 2u);
    EXPECT_EQ(arrayCapacity(a), 2u);
    arrayRemoveSuffix(a, 2);
    EXPECT_TRUE(a.isEmpty());
    EXPECT_EQ(arrayCapacity(a), 2u);
}

TEST(GrowableArrayTest, RemoveSuffixOfTooMuchAsserts) {
    Array<int> a{ValueInit, 3};
    EXPECT_ASSERTION(arrayRemoveSuffix(a, 4),
        "Containers::arrayRemoveSuffix(): can't remove 4 elements from an array of size 3");
}

TEST(GrowableArrayTest, AllocatorCanBeNamed) {
    Array<int> a;
    arrayAppend<ArrayNewAllocator>(a, 1);
    arrayAppend<ArrayNewAllocator>(a, {2, 3});
    EXPECT_TRUE(arrayIsGrowable<ArrayNewAllocator>(a));
    EXPECT_FALSE(arrayIsGrowable(a));
    EXPECT_EQ(arrayCapacity<ArrayNewAllocator>(a), 6u);
    arrayReserve<ArrayMallocAllocator>(a, 20);
    arrayResize<ArrayMallocAllocator>(a, NoInit, 10);
    arrayAppend<ArrayMallocAllocator>(a, 4);
    arrayRemoveSuffix<ArrayMallocAllocator>(a, 8);
    EXPECT_EQ(arrayCapacity(a), 20u);
    ASSERT_EQ(a.size(), 3u);
    EXPECT_EQ(a[2], 3);
}

}
