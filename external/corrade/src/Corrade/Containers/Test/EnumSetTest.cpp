#include <type_traits>

#include <Corrade/Containers/EnumSet.h>

#include <gtest/gtest.h>

namespace {

using namespace Corrade;

enum class Flag : unsigned char { A = 1, B = 2, C = 4, AB = 3 };
typedef Containers::EnumSet<Flag, 7> Flags;
CORRADE_ENUMSET_OPERATORS(Flags)

class Widget {
public:
    enum class Option : int { Wide = 1, High = 2 };
    typedef Containers::EnumSet<Option> Options;
    CORRADE_ENUMSET_FRIEND_OPERATORS(Options)
};

TEST(EnumSetTest, IsConstexprAndTriviallyCopyable) {
    static_assert(std::is_trivially_copyable<Flags>::value, "");
    static_assert(std::is_same<Flags::Type, Flag>::value, "");
    static_assert(std::is_same<Flags::UnderlyingType, unsigned char>::value, "");
    constexpr Flags flags = Flag::A | Flag::C;
    static_assert(flags >= Flag::A && !(flags >= Flag::B) && flags <= (flags | Flag::B), "");
    EXPECT_EQ(Flags::FullValue, 7);
}

TEST(EnumSetTest, DefaultIsEmpty) {
    constexpr Flags flags;
    EXPECT_FALSE(flags);
    EXPECT_EQ(Containers::enumCastUnderlyingType(flags), 0);
}

TEST(EnumSetTest, OperatorsCombineBits) {
    Flags flags = Flag::A;
    flags |= Flag::B;
    EXPECT_TRUE(flags == Flag::AB);
    EXPECT_TRUE(Flag::AB == flags);
    EXPECT_TRUE(Flag::C != flags);
    flags &= Flag::B | Flag::C;
    EXPECT_TRUE(flags == Flag::B);
    flags ^= Flag::AB;
    EXPECT_TRUE(flags == Flag::A);
    EXPECT_TRUE((Flag::A & Flag::AB) == Flag::A);
    EXPECT_TRUE((Flag::A ^ Flag::AB) == Flag::B);
}

TEST(EnumSetTest, HasAllOfAndIsPartOf) {
    const Flags flags = Flag::A;
    EXPECT_FALSE(flags >= Flag::AB);
    EXPECT_TRUE(flags <= Flag::AB);
    EXPECT_TRUE(Flag::AB >= flags);
    EXPECT_TRUE(Flag::A <= flags);
}

TEST(EnumSetTest, ComplementStaysInFullValue) {
    EXPECT_EQ(static_cast<unsigned char>(~Flags{}), 7);
    EXPECT_TRUE(~Flag::AB == Flag::C);
    EXPECT_TRUE(~(~Flags{Flag::B}) == Flag::B);
}

TEST(EnumSetTest, FullValueDefaultsToAllBits) {
    EXPECT_EQ(static_cast<int>(~Widget::Options{}), -1);
}

TEST(EnumSetTest, FriendOperatorsAreFound) {
    constexpr Widget::Options options = Widget::Option::Wide | Widget::Option::High;
    EXPECT_TRUE(Widget::Option::Wide <= options);
    EXPECT_TRUE((~Widget::Option::Wide & options) == Widget::Option::High);
}

TEST(EnumSetTest, CastGivesUnderlyingValue) {
    static_assert(Containers::enumCastUnderlyingType(Flag::C) == 4, "");
    static_assert(
        std::is_same<decltype(Containers::enumCastUnderlyingType(Flags{})), unsigned char>::value,
        "");
    EXPECT_EQ(Containers::enumCastUnderlyingType(Flag::A | Flag::C), 5);
}

TEST(EnumSetTest, ConversionsToNumbersAreExplicit) {
    static_assert(!std::is_convertible<Flags, bool>::value, "");
    static_assert(!std::is_convertible<Flags, unsigned char>::value, "");
    static_assert(std::is_convertible<Flag, Flags>::value, "");
}

}
