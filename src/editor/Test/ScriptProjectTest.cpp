#include "editor/ScriptProject.h"

#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "QuillmereEditor/ChangeManager.h"
#include "editor/script/Message.h"
#include "editor/scriptPointer.h"
#include "host/ProjectFile.h"
#include "host/RapidJsonUtils.h"

using namespace std::string_literals;

namespace QuillmereEngine { namespace {

struct ScriptProjectTest: ::testing::Test {
    explicit ScriptProjectTest(
        const std::string& json = R"({"a": {"b": 1, "7": 2}, "list": [1, [2]], "text": "t",)"
                                  R"( "none": null, "number": 1})") {
        project.document->Parse(json.c_str());
    }

    std::string document() const { return RapidJsonUtils::toJson(*project.document); }

    /* The message of the exception, "" if there's none */
    std::string ask(const std::string& operation, const std::string& pointer = {},
        const std::string& value = "true") {
        const std::optional<Message> answer = Message::parse(
            script.answer(*Message::parse(MessageWriter{"request"}
                                              .add("operation", std::string_view{operation})
                                              .add("pointer", std::string_view{pointer})
                                              .add("value", std::string_view{value})
                                              .text())));
        EXPECT_TRUE(answer);
        got = answer->hasText("value") ? std::optional<std::string>{answer->text("value")}
                                       : std::nullopt;
        EXPECT_EQ(answer->type(), answer->hasText("message") ? "refusal" : "answer");
        return std::string{answer->text("message")};
    }

    std::optional<std::string> get(const std::string& pointer) {
        EXPECT_EQ(ask("get", pointer), "");
        return got;
    }

