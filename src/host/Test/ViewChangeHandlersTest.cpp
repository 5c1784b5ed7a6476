#include "host/ViewChangeHandlers.h"

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/PluginManager/Manager.h>
#include <Corrade/PluginManager/Manager.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/EditorView.h"
#include "host/ProjectFile.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using namespace Corrade;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Path = Containers::ArrayView<const std::string>;

struct TestView: EditorView {
    using EditorView::EditorView;

    const char* title() const override { return "Test"; }
    void draw() override {}
};

struct ViewChangeHandlersTest: ::testing::Test {
    ViewChangeHandlersTest() {
        for(const char* const file: {"A.so", "A.conf", "B.so", "B.conf"})
            folder.write(file, "");
        modules.emplace(Containers::StringView{folder.path()});
        a.emplace(*modules, "A");
        b.emplace(*modules, "B");
    }

    void change(const char* const path) {
        changes->pushChange(path, rapidjson::Value{++value}, false);
    }

    /* Notes its name when it's called */
    ViewChangeHandlers::Function noting(std::string name) {
        return [this, name](const Change&, Path) { calls.push_back(name); };
    }

    void add(const EditorView& view, const char* const key, ViewChangeHandlers::Function function) {
        handlers->add(*changes, view, key, std::move(function));
    }

    Testing::TemporaryFolder folder;
    std::optional<PluginManager::Manager<AbstractModule>> modules;
    std::optional<TestView> a, b;
    ProjectFile project;
    std::unique_ptr<ChangeManager> changes = std::make_unique<ChangeManager>(project);
    std::unique_ptr<ViewChangeHandlers> handlers = std::make_unique<ViewChangeHandlers>();
    std::vector<std::string> calls;
    int value = 0;
};

TEST_F(ViewChangeHandlersTest, FunctionsOfAKeyAreCalledInTheOrderInWhichTheyCame) {
    add(*b, "x", noting("b1"));
    add(*a, "x", noting("a"));
    add(*b, "x", noting("b2"));
    add(*a, "y", noting("y"));
    change("/x");
    EXPECT_THAT(calls, ElementsAre("b1", "a", "b2"));
}

TEST_F(ViewChangeHandlersTest, FunctionGetsTheChangeAndItsComponents) {
    std::string text;
    add(*a, "x", [&text](const Change& heard, const Path path) {
        text = std::string{heard.path.data()} + " " + std::to_string(heard.newValue->GetInt());
        for(const std::string& component: path)
            text += std::string{"|"} + component.c_str();
    });
    change("/x/z");
    EXPECT_EQ(text, "/x/z 1||x|z");
}

TEST_F(ViewChangeHandlersTest, ForgottenViewIsNotCalledAndItsFunctionsAreDestroyed) {
    const auto held = std::make_shared<int>();
    add(*a, "x", [held](const Change&, Path) {});
    add(*a, "y", [held](const Change&, Path) {});
    add(*a, "x", noting("a"));
    add(*b, "x", noting("b"));
    handlers->forget(*a);
    EXPECT_EQ(held.use_count(), 1);
    change("/x");
    EXPECT_THAT(calls, ElementsAre("b"));
}

/* A key's handler stays in the history, so it's found again */
TEST_F(ViewChangeHandlersTest, KeyWithoutFunctionsCanBeUsedAgain) {
    add(*a, "x", noting("former"));
    handlers->forget(*a);
    add(*b, "x", noting("b"));
    change("/x");
    EXPECT_THAT(calls, ElementsAre("b"));
}

TEST_F(ViewChangeHandlersTest, RunningFunctionIsDestroyedWhenItHasReturned) {
    const auto held = std::make_shared<int>();
    const std::weak_ptr<int> seen = held;
    add(*a, "x", [this, held = std::shared_ptr<int>{held}](const Change&, Path) {
        handlers->forget(*a);
        calls.push_back("still " + std::to_string(held.use_count()));
    });
    add(*a, "x", noting("second of a"));
    add(*b, "x", noting("b"));
    change("/x");
    EXPECT_THAT(calls, ElementsAre("still 2", "b"));
    EXPECT_EQ(held.use_count(), 1);
    change("/x");
    EXPECT_THAT(calls, ElementsAre("still 2", "b", "b"));
}

