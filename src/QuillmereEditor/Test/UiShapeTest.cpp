#include <functional>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/Test/UiPanel.h"
#include "QuillmereEditor/Ui.h"
#include "testing/HeadlessFrameDrawing.h"

namespace QuillmereEngine { namespace {

using namespace Corrade;
using Testing::UiPanel;

struct WidgetCase {
    const char* name;
    std::function<void(Ui&, const char* label)> draw;
    /* What it takes without a warning */
    std::vector<std::string> expected;
};

const char* const Names[]{"a", "b"};
int selected = 0;

const WidgetCase WidgetCases[]{
    {"text", [](Ui& ui, const char* label) { ui.text(label); }, {R"("text")", R"("")"}},
    {"inputFloat", [](Ui& ui, const char* label) { ui.inputFloat(label); },
        {"7", "-1", "2.5", "1e300", "18446744073709551615"}},
    {"inputFloat2", [](Ui& ui, const char* label) { ui.inputFloat2(label); },
        {"[1,2]", "[1,2,3,4,5]", "[null,1]"}},
    {"inputFloat3", [](Ui& ui, const char* label) { ui.inputFloat3(label); }, {"[1,2,3,4,5]"}},
    {"inputFloat4", [](Ui& ui, const char* label) { ui.inputFloat4(label); }, {"[1,2,3,4,5]"}},
    {"inputInt", [](Ui& ui, const char* label) { ui.inputInt(label, 1, 0); },
        {"7", "-1", "2.5", "1e300", "18446744073709551615"}},
    {"inputInt2", [](Ui& ui, const char* label) { ui.inputInt2(label); },
        {"[1,2]", "[1,2,3,4,5]", "[null,1]"}},
    {"inputInt3", [](Ui& ui, const char* label) { ui.inputInt3(label); }, {"[1,2,3,4,5]"}},
    {"inputInt4", [](Ui& ui, const char* label) { ui.inputInt4(label); }, {"[1,2,3,4,5]"}},
    {"colorEdit3", [](Ui& ui, const char* label) { ui.colorEdit3(label); }, {"[1,2,3,4,5]"}},
    {"checkbox", [](Ui& ui, const char* label) { ui.checkbox(label); }, {"true", "any"}},
    {"checkboxUnlabled", [](Ui& ui, const char* label) { ui.checkboxUnlabled(label); },
        {"true", "any"}},
    {"checkboxBit", [](Ui& ui, const char* label) { ui.checkboxBit(label, 3, nullptr); },
        {"7", "-1", "2.5", "1e300", "18446744073709551615"}},
    {"checkboxBits", [](Ui& ui, const char* label) { ui.checkboxBits(label, 6, {}); },
        {"7", "-1", "2.5", "1e300", "18446744073709551615"}},
    {"inputEnum", [](Ui& ui, const char* label) { ui.inputEnum(label, Names); },
        {R"("text")", R"("")"}},
    {"inputText", [](Ui& ui, const char* label) { ui.inputText(label); }, {R"("text")", R"("")"}},
    {"inputTextMultiline", [](Ui& ui, const char* label) { ui.inputTextMultiline(label); },
        {R"("text")", R"("")"}},
    {"renameable", [](Ui& ui, const char* label) { ui.renameable(label); }, {R"("text")", R"("")"}},
    {"stringList", [](Ui& ui, const char* label) { ui.stringList(label, selected); },
        {"[]", R"(["a","b",null])"}},
    {"selectResource",
        [](Ui& ui, const char* label) { ui.selectResource(label, "objects", false); },
        {R"("text")", R"("")"}},
    {"selectResourceName",
        [](Ui& ui, const char* label) { ui.selectResourceName(label, "objects"); },
        {R"("text")", R"("")"}},
    {"fileSelect", [](Ui& ui, const char* label) { ui.fileSelect(label, "Title", {}); },
        {R"("text")", R"("")"}}};

const char* const Values[]{"null", "true", "false", "7", "-1", "2.5", "1e300",
    "18446744073709551615", R"("text")", R"("")", "[]", "[1]", "[1,2]", "[null,1]", "[1,2,3,4,5]",
    R"(["a","b",null])", "[[1],{},null]", "{}", R"({"a":1})"};

void PrintTo(const WidgetCase& row, std::ostream* const out) { *out << row.name; }

struct UiShapeTest: ::testing::TestWithParam<WidgetCase> {
    bool isExpected(const std::string& value) const {
        if(value == "null")
            return true;
        for(const std::string& expected: GetParam().expected)
            if(expected == value || expected == "any")
                return true;
        return false;
    }

