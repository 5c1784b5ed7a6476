#include <memory>
#include <sstream>
#include <string>

#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Macros.h>

#include "../../Test/expectAssertion.h"

namespace {

using namespace Corrade;

int half(const int value) {
    CORRADE_ASSERT(value % 2 == 0, "half(): expected an even number but got" << value, {});
    return value / 2;
}

void expectTrue(const bool value) { CORRADE_ASSERT(value, "expectTrue(): got false", ); }

bool count(int& calls, const bool result) {
    ++calls;
    return result;
}

void expectCall(int& calls, const bool result) {
    CORRADE_ASSERT_OUTPUT(count(calls, result), "expectCall(): failed", );
}

int signOf(const int value) {
    if(value > 0)
        return 1;
    CORRADE_ASSERT_UNREACHABLE("signOf(): can't handle" << value, {});
}

constexpr int at(const int* const data, const std::size_t size, const std::size_t i) {
    return CORRADE_CONSTEXPR_ASSERT(i < size, "at(): index" << i << "out of range for" << size),
           data[i];
}

constexpr int Data[]{1, 2, 3};

TEST(AssertTest, PassingOnesDoNothing) {
    EXPECT_EQ(half(6), 3);
    expectTrue(true);
    int calls = 0;
    expectCall(calls, true);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(signOf(3), 1);
    static_assert(at(Data, 3, 1) == 2, "");
    CORRADE_INTERNAL_ASSERT(calls == 1);
    CORRADE_INTERNAL_ASSERT_OUTPUT(count(calls, true));
    EXPECT_EQ(calls, 2);
}

TEST(AssertTest, MessageIsPrintedInOneLine) {
    int calls = 0;
    EXPECT_ASSERTION(half(3), "half(): expected an even number but got 3");
    EXPECT_ASSERTION(expectTrue(false), "expectTrue(): got false");
    EXPECT_ASSERTION(expectCall(calls, false), "expectCall(): failed");
    EXPECT_ASSERTION(signOf(-7), "signOf(): can't handle -7");
    EXPECT_ASSERTION(at(Data, 3, 7), "at(): index 7 out of range for 3");
}

TEST(AssertTest, RedirectionDoesNotHideTheMessage) {
    EXPECT_ASSERTION(
        {
            std::ostringstream out;
            Utility::Error redirect{&out};
            half(3);
        },
        "half(): expected an even number but got 3");
}

/* At the end of the file, where they change its name and lines for nothing else */
void failCondition(int value);
void failOutput(int& calls);
void failExpression(int value);
void failUnreachable();
std::string lineString();

TEST(AssertTest, InternalOnesNameExpressionAndPlace) {
    int calls = 0;
    EXPECT_ASSERTION(failCondition(3), "Assertion value == 4 || !value failed at file.cpp:42");
    EXPECT_ASSERTION(failOutput(calls), "Assertion count(calls, false) failed at file.cpp:43");
    EXPECT_ASSERTION(failExpression(3), "Assertion value - 3 failed at file.cpp:44");
    EXPECT_ASSERTION(failUnreachable(), "Reached unreachable code at file.cpp:45");
}

TEST(AssertTest, ExpressionGivesItsValue) {
    int value = 3;
    CORRADE_INTERNAL_ASSERT_EXPRESSION(value) = 4;
    EXPECT_EQ(value, 4);
    const auto moved = CORRADE_INTERNAL_ASSERT_EXPRESSION(std::make_unique<int>(5));
    EXPECT_EQ(*moved, 5);
}

TEST(MacrosTest, LineStringIsALiteral) { EXPECT_EQ(lineString(), "line 46"); }

CORRADE_IGNORE_DEPRECATED_PUSH
[[deprecated]] int old() { return 3; }
TEST(MacrosTest, DeprecationCanBeIgnored) { EXPECT_EQ(old(), 3); }
CORRADE_IGNORE_DEPRECATED_POP

/* clang-format off */
#line 42 "file.cpp"
void failCondition(const int value) { CORRADE_INTERNAL_ASSERT(value == 4 || !value); }
void failOutput(int& calls) { CORRADE_INTERNAL_ASSERT_OUTPUT(count(calls, false)); }
void failExpression(const int value) { static_cast<void>(CORRADE_INTERNAL_ASSERT_EXPRESSION(value - 3)); }
void failUnreachable() { CORRADE_INTERNAL_ASSERT_UNREACHABLE(); }
std::string lineString() { return "line " CORRADE_LINE_STRING; }
/* clang-format on */

}
