#define CORRADE_NO_ASSERT

#include <Corrade/Utility/Assert.h>

#include <gtest/gtest.h>

namespace {

bool count(int& calls) {
    ++calls;
    return false;
}

/* Evaluates none of them, so the counter isn't even read */
void check([[maybe_unused]] int& calls) {
    CORRADE_ASSERT(count(calls), "not printed" << calls, );
    CORRADE_INTERNAL_ASSERT(count(calls));
    CORRADE_CONSTEXPR_ASSERT(count(calls), "not printed");
}

void checkCalls(int& calls) {
    CORRADE_ASSERT_OUTPUT(count(calls), "not printed", );
    CORRADE_INTERNAL_ASSERT_OUTPUT(count(calls));
}

TEST(AssertNoneTest, ConditionsAreNotEvaluated) {
    int calls = 0;
    check(calls);
    EXPECT_EQ(calls, 0);
}

TEST(AssertNoneTest, CallsAreMade) {
    int calls = 0;
    checkCalls(calls);
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(CORRADE_INTERNAL_ASSERT_EXPRESSION(calls - 2), 0);
}

}