    UiPanel panel;
};

TEST_P(UiShapeTest, AnyValueIsDrawnAndNoneIsWritten) {
    int number = 0;
    for(const std::string value: Values) {
        /* Each has a path of its own, as a warning is given once for each */
        const std::string label = GetParam().name + std::to_string(number++);
        const std::string document = "{\"" + label + "\":" + value + "}";
        panel.setDocument(document);
        const std::string before = panel.document();
        panel.show([&] {
            GetParam().draw(panel.ui, label.c_str());
            panel.mark();
        });
        panel.input.moveTo(panel.box().center());
        panel.input.hold(ImGuiKeyModFlags_Ctrl);
        panel.input.idle(3);
        panel.input.hold(ImGuiKeyModFlags_None);
        panel.input.press(1);
        panel.input.release(1);
        panel.input.click({600.0f, 400.0f});

        EXPECT_EQ(panel.document(), before);
        EXPECT_EQ(panel.manager.changeCount(), 0);
        if(isExpected(value))
            EXPECT_EQ(panel.warnings, "") << value;
        else {
            EXPECT_NE(panel.warnings.find("Ui: expected"), std::string::npos) << value;
            EXPECT_NE(panel.warnings.find(" at /" + label + " but got "), std::string::npos)
                << panel.warnings;
            EXPECT_EQ(panel.warnings.find('\n'), panel.warnings.size() - 1) << panel.warnings;
        }
    }
}

TEST_P(UiShapeTest, AnyDocumentIsDrawn) {
    for(const char* const document: {"null", "5", "[]", R"("text")", R"({"objects":5})"}) {
        panel.setDocument(document);
        panel.show([&] { GetParam().draw(panel.ui, "anyDocument"); });
        panel.show([&] {
            panel.ui.pushScope("a").pushScope(3ul);
            GetParam().draw(panel.ui, "anyDocument");
            panel.ui.popScope().popScope();
        });
        EXPECT_EQ(panel.document(), document);
        EXPECT_EQ(panel.warnings, "");
    }
}

TEST_P(UiShapeTest, AnyKeyIsALabel) {
    for(const char* const label: {"", "a/b", "a~b", "~1x~0", "##x", "a###b", "%s%n", "a%d"}) {
        panel.show([&] {
            panel.ui.pushFlags(Ui::Flag::NoLabel);
            /* One pop of the widget's own for each segment it has entered */
            GetParam().draw(panel.ui, label);
            if(std::string{label} == "a/b")
                panel.ui.popScope();
            panel.ui.popFlags();
            panel.mark();
        });
        panel.input.moveTo(panel.box().center());
        panel.input.hold(ImGuiKeyModFlags_Ctrl);
        panel.input.idle(3);
        panel.input.hold(ImGuiKeyModFlags_None);
    }
    EXPECT_EQ(panel.warnings, "");
}

TEST_P(UiShapeTest, EmptyKeyAndEmptyStringsAreDrawn) {
    for(const char* const document: {R"({"":""})", R"({"":["",""]})", R"({"":true})"}) {
        panel.setDocument(document);
        panel.show([&] { GetParam().draw(panel.ui, ""); });
        EXPECT_EQ(panel.document(), document);
    }
}

INSTANTIATE_TEST_SUITE_P(All, UiShapeTest, ::testing::ValuesIn(WidgetCases),
    [](const auto& row) { return std::string{row.param.name}; });

/* Words of the warnings, and what is shown and written in spite of them */
struct UiShapeWarningTest: ::testing::Test {
    void show(const std::string& label, const std::string& value,
        const std::function<void(const char*)>& draw) {
        panel.setDocument("{\"" + label + "\":" + value + "}");
        panel.show([this, draw, label] {
            draw(label.c_str());
            panel.mark();
        });
    }

