#define CORRADE_NO_ASSERT

#include <Corrade/Utility/Assert.h>

#include <gtest/gtest.h>

namespace {

bool count(int& calls) {
    ++calls;
    return false;
}

TEST(AssertNoneTest, ConditionsAreNotEvaluated) {
    int calls = 0;
    [&calls]() {
        CORRADE_ASSERT(count(calls), "not printed" << calls, );
        CORRADE_INTERNAL_ASSERT(count(calls));
        CORRADE_CONSTEXPR_ASSERT(count(calls), "not printed");
    }();
    EXPECT_EQ(calls, 0);
}

TEST(AssertNoneTest, CallsAreMade) {
    int calls = 0;
    [&calls]() {
        CORRADE_ASSERT_OUTPUT(count(calls), "not printed", );
        CORRADE_INTERNAL_ASSERT_OUTPUT(count(calls));
    }();
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(CORRADE_INTERNAL_ASSERT_EXPRESSION(calls - 2), 0);
}

}
