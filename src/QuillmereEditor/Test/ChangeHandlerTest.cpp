#include "QuillmereEditor/ChangeHandler.h"

#include <stdexcept>

#include "QuillmereEditor/Test/changeFixture.h"

using namespace Corrade;

namespace QuillmereEngine { namespace Test {

namespace {

class ChangeHandlerTest: public ChangeFixture {
protected:
    using Calls = std::vector<std::string>;

    /* A handler that does something, once */
    void once(const char* const key, std::function<void()> what) {
        manager.addChangeHandler(
            key,
            [this, key, what, done = false](const Change& change,
                const Containers::ArrayView<const std::string>, void*) mutable {
                if(done)
                    return;
                done = true;
                what();
                /* After whatever that did, the change is still there to be looked at */
                std::ostringstream out;
                Utility::Debug{&out, Utility::Debug::Flag::NoNewlineAtTheEnd} << change;
                calls.push_back(std::string{key} + " after: " + out.str());
            },
            nullptr);
    }
};

using ChangeHandlerDeathTest = ChangeHandlerTest;

/* Sets a flag when it goes */
class WatchedHandler: public ChangeHandler {
public:
    explicit WatchedHandler(bool& isDestroyed, std::function<void()> what):
        _isDestroyed(isDestroyed),
        _what{std::move(what)} {}
    ~WatchedHandler() override { _isDestroyed = true; }

