#include "QuillmereEditor/documentEdit.h"

#include <sys/resource.h>
#include <unistd.h>

#include "QuillmereEditor/Test/changeFixture.h"
#include "testing/sanitizer.h"

namespace QuillmereEngine { namespace Test {

namespace {

class DocumentEditTest: public ChangeFixture {
protected:
    /* One change of a document, and what undoing it gives */
    struct Case {
        const char* what;
        const char* before;
        const char* path;
        const char* value; /* null removes */
        const char* after;
        const char* undone; /* null if it's the document from before */
    };

    void run(const Case& row) {
        SCOPED_TRACE(row.what);
        setDocument(row.before);
        manager.reset(project);
        if(row.value)
            push(row.path, row.value);
        else
            manager.pushRemoval(row.path);
        EXPECT_EQ(document(), row.after);
        manager.undoLast();
        EXPECT_EQ(document(), row.undone ? row.undone : row.before);
    }
};

/* Where big arrays would have to be padded. The changes are made in a process that ends with them. */
class DocumentEditMemoryTest: public DocumentEditTest {
protected:
    void SetUp() override {
        if(Testing::IsSanitized)
            GTEST_SKIP() << "The sanitizer itself needs more address space than there is here";
    }

    template<class F>
    void changeInAGigabyte(F&& change, const std::size_t count, const std::string& after) {
        rlimit limit{rlim_t{1} << 30, RLIM_INFINITY};
        setrlimit(RLIMIT_AS, &limit);
        change();
        _exit(manager.changeCount() == count && document() == after ? 0 : 1);
    }
};

}

TEST_F(DocumentEditTest, CreatesInObjects) {
    const Case cases[]{{"member", R"({"a":1})", "/b", "2", R"({"a":1,"b":2})", nullptr},
        {"null is a value", R"({"a":null})", "/a", "2", R"({"a":2})", nullptr},
        {"number as a name", R"({"map":{"k":1}})", "/map/7", "2", R"({"map":{"k":1,"7":2}})",
            nullptr},
        {"negative number as a name", R"({"map":{"k":1}})", "/map/-7", "2",
            R"({"map":{"k":1,"-7":2}})", nullptr},
        {"huge number as a name", R"({"map":{"k":1}})", "/map/99999999999", "2",
            R"({"map":{"k":1,"99999999999":2}})", nullptr},
        {"escaped name", R"({"a":1})", "/~01~1", "2", R"({"a":1,"~1/":2})", nullptr},
        {"empty name", R"({"a":1})", "/", "2", R"({"a":1,"":2})", nullptr},
        {"fragment", R"({"a":{"b":1}})", "#/a/%41", "2", R"({"a":{"b":1,"A":2}})", nullptr},
        {"in an array's element", R"({"o":[{"x":1}]})", "/o/0/y", "2", R"({"o":[{"x":1,"y":2}]})",
            nullptr}};
    for(const Case& row: cases)
        run(row);
}

TEST_F(DocumentEditTest, CreatesInArrays) {
    const Case cases[]{
        {"at the end", R"({"list":["x","y"]})", "/list/2", "0", R"({"list":["x","y",0]})", nullptr},
        {"into an empty one", R"({"list":[]})", "/list/0", "0", R"({"list":[0]})", nullptr},
        {"into the root", R"(["x"])", "/1", "0", R"(["x",0])", nullptr},
        {"of what is there already", R"({"list":["x","y"]})", "/list/0", "0", R"({"list":[0,"y"]})",
            nullptr}};
    for(const Case& row: cases)
        run(row);
}

TEST_F(DocumentEditTest, InsertionMovesTheRestUp) {
    setDocument(R"({"list":["x","y"]})");
    Change insertion;
    insertion.path = Corrade::Containers::Array<char>{
        Corrade::InPlaceInit, {'/', 'l', 'i', 's', 't', '/', '1', '\0'}};
    insertion.newValue.emplace(1);
    manager.applyChange(insertion);
    EXPECT_EQ(document(), R"({"list":["x",1,"y"]})");
    manager.applyChange(manager.reverse(insertion));
    EXPECT_EQ(document(), R"({"list":["x","y"]})");
}

TEST_F(DocumentEditTest, UndoingARemovedElementInsertsItAgain) {
    const Case cases[]{{"first", R"({"list":["x","y","z"]})", "/list/0", nullptr,
                           R"({"list":["y","z"]})", nullptr},
        {"last", R"({"list":["x","y","z"]})", "/list/2", nullptr, R"({"list":["x","y"]})", nullptr},
        {"only one", R"({"list":["x"]})", "/list/0", nullptr, R"({"list":[]})", nullptr}};
    for(const Case& row: cases)
        run(row);
}

TEST_F(DocumentEditTest, RemovalPrunesButNeverBelowTheRoot) {
    /* Pruned parents that were objects, or went with nothing behind them, come back */
    const Case cases[]{
        {"object", R"({"a":{"b":{"c":1}}})", "/a/b/c", nullptr, R"({"a":{}})", nullptr},
        {"several levels", R"({"a":{"b":{"c":{"d":1}}}})", "/a/b/c/d", nullptr, R"({"a":{}})",
            nullptr},
        {"not one with more", R"({"a":{"b":{"c":1,"d":2}}})", "/a/b/d", nullptr,
            R"({"a":{"b":{"c":1}}})", nullptr},
        {"array", R"({"a":{"b":[1]}})", "/a/b/0", nullptr, R"({"a":{}})", nullptr},
        {"nothing there", R"({"a":{"b":{}}})", "/a/b/c", nullptr, R"({"a":{}})", R"({"a":{}})"},
        {"directly in the root", R"({"a":1})", "/a", nullptr, "{}", nullptr},
        {"child of a plain value", R"({"a":{"b":1}})", "/a/b/c", nullptr, R"({"a":{"b":1}})",
            nullptr},
        {"fragment directly in the root", R"({"a":{"b":1}})", "#/a/b", nullptr, R"({"a":{}})",
            nullptr},
        {"fragment further below", R"({"a":{"b":{"c":1}}})", "#/a/b/c", nullptr, R"({"a":{}})",
            nullptr},
        {"element of the root", R"([[1]])", "/0/0", nullptr, "[[]]", nullptr}};
    for(const Case& row: cases)
        run(row);
}

/* Each way in which undo doesn't restore the document, by its name */
TEST_F(DocumentEditTest, WhatUndoDoesNotRestore) {
    const Case cases[]{
        {"pruned object that held a number", R"({"a":{"b":{"7":1}}})", "/a/b/7", nullptr,
            R"({"a":{}})", R"({"a":{"b":[null,null,null,null,null,null,null,1]}})"},
        {"pruned element of an array", R"({"a":[{"b":1},{"c":2}]})", "/a/0/b", nullptr,
            R"({"a":[{"c":2}]})", R"({"a":[{"c":2,"b":1}]})"},
        {"empty container that got a child", R"({"a":{"b":{}}})", "/a/b/c", "1",
            R"({"a":{"b":{"c":1}}})", R"({"a":{}})"},
        {"created parent in the root", "{}", "/a/b/c", "1", R"({"a":{"b":{"c":1}}})",
            R"({"a":{}})"},
        {"padded array", R"({"list":["x"]})", "/list/3", "1", R"({"list":["x",null,null,1]})",
            R"({"list":["x",null,null]})"},
        {"component -", R"({"list":["x"]})", "/list/-", "1", R"({"list":["x",1]})",
            R"({"list":["x",1]})"},
        {"array through - in between", R"({"list":["x"]})", "/list/-/0", "1",
            R"({"list":["x",[],[1]]})", R"({"list":["x",[],[1]]})"},
        {"array that a leading zero turns into an object", R"({"list":["x"]})", "/list/01", "1",
            R"({"list":{"01":1}})", R"({"list":{}})"},
        {"array that a name turns into an object", R"({"list":["x"]})", "/list/name", "1",
            R"({"list":{"name":1}})", R"({"list":{}})"},
        {"child of a plain value", R"({"a":5})", "/a/b", "1", R"({"a":{"b":1}})", R"({"a":{}})"},
        {"member that comes back last", R"({"a":1,"b":2})", "/a", nullptr, R"({"b":2})",
            R"({"b":2,"a":1})"},
        {"first of two with the same name", R"({"a":1,"a":2})", "/a", nullptr, R"({"a":2})",
            R"({"a":1})"},
        {"insertion by a leading zero", R"({"list":["x","y"]})", "/list/01", "0",
            R"({"list":["x",0,"y"]})", R"({"list":["x",0,"y"]})"},
        {"insertion at minus zero", R"({"list":["x","y"]})", "/list/-0", "0",
            R"({"list":[0,"x","y"]})", R"({"list":[0,"x","y"]})"},
        {"created array in the root", "{}", "/list/0", "0", R"({"list":[0]})", R"({"list":[]})"}};
    for(const Case& row: cases)
        run(row);
}

TEST_F(DocumentEditTest, MergedCreationInAnArrayInsertsAgain) {
    setDocument(R"({"list":["x"]})");
    push("/first", "0");
    push("/list/1", "1");
    push("/list/1", "2", true);
    push("/list/1", "3", true);
    EXPECT_EQ(manager.changeCount(), 2u);
    EXPECT_EQ(document(), R"({"list":["x",3,2,1],"first":0})");
    manager.undoLast();
    EXPECT_EQ(document(), R"({"list":["x",2,1],"first":0})");
}

TEST_F(DocumentEditTest, MergedRemovalInAnArrayOverwritesTheNext) {
    setDocument(R"({"list":["x","y"]})");
    push("/first", "0");
    manager.pushRemoval("/list/0");
    push("/list/0", "1", true);
    EXPECT_EQ(document(), R"({"list":[1],"first":0})");
    manager.undoLast();
    EXPECT_EQ(document(), R"({"list":["x"],"first":0})");
}

TEST_F(DocumentEditTest, PlainDefaultMakesItsParentAnObject) {
    project.setDefault("/names/*", parsed(R"("nobody")"));
    push("/names/7", R"("seven")");
    push("/names/99999999999", R"("many")");
    push("/names/-1", R"("minus")");
    EXPECT_EQ(document(), R"({"names":{"7":"seven","99999999999":"many","-1":"minus"}})");
    setDocument("{}");
    push("/names/99999999999", R"("many")");
    EXPECT_EQ(document(), R"({"names":{"99999999999":"many"}})");
}

TEST_F(DocumentEditTest, ContainerAsDefaultDoesNot) {
    project.setDefault("/names/*", parsed("[]"));
    push("/names/1", "[0]");
    EXPECT_EQ(document(), R"({"names":[null,[0]]})");
}

TEST_F(DocumentEditTest, UnusablePathsAreRefused) {
    const struct {
        const char* path;
        const char* reason;
    } cases[]{{"a", "is not a JSON pointer"}, {"/list/~", "is not a JSON pointer"},
        {"/list/~2", "is not a JSON pointer"}, {"#/%4", "is not a JSON pointer"},
        {"#/\xc3\xa4", "is not a JSON pointer"}, {"#/%C3", "is not a JSON pointer"},
        {"/list/-1", "has a negative array index"}, {"/list/-1/x", "has a negative array index"},
        {"/list/-99999999999999999999", "has a negative array index"},
        {"/new/-1", "has a negative array index"}, {"/s/-1", "has a negative array index"},
        {"/list/2147483648", "has an array index above 2147483647"},
        {"/list/4294967296/x", "has an array index above 2147483647"},
        {"/list/5000000000", "has an array index above 2147483647"},
        {"/new/2147483648/x", "has an array index above 2147483647"},
        {"/s/2147483648/x", "has an array index above 2147483647"}};
    setDocument(R"({"list":["x"],"s":1})");
    listen("");
    push("/s", "2");
    calls.clear();
    for(const auto& row: cases) {
        const std::string line = "ChangeManager::pushChange(): " + std::string{row.path} + " " +
            row.reason + "\n";
        EXPECT_EQ(errorsOf([&] { push(row.path, "1"); }), line);
        EXPECT_EQ(errorsOf([&] { push(row.path, "1", true); }), line);
        EXPECT_EQ(errorsOf([&] { manager.pushChange(row.path, "1", false); }), line);
        EXPECT_EQ(errorsOf([&] { manager.pushRemoval(row.path); }), line);
        EXPECT_EQ(errorsOf([&] { manager.pushAppend(row.path, "1"); }), line);

        Change change = manager.reverse(manager.lastChange());
        change.path = Corrade::Containers::Array<char>{
            Corrade::NoInit, std::string{row.path}.size() + 1};
        std::copy_n(row.path, change.path.size(), change.path.begin());
        EXPECT_EQ(errorsOf([&] { manager.applyChange(change); }),
            "ChangeManager::applyChange(): " + std::string{row.path} + " " + row.reason + "\n");
        EXPECT_EQ(errorsOf([&] { manager.undo(change); }),
            "ChangeManager::undo(): " + std::string{row.path} + " " + row.reason + "\n");
        EXPECT_EQ(project.getValue(row.path, true), nullptr) << row.path;
        EXPECT_TRUE(project.getValue(row.path, false)->IsNull()) << row.path;
    }
    EXPECT_EQ(document(), R"({"list":["x"],"s":2})");
    EXPECT_EQ(manager.changeCount(), 1u);
    EXPECT_STREQ(manager.lastChange().path.data(), "/s");
    EXPECT_TRUE(calls.empty());
}

/* Padding used to write to where RapidJSON's pool had no memory */
TEST_F(DocumentEditMemoryTest, PaddingIsRefused) {
    EXPECT_EXIT(changeInAGigabyte([this] { push("/list/2147483647", "1"); }, 0, "{}"),
        testing::ExitedWithCode(0),
        "^ChangeManager::pushChange\\(\\): /list/2147483647 needs more memory than there is\n$");
}

/* Each of the two arrays would fit */
TEST_F(DocumentEditMemoryTest, NestedPaddingIsRefused) {
    EXPECT_EXIT(changeInAGigabyte([this] { push("/list/40000000/40000000", "1"); }, 0, "{}"),
        testing::ExitedWithCode(0),
        "^ChangeManager::pushChange\\(\\): /list/40000000/40000000 needs more memory than there "
        "is\n$");
}

TEST_F(DocumentEditMemoryTest, NumberOfAMemberPadsNothing) {
    project.setDefault("/names/*", parsed(R"("nobody")"));
    EXPECT_EXIT(changeInAGigabyte(
                    [this] { push("/names/2000000000", "1"); }, 1, R"({"names":{"2000000000":1}})"),
        testing::ExitedWithCode(0), "^$");
}

TEST_F(DocumentEditMemoryTest, ArraysAboveAMemberArePaddedNevertheless) {
    project.setDefault("/lists/*/*", parsed(R"("nobody")"));
    EXPECT_EXIT(changeInAGigabyte([this] { push("/lists/2000000000/2000000000", "1"); }, 0, "{}"),
        testing::ExitedWithCode(0),
        "^ChangeManager::pushChange\\(\\): /lists/2000000000/2000000000 needs more memory than "
        "there is\n$");
}

TEST_F(DocumentEditMemoryTest, RemovalPadsNothing) {
    setDocument(R"({"list":["x"]})");
    const auto remove = [this] {
        manager.pushRemoval("/list/2000000000");
        if(manager.lastChange().oldValue || manager.lastChange().newValue)
            _exit(2);
    };
    EXPECT_EXIT(
        changeInAGigabyte(remove, 1, R"({"list":["x"]})"), testing::ExitedWithCode(0), "^$");
}

TEST_F(DocumentEditTest, RefusalIsOneLineWhateverThePath) {
    EXPECT_EQ(errorsOf([&] { push("a\n\x1b\x7f/\xc3\xa4", "1"); }),
        "ChangeManager::pushChange(): a\\x0a\\x1b\\x7f/\xc3\xa4 is not a JSON pointer\n");
}

/* A pruned object with such a member can't be told from an array any more. Undo stops there instead
   of going on without it. */
TEST_F(DocumentEditTest, UndoStopsAtAPathThatBecameUnusable) {
    setDocument(R"({"a":{"b":{"-1":0}}})");
    push("/x", "1");
    manager.pushRemoval("/a/b/-1");
    EXPECT_EQ(errorsOf([&] { manager.undoLast(); }),
        "ChangeManager::undoLast(): /a/b/-1 has a negative array index\n");
    EXPECT_EQ(document(), R"({"a":{},"x":1})");
    EXPECT_STREQ(manager.lastChange().path.data(), "/a/b/-1");
}

TEST_F(DocumentEditTest, RedoStopsAtAPathThatBecameUnusable) {
    setDocument(R"({"a":{}})");
    push("/a/-1", "1");
    manager.undoLast();
    setDocument(R"({"a":[]})");
    EXPECT_EQ(errorsOf([&] { manager.redoLastUndo(); }),
        "ChangeManager::redoLastUndo(): /a/-1 has a negative array index\n");
    EXPECT_EQ(document(), R"({"a":[]})");
    EXPECT_FALSE(manager.hasUnsavedChanges());
}

TEST_F(DocumentEditTest, RefusedChangeHoldsUpItsGroup) {
    setDocument(R"({"a":{}})");
    manager.beginGroup();
    push("/x", "1");
    push("/a/-1", "2");
    push("/y", "3");
    manager.commit();

    setDocument(R"({"a":[],"x":1,"y":3})");
    const std::string undoLine = "ChangeManager::undoLast(): /a/-1 has a negative array index\n";
    EXPECT_EQ(errorsOf([&] { manager.undoLast(); }), undoLine);
    EXPECT_EQ(document(), R"({"a":[],"x":1})");
    EXPECT_EQ(errorsOf([&] { manager.undoLast(); }), undoLine);
    EXPECT_EQ(document(), R"({"a":[],"x":1})");
    EXPECT_STREQ(manager.lastChange().path.data(), "/a/-1");
    setDocument(R"({"a":{"-1":2},"x":1})");
    manager.undoLast();
    EXPECT_EQ(document(), R"({"a":{}})");

    setDocument(R"({"a":[]})");
    const std::string redoLine =
        "ChangeManager::redoLastUndo(): /a/-1 has a negative array index\n";
    EXPECT_EQ(errorsOf([&] { manager.redoLastUndo(); }), redoLine);
    EXPECT_EQ(errorsOf([&] { manager.redoLastUndo(); }), redoLine);
    EXPECT_EQ(document(), R"({"a":[],"x":1})");
    EXPECT_STREQ(manager.lastChange().path.data(), "/x");
    setDocument(R"({"a":{},"x":1})");
    manager.redoLastUndo();
    EXPECT_EQ(document(), R"({"a":{"-1":2},"x":1,"y":3})");
}

TEST_F(DocumentEditTest, UnterminatedPathArraysAreReadToTheirEnd) {
    const rapidjson::Value value{1};
    manager.pushChange(
        Corrade::Containers::Array<char>{Corrade::InPlaceInit, {'/', 'a'}}, &value, false);
    manager.pushChange(
        Corrade::Containers::Array<char>{Corrade::InPlaceInit, {'#', '/', 'b'}}, &value, false);
    EXPECT_EQ(document(), R"({"a":1,"b":1})");
    manager.pushChange(Corrade::Containers::Array<char>{}, &value, false);
    EXPECT_EQ(document(), "1");
    manager.undoLast();
    manager.undoLast();
    manager.undoLast();
    EXPECT_EQ(document(), "{}");
}

}}
