#define CORRADE_STANDARD_ASSERT
/* What's tested is the standard one, also where a build leaves that out */
#undef NDEBUG

#include <Corrade/Utility/Assert.h>

#include "../../Test/expectAssertion.h"

namespace {

int half(const int value) {
    CORRADE_ASSERT(value % 2 == 0, "not printed" << value, {});
    return value / 2;
}

TEST(AssertStandardTest, PrintsTheConditionAndNotTheMessage) {
    EXPECT_EXIT(half(3), testing::KilledBySignal(SIGABRT),
        testing::AllOf(
            testing::HasSubstr("value % 2 == 0"), testing::Not(testing::HasSubstr("not printed"))));
    EXPECT_EQ(half(4), 2);
}

TEST(AssertStandardTest, ExpressionGivesItsValue) {
    EXPECT_EQ(CORRADE_INTERNAL_ASSERT_EXPRESSION(half(4)), 2);
    EXPECT_EXIT(CORRADE_INTERNAL_ASSERT_OUTPUT(half(0)), testing::KilledBySignal(SIGABRT), "");
}

}