    void handle(const Change&, Containers::ArrayView<const std::string>) override {
        _what();
        EXPECT_FALSE(_isDestroyed);
    }

private:
    bool& _isDestroyed;
    std::function<void()> _what;
};

}

TEST_F(ChangeHandlerTest, EachComponentIsToldInOrder) {
    listen("b");
    listen("a");
    push("/a/b", "1");
    EXPECT_EQ(calls, (Calls{"a: Create /a/b: () -> 1", "b: Create /a/b: () -> 1"}));
    EXPECT_EQ(lastComponents, std::string(",,a,b\0", 6));
}

TEST_F(ChangeHandlerTest, ComponentsMatchWholeAndAnywhere) {
    listen("objects");
    push("/objects", "[]");
    push("/objects/0", R"({"name":1})");
    push("/scene/objects", "1");
    EXPECT_EQ(calls.size(), 3u);
    push("/objects2", "1");
    push("/object", "1");
    EXPECT_EQ(calls.size(), 3u);
}

TEST_F(ChangeHandlerTest, ComponentThatOccursTwiceIsToldTwice) {
    listen("a");
    push("/a/a", "1");
    EXPECT_EQ(calls.size(), 2u);
}

TEST_F(ChangeHandlerTest, EmptyKeyHearsOfEveryPath) {
    listen("");
    push("/a", "1");
    EXPECT_EQ(lastComponents, std::string(",,a\0", 4));
    push("", "{}");
    EXPECT_EQ(lastComponents, std::string(",\0", 2));
    EXPECT_EQ(calls.size(), 2u);
}

TEST_F(ChangeHandlerTest, PathWithoutNulHasNoneInItsLastComponent) {
    listen("a");
    const rapidjson::Value value{1};
    manager.pushChange(Containers::Array<char>{InPlaceInit, {'/', 'a'}}, &value, false);
    EXPECT_EQ(lastComponents, ",,a");
    listen("");
    manager.pushChange(Containers::Array<char>{}, &value, false);
    EXPECT_EQ(calls.size(), 1u) << "a path without a single byte has no component";
}

TEST_F(ChangeHandlerTest, WhatComesBehindTheNulIsSplitToo) {
    listen("b");
    const rapidjson::Value value{1};
    manager.pushChange(
        Containers::Array<char>{InPlaceInit, {'/', 'a', '\0', '/', 'b'}}, &value, false);
    EXPECT_EQ(calls, Calls{"b: Create /a: () -> 1"});
    EXPECT_EQ(lastComponents, std::string(",,a\0,b", 6));
}

TEST_F(ChangeHandlerTest, LongPathsAreLookedUpToo) {
    const std::string component(300, 'x');
    listen("last");
    push(("/" + component + "/last").c_str(), "1");
    EXPECT_EQ(calls.size(), 1u);
}

TEST_F(ChangeHandlerTest, SeventeenHandlersAllStayReachable) {
    std::vector<std::string> keys;
    for(int i = 0; i != 17; ++i)
        keys.push_back("key" + std::to_string(i));
    for(const std::string& key: keys)
        listen(key.c_str());
    for(const std::string& key: keys)
        push(("/" + key).c_str(), "1");
    EXPECT_EQ(calls.size(), 17u);
}

TEST_F(ChangeHandlerTest, UndoTellsTheReversedChange) {
    setDocument(R"({"a":1})");
    listen("a");
    push("/a", "2");
    manager.lastChange().group = 3;
    manager.undoLast();
    EXPECT_EQ(calls.back(), "a: Change /a: 2 -> 1");
    EXPECT_EQ(lastGroup, -1);
    manager.redoLastUndo();
    EXPECT_EQ(calls.back(), "a: Change /a: 1 -> 2");
    EXPECT_EQ(lastGroup, 3);
}

TEST_F(ChangeHandlerTest, GroupIsToldAtCommitNewestFirst) {
    listen("");
    push("/before", "0");
    calls.clear();
    manager.beginGroup();
    push("/a", "1");
    push("/b", "2");
    manager.undo(manager.lastChange());
    push("/c", "3");
    EXPECT_TRUE(calls.empty());
    manager.commit();
    EXPECT_EQ(calls, (Calls{": Create /c: () -> 3", ": Create /a: () -> 1"}));
    EXPECT_EQ(lastGroup, 1);
}

TEST_F(ChangeHandlerTest, AppliedChangeIsToldButNotInAGroup) {
    push("/a", "1");
    const Change change = manager.reverse(manager.lastChange());
    listen("a");
    manager.applyChange(change);
    EXPECT_EQ(document(), "{}");
    EXPECT_EQ(calls, Calls{"a: Remove /a: 1 -> ()"});
    EXPECT_EQ(manager.changeCount(), 1u);

    manager.beginGroup();
    manager.applyChange(manager.reverse(change));
    EXPECT_EQ(document(), R"({"a":1})");
    manager.commit();
    EXPECT_EQ(calls.size(), 1u) << "what isn't recorded isn't in the group";
}

TEST_F(ChangeHandlerTest, CommitWithoutGroupTellsAgain) {
    push("/a", "1");
    manager.beginGroup();
    push("/b", "2");
    manager.commit();
    push("/c", "3");
    push("/d", "4");
    listen("");
    manager.commit();
    EXPECT_EQ(calls, (Calls{": Create /d: () -> 4", ": Create /c: () -> 3"}));
}

TEST_F(ChangeHandlerTest, UserDataIsHandedOn) {
    int data = 0;
    manager.addChangeHandler(
        "a",
        [](const Change&, Containers::ArrayView<const std::string>, void* const userData) {
            ++*static_cast<int*>(userData);
        },
        &data);
    push("/a", "1");
    EXPECT_EQ(data, 1);
}

TEST_F(ChangeHandlerTest, EmptyFunctionThrows) {
    manager.addChangeHandler("a", nullptr, nullptr);
    EXPECT_THROW(push("/a", "1"), std::bad_function_call);
    EXPECT_EQ(document(), R"({"a":1})");
    EXPECT_EQ(manager.changeCount(), 1u);
}

TEST_F(ChangeHandlerTest, ResetDestroysHandlers) {
    bool isDestroyed = false;
    manager.addChangeHandler(
        "a", Containers::Pointer<ChangeHandler>{new WatchedHandler{isDestroyed, [] {}}});
    listen("b");
    manager.reset(project);
    EXPECT_TRUE(isDestroyed);
    push("/a/b", "1");
    EXPECT_TRUE(calls.empty());
}

TEST_F(ChangeHandlerTest, PushInAHandlerGoesOnTop) {
    once("a", [this] {
        for(int i = 0; i != 200; ++i)
            push("/derived", std::to_string(i));
    });
    listen("a");
    push("/a", R"("a text that is too long to be stored in a value")");
    EXPECT_EQ(calls,
        Calls{R"(a after: Create /a: () -> "a text that is too long to be stored in a value")"});
    EXPECT_EQ(manager.changeCount(), 201u);
    for(int i = 0; i != 201; ++i)
        manager.undoLast();
    EXPECT_EQ(document(), "{}");
}

TEST_F(ChangeHandlerTest, MergeInAHandlerMayHitTheSameChange) {
    push("/first", "0");
    once("a", [this] { push("/a", "2", true); });
    push("/a", "1");
    EXPECT_EQ(calls, Calls{"a after: Create /a: () -> 1"});
    EXPECT_EQ(document(), R"({"first":0,"a":2})");
    EXPECT_EQ(manager.changeCount(), 2u);
}

TEST_F(ChangeHandlerTest, PushWhileUndoingTakesThePlaceOfTheUndone) {
    push("/a", "1");
    push("/a", "2");
    once("a", [this] { push("/answer", "1"); });
    manager.undoLast();
    EXPECT_EQ(calls, Calls{"a after: Change /a: 2 -> 1"});
    EXPECT_EQ(document(), R"({"a":1,"answer":1})");
    EXPECT_EQ(manager.changeCount(), 2u);
    manager.redoLastUndo();
    EXPECT_EQ(document(), R"({"a":1,"answer":1})");
    manager.undoLast();
    EXPECT_EQ(document(), R"({"a":1})");
    manager.undoLast();
    EXPECT_EQ(document(), "{}");
}

TEST_F(ChangeHandlerTest, WhileUndoingTheChangeStillCountsAsApplied) {
    push("/a", "1");
    once("a", [this] {
        EXPECT_TRUE(manager.hasUnsavedChanges());
        EXPECT_STREQ(manager.lastChange().path.data(), "/a");
    });
    manager.undoLast();
    EXPECT_FALSE(manager.hasUnsavedChanges());
}

TEST_F(ChangeHandlerTest, SavingWhileUndoingMarksTheUndoneState) {
    push("/a", "1");
    push("/b", "2");
    once("b", [this] { manager.markSave(); });
    manager.undoLast();
    EXPECT_EQ(document(), R"({"a":1})");
    EXPECT_FALSE(manager.hasUnsavedChanges());
    manager.redoLastUndo();
    EXPECT_TRUE(manager.hasUnsavedChanges());
}

TEST_F(ChangeHandlerTest, SavingWhileUndoingAGroupDoesNotEndIt) {
    manager.beginGroup();
    push("/a", "1");
    push("/b", "2");
    manager.commit();
    once("b", [this] { manager.markSave(); });
    manager.undoLast();
    EXPECT_EQ(document(), "{}");
    EXPECT_TRUE(manager.hasUnsavedChanges());
}

TEST_F(ChangeHandlerTest, UndoWhileUndoingGoesOneFurther) {
    push("/a", "1");
    push("/a", "2");
    push("/a", "3");
    once("a", [this] { manager.undoLast(); });
    manager.undoLast();
    EXPECT_EQ(document(), R"({"a":1})");
    manager.redoLastUndo();
    manager.redoLastUndo();
    EXPECT_EQ(document(), R"({"a":3})");
}

TEST_F(ChangeHandlerTest, RedoWhileUndoingTakesItBack) {
    push("/a", "1");
    push("/a", "2");
    once("a", [this] { manager.redoLastUndo(); });
    manager.undoLast();
    EXPECT_EQ(document(), R"({"a":2})");
    EXPECT_STREQ(manager.lastChange().path.data(), "/a");
    manager.undoLast();
    EXPECT_EQ(document(), R"({"a":1})");
}

TEST_F(ChangeHandlerTest, UndoWhileRedoingTakesItBackAndEndsThere) {
    manager.beginGroup();
    push("/a", "1");
    push("/b", "2");
    manager.commit();
    manager.undoLast();
    manager.addChangeHandler(
        "a",
        [this](const Change& change, Containers::ArrayView<const std::string>, void*) {
            if(change.newValue)
                manager.undoLast();
        },
        nullptr);
    manager.redoLastUndo();
    EXPECT_EQ(document(), "{}");
    EXPECT_EQ(manager.changeCount(), 2u);
}

TEST_F(ChangeHandlerTest, PushWhileUndoingAGroupLeavesItsRest) {
    manager.beginGroup();
    push("/a", "1");
    push("/b", "2");
    manager.commit();
    once("b", [this] { push("/answer", "3"); });
    manager.undoLast();
    EXPECT_EQ(document(), R"({"a":1,"answer":3})");
    EXPECT_EQ(manager.changeCount(), 2u);
    manager.undoLast();
    manager.undoLast();
    EXPECT_EQ(document(), "{}");
}

TEST_F(ChangeHandlerTest, GroupOpenedWhileUndoingEndsTheUndoing) {
    manager.beginGroup();
    push("/a", "1");
    push("/b", "2");
    manager.commit();
    once("b", [this] { manager.beginGroup(); });
    manager.undoLast();
    EXPECT_EQ(document(), R"({"a":1})");
    manager.commit();
    manager.undoLast();
    EXPECT_EQ(document(), "{}");
}

TEST_F(ChangeHandlerTest, CommitGoesOnAfterAPush) {
    manager.beginGroup();
    push("/a", "1");
    push("/b", "2");
    once("b", [this] { push("/answer", "3"); });
    listen("a");
    listen("answer");
    manager.commit();
    EXPECT_EQ(calls,
        (Calls{"answer: Create /answer: () -> 3", "b after: Create /b: () -> 2",
            "a: Create /a: () -> 1"}));
}

TEST_F(ChangeHandlerTest, CommitEndsWhereAHandlerUndid) {
    manager.beginGroup();
    push("/a", "1");
    push("/b", "2");
    once("b", [this] { manager.undoLast(); });
    listen("a");
    manager.commit();
    EXPECT_EQ(calls, (Calls{"a: Remove /a: 1 -> ()", "b after: Create /b: () -> 2"}));
    EXPECT_EQ(document(), "{}");
}

TEST_F(ChangeHandlerTest, CommitInAHandlerOfAPushTellsAgainOnce) {
    push("/b", "1");
    listen("b");
    once("a", [this] { manager.commit(); });
    push("/a", "2");
    EXPECT_EQ(calls, (Calls{"b: Create /b: () -> 1", "a after: Create /a: () -> 2"}));
}

TEST_F(ChangeHandlerTest, CommitWhileUndoingTellsOfWhatStaysApplied) {
    push("/first", "0");
    manager.beginGroup();
    push("/a", "1");
    push("/b", "2");
    manager.commit();
    push("/c", "3");
    listen("first");
    listen("a");
    once("c", [this] { manager.commit(); });
    manager.undoLast();
    EXPECT_EQ(calls, Calls{"c after: Remove /c: 3 -> ()"}) << "the group ends what is told again";

    once("b", [this] { manager.commit(); });
    manager.undoLast();
    EXPECT_EQ(calls,
        (Calls{"c after: Remove /c: 3 -> ()", "b after: Remove /b: 2 -> ()",
            "a: Remove /a: 1 -> ()"}));
    EXPECT_EQ(document(), R"({"first":0})") << "committing doesn't end the undoing of the group";
    EXPECT_STREQ(manager.lastChange().path.data(), "/first");
}

TEST_F(ChangeHandlerTest, CommitWhileUndoingTakesTheChangeAsUndone) {
    push("/a", "1");
    push("/b", "2");
    listen("a");
    once("b", [this] {
        manager.commit();
        EXPECT_STREQ(manager.lastChange().path.data(), "/a");
    });
    manager.undoLast();
    EXPECT_EQ(calls, (Calls{"a: Create /a: () -> 1", "b after: Remove /b: 2 -> ()"}));
    EXPECT_STREQ(manager.lastChange().path.data(), "/a");
}

TEST_F(ChangeHandlerTest, GroupOpenedInACommitStaysOpen) {
    manager.beginGroup();
    push("/a", "1");
    push("/b", "2");
    once("b", [this] {
        EXPECT_EQ(manager.beginGroup(), 2);
        push("/answer", "3");
    });
    listen("a");
    listen("answer");
    manager.commit();
    EXPECT_EQ(calls, (Calls{"b after: Create /b: () -> 2", "a: Create /a: () -> 1"}));
    manager.commit();
    EXPECT_EQ(calls.back(), "answer: Create /answer: () -> 3");
    EXPECT_EQ(calls.size(), 3u);
    manager.undoLast();
    EXPECT_EQ(document(), R"({"a":1,"b":2})");
}

TEST_F(ChangeHandlerTest, ExceptionInACommitLeavesTheGroupClosed) {
    manager.beginGroup();
    push("/a", "1");
    push("/b", "2");
    once("b", [] { throw std::runtime_error{"no"}; });
    listen("a");
    EXPECT_THROW(manager.commit(), std::runtime_error);
    EXPECT_TRUE(calls.empty());
    push("/c", "3");
    EXPECT_EQ(manager.lastChange().group, -1);
    manager.undoLast();
    manager.undoLast();
    EXPECT_EQ(document(), "{}");
    EXPECT_EQ(calls, Calls{"a: Remove /a: 1 -> ()"});
}

TEST_F(ChangeHandlerTest, HandlerRegisteredInAHandlerHearsOfTheRest) {
    once("a", [this] {
        for(const char* const key:
            {"b", "c", "d", "e", "f", "g", "h", "i", "j", "k", "l", "m", "n", "o", "p", "q", "r"})
            listen(key);
    });
    push("/a/b", "1");
    EXPECT_EQ(calls, (Calls{"a after: Create /a/b: () -> 1", "b: Create /a/b: () -> 1"}));
}

TEST_F(ChangeHandlerTest, ResetInAHandlerKeepsItUntilItReturns) {
    bool isDestroyed = false;
    listen("b");
    manager.addChangeHandler("a",
        Containers::Pointer<ChangeHandler>{
            new WatchedHandler{isDestroyed, [this] { manager.reset(project); }}});
    push("/a/b", "1");
    EXPECT_TRUE(isDestroyed);
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(manager.changeCount(), 0u);
    push("/b", "2");
    EXPECT_EQ(manager.changeCount(), 1u);
}

TEST_F(ChangeHandlerTest, ResetInAHandlerOfAHandlersChangeKeepsBoth) {
    bool isOuterDestroyed = false, isInnerDestroyed = false;
    manager.addChangeHandler("a",
        Containers::Pointer<ChangeHandler>{new WatchedHandler{isOuterDestroyed, [&] {
                                                                  push("/inner", "2");
                                                                  EXPECT_FALSE(isInnerDestroyed);
                                                              }}});
    manager.addChangeHandler(
        "inner", Containers::Pointer<ChangeHandler>{new WatchedHandler{isInnerDestroyed, [this] {
                                                                           manager.reset(project);
                                                                           push("/after", "3");
                                                                       }}});
    listen("b");
    push("/a/b", "1");
    EXPECT_TRUE(isOuterDestroyed);
    EXPECT_TRUE(isInnerDestroyed);
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(manager.changeCount(), 1u);
    EXPECT_STREQ(manager.lastChange().path.data(), "/after");
    EXPECT_EQ(document(), R"({"a":{"b":1},"inner":2,"after":3})");
}

/* As a panel does that goes with its handler and leaves another one behind */
TEST_F(ChangeHandlerTest, HandlerRegisteredByAHandlersDestructorStays) {
    struct Successor: ChangeHandler {
        explicit Successor(std::function<void()> end): _end{std::move(end)} {}
        ~Successor() override { _end(); }
        void handle(const Change&, Containers::ArrayView<const std::string>) override {}

        std::function<void()> _end;
    };
    for(const char* const key: {"a", "b"})
        manager.addChangeHandler(
            key, Containers::Pointer<ChangeHandler>{new Successor{[this, key] { listen(key); }}});
    manager.reset(project);
    push("/a/b", "1");
    EXPECT_EQ(calls, (Calls{"a: Create /a/b: () -> 1", "b: Create /a/b: () -> 1"}));
}

TEST_F(ChangeHandlerTest, ResetWhileUndoingLeavesAnEmptyHistory) {
    manager.beginGroup();
    push("/a", "1");
    push("/b", "2");
    manager.commit();
    once("b", [this] {
        project.document = Containers::pointer<rapidjson::Document>(rapidjson::kObjectType);
        manager.reset(project);
    });
    manager.undoLast();
    EXPECT_EQ(calls, Calls{"b after: Remove /b: 2 -> ()"});
    EXPECT_EQ(manager.changeCount(), 0u);
    EXPECT_FALSE(manager.hasUnsavedChanges());
    push("/c", "3");
    EXPECT_EQ(document(), R"({"c":3})");
}

TEST_F(ChangeHandlerTest, ExceptionLeavesTheChangeMade) {
    manager.addChangeHandler(
        "a",
        [](const Change&, Containers::ArrayView<const std::string>, void*) {
            throw std::runtime_error{"no"};
        },
        nullptr);
    listen("b");
    EXPECT_THROW(push("/a/b", "1"), std::runtime_error);
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(document(), R"({"a":{"b":1}})");
    EXPECT_EQ(manager.changeCount(), 1u);

    EXPECT_THROW(manager.undoLast(), std::runtime_error);
    EXPECT_EQ(document(), R"({"a":{}})");
    EXPECT_FALSE(manager.hasUnsavedChanges());

    EXPECT_THROW(manager.redoLastUndo(), std::runtime_error);
    EXPECT_EQ(document(), R"({"a":{"b":1}})");
    EXPECT_TRUE(manager.hasUnsavedChanges());

    manager.beginGroup();
    push("/a/c", "1");
    EXPECT_THROW(manager.commit(), std::runtime_error);
    EXPECT_EQ(manager.beginGroup(), 2) << "the group is closed nevertheless";
}

TEST_F(ChangeHandlerDeathTest, NullHandler) {
    manager.addChangeHandler("a", Containers::Pointer<ChangeHandler>{});
    EXPECT_EXIT(push("/a", "1"), testing::KilledBySignal(SIGABRT),
        "^Containers::Pointer: the pointer is null\n$");
}

TEST_F(ChangeHandlerDeathTest, NullKey) {
    EXPECT_EXIT(listen(nullptr), testing::KilledBySignal(SIGABRT),
        "^StaticMap::put\\(\\): key cannot be nullptr\\.\n$");
}

}}
