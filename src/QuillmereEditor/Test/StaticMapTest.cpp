#include "QuillmereEditor/StaticMap.h"

#include <string>
#include <vector>

#include <Corrade/Containers/Pointer.h>
#include <gtest/gtest.h>

using namespace Corrade;

namespace QuillmereEngine { namespace Test {

namespace {

using IntMap = StaticMap<Containers::Pointer<int>>;

IntMap filled(const std::vector<const char*>& keys) {
    IntMap map;
    map.grow(keys.size());
    for(std::size_t i = 0; i != keys.size(); ++i)
        map.put(keys[i], Containers::pointer<int>(int(i)));
    return map;
}

int valueOf(IntMap& map, const char* const key, const std::size_t n) {
    const Containers::Pointer<int>* const found = map.findn(key, n);
    return found ? **found : -1;
}

}

TEST(StaticMapTest, NewOneIsCompiledAndEmpty) {
    IntMap map;
    EXPECT_TRUE(map.isCompiled());
    EXPECT_EQ(map.size(), 0u);
    EXPECT_EQ(map.capacity(), 0u);
    EXPECT_EQ(map.findn("a", 2), nullptr);
}

TEST(StaticMapTest, FindsAKeyOrTheSmallestThatBeginsWithIt) {
    IntMap map = filled({"b", "ab", "a"});
    map.compile();
    EXPECT_EQ(valueOf(map, "ab", 3), 1);
    EXPECT_EQ(valueOf(map, "a", 2), 2);
    EXPECT_EQ(valueOf(map, "a", 1), 2);
    EXPECT_EQ(valueOf(map, "b", 2), 0);
    EXPECT_EQ(valueOf(map, "c", 2), -1);
    EXPECT_EQ(valueOf(map, "", 1), -1);
    EXPECT_EQ(valueOf(map, "", 0), 2);
}

TEST(StaticMapTest, FindsTheSmallestKeyWithAPrefix) {
    IntMap map = filled({"abc", "abd", "ab!", "aa", "b"});
    map.compile();
    EXPECT_EQ(valueOf(map, "ab", 2), 2);
    EXPECT_EQ(valueOf(map, "ab", 3), -1);
}

TEST(StaticMapTest, ComparesBytesWithoutSign) {
    IntMap map = filled({"\xc3\xa4", "z", "a"});
    map.compile();
    EXPECT_EQ(valueOf(map, "\xc3\xa4", 3), 0);
    EXPECT_EQ(valueOf(map, "z", 2), 1);
}

TEST(StaticMapTest, PutGivesTheStoredValueAndNeedsCompiling) {
    IntMap map;
    map.grow(1);
    Containers::Pointer<int> value = Containers::pointer<int>(5);
    const int* const address = value.get();
    EXPECT_EQ(map.put("a", std::move(value)).get(), address);
    EXPECT_EQ(value, nullptr);
    EXPECT_FALSE(map.isCompiled());
}

TEST(StaticMapTest, GrowingKeepsEntriesAndOrder) {
    std::vector<std::string> keys;
    for(int i = 0; i != 16; ++i)
        keys.push_back("key" + std::to_string(i));
    std::vector<const char*> borrowed;
    for(const std::string& key: keys)
        borrowed.push_back(key.c_str());

    IntMap map = filled(borrowed);
    map.compile();
    EXPECT_EQ(map.capacity(), 16u);
    map.grow(16);
    EXPECT_EQ(map.capacity(), 32u);
    EXPECT_TRUE(map.isCompiled());
    for(int i = 0; i != 16; ++i)
        EXPECT_EQ(valueOf(map, borrowed[std::size_t(i)], keys[std::size_t(i)].size() + 1), i);
}

TEST(StaticMapTest, OfEqualKeysOneIsFound) {
    IntMap map = filled({"a", "a", "a"});
    map.compile();
    EXPECT_EQ(map.size(), 3u);
    EXPECT_GE(valueOf(map, "a", 2), 0);
}

TEST(StaticMapTest, ClearingKeepsCapacityAndState) {
    IntMap map = filled({"b", "a"});
    map.clear();
    EXPECT_EQ(map.size(), 0u);
    EXPECT_EQ(map.capacity(), 2u);
    EXPECT_FALSE(map.isCompiled());
    map.compile();
    EXPECT_EQ(map.findn("a", 2), nullptr);
}

TEST(StaticMapTest, ClearingHandsTheValuesOver) {
    IntMap map = filled({"b", "a"});
    std::vector<Containers::Pointer<int>> released;
    map.clear([&](Containers::Pointer<int>&& value) {
        EXPECT_EQ(map.size(), 0u);
        released.push_back(std::move(value));
    });
    ASSERT_EQ(released.size(), 2u);
    EXPECT_EQ(*released[0], 0);
}

TEST(StaticMapTest, WhatIsPutWhileClearingStays) {
    IntMap map = filled({"b", "a"});
    map.clear([&](Containers::Pointer<int>&& value) {
        if(map.size() == map.capacity())
            map.grow(1);
        map.put(*value ? "second" : "first", Containers::pointer<int>(*value + 10));
    });
    map.compile();
    EXPECT_EQ(map.size(), 2u);
    EXPECT_EQ(valueOf(map, "first", 6), 10);
    EXPECT_EQ(valueOf(map, "second", 7), 11);
}

TEST(StaticMapDeathTest, NullKey) {
    IntMap map;
    map.grow(1);
    EXPECT_EXIT(map.put(nullptr, nullptr), testing::KilledBySignal(SIGABRT),
        "^StaticMap::put\\(\\): key cannot be nullptr\\.\n$");
}

TEST(StaticMapDeathTest, FullMap) {
    IntMap map = filled({"a"});
    EXPECT_EXIT(map.put("b", nullptr), testing::KilledBySignal(SIGABRT),
        "^StaticMap::put\\(\\): capacity exhausted\\.\n$");
}

TEST(StaticMapDeathTest, LookupBeforeCompiling) {
    IntMap map = filled({"a"});
    EXPECT_EXIT(map.findn("a", 2), testing::KilledBySignal(SIGABRT),
        "^StaticMap::find\\(\\): Map needs to be compiled\\.\n$");
}

}}
