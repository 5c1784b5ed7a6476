#include <sstream>
#include <type_traits>
#include <utility>
#include <vector>

#include <Corrade/Containers/Pointer.h>
#include <Corrade/Utility/Debug.h>

#include "../../Test/expectAssertion.h"

namespace {

using namespace Corrade;
using Containers::Pointer;

struct Base {
    explicit Base(int a = 3): value{a} { ++alive; }
    virtual ~Base() { --alive; }

    int value;
    static int alive;
};
int Base::alive;
struct Derived: Base {
    using Base::Base;
};

class PointerTest: public testing::Test {
protected:
    void SetUp() override { Base::alive = 0; }
    void TearDown() override { EXPECT_EQ(Base::alive, 0); }
};

TEST_F(PointerTest, DefaultIsNull) {
    const Pointer<Base> a;
    const Pointer<Base> b = nullptr;
    EXPECT_FALSE(a);
    EXPECT_TRUE(a == nullptr);
    EXPECT_TRUE(nullptr == b);
    EXPECT_FALSE(a != nullptr);
    EXPECT_FALSE(nullptr != b);
    EXPECT_EQ(a.get(), nullptr);
}

TEST_F(PointerTest, OwnsTheObject) {
    static_assert(sizeof(Pointer<Base>) == sizeof(void*), "");
    static_assert(!std::is_convertible<Base*, Pointer<Base>>::value, "");
    static_assert(!std::is_copy_constructible<Pointer<Base>>::value, "");
    static_assert(!std::is_copy_assignable<Pointer<Base>>::value, "");
    {
        const Pointer<Base> a{new Base};
        EXPECT_EQ(Base::alive, 1);
    }
    EXPECT_EQ(Base::alive, 0);
}

TEST_F(PointerTest, ConstGoesThrough) {
    Pointer<Base> a{InPlaceInit, 7};
    const Pointer<Base>& constant = a;
    static_assert(std::is_same<decltype(a.get()), Base*>::value, "");
    static_assert(std::is_same<decltype(constant.get()), const Base*>::value, "");
    static_assert(std::is_same<decltype(*constant), const Base&>::value, "");
    a->value = 8;
    EXPECT_EQ((*a).value, 8);
    EXPECT_EQ(constant->value, 8);
}

TEST_F(PointerTest, DerivedConvertsToBase) {
    Pointer<Derived> a{InPlaceInit, 5};
    Pointer<Base> b{std::move(a)};
    EXPECT_EQ(a, nullptr);
    EXPECT_EQ(b->value, 5);
    static_assert(!std::is_convertible<Pointer<Base>&&, Pointer<Derived>>::value, "");
    const Pointer<Derived> c = Containers::pointerCast<Derived>(std::move(b));
    EXPECT_EQ(c->value, 5);
    EXPECT_EQ(b, nullptr);
}

TEST_F(PointerTest, MoveAssignmentSwaps) {
    Pointer<Base> a{InPlaceInit, 1};
    Pointer<Base> b{InPlaceInit, 2};
    a = std::move(b);
    EXPECT_EQ(a->value, 2);
    EXPECT_EQ(b->value, 1);
}

TEST_F(PointerTest, AssigningNullDeletes) {
    Pointer<Base> a{InPlaceInit};
    a = nullptr;
    EXPECT_EQ(Base::alive, 0);
}

TEST_F(PointerTest, ResetEmplaceAndReleaseHandOver) {
    Pointer<Base> a;
    EXPECT_EQ(a.emplace(4).value, 4);
    a.reset(new Base{5});
    EXPECT_EQ(Base::alive, 1);
    Base* const released = a.release();
    EXPECT_EQ(a, nullptr);
    EXPECT_EQ(released->value, 5);
    a.reset(released);
    a.reset();
    EXPECT_EQ(Base::alive, 0);
}

TEST_F(PointerTest, ArgumentsAreInBracesAndNoneInParentheses) {
    EXPECT_EQ(Containers::pointer<std::vector<int>>(3, 1)->size(), 2u);
    struct Aggregate {
        int a, b;
    };
    EXPECT_EQ(Containers::pointer<Aggregate>(3, 1)->b, 1);
    EXPECT_EQ(*Containers::pointer<int>(), 0);
}

TEST_F(PointerTest, FunctionTakesOverObject) {
    const auto a = Containers::pointer(new Derived{6});
    static_assert(std::is_same<decltype(a), const Pointer<Derived>>::value, "");
    EXPECT_EQ(a->value, 6);
}

TEST_F(PointerTest, PrintsAsAddress) {
    const Pointer<Base> a{new Base};
    std::ostringstream out, expected;
    Utility::Debug{&out} << a << Pointer<Base>{};
    Utility::Debug{&expected} << static_cast<const void*>(a.get()) << "0x0";
    EXPECT_EQ(out.str(), expected.str());
}

TEST_F(PointerTest, AccessThroughNullAsserts) {
    Pointer<Base> a;
    const Pointer<Base> b;
    EXPECT_ASSERTION(a->value = 3, "Containers::Pointer: the pointer is null");
    EXPECT_ASSERTION(static_cast<void>(*a), "Containers::Pointer: the pointer is null");
    EXPECT_ASSERTION(static_cast<void>(b->value), "Containers::Pointer: the pointer is null");
    EXPECT_ASSERTION(static_cast<void>(*b), "Containers::Pointer: the pointer is null");
}

}
