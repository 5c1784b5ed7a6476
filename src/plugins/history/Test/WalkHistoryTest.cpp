#include "plugins/history/walkHistory.h"

#include <functional>
#include <sstream>
#include <stdexcept>
#include <string>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>

#include "QuillmereEditor/ChangeManager.h"
#include "host/ProjectFile.h"
#include "host/RapidJsonUtils.h"

namespace QuillmereEngine { namespace {

using namespace Corrade;

struct WalkHistoryTest: ::testing::Test {
    WalkHistoryTest() {
        project.document->SetObject();
        changes.addChangeHandler(
            "trap",
            [this](const Change&, Containers::ArrayView<const std::string>, void*) {
                if(trap)
                    trap();
            },
            nullptr);
    }

    void push(const char* const path) { changes.pushChange(path, rapidjson::Value{1}, false); }

    /* States 1, 2-4 in a group, 5 */
    void pushGroup() {
        push("/a");
        changes.beginGroup();
        for(const char* const path: {"/b", "/c", "/d"})
            push(path);
        changes.commit();
        push("/e");
    }

    std::string document() const { return RapidJsonUtils::toJson(*project.document); }

    std::string walk(const std::size_t state) {
        std::ostringstream refusal;
        const Utility::Error redirect{&refusal};
        return walkHistory(changes, state);
    }

    ProjectFile project;
    ChangeManager changes{project};
    std::function<void()> trap;
};

TEST_F(WalkHistoryTest, GoesBackAndForth) {
    for(const char* const path: {"/a", "/b", "/c"})
        push(path);
    EXPECT_EQ(walk(1), "");
    EXPECT_EQ(document(), R"({"a":1})");
    EXPECT_EQ(walk(0), "");
    EXPECT_EQ(document(), "{}");
    EXPECT_EQ(walk(3), "");
    EXPECT_EQ(document(), R"({"a":1,"b":1,"c":1})");
    EXPECT_EQ(walk(3), "");
    EXPECT_EQ(walk(1000), "");
    EXPECT_EQ(changes.appliedCount(), 3u);
    EXPECT_EQ(changes.changeCount(), 3u);
}

TEST_F(WalkHistoryTest, GroupIsReachedAtItsEnd) {
    pushGroup();
    const std::size_t ends[]{0, 1, 4, 4, 4, 5};
    for(std::size_t state = 0; state != std::size(ends); ++state) {
        EXPECT_EQ(reachableState(changes, state), ends[state]) << state;
        for(const std::size_t from: {0, 5}) {
            EXPECT_EQ(walk(from), "");
            EXPECT_EQ(walk(state), "");
            EXPECT_EQ(changes.appliedCount(), ends[state]) << state << " from " << from;
        }
    }
}

TEST_F(WalkHistoryTest, StateBeforeAGroupIsBeforeAllOfIt) {
    pushGroup();
    const std::size_t before[]{0, 0, 1, 1, 1, 4};
    for(std::size_t state = 0; state != std::size(before); ++state)
        EXPECT_EQ(stateBefore(changes, state), before[state]) << state;
}

TEST_F(WalkHistoryTest, NeighbouringGroupsAreTwo) {
    for(int i = 0; i != 2; ++i) {
        changes.beginGroup();
        push("/a");
        push("/b");
        changes.commit();
    }
    EXPECT_EQ(walk(1), "");
    EXPECT_EQ(changes.appliedCount(), 2u);
    EXPECT_EQ(reachableState(changes, 3), 4u);
}

TEST_F(WalkHistoryTest, LockedOrOpenHistoryIsLeftAlone) {
    push("/a");
    changes.setLocked(true);
    EXPECT_EQ(walk(0), "the history is in use");
    changes.setLocked(false);
    changes.beginGroup();
    EXPECT_EQ(walk(0), "the history is in use");
    EXPECT_EQ(changes.appliedCount(), 1u);
    changes.commit();
    EXPECT_EQ(walk(0), "");
}

TEST_F(WalkHistoryTest, RefusedChangeEndsIt) {
    project.document->AddMember(
        "map", rapidjson::Value{rapidjson::kObjectType}, project.allocator());
    push("/a");
    push("/map/-5");
    push("/c");
    /* Not through the history: where -5 was the name of a member it's an index now */
    rapidjson::Value& map = project.document->FindMember("map")->value;
    map.SetArray().PushBack(1, project.allocator());
    for(int i = 0; i != 2; ++i) {
        EXPECT_EQ(walk(0), "can't undo /map/-5: the document has no place for it");
        EXPECT_EQ(changes.appliedCount(), 2u);
    }
    EXPECT_EQ(walk(3), "");
    map.SetObject();
    EXPECT_EQ(walk(0), "");
    map.SetArray().PushBack(1, project.allocator());
    EXPECT_EQ(walk(3), "can't redo /map/-5: the document has no place for it");
    EXPECT_EQ(changes.appliedCount(), 1u);
}

TEST_F(WalkHistoryTest, HandlerThatThrowsEndsIt) {
    for(const char* const path: {"/a", "/trap", "/c"})
        push(path);
    trap = [] { throw std::runtime_error{"out of order"}; };
    EXPECT_EQ(walk(0), "a handler of the project failed: out of order");
    EXPECT_EQ(changes.appliedCount(), 1u);
    trap = [] { throw 1; };
    EXPECT_EQ(walk(3), "a handler of the project failed");
    EXPECT_EQ(changes.appliedCount(), 2u);
}

TEST_F(WalkHistoryTest, HandlerThatAnswersWithAChangeEndsIt) {
    for(const char* const path: {"/a", "/trap", "/c"})
        push(path);
    trap = [this] { push("/answer"); };
    EXPECT_EQ(walk(0), "a handler of the project changed the history");
    EXPECT_EQ(changes.changeCount(), 2u);
    EXPECT_EQ(changes.appliedCount(), 2u);
}

TEST_F(WalkHistoryTest, HandlerThatOpensAGroupEndsIt) {
    for(const char* const path: {"/a", "/trap", "/c"})
        push(path);
    trap = [this] { changes.beginGroup(); };
    EXPECT_EQ(walk(0), "a handler of the project changed the history");
    EXPECT_TRUE(changes.isGroupOpen());
}

TEST_F(WalkHistoryTest, HandlerThatUndoesWhatIsRedoneEndsIt) {
    for(const char* const path: {"/a", "/trap", "/c"})
        push(path);
    EXPECT_EQ(walk(0), "");
    trap = [this] {
        trap = {};
        changes.undoLast();
        changes.undoLast();
    };
    EXPECT_EQ(walk(3), "can't redo /a: the document has no place for it");
    EXPECT_EQ(changes.appliedCount(), 0u);
}

}}
