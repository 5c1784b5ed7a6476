#include "host/ValueAccess.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "host/ResourceManager.h"

namespace QuillmereEngine { namespace Test {

namespace {

class ValueAccessTest: public testing::Test {
protected:
    ValueAccessTest() {
        document.Parse(
            R"({"z":{"name":"box","visible":true,"hidden":false,"count":1},"a":[],"z":5})");
    }

    rapidjson::Document document;
};

}

TEST_F(ValueAccessTest, MembersAreReadByName) {
    const ValueAccess root{document};
    EXPECT_STREQ(root["z"]["name"].asString(), "box");
    EXPECT_TRUE(root["z"].subValue("visible").asBool());
    EXPECT_STREQ(root.subValue("z")["name"].asString(), "box");
    EXPECT_TRUE(root["z"]["name"].isString());
}

TEST_F(ValueAccessTest, WhatDoesNotFitReadsAsNothing) {
    const ValueAccess root{document};
    for(const char* const key: {"visible", "hidden", "count", "none"})
        EXPECT_STREQ(root["z"][key].asString(), "") << key;
    for(const char* const key: {"hidden", "count", "name", "none"})
        EXPECT_FALSE(root["z"][key].asBool()) << key;
    EXPECT_FALSE(root["none"]["none"]["none"].exists());
    EXPECT_FALSE(root["a"]["0"].exists());
    EXPECT_FALSE(root.subValue("none").exists());
    EXPECT_TRUE(root["a"].exists());
}

TEST_F(ValueAccessTest, KeysComeInTheDocumentsOrder) {
    const ValueAccess root{document};
    std::vector<std::string> keys;
    for(const char* const key: root)
        keys.push_back(key);
    EXPECT_EQ(keys, (std::vector<std::string>{"z", "a", "z"}));
}

TEST_F(ValueAccessTest, AnythingButAnObjectHasNoKeys) {
    const ValueAccess list = ValueAccess{document}["a"], none = ValueAccess{document}["none"];
    EXPECT_FALSE(list.begin() != list.end());
    EXPECT_TRUE(none.begin() == none.end());
    EXPECT_EQ(none.size(), 0u);
}

TEST_F(ValueAccessTest, KeyBehindTheEndEndsTheProcess) {
    const ValueAccess root{document};
    EXPECT_EXIT(root.key(3), testing::KilledBySignal(SIGABRT),
        "^ValueAccess::key\\(\\): expected an index below 3 but got 3\n$");
}

TEST_F(ValueAccessTest, MembersHaveTheIndicesOfTheirKeys) {
    const ValueAccess root{document};
    ASSERT_EQ(root.size(), 3u);
    EXPECT_STREQ(root.at(0)["name"].asString(), root["z"]["name"].asString());
    /* Also of the second of two with the same key, which can't be found by it */
    for(std::size_t i = 0; i != root.size(); ++i)
        EXPECT_TRUE(root.at(i).exists()) << root.key(i);
    EXPECT_EXIT(root.at(3), testing::KilledBySignal(SIGABRT),
        "^ValueAccess::at\\(\\): expected an index below 3 but got 3\n$");
}

TEST_F(ValueAccessTest, NullKeyEndsTheProcess) {
    const ValueAccess root{document};
    const SubValueAccess sub{&document};
    const char* const none = nullptr;
    EXPECT_EXIT(root[none], testing::KilledBySignal(SIGABRT),
        "^ValueAccess::operator\\[\\]\\(\\): key was nullptr\n$");
    EXPECT_EXIT(root.subValue(none), testing::KilledBySignal(SIGABRT),
        "^ValueAccess::subValue\\(\\): key was nullptr\n$");
    EXPECT_EXIT(sub[none], testing::KilledBySignal(SIGABRT),
        "^SubValueAccess::operator\\[\\]\\(\\): key was nullptr\n$");
}

TEST(ResourceManagerTest, ObjectsHaveTheirTypeName) {
    const ObjectResourceManager manager;
    const AbstractResourceManager& base = manager;
    EXPECT_STREQ(base.typeName(), "objects");
}

}}
