#include "QuillmereEditor/ChangeManager.h"

#include <cstring>

#include <Corrade/Containers/StringStl.h>

#include "QuillmereEditor/Test/changeFixture.h"

using namespace Corrade;

namespace QuillmereEngine { namespace Test {

namespace {

class ChangeManagerTest: public ChangeFixture {};
using ChangeManagerDeathTest = ChangeManagerTest;

Containers::Array<char> pathArray(const char* const path) {
    Containers::Array<char> out{NoInit, std::strlen(path) + 1};
    std::memcpy(out.data(), path, out.size());
    return out;
}

}

TEST_F(ChangeManagerTest, NewOneHasNothingToUndoRedoOrSave) {
    manager.undoLast();
    manager.redoLastUndo();
    EXPECT_EQ(document(), "{}");
    EXPECT_EQ(manager.changeCount(), 0u);
    EXPECT_FALSE(manager.hasUnsavedChanges());
}

TEST_F(ChangeManagerTest, PushRecordsAndWrites) {
    setDocument(R"({"a":1})");
    push("/a", "2");
    EXPECT_EQ(document(), R"({"a":2})");
    EXPECT_EQ(RapidJsonUtils::toJson(*manager.lastChange().oldValue), "1");
    EXPECT_EQ(RapidJsonUtils::toJson(*manager.lastChange().newValue), "2");
    EXPECT_STREQ(manager.lastChange().path.data(), "/a");
    EXPECT_EQ(manager.lastChange().path.size(), 3u);
    EXPECT_EQ(manager.lastChange().group, -1);
    EXPECT_TRUE(manager.hasUnsavedChanges());
}

TEST_F(ChangeManagerTest, HistoryCanBeRead) {
    push("/a", "1");
    push("/b", "2");
    manager.markSave();
    push("/c", "3");
    manager.undoLast();
    manager.undoLast();
    ASSERT_EQ(manager.changes().size(), 3u);
    EXPECT_STREQ(manager.changes()[0].path.data(), "/a");
    EXPECT_STREQ(manager.changes()[2].path.data(), "/c");
    EXPECT_EQ(manager.appliedCount(), 1u);
    EXPECT_EQ(manager.savedCount(), 2u);
    /* In the place of what was saved */
    push("/d", "4");
    EXPECT_EQ(manager.savedCount(), 0u);
}

TEST_F(ChangeManagerTest, OpenGroupIsToldOf) {
    EXPECT_FALSE(manager.isGroupOpen());
    manager.beginGroup();
    EXPECT_TRUE(manager.isGroupOpen());
    manager.commit();
    EXPECT_FALSE(manager.isGroupOpen());
}

TEST_F(ChangeManagerTest, OverloadsPushStrings) {
    manager.pushChange("/a", "text", false);
    Containers::Array<char> path = pathArray("/b");
    manager.pushChange(std::move(path), "other", false);
    EXPECT_EQ(document(), R"({"a":"text","b":"other"})");
    EXPECT_EQ(path.size(), 0u);
    EXPECT_TRUE(manager.lastChange().newValue->IsString());
}

TEST_F(ChangeManagerTest, MergedPushLeavesTheCallersPath) {
    push("/a", "1");
    push("/a", "2");
    Containers::Array<char> path = pathArray("/a");
    const rapidjson::Value value{3};
    manager.pushChange(std::move(path), &value, true);
    EXPECT_STREQ(path.data(), "/a");
    EXPECT_EQ(manager.changeCount(), 2u);
}

TEST_F(ChangeManagerTest, CopiesStringsHeldByReference) {
    char text[] = "a text that is too long to be stored in a value";
    char name[] = "name";
    rapidjson::Value value{rapidjson::kObjectType};
    rapidjson::MemoryPoolAllocator<> pool;
    value.AddMember(rapidjson::StringRef(name), rapidjson::StringRef(text), pool);
    manager.pushChange("/object", value, false);
    const rapidjson::Value string{rapidjson::StringRef(text)};
    manager.pushChange("/string", string, false);
    std::memset(text, '!', std::strlen(text));
    std::memset(name, '!', std::strlen(name));

    const std::string expected = R"("a text that is too long to be stored in a value")";
    EXPECT_EQ(document(), R"({"object":{"name":)" + expected + R"(},"string":)" + expected + "}");
    EXPECT_EQ(RapidJsonUtils::toJson(*manager.lastChange().newValue), expected);
    manager.undoLast();
    EXPECT_EQ(
        RapidJsonUtils::toJson(*manager.lastChange().newValue), R"({"name":)" + expected + "}");
}

TEST_F(ChangeManagerTest, ValueMayBePartOfTheDocument) {
    setDocument(R"({"a":{"b":[1,2]}})");
    manager.pushChange("/a", *project.getValue("/a/b", true), false);
    EXPECT_EQ(document(), R"({"a":[1,2]})");
    manager.undoLast();
    EXPECT_EQ(document(), R"({"a":{"b":[1,2]}})");
}

TEST_F(ChangeManagerTest, PathAndValueMayBePartOfTheHistory) {
    push("/a", R"("a text that is too long to be stored in a value")");
    for(int i = 0; i != 100; ++i)
        push("/b", std::to_string(i));
    manager.undoLast();
    const rapidjson::Value* const value = manager.lastChange().newValue.get();
    manager.pushChange(std::move(manager.lastChange().path), value, false);
    EXPECT_STREQ(manager.lastChange().path.data(), "/b");
    EXPECT_EQ(RapidJsonUtils::toJson(*manager.lastChange().newValue), "98");
}

TEST_F(ChangeManagerTest, WholeDocumentIsAValueToo) {
    setDocument(R"({"a":1})");
    push("", "[1]");
    EXPECT_EQ(document(), "[1]");
    push("/0", "0");
    EXPECT_EQ(document(), "[0]");
    manager.undoLast();
    manager.undoLast();
    EXPECT_EQ(document(), R"({"a":1})");
    manager.pushRemoval("");
    EXPECT_EQ(document(), R"({"a":1})");
}

TEST_F(ChangeManagerTest, PushDiscardsWhatCouldBeRedone) {
    push("/a", "1");
    push("/b", "2");
    manager.undoLast();
    push("/c", "3");
    manager.redoLastUndo();
    EXPECT_EQ(document(), R"({"a":1,"c":3})");
    EXPECT_EQ(manager.changeCount(), 2u);
}

TEST_F(ChangeManagerTest, UndoAndRedoWalkTheHistory) {
    setDocument(R"({"a":0})");
    push("/a", "1");
    push("/a", "2");
    manager.undoLast();
    EXPECT_EQ(document(), R"({"a":1})");
    manager.undoLast();
    manager.undoLast();
    EXPECT_EQ(document(), R"({"a":0})");
    manager.redoLastUndo();
    manager.redoLastUndo();
    manager.redoLastUndo();
    EXPECT_EQ(document(), R"({"a":2})");
}

TEST_F(ChangeManagerTest, HistoryGrowsBeyondItsReserve) {
    for(int i = 0; i != 1000; ++i)
        push("/a", std::to_string(i));
    EXPECT_EQ(manager.changeCount(), 1000u);
    for(int i = 0; i != 999; ++i)
        manager.undoLast();
    EXPECT_EQ(document(), R"({"a":0})");
}

TEST_F(ChangeManagerTest, MergeNeverTakesTheFirstEntry) {
    push("/x", "1", true);
    push("/x", "2", true);
    push("/x", "3", true);
    EXPECT_EQ(manager.changeCount(), 2u);
    EXPECT_EQ(RapidJsonUtils::toJson(*manager.lastChange().oldValue), "1");
    manager.undoLast();
    EXPECT_EQ(document(), R"({"x":1})");
}

TEST_F(ChangeManagerTest, MergeMakesItsTargetTheNewest) {
    push("/first", "0");
    push("/x", "1");
    push("/y", "2");
    push("/x", "3", true);
    EXPECT_EQ(manager.changeCount(), 3u);
    EXPECT_STREQ(manager.lastChange().path.data(), "/x");
    EXPECT_EQ(document(), R"({"first":0,"x":3,"y":2})");
    manager.undoLast();
    EXPECT_EQ(document(), R"({"first":0,"y":2})");
    manager.undoLast();
    EXPECT_EQ(document(), R"({"first":0})");
}

TEST_F(ChangeManagerTest, MergeStopsAtAnotherGroup) {
    push("/first", "0");
    push("/x", "1");
    manager.beginGroup();
    push("/x", "2", true);
    push("/x", "3", true);
    manager.commit();
    push("/x", "4", true);
    EXPECT_EQ(manager.changeCount(), 4u);
    push("/x", "5", true);
    EXPECT_EQ(manager.changeCount(), 4u);
    manager.undoLast();
    EXPECT_EQ(document(), R"({"first":0,"x":3})");
}

TEST_F(ChangeManagerTest, MergeKeepsSaveMarkAndRedo) {
    push("/a", "1");
    push("/b", "2");
    push("/c", "3");
    manager.undoLast();
    manager.markSave();
    push("/b", "4", true);
    EXPECT_FALSE(manager.hasUnsavedChanges());
    manager.redoLastUndo();
    EXPECT_EQ(document(), R"({"a":1,"b":4,"c":3})");
}

TEST_F(ChangeManagerTest, MergedDragIsOneEntryWithTheFirstOldValue) {
    setDocument(R"({"v":[0,0]})");
    push("/other", "1");
    for(int i = 0; i != 100; ++i)
        push("/v", "[" + std::to_string(i) + ",1]", true);
    EXPECT_EQ(manager.changeCount(), 2u);
    manager.undoLast();
    EXPECT_EQ(document(), R"({"v":[0,0],"other":1})");
    manager.redoLastUndo();
    EXPECT_EQ(document(), R"({"v":[99,1],"other":1})");
}

TEST_F(ChangeManagerTest, SaveMarkFollowsUndo) {
    push("/a", "1");
    manager.markSave();
    push("/a", "2");
    EXPECT_TRUE(manager.hasUnsavedChanges());
    manager.undoLast();
    EXPECT_FALSE(manager.hasUnsavedChanges());
    manager.undoLast();
    EXPECT_TRUE(manager.hasUnsavedChanges());
}

TEST_F(ChangeManagerTest, WritingOverTheSavedStateLosesTheMark) {
    push("/a", "1");
    manager.markSave();
    manager.undoLast();
    push("/b", "2");
    EXPECT_TRUE(manager.hasUnsavedChanges());
    manager.undoLast();
    EXPECT_FALSE(manager.hasUnsavedChanges()) << "nothing is applied, and no mark is set";
}

TEST_F(ChangeManagerTest, SavedStateIsKeptWhileOnlyOthersChange) {
    EXPECT_TRUE(manager.isSavedStateKept());
    push("/a", "1");
    push("/b", "1");
    manager.markSave();
    push("/c", "1", true);
    push("/c", "2", true);
    manager.undoLast();
    manager.undoLast();
    EXPECT_TRUE(manager.isSavedStateKept());
    manager.redoLastUndo();
    EXPECT_TRUE(manager.isSavedStateKept());
}

TEST_F(ChangeManagerTest, SavedStateIsLostToAMergeUnderTheMark) {
    push("/a", "1");
    push("/b", "1");
    push("/c", "1");
    manager.markSave();
    manager.undoLast();
    push("/b", "2", true);
    EXPECT_FALSE(manager.isSavedStateKept());
    EXPECT_EQ(manager.savedCount(), 3u);
    manager.markSave();
    EXPECT_TRUE(manager.isSavedStateKept());
}

TEST_F(ChangeManagerTest, SavedStateIsLostToAnotherChangeInItsPlace) {
    push("/a", "1");
    manager.markSave();
    manager.undoLast();
    EXPECT_TRUE(manager.isSavedStateKept());
    push("/b", "2");
    EXPECT_FALSE(manager.isSavedStateKept());
}

TEST_F(ChangeManagerTest, SavedStateIsLostToAResetUnlessNothingWasSaved) {
    manager.reset(project);
    EXPECT_TRUE(manager.isSavedStateKept());
    push("/a", "1");
    manager.markSave();
    manager.reset(project);
    EXPECT_FALSE(manager.isSavedStateKept());
}

TEST_F(ChangeManagerTest, RevisionCountsChangesOfTheList) {
    const std::size_t start = manager.revision();
    push("/a", "1");
    push("/b", "1");
    push("/c", "1");
    EXPECT_EQ(manager.revision(), start + 3);
    /* In place, and only in another order */
    push("/c", "2", true);
    manager.undoLast();
    manager.redoLastUndo();
    EXPECT_EQ(manager.revision(), start + 3);
    push("/b", "2", true);
    EXPECT_EQ(manager.revision(), start + 4);
    manager.undoLast();
    manager.undoLast();
    push("/d", "1");
    EXPECT_EQ(manager.revision(), start + 5);
    manager.reset(project);
    EXPECT_EQ(manager.revision(), start + 6);
}

TEST_F(ChangeManagerTest, ResetKeepsSaveMarkGroupAndCount) {
    push("/a", "1");
    manager.markSave();
    EXPECT_EQ(manager.beginGroup(), 1);
    ProjectFile other;
    manager.reset(other);
    EXPECT_EQ(manager.changeCount(), 0u);
    EXPECT_TRUE(manager.hasUnsavedChanges());
    push("/b", "1");
    EXPECT_EQ(manager.lastChange().group, 1);
    manager.commit();
    EXPECT_EQ(manager.beginGroup(), 2);
    EXPECT_EQ(RapidJsonUtils::toJson(*other.document), R"({"b":1})");
    EXPECT_EQ(document(), R"({"a":1})");
}

TEST_F(ChangeManagerTest, DefaultConstructedTakesItsProjectFromReset) {
    ChangeManager late;
    late.reset(project);
    late.pushChange("/a", "1", false);
    EXPECT_EQ(document(), R"({"a":"1"})");
    EXPECT_EQ(&late.allocator(), &project.document->GetAllocator());
}

TEST_F(ChangeManagerTest, GroupIsUndoneAndRedoneAsOne) {
    push("/a", "0");
    EXPECT_EQ(manager.beginGroup(), 1);
    push("/a", "1");
    push("/b", "2");
    manager.commit();
    EXPECT_EQ(manager.beginGroup(), 2);
    push("/b", "3");
    manager.commit();
    manager.undoLast();
    EXPECT_EQ(document(), R"({"a":1,"b":2})");
    manager.undoLast();
    EXPECT_EQ(document(), R"({"a":0})");
    manager.redoLastUndo();
    EXPECT_EQ(document(), R"({"a":1,"b":2})");
    manager.redoLastUndo();
    EXPECT_EQ(document(), R"({"a":1,"b":3})");
}

TEST_F(ChangeManagerTest, ChangesWithoutGroupAreUndoneOneByOne) {
    push("/a", "1");
    push("/b", "2");
    manager.undoLast();
    EXPECT_EQ(document(), R"({"a":1})");
    manager.undoLast();
    manager.redoLastUndo();
    EXPECT_EQ(document(), R"({"a":1})");
}

TEST_F(ChangeManagerTest, GroupZeroIsSweptAlong) {
    push("/a", "1");
    push("/b", "2");
    manager.lastChange().group = 0;
    push("/c", "3");
    manager.lastChange().group = 0;
    push("/d", "4");
    manager.undoLast();
    EXPECT_EQ(document(), R"({"a":1})");
    manager.redoLastUndo();
    EXPECT_EQ(document(), R"({"a":1,"b":2,"c":3})") << "forward it's the group that comes first";
}

TEST_F(ChangeManagerTest, UndoCountsWhicheverChangeItGets) {
    push("/a", "1");
    push("/b", "2");
    const Change other = manager.reverse(manager.reverse(manager.lastChange()));
    manager.undoLast();
    manager.redoLastUndo();
    manager.undo(other);
    EXPECT_EQ(document(), R"({"a":1})");
    EXPECT_STREQ(manager.lastChange().path.data(), "/a");
    manager.undoLast();
    manager.undo(other);
    EXPECT_FALSE(manager.hasUnsavedChanges()) << "there was nothing left to count down";
    push("/c", "3");
    EXPECT_EQ(manager.changeCount(), 1u);
}

TEST_F(ChangeManagerTest, ReverseExchangesCopies) {
    setDocument(R"({"a":[1]})");
    push("/a", "[2]");
    manager.lastChange().group = 5;
    const Change reversed = manager.reverse(manager.lastChange());
    EXPECT_EQ(RapidJsonUtils::toJson(*reversed.oldValue), "[2]");
    EXPECT_EQ(RapidJsonUtils::toJson(*reversed.newValue), "[1]");
    EXPECT_NE(reversed.newValue->Begin(), manager.lastChange().oldValue->Begin());
    EXPECT_STREQ(reversed.path.data(), "/a");
    EXPECT_EQ(reversed.path.size(), 3u);
    EXPECT_EQ(reversed.group, -1);
    manager.pushRemoval("/a");
    EXPECT_EQ(manager.reverse(manager.lastChange()).oldValue, nullptr);
}

TEST_F(ChangeManagerTest, AppendRecordsTheWholeArray) {
    setDocument(R"({"list":["x"],"no":1})");
    manager.pushAppend("/list", "y");
    EXPECT_EQ(RapidJsonUtils::toJson(*manager.lastChange().oldValue), R"(["x"])");
    manager.pushAppend("/no", "z");
    manager.pushAppend("/new", "z");
    EXPECT_EQ(document(), R"({"list":["x","y"],"no":["z"],"new":["z"]})");
    manager.undoLast();
    manager.undoLast();
    manager.undoLast();
    EXPECT_EQ(document(), R"({"list":["x"],"no":1})");
}

TEST_F(ChangeManagerTest, AppendStartsFromTheDefault) {
    project.setDefault("/tags", parsed(R"(["a"])"));
    manager.pushAppend("/tags", "b");
    EXPECT_EQ(document(), R"({"tags":["a","b"]})");
}

TEST_F(ChangeManagerDeathTest, UndoInAGroup) {
    manager.beginGroup();
    EXPECT_EXIT(manager.undoLast(), testing::KilledBySignal(SIGABRT),
        "^ChangeManager::undoLast\\(\\): Can't undo/redo changes in group\\. "
        "Forgot commit\\(\\)\\?\n$");
}

TEST_F(ChangeManagerDeathTest, RedoInAGroup) {
    manager.beginGroup();
    EXPECT_EXIT(manager.redoLastUndo(), testing::KilledBySignal(SIGABRT),
        "^ChangeManager::redoLastUndo\\(\\): Can't undo/redo changes in group\\. "
        "Forgot commit\\(\\)\\?\n$");
}

TEST_F(ChangeManagerDeathTest, GroupInAGroup) {
    manager.beginGroup();
    EXPECT_EXIT(manager.beginGroup(), testing::KilledBySignal(SIGABRT),
        "^ChangeManager::beginGroup\\(\\): a group is already open\n$");
}

TEST_F(ChangeManagerDeathTest, NoLastChange) {
    EXPECT_EXIT(manager.lastChange(), testing::KilledBySignal(SIGABRT),
        "^Assertion _lastChange >= 0 && _lastChange < int\\(_changes\\.size\\(\\)\\) failed at "
        "src/QuillmereEditor/ChangeManager:336\n$");
}

TEST_F(ChangeManagerDeathTest, IndexUnderAPlainValue) {
    setDocument(R"({"a":"text"})");
    EXPECT_EXIT(push("/a/3", "1"), testing::KilledBySignal(SIGABRT),
        "^Assertion value\\.IsArray\\(\\) failed at src/QuillmereEditor/ChangeManager:247\n$");
}

TEST_F(ChangeManagerDeathTest, NoDocument) {
    project.document = nullptr;
    EXPECT_EXIT(manager.pushChange("/a", "1", false), testing::KilledBySignal(SIGABRT),
        "^Containers::Pointer: the pointer is null\n$");
}

TEST_F(ChangeManagerDeathTest, NullArguments) {
    const char* const none = nullptr;
    const rapidjson::Value value{1};
    EXPECT_EXIT(manager.pushChange(none, value, false), testing::KilledBySignal(SIGABRT),
        "^ChangeManager::pushChange\\(\\): path was nullptr\n$");
    EXPECT_EXIT(manager.pushChange(none, "x", false), testing::KilledBySignal(SIGABRT),
        "^ChangeManager::pushChange\\(\\): path was nullptr\n$");
    EXPECT_EXIT(manager.pushChange("/a", none, false), testing::KilledBySignal(SIGABRT),
        "^ChangeManager::pushChange\\(\\): value was nullptr\n$");
    EXPECT_EXIT(manager.pushAppend(none, "x"), testing::KilledBySignal(SIGABRT),
        "^ChangeManager::pushAppend\\(\\): path was nullptr\n$");
    EXPECT_EXIT(manager.pushAppend("/a", none), testing::KilledBySignal(SIGABRT),
        "^ChangeManager::pushAppend\\(\\): value was nullptr\n$");
    EXPECT_EXIT(manager.pushRemoval(none), testing::KilledBySignal(SIGABRT),
        "^ChangeManager::pushRemoval\\(\\): path was nullptr\n$");
}

TEST_F(ChangeManagerDeathTest, NoProject) {
    ChangeManager none;
    EXPECT_EXIT(none.pushChange("/a", "1", false), testing::KilledBySignal(SIGABRT),
        "^ChangeManager: there is no project\n$");
}

}}