    ProjectFile project;
    ChangeManager changes{project};
    ScriptProject script{project, changes};
    std::optional<std::string> got;
};

TEST_F(ScriptProjectTest, ValuesAreRead) {
    EXPECT_EQ(get("/a"), R"({"b":1,"7":2})");
    EXPECT_EQ(get("/list/1/0"), "2");
    EXPECT_EQ(get("/none"), "null");
    EXPECT_EQ(get(""), document());
}

TEST_F(ScriptProjectTest, NothingIsReadWhereNothingIs) {
    for(const char* const pointer: {"/x", "/list/2", "/list/-1", "/list/-", "/text/0", "/a/b/c"})
        EXPECT_EQ(get(pointer), std::nullopt) << pointer;
}

TEST_F(ScriptProjectTest, EachChangeIsUndoneByOneUndo) {
    const std::string before = document();
    EXPECT_EQ(ask("set", "/a/b", "2.5"), "");
    EXPECT_EQ(ask("set", "/list/2", R"({"x": [null]})"), "");
    EXPECT_EQ(ask("remove", "/text"), "");
    EXPECT_EQ(changes.changeCount(), 3u);
    EXPECT_EQ(
        document(), R"({"a":{"b":2.5,"7":2},"list":[1,[2],{"x":[null]}],"none":null,"number":1})");
    changes.undoLast();
    EXPECT_EQ(get("/text"), "\"t\"");
    changes.undoLast();
    EXPECT_EQ(get("/list"), "[1,[2]]");
    changes.undoLast();
    EXPECT_EQ(get("/a"), R"({"b":1,"7":2})");
}

TEST_F(ScriptProjectTest, NumbersKeepTheirKind) {
    for(const char* const number:
        {"1", "-9007199254740991", "18446744073709551615", "0.1", "1.0", "1e+300"}) {
        EXPECT_EQ(ask("set", "/number", number), "");
        EXPECT_EQ(project.document->FindMember("number")->value.IsDouble(),
            std::string{number}.find_first_of(".e") != std::string::npos)
            << number;
    }
}

struct Refusal {
    const char *operation, *pointer, *message;
};

TEST_F(ScriptProjectTest, RefusalNamesThePointerAndChangesNothing) {
    const Refusal refusals[]{
        {"get", "a", R"(project.get("a"): not a JSON pointer)"},
        {"get", "#/a", R"(project.get("#/a"): not a JSON pointer)"},
        {"get", "/~2", R"(project.get("/~2"): not a JSON pointer)"},
        {"set", "a", R"(project.set("a"): not a JSON pointer)"},
        {"set", "/a~", R"(project.set("/a~"): not a JSON pointer)"},
        {"set", "a\n", R"(project.set("a\x0a"): not a JSON pointer)"},
        {"remove", "#/a", R"(project.remove("#/a"): not a JSON pointer)"},
        {"set", "", R"(project.set(""): the root can't be changed)"},
        {"remove", "", R"(project.remove(""): the root can't be changed)"},
        {"set", "/text/0", R"(project.set("/text/0"): "/text" is neither an array nor an object)"},
        {"set", "/text/x", R"(project.set("/text/x"): "/text" is neither an array nor an object)"},
        {"set", "/none/0", R"(project.set("/none/0"): "/none" is neither an array nor an object)"},
        {"set", "/a/b/0/c", R"(project.set("/a/b/0/c"): "/a/b" is neither an array nor an object)"},
        {"remove", "/number/0",
            R"(project.remove("/number/0"): "/number" is neither an array nor an object)"},
        {"set", "/list/-1", R"(project.set("/list/-1"): "-1" is a negative index)"},
        {"remove", "/list/-1", R"(project.remove("/list/-1"): "-1" is a negative index)"},
        {"set", "/new/-3", R"(project.set("/new/-3"): "-3" is a negative index)"},
        {"set", "/list/-1/x", R"(project.set("/list/-1/x"): "-1" is a negative index)"},
        {"set", "/list/3",
            R"(project.set("/list/3"): index 3 is beyond the size of "/list", which is 2)"},
        {"set", "/list/1/2",
            R"(project.set("/list/1/2"): index 2 is beyond the size of "/list/1", which is 1)"},
        {"remove", "/list/3",
            R"(project.remove("/list/3"): index 3 is beyond the size of "/list", which is 2)"},
        {"set", "/list/99999999999999999999",
            "project.set(\"/list/99999999999999999999\"): index 99999999999999999999 is beyond the"
            " size of \"/list\", which is 2"},
        {"set", "/new/1",
            R"(project.set("/new/1"): index 1 is beyond the size of "/new", which is 0)"},
        {"set", "/list/x", R"(project.set("/list/x"): "x" is not an index of the array "/list")"},
        {"set", "/list/-", R"(project.set("/list/-"): "-" is not an index of the array "/list")"},
        {"set", "/list/01",
            R"(project.set("/list/01"): "01" is not an index of the array "/list")"},
        {"remove", "/x", R"(project.remove("/x"): nothing is there)"},
        {"remove", "/list/2", R"(project.remove("/list/2"): nothing is there)"},
        {"remove", "/a/b/c",
            R"(project.remove("/a/b/c"): "/a/b" is neither an array nor an object)"},
        {"clear", "/a", R"(project.clear("/a"): not known)"},
    };
    const std::string before = document();
    for(const Refusal& i: refusals)
        EXPECT_EQ(ask(i.operation, i.pointer), i.message);
    EXPECT_EQ(document(), before);
    EXPECT_EQ(changes.changeCount(), 0u);
}

TEST_F(ScriptProjectTest, PointerWithNulIsNone) {
    /* It would be cut there on its way into the history, and something else be changed */
    EXPECT_EQ(ask("remove", "/a\0b"s), R"(project.remove("/a\x00b"): not a JSON pointer)");
    EXPECT_EQ(get("/a"), R"({"b":1,"7":2})");
}

TEST_F(ScriptProjectTest, NumbersAreNamesInObjects) {
    EXPECT_EQ(ask("set", "/a/42"), "");
    EXPECT_EQ(ask("set", "/a/-1"), "");
    EXPECT_EQ(ask("remove", "/a/7"), "");
    EXPECT_EQ(get("/a"), R"({"b":1,"42":true,"-1":true})");
}

TEST_F(ScriptProjectTest, MissingContainersAreMade) {
    EXPECT_EQ(ask("set", "/new/deep/0/x"), "");
    EXPECT_EQ(get("/new"), R"({"deep":[{"x":true}]})");
}

TEST_F(ScriptProjectTest, ContainersThatAreOrBecomeEmptyComeBack) {
    /* Undoing used to remove an empty element, and redoing to meet the next one in its place */
    for(const auto& [operation, pointer]:
        {std::pair{"set", "/x/0/7"}, {"set", "/x/0/name"}, {"remove", "/x/1/name"}}) {
        project.document->Parse(R"({"x": [{}, {"name": 1}, 2]})");
        changes.reset(project);
        const std::string before = document();
        EXPECT_EQ(ask(operation, pointer), "");
        const std::string after = document();
        changes.undoLast();
        EXPECT_EQ(document(), before);
        changes.redoLastUndo();
        EXPECT_EQ(document(), after);
    }
    EXPECT_EQ(document(), R"({"x":[{},{},2]})");
}

TEST_F(ScriptProjectTest, DefaultSaysThatNumbersAreNames) {
    project.setDefault("/map/*", rapidjson::Value{1});
    EXPECT_EQ(ask("set", "/map/42"), "");
    EXPECT_EQ(get("/map"), R"({"42":true})");
}

TEST_F(ScriptProjectTest, ValueThatCouldNotBeSavedIsRefused) {
    const std::string deep = std::string(9999, '[') + std::string(9999, ']');
    EXPECT_EQ(ask("set", "/a/b", deep),
        R"(project.set("/a/b"): the value is nested deeper than 10000 levels)");
    EXPECT_EQ(ask("set", "/x", deep), "");
    /* Brackets in strings aren't levels */
    EXPECT_EQ(ask("set", "/y", '"' + std::string(20000, '[') + "\\\"[\""), "");
}

TEST_F(ScriptProjectTest, BrokenValueIsRefused) {
    EXPECT_EQ(ask("set", "/x", "]]"), R"(project.set("/x"): the value is not JSON)");
    EXPECT_EQ(ask("set", "/x", ""), R"(project.set("/x"): the value is not JSON)");
}

TEST_F(ScriptProjectTest, GroupIsUndoneAsOne) {
    const std::string before = document();
    EXPECT_EQ(ask("begin"), "");
    EXPECT_TRUE(changes.isLocked());
    EXPECT_EQ(ask("set", "/a/b", "5"), "");
    /* Joins the outer one */
    EXPECT_EQ(ask("begin"), "");
    EXPECT_EQ(ask("set", "/number", "6"), "");
    EXPECT_EQ(ask("commit"), "");
    EXPECT_TRUE(changes.isLocked());
    EXPECT_EQ(ask("set", "/text", "7"), "");
    EXPECT_EQ(ask("commit"), "");
    EXPECT_FALSE(changes.isLocked());
    EXPECT_FALSE(changes.isGroupOpen());
    EXPECT_EQ(changes.changeCount(), 3u);
    changes.undoLast();
    EXPECT_EQ(changes.appliedCount(), 0u);
    EXPECT_EQ(document(), before);
}

TEST_F(ScriptProjectTest, EndOfTheScriptCommits) {
    ask("begin");
    ask("begin");
    ask("set", "/a/b", "5");
    script.scriptEnded();
    EXPECT_FALSE(changes.isLocked());
    EXPECT_FALSE(changes.isGroupOpen());
    changes.undoLast();
    EXPECT_EQ(get("/a/b"), "1");
}

TEST_F(ScriptProjectTest, CommitWithoutGroupDoesNothing) {
    EXPECT_EQ(ask("commit"), "");
    script.scriptEnded();
    EXPECT_FALSE(changes.isGroupOpen());
}

TEST_F(ScriptProjectTest, EditOfOthersIsLeftAlone) {
    changes.setLocked(true);
    EXPECT_EQ(ask("set", "/a/b"), R"(project.set("/a/b"): another edit is going on)");
    EXPECT_EQ(ask("remove", "/a/b"), R"(project.remove("/a/b"): another edit is going on)");
    EXPECT_EQ(ask("begin"), "project.group(): another edit is going on");
    changes.setLocked(false);
    changes.beginGroup();
    EXPECT_EQ(ask("set", "/a/b"), R"(project.set("/a/b"): another edit is going on)");
    EXPECT_EQ(ask("begin"), "project.group(): another edit is going on");
    EXPECT_EQ(ask("commit"), "");
    EXPECT_TRUE(changes.isGroupOpen());
    changes.commit();
    EXPECT_EQ(changes.changeCount(), 0u);
}

TEST_F(ScriptProjectTest, HandlerThatThrowsReachesTheScript) {
    changes.addChangeHandler(
        "b",
        [](const Change&, Corrade::Containers::ArrayView<const std::string>, void*) {
            throw std::runtime_error{"handler"};
        },
        nullptr);
    EXPECT_EQ(ask("set", "/a/b", "2"), R"(project.set("/a/b"): handler)");
    EXPECT_EQ(get("/a/b"), "2");
    ask("begin");
    ask("set", "/a/b", "3");
    script.scriptEnded();
    EXPECT_FALSE(changes.isGroupOpen());
}

/* Documents and pointers out of few parts, so that they often fit */
class Random {
public:
    explicit Random(const unsigned seed): _engine{seed} {}

    int below(const int count) { return int(_engine() % unsigned(count)); }

    std::string name() {
        static const char* const names[]{"a", "b", "0", "1", "2", "3", "-1", "-0", "-", "01", "~0",
            "~1", "", "-~0", "9999999999", "4294967295", "2147483648"};
        constexpr int HugeCount = 3;
        return names[below(int(std::size(names)) - (hasHugeNumbers ? 0 : HugeCount))];
    }

    std::string pointer() {
        std::string out;
        for(int i = 1 + below(4); i; --i)
            out += '/' + name();
        return below(20) ? out : out.substr(1);
    }

    std::string value(const int depth) {
        const int kind = below(depth ? 6 : 4);
        if(kind < 4)
            return std::vector<std::string>{"null", "1", "\"text\"", "2.5"}[std::size_t(kind)];
        std::string out;
        for(int i = below(4); i; --i) {
            const std::string key = kind == 4 ? '"' + name() + "\":" : "";
            /* Of members with the same name only one can be compared */
            if(key.empty() || out.find(key) == std::string::npos)
                out += (out.empty() ? "" : ",") + key + value(depth - 1);
        }
        return kind == 4 ? "{" + out + "}" : "[" + out + "]";
    }

    bool hasHugeNumbers = true;

private:
    std::mt19937 _engine;
};

TEST(ScriptProjectRandomTest, WhatIsTakenIsDoneAndUndoneAndWhatIsRefusedDoesNothing) {
    int taken = 0, refused = 0;
    for(unsigned seed = 0; seed != 4000; ++seed) {
        Random random{seed};
        ProjectFile project;
        project.document->Parse(
            ("{\"a\":" + random.value(4) + ",\"0\":" + random.value(4) + "}").c_str());
        /* With that default all numbers are names in /b, and the history asks for the memory that an
           array would need. A sanitizer ends the process where there's none. */
        random.hasHugeNumbers = random.below(2);
        if(!random.hasHugeNumbers)
            project.setDefault("/b/*", rapidjson::Value{1});
        rapidjson::Document original;
        original.CopyFrom(*project.document, original.GetAllocator());
        ChangeManager changes{project};
        ScriptProject script{project, changes};
        for(int i = 0; i != 10; ++i) {
            const std::string pointer = random.pointer(), value = random.value(3);
            const bool isSet = random.below(3);
            const std::string before = RapidJsonUtils::toJson(*project.document);
            const ScriptPlace place = placeToRead(project, pointer);
            const std::string valueBefore = place.value ? RapidJsonUtils::toJson(*place.value) : "";
            const std::size_t count = changes.changeCount();
            SCOPED_TRACE(before + (isSet ? " set " : " remove ") + pointer + " " + value);

            const std::string answer = script.answer(
                *Message::parse(MessageWriter{"request"}
                                    .add("operation", isSet ? "set" : "remove")
                                    .add("pointer", std::string_view{pointer})
                                    .add("value", std::string_view{value})
                                    .text()));
            if(Message::parse(answer)->type() == "refusal") {
                ++refused;
                EXPECT_EQ(RapidJsonUtils::toJson(*project.document), before);
                EXPECT_EQ(changes.changeCount(), count);
                continue;
            }
            ++taken;
            EXPECT_EQ(changes.changeCount(), count + 1);
            if(isSet) {
                const ScriptPlace set = placeToRead(project, pointer);
                ASSERT_TRUE(set.value);
                EXPECT_EQ(RapidJsonUtils::toJson(*set.value), value);
            }
            if(random.below(2))
                continue;
            changes.undoLast();
            const ScriptPlace undone = placeToRead(project, pointer);
            EXPECT_EQ(undone.value ? RapidJsonUtils::toJson(*undone.value) : "", valueBefore);
            changes.redoLastUndo();
        }
        rapidjson::Document last;
        last.CopyFrom(*project.document, last.GetAllocator());
        while(changes.appliedCount())
            changes.undoLast();
        EXPECT_TRUE(*project.document == original) << RapidJsonUtils::toJson(original);
        while(changes.appliedCount() != changes.changeCount())
            changes.redoLastUndo();
        EXPECT_TRUE(*project.document == last) << RapidJsonUtils::toJson(last);
        if(::testing::Test::HasFailure())
            return;
    }
    EXPECT_GT(taken, 5000);
    EXPECT_GT(refused, 5000);
}

}}
