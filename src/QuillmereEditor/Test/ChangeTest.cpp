#include "QuillmereEditor/Change.h"

#include <cstring>
#include <sstream>
#include <type_traits>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>

using namespace Corrade;

namespace QuillmereEngine { namespace Test {

namespace {

Change change(const char* const path, const int oldValue, const int newValue) {
    Change out;
    out.path = Containers::Array<char>{NoInit, std::strlen(path) + 1};
    std::memcpy(out.path.data(), path, out.path.size());
    if(oldValue)
        out.oldValue.emplace(oldValue);
    if(newValue)
        out.newValue.emplace(newValue);
    return out;
}

std::string printed(const Change& change) {
    std::ostringstream out;
    Utility::Debug{&out} << "->" << change << "<-";
    return out.str();
}

}

TEST(ChangeTest, DefaultIsEmptyAndUngrouped) {
    const Change empty;
    EXPECT_EQ(empty.path.data(), nullptr);
    EXPECT_EQ(empty.path.size(), 0u);
    EXPECT_EQ(empty.oldValue, nullptr);
    EXPECT_EQ(empty.newValue, nullptr);
    EXPECT_EQ(empty.group, -1);
}

TEST(ChangeTest, OnlyMoves) {
    EXPECT_FALSE(std::is_copy_constructible<Change>::value);
    EXPECT_FALSE(std::is_copy_assignable<Change>::value);
    EXPECT_TRUE(std::is_nothrow_move_constructible<Change>::value);
    EXPECT_TRUE(std::is_nothrow_move_assignable<Change>::value);
}

TEST(ChangeTest, PrintsItsKind) {
    EXPECT_EQ(printed(change("/a/b", 1, 2)), "-> Change /a/b: 1 -> 2 <-\n");
    EXPECT_EQ(printed(change("/a/b", 1, 0)), "-> Remove /a/b: 1 -> () <-\n");
    EXPECT_EQ(printed(change("/a/b", 0, 2)), "-> Create /a/b: () -> 2 <-\n");
    EXPECT_EQ(printed(Change{}), "-> Create : () -> () <-\n");
}

TEST(ChangeTest, PrintsAPathWithoutItsNul) {
    Change unterminated;
    unterminated.path = Containers::Array<char>{InPlaceInit, {'/', 'a'}};
    EXPECT_EQ(printed(unterminated), "-> Create /a: () -> () <-\n");
    unterminated.path = Containers::Array<char>{InPlaceInit, {'/', 'a', '\0', '\0'}};
    EXPECT_EQ(printed(unterminated), "-> Create /a: () -> () <-\n");
}

TEST(ChangeTest, MovingLeavesAnEmptyChangeWithItsGroup) {
    Change source = change("/a", 1, 2);
    source.group = 7;
    const char* const path = source.path.data();
    const Change moved{std::move(source)};
    EXPECT_EQ(moved.path.data(), path);
    EXPECT_EQ(printed(moved), "-> Change /a: 1 -> 2 <-\n");
    EXPECT_EQ(moved.group, 7);
    EXPECT_EQ(printed(source), "-> Create : () -> () <-\n");
    EXPECT_EQ(source.path.size(), 0u);
    EXPECT_EQ(source.group, 7);
}

TEST(ChangeTest, MoveAssignmentExchangesAllButTheGroup) {
    Change a = change("/a", 1, 2), b = change("/b", 0, 4);
    a.group = 1;
    b.group = 2;
    a = std::move(b);
    EXPECT_EQ(printed(a), "-> Create /b: () -> 4 <-\n");
    EXPECT_EQ(printed(b), "-> Change /a: 1 -> 2 <-\n");
    EXPECT_EQ(a.group, 2);
    EXPECT_EQ(b.group, 2);
}

}}
