#include <type_traits>
#include <utility>

#include <Corrade/Containers/ScopeGuard.h>

#include <gtest/gtest.h>

namespace {

using namespace Corrade;
using Containers::ScopeGuard;

int calls, lastHandle;

int closeHandle(const int handle) {
    ++calls;
    lastHandle = handle;
    return 0;
}

void increment(int* const value) { ++*value; }

void countCall() { ++calls; }

class ScopeGuardTest: public testing::Test {
protected:
    void SetUp() override { calls = lastHandle = 0; }
};

TEST_F(ScopeGuardTest, CallsFunctionWithHandle) {
    {
        const ScopeGuard guard{1337, closeHandle};
        EXPECT_EQ(calls, 0);
    }
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(lastHandle, 1337);
}

TEST_F(ScopeGuardTest, CallsLambdaWithPointer) {
    int value = 3;
    {
        const ScopeGuard guard{&value, [](int* const handle) { increment(handle); }};
    }
    EXPECT_EQ(value, 4);
}

TEST_F(ScopeGuardTest, HandleConvertsToParameter) {
    int value = 3;
    struct Handle {
        operator int*() const { return pointer; }
        int* pointer;
    };
    { const ScopeGuard guard{Handle{&value}, increment}; }
    EXPECT_EQ(value, 4);
}

TEST_F(ScopeGuardTest, CallsWithoutHandle) {
    {
        const ScopeGuard a{countCall};
        const ScopeGuard b{[]() { countCall(); }};
    }
    EXPECT_EQ(calls, 2);
}

TEST_F(ScopeGuardTest, ReleasedOneCallsNothing) {
    {
        ScopeGuard guard{countCall};
        guard.release();
    }
    { const ScopeGuard none{NoCreate}; }
    EXPECT_EQ(calls, 0);
}

TEST_F(ScopeGuardTest, MoveTakesTheCall) {
    {
        ScopeGuard a{7, closeHandle};
        const ScopeGuard b{std::move(a)};
    }
    EXPECT_EQ(calls, 1);
}

TEST_F(ScopeGuardTest, MoveAssignmentSwaps) {
    ScopeGuard outer{NoCreate};
    {
        ScopeGuard inner{7, closeHandle};
        outer = std::move(inner);
    }
    EXPECT_EQ(calls, 0);
    outer = ScopeGuard{NoCreate};
    EXPECT_EQ(calls, 1);
}

TEST_F(ScopeGuardTest, IsNotCopyable) {
    static_assert(!std::is_copy_constructible<ScopeGuard>::value, "");
    static_assert(!std::is_copy_assignable<ScopeGuard>::value, "");
    static_assert(std::is_nothrow_move_constructible<ScopeGuard>::value, "");
}

}