    UiPanel panel;
};

TEST_F(UiShapeWarningTest, TellsWhatWasExpectedAndFound) {
    struct {
        const char *label, *value;
        std::function<void(const char*)> draw;
        const char* warning;
    } const cases[]{{"w0", "\"x\"", [this](const char* label) { panel.ui.inputFloat(label); },
                        "Ui: expected a number at /w0 but got a string\n"},
        {"w1", "{}", [this](const char* label) { panel.ui.inputInt(label, 1, 0); },
            "Ui: expected a number at /w1 but got an object\n"},
        {"w2", "true", [this](const char* label) { panel.ui.inputText(label); },
            "Ui: expected a string at /w2 but got true\n"},
        {"w3", "false", [this](const char* label) { panel.ui.inputFloat3(label); },
            "Ui: expected an array of 3 numbers at /w3 but got false\n"},
        {"w4", "[1]", [this](const char* label) { panel.ui.inputFloat3(label); },
            "Ui: expected an array of 3 numbers at /w4 but got one of 1\n"},
        {"w5", "[1,[]]", [this](const char* label) { panel.ui.inputInt4(label); },
            "Ui: expected an array of 4 numbers at /w5 but got an array at index 1\n"},
        {"w6", "[1]", [this](const char* label) { panel.ui.stringList(label, selected); },
            "Ui: expected an array of strings at /w6 but got an array\n"},
        {"w7", "7", [this](const char* label) { panel.ui.selectResource(label, "a", false); },
            "Ui: expected a string at /w7 but got a number\n"}};
    for(const auto& i: cases) {
        show(i.label, i.value, i.draw);
        EXPECT_EQ(panel.warnings, i.warning);
        panel.input.idle(3);
        EXPECT_EQ(panel.warnings, i.warning) << "once";
    }
}

TEST_F(UiShapeWarningTest, IsRememberedByNoInstance) {
    show("twice", "{}", [this](const char* label) { panel.ui.inputFloat(label); });
    EXPECT_NE(panel.warnings, "");
    Ui other;
    other.project = &panel.project;
    other.changeManager = &panel.manager;
    panel.show([&] { other.inputFloat("twice"); });
    EXPECT_EQ(panel.warnings, "");
}

TEST_F(UiShapeWarningTest, PresentElementsAreShownAndKept) {
    show("short", R"([1,"x"])", [this](const char* label) {
        panel.ui.pushFlags(Ui::Flag::NoLabel);
        panel.ui.inputFloat3(label);
        panel.ui.popFlags();
    });
    EXPECT_EQ(Testing::drawnTexts("Panel").size(), 4u) << "title and three numbers";
    EXPECT_EQ(Testing::drawnTexts("Panel")[1].text, "1.000");
    EXPECT_EQ(Testing::drawnTexts("Panel")[2].text, "0.000");
    const ImVec2 from = panel.box().at(0.9f, 0.5f);
    panel.input.drag(from, {from.x + 10.0f, from.y});
    EXPECT_EQ(panel.lastChange(), R"(Change /short: [1,"x"] -> [1.0,0.0,1.0])");
}

TEST_F(UiShapeWarningTest, EditedValueIsOfTheWidgetsKind) {
    show("object", R"({"a":1})", [this](const char* label) { panel.ui.inputFloat(label); });
    const ImVec2 from = panel.box().center();
    panel.input.drag(from, {from.x + 10.0f, from.y});
    EXPECT_EQ(panel.lastChange(), R"(Change /object: {"a":1} -> 1.0)");
}

TEST_F(UiShapeWarningTest, PathIsOneLine) {
    panel.setDocument("{\"two\\nlines\":{\"a\":true,\"b\":[{}]}}");
    panel.show([this] {
        panel.ui.pushScope("two\nlines");
        panel.ui.inputFloat("a");
        panel.ui.inputInt2("b");
        panel.ui.popScope();
    });
    EXPECT_EQ(panel.warnings,
        "Ui: expected a number at /two\\x0alines/a but got true\n"
        "Ui: expected an array of 2 numbers at /two\\x0alines/b but got an object at index 0\n");
}

TEST_F(UiShapeWarningTest, WhatCannotBeWrittenIsNamedInOneLine) {
    panel.setDocument("{\"text\\n\":\"text\"}");
    panel.show([this] {
        panel.ui.pushScope("text\n");
        panel.ui.inputInt("0", 1, 0);
        panel.mark();
        panel.ui.popScope();
    });
    const ImVec2 from = panel.box().center();
    panel.input.drag(from, {from.x + 10.0f, from.y});
    EXPECT_EQ(panel.document(), "{\"text\\n\":\"text\"}");
    EXPECT_EQ(panel.warnings,
        "Ui: can't write /text\\x0a/0, its parent is neither an array nor an object\n");
}

/* RapidJSON used to end the process, as it does when an invalid pointer is looked up */
TEST_F(UiShapeWarningTest, KeyWithALoneTildeIsRefused) {
    panel.show([this] {
        panel.ui.pushScope("a~b");
        panel.ui.inputInt("0", 1, 0);
        panel.mark();
        panel.ui.popScope();
    });
    std::ostringstream errors;
    const Utility::Error redirect{&errors};
    const ImVec2 from = panel.box().center();
    panel.input.drag(from, {from.x + 10.0f, from.y});
    EXPECT_EQ(panel.document(), "{}");
    EXPECT_EQ(errors.str(), "ChangeManager::pushChange(): /a~b/0 is not a JSON pointer\n");
}

/* Whatever stands on the way to a value, and whatever its path is */
TEST_F(UiShapeWarningTest, AnEditIsWrittenOrRefusedWithAMessage) {
    for(const char* const document: {"null", "5", "[]", "[1]", "{}", R"({"a":5})", R"({"a":null})",
            R"({"a":"text"})", R"({"a":[1]})", R"({"a":{"3":true}})", R"({"a":[[],{},"x",{}]})"})
        for(const std::string scope: {"a", "a/3", "a/3/b", "a/3/3", "a/0", "a/-", "a/01", "a/-1",
                "a/4294967296", "3", "-", "~", "a~/3", "3~2", "//", "a/"}) {
            panel.setDocument(document);
            panel.manager.reset(panel.project);
            panel.show([&] {
                const int count = ImGui::GetCurrentWindow()->IDStack.Size;
                panel.ui.pushFlags(Ui::Flag::NoLabel);
                panel.ui.inputInt(scope.c_str(), 1, 0);
                panel.mark();
                panel.ui.popFlags();
                while(ImGui::GetCurrentWindow()->IDStack.Size > count)
                    panel.ui.popScope();
                /* Segments that are no IDs don't count as scopes to leave */
                *panel.ui.scope.data() = '\0';
            });
            std::ostringstream errors;
            const Utility::Error redirect{&errors};
            panel.warnings.clear();
            const ImVec2 from = panel.box().center();
            panel.input.drag(from, {from.x + 10.0f, from.y});
            panel.input.idle(40);
            const std::string messages = panel.warnings + errors.str();
            EXPECT_NE(panel.document() == document, messages.empty())
                << document << " at " << scope << ": " << messages;
            EXPECT_EQ(panel.manager.changeCount(), messages.empty() ? 1 : 0);
        }
}

TEST_F(UiShapeWarningTest, EscapedKeysAreTheirMembers) {
    panel.setDocument(R"({"a/b":{"c~d":1}})");
    panel.show([this] {
        panel.ui.pushScope("a~1b");
        Ui::label("c~d");
        panel.ui.pushFlags(Ui::Flag::NoLabel);
        panel.ui.inputInt("c~0d", 1, 0);
        panel.mark();
        panel.ui.popFlags();
        panel.ui.popScope();
    });
    const ImVec2 from = panel.box().center();
    panel.input.drag(from, {from.x + 10.0f, from.y});
    EXPECT_EQ(panel.document(), R"({"a/b":{"c~d":11}})");
    panel.input.hold(ImGuiKeyModFlags_Ctrl);
    panel.input.idle(3);
    EXPECT_EQ(panel.tooltip(), "/a~1b/c~0d");
}

}}