/* Also when it runs within itself */
TEST_F(ViewChangeHandlersTest, FunctionMayBeForgottenInsideOfANestedChange) {
    const auto held = std::make_shared<int>();
    add(*a, "x", [this, held](const Change&, Path) {
        calls.push_back("in");
        if(calls.size() == 1)
            change("/x");
        else
            handlers->forget(*a);
        calls.push_back("out " + std::to_string(held.use_count()));
    });
    change("/x");
    EXPECT_THAT(calls, ElementsAre("in", "in", "out 2", "out 2"));
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(ViewChangeHandlersTest, FunctionOfAnotherViewMayForgetOneThatIsStillToCome) {
    add(*a, "x", [this](const Change&, Path) { handlers->forget(*b); });
    add(*b, "x", noting("b"));
    change("/x");
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ViewChangeHandlersTest, FunctionAddedWhileTheyAreCalledHearsOfTheNextChange) {
    add(*a, "x", [this](const Change&, Path) {
        if(calls.empty())
            add(*b, "x", noting("b"));
        calls.push_back("a");
    });
    change("/x");
    EXPECT_THAT(calls, ElementsAre("a"));
    change("/x");
    EXPECT_THAT(calls, ElementsAre("a", "a", "b"));
}

TEST_F(ViewChangeHandlersTest, FunctionThatThrowsIsReportedAndTheOthersAreCalled) {
    add(*a, "x", [](const Change&, Path) { throw std::runtime_error{"no"}; });
    add(*a, "x", [](const Change&, Path) { throw 1; });
    add(*b, "x", noting("b"));
    ::testing::internal::CaptureStderr();
    change("/x");
    const std::string error = ::testing::internal::GetCapturedStderr();
    EXPECT_THAT(error, HasSubstr("[error] A failed at a change of \"x\": no\n"));
    EXPECT_THAT(error, HasSubstr("\"x\": it threw an exception of an unknown type\n"));
    EXPECT_THAT(calls, ElementsAre("b"));
}

TEST_F(ViewChangeHandlersTest, FunctionsStayWhenTheHistoryIsReset) {
    add(*a, "x", noting("a"));
    changes->reset(project);
    change("/x");
    changes->reset(project);
    change("/x");
    EXPECT_THAT(calls, ElementsAre("a", "a"));
}

/* The change that is being told is told to all */
TEST_F(ViewChangeHandlersTest, FunctionMayResetTheHistory) {
    add(*a, "x", [this](const Change& heard, Path) {
        changes->reset(project);
        calls.push_back(heard.path.data());
    });
    add(*b, "x", noting("same key"));
    add(*b, "y", noting("next key"));
    change("/x/y");
    EXPECT_THAT(calls, ElementsAre("/x/y", "same key", "next key"));
    EXPECT_EQ(changes->changeCount(), 0u);
    change("/y");
    EXPECT_THAT(calls, ElementsAre("/x/y", "same key", "next key", "next key"));
}

TEST_F(ViewChangeHandlersTest, GroupIsHeardOfWhenItIsClosedNewestFirst) {
    std::vector<int> numbers;
    add(*a, "x", [&](const Change& heard, Path) { numbers.push_back(heard.newValue->GetInt()); });
    changes->beginGroup();
    change("/x/a");
    change("/x/b");
    EXPECT_THAT(numbers, IsEmpty());
    changes->commit();
    EXPECT_THAT(numbers, ElementsAre(2, 1));
}

TEST_F(ViewChangeHandlersTest, HistoryMayLiveLonger) {
    const auto held = std::make_shared<int>();
    add(*a, "x", [this, held](const Change&, Path) { calls.push_back("a"); });
    handlers = nullptr;
    EXPECT_EQ(held.use_count(), 1);
    change("/x");
    changes->reset(project);
    change("/x");
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ViewChangeHandlersTest, AnotherHistoryMayComeWhenThisOneHasGone) {
    add(*a, "x", noting("a"));
    changes = nullptr;
    changes = std::make_unique<ChangeManager>(project);
    add(*b, "y", noting("b"));
    change("/x/y");
    EXPECT_THAT(calls, ElementsAre("a", "b"));
}

using ViewChangeHandlersDeathTest = ViewChangeHandlersTest;

TEST_F(ViewChangeHandlersDeathTest, EmptyFunctionAborts) {
    EXPECT_DEATH(add(*a, "x", {}), "^ViewChangeHandlers::add\\(\\): the function is empty\n$");
}

TEST_F(ViewChangeHandlersDeathTest, SecondHistoryAborts) {
    add(*a, "x", noting("a"));
    ChangeManager other{project};
    EXPECT_DEATH(handlers->add(other, *a, "x", noting("a")),
        "^ViewChangeHandlers::add\\(\\): expected the history of the functions before\n$");
}

}}
