#include "host/MemberIndex.h"

#include <iterator>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/ProjectFile.h"
#include "host/RapidJsonUtils.h"
#include "host/ValueAccess.h"
#include "testing/sanitizer.h"

namespace QuillmereEngine { namespace Test {

namespace {

/* More than enough for an object to be indexed */
constexpr int MemberCount = 300;

/* An object and its index, which has to agree with a search of RapidJSON's own after whatever is
   done to the object behind its back */
class MemberIndexTest: public testing::Test {
protected:
    MemberIndexTest() {
        object.SetObject();
        for(int i = 0; i != MemberCount; ++i)
            add(key(i), i);
    }

    static std::string key(const int i) { return "key" + std::to_string(i); }

    rapidjson::Value string(const std::string& text) {
        return rapidjson::Value{
            text.data(), rapidjson::SizeType(text.size()), object.GetAllocator()};
    }

    void add(const std::string& name, const int value) {
        object.AddMember(string(name), rapidjson::Value{value}, object.GetAllocator());
    }

    void remove(const std::string& name) { object.RemoveMember(name.c_str()); }

    const rapidjson::Value* searched(const std::string& name) {
        const auto found = object.FindMember(string(name));
        return found == object.MemberEnd() ? nullptr : &found->value;
    }

    void expectSearched(const std::string& name) {
        EXPECT_EQ(index.find(object, name), searched(name)) << name;
    }

    void expectAllSearched() {
        for(int i = -1; i <= MemberCount; ++i)
            expectSearched(key(i));
    }

    rapidjson::Document object;
    MemberIndex index;
};

using ProjectIndexTest = MemberIndexTest;

}

TEST_F(MemberIndexTest, FindsWhatASearchFinds) {
    expectAllSearched();
    expectAllSearched();
    expectSearched("");
    expectSearched(std::string{"key1\0", 5});
}

TEST_F(MemberIndexTest, SmallObjectsAreFoundToo) {
    object.SetObject();
    EXPECT_EQ(index.find(object, "a"), nullptr);
    add("a", 1);
    expectSearched("a");
    expectSearched("b");
}

TEST_F(MemberIndexTest, FollowsAddedMembers) {
    expectAllSearched();
    /* Within the object's memory and beyond it */
    for(int i = 0; i != MemberCount; ++i) {
        add("new" + std::to_string(i), i);
        expectSearched("new" + std::to_string(i));
        expectSearched(key(i));
    }
}

TEST_F(MemberIndexTest, FollowsRemovedMembers) {
    expectAllSearched();
    remove(key(5));
    expectAllSearched();
    object.EraseMember(object.MemberBegin() + 7);
    expectAllSearched();
}

TEST_F(MemberIndexTest, FollowsMembersThatChangePlaces) {
    expectAllSearched();
    /* As many members as before, at other places */
    remove(key(5));
    add(key(5), 5);
    expectAllSearched();
    object.MemberBegin()[1].name.Swap(object.MemberBegin()[200].name);
    expectAllSearched();
}

TEST_F(MemberIndexTest, FollowsRenamedMembers) {
    expectAllSearched();
    object.MemberBegin()[9].name = string("renamed");
    expectSearched("renamed");
    expectAllSearched();
}

TEST_F(MemberIndexTest, FirstOfEqualKeysCounts) {
    add(key(7), -1);
    expectAllSearched();
    EXPECT_EQ(index.find(object, key(7))->GetInt(), 7);
    /* The last member takes the place of the removed one, in front of the one that counted */
    remove(key(2));
    EXPECT_EQ(index.find(object, key(7))->GetInt(), -1);
    expectAllSearched();
    remove(key(7));
    expectAllSearched();
}

TEST_F(MemberIndexTest, FollowsAnotherObjectAtTheSamePlace) {
    expectAllSearched();
    for(int i = 0; i != MemberCount; ++i)
        object.MemberBegin()[i].name = string("other" + std::to_string(i));
    expectAllSearched();
    for(int i = 0; i != MemberCount; ++i)
        expectSearched("other" + std::to_string(i));
}

TEST_F(MemberIndexTest, ManyObjectsTakeTurns) {
    std::vector<rapidjson::Value> copies;
    for(std::size_t i = 0; i != MemberIndex::MostObjects * 3; ++i)
        copies.push_back(RapidJsonUtils::copy(object, object.GetAllocator()));
    for(int round = 0; round != 3; ++round)
        for(const rapidjson::Value& copy: copies)
            EXPECT_EQ(index.find(copy, key(round)), &copy.MemberBegin()[round].value);
}

TEST_F(MemberIndexTest, AgreesAfterAnyEdits) {
    std::mt19937 random{7};
    const int rounds = Testing::IsSanitized ? 1000 : 10000;
    for(int i = 0; i != rounds; ++i) {
        const int number = int(random() % (MemberCount * 2));
        switch(random() % 5) {
            case 0:
                remove(key(number));
                break;
            case 1:
                if(!searched(key(number)))
                    add(key(number), number);
                break;
            case 2:
                if(!searched(key(number)) && object.MemberCount() != 0)
                    object.MemberBegin()[random() % object.MemberCount()].name = string(
                        key(number));
                break;
            default:
                expectSearched(key(number));
        }
    }
}

/* Paths are followed by the index and without being parsed, so they're compared with RapidJSON's */
TEST_F(ProjectIndexTest, PathsLeadWhereRapidJsonsDo) {
    ProjectFile project;
    project.document->Parse(
        R"({"a":{"":{"":1},"b":[0,[1,{"c":2}],"x"],"0":3,"-":4,"~":5,"/":6,"~1":7,"#":8},)"
        R"("":{"":9},"01":10})");
    rapidjson::Value copy = RapidJsonUtils::copy(object, project.allocator());
    project.document->AddMember("large", copy, project.allocator());
    const char* const components[]{"a", "", "b", "0", "1", "01", "2", "3", "-", "-1", "+1", " 1",
        "1x", "c", "x", "~0", "~1", "~01", "~", "~2", "#", "%41", "large", "key299", "key300",
        "4294967295", "4294967296", "18446744073709551617"};
    std::mt19937 random{7};
    const auto component = [&] { return components[random() % std::size(components)]; };
    for(int i = 0; i != 20000; ++i) {
        std::string path = random() % 50 ? "" : component();
        for(std::size_t depth = random() % 5; depth != 0; --depth)
            path += std::string{"/"} + component();
        const rapidjson::Pointer pointer{path.c_str(), path.size()};
        const rapidjson::Value* const expected = pointer.IsValid() ? pointer.Get(*project.document)
                                                                   : nullptr;
        EXPECT_EQ(project.getValue(path.c_str(), true), expected) << path;
    }
    EXPECT_EQ(project.getValue("#/a/0", true), project.getValue("/a/0", true));
}

TEST_F(ProjectIndexTest, ResourcesAreFoundByTypeAndKey) {
    ProjectFile project;
    rapidjson::Value copy = RapidJsonUtils::copy(object, project.allocator());
    project.document->AddMember("large", copy, project.allocator());
    project.document->AddMember("plain", 7, project.allocator());
    EXPECT_TRUE(project.resource("large", "key299").exists());
    EXPECT_FALSE(project.resource("large", "key300").exists());
    EXPECT_FALSE(project.resource("plain", "key1").exists());
    EXPECT_FALSE(project.resource("missing", "key1").exists());
    project.document->SetArray();
    EXPECT_FALSE(project.resource("large", "key1").exists());
}

}}
