#define CORRADE_GRACEFUL_ASSERT

#include <sstream>

#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Debug.h>

#include "../../Test/expectAssertion.h"

namespace {

using namespace Corrade;

int half(const int value) {
    CORRADE_ASSERT(value % 2 == 0, "half(): expected an even number but got" << value, -1);
    return value / 2;
}

int signOf(const int value) {
    if(value > 0)
        return 1;
    CORRADE_ASSERT_UNREACHABLE("signOf(): can't handle" << value, 7);
}

TEST(AssertGracefulTest, ReturnsWhereErrorIsRedirected) {
    std::ostringstream out;
    Utility::Error redirect{&out};
    EXPECT_EQ(half(3), -1);
    EXPECT_EQ(signOf(-2), 7);
    EXPECT_EQ(out.str(), "half(): expected an even number but got 3\nsignOf(): can't handle -2\n");
}

TEST(AssertGracefulTest, AbortsOnDefaultOutput) {
    EXPECT_ASSERTION(half(3), "half(): expected an even number but got 3");
}

TEST(AssertGracefulTest, InternalOnesAbortInAnyCase) {
    EXPECT_EXIT(
        {
            std::ostringstream out;
            Utility::Error redirect{&out};
            CORRADE_INTERNAL_ASSERT(out.bad());
        },
        testing::KilledBySignal(SIGABRT), testing::StartsWith("Assertion out.bad() failed at "));
}

}
