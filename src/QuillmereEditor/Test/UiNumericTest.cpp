#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/Test/UiPanel.h"
#include "QuillmereEditor/Ui.h"
#include "testing/HeadlessFrameDrawing.h"

namespace QuillmereEngine { namespace {

using Testing::drawnTexts;
using Testing::ScreenBox;
using Testing::UiPanel;

/* In one piece from button down to button up, with the mouse moved by a number of pixels */
void dragBy(UiPanel& panel, const ImVec2& from, const float pixels) {
    panel.input.drag(from, {from.x + pixels, from.y});
    /* Or the next one begins with a double click */
    panel.input.idle(40);
}

/* The number that a click with Ctrl lets one type */
void enter(UiPanel& panel, const ImVec2& position, const char* const text) {
    panel.input.hold(ImGuiKeyModFlags_Ctrl);
    panel.input.moveTo(position);
    panel.input.press();
    panel.input.release();
    panel.input.hold(ImGuiKeyModFlags_None);
    panel.input.idle();
    panel.input.text(text);
    panel.input.type(ImGuiKey_Enter);
}

struct NumericCase {
    const char* name;
    std::function<bool(Ui&)> draw;
    std::size_t count;
    const char* before;
    /* After the first component was dragged by 10 pixels */
    const char* after;
    /* The value before, as the widget writes it */
    const char* rewritten;
    /* A part of the value after 7 was typed into the first component */
    const char* typed;
};

const NumericCase NumericCases[]{
    {"Float", [](Ui& ui) { return ui.inputFloat("v"); }, 1, "2", "3.0", "2.0", ":7.0}"},
    {"Float2", [](Ui& ui) { return ui.inputFloat2("v"); }, 2, "[1,2]", "[2.0,2.0]", "[1.0,2.0]",
        "[7.0,"},
    {"Float3", [](Ui& ui) { return ui.inputFloat3("v"); }, 3, "[1,2,3]", "[2.0,2.0,3.0]",
        "[1.0,2.0,3.0]", "[7.0,"},
    {"Float4", [](Ui& ui) { return ui.inputFloat4("v"); }, 4, "[1,2,3,4]", "[2.0,2.0,3.0,4.0]",
        "[1.0,2.0,3.0,4.0]", "[7.0,"},
    {"Int", [](Ui& ui) { return ui.inputInt("v", 2, 0); }, 1, "-5", "15", "-5", ":7}"},
    {"Int2", [](Ui& ui) { return ui.inputInt2("v"); }, 2, "[1,2]", "[11,2]", "[1,2]", "[7,"},
    {"Int3", [](Ui& ui) { return ui.inputInt3("v"); }, 3, "[1,2,3]", "[11,2,3]", "[1,2,3]", "[7,"},
    {"Int4", [](Ui& ui) { return ui.inputInt4("v"); }, 4, "[1,2,3,4]", "[11,2,3,4]", "[1,2,3,4]",
        "[7,"},
    {"LongArray", [](Ui& ui) { return ui.inputFloat2("v"); }, 2, "[1,2,7]", "[2.0,2.0]",
        "[1.0,2.0]", "[7.0,"},
    {"Colour3", [](Ui& ui) { return ui.colorEdit3("v"); }, 3, "[0,0,1]",
        "[0.03921568766236305,0.0,1.0]", "[0.0,0.0,1.0]", "[0.0274509"},
    {"Colour4", [](Ui& ui) { return ui.colorEdit4("v"); }, 4, "[0,0,1,1]",
        "[0.03921568766236305,0.0,1.0,1.0]", "[0.0,0.0,1.0,1.0]", "[0.0274509"}};

void PrintTo(const NumericCase& row, std::ostream* const out) { *out << row.name; }

struct UiNumericTest: ::testing::TestWithParam<NumericCase> {
    UiNumericTest() {
        panel.setDocument(std::string{R"({"first":0,"v":)"} + GetParam().before + "}");
        panel.show([this] {
            left = ImGui::GetCursorScreenPos().x;
            width = ImGui::GetContentRegionAvail().x;
            drawn = ImGui::GetCursorPosY();
            changed += GetParam().draw(panel.ui);
            panel.mark();
        });
    }

    std::string document(const char* const value) const {
        return std::string{R"({"first":0,"v":)"} + value + "}";
    }

    static bool isColour() { return std::strstr(GetParam().name, "Colour"); }
    static bool showsFloats() { return std::strchr(GetParam().rewritten, '.') && !isColour(); }

    /* A point in the first component */
    ImVec2 firstComponent() const {
        const ScreenBox box = panel.box();
        return box.at(0.5f / float(GetParam().count), 0.5f);
    }

    UiPanel panel;
    int changed = 0;
    float left = 0.0f, width = 0.0f, drawn = 0.0f;
};

TEST_P(UiNumericTest, NothingIsWrittenWithoutTheUser) {
    panel.input.moveTo(firstComponent());
    panel.input.idle(3);
    panel.input.press();
    panel.input.release();
    EXPECT_EQ(panel.document(), document(GetParam().before));
    EXPECT_EQ(panel.manager.changeCount(), 0);
    EXPECT_EQ(changed, 0);
    EXPECT_EQ(panel.warnings, "");
}

TEST_P(UiNumericTest, DraggingWritesFreshValues) {
    dragBy(panel, firstComponent(), 10.0f);
    EXPECT_EQ(panel.document(), document(GetParam().after));
    EXPECT_EQ(changed, 1);
    EXPECT_EQ(panel.lastChange(),
        std::string{"Change /v: "} + GetParam().before + " -> " + GetParam().after);
}

TEST_P(UiNumericTest, ADragIsOneStepToUndo) {
    /* The first entry of a history is never merged into */
    panel.manager.pushChange("/first", rapidjson::Value{0}, false);
    panel.manager.pushChange("/first", rapidjson::Value{0}, false);
    const ImVec2 from = firstComponent();
    panel.input.moveTo(from);
    panel.input.press();
    for(int i = 1; i <= 10; ++i)
        panel.input.moveTo({from.x + float(i), from.y});
    panel.input.release();
    EXPECT_GT(changed, 3);
    EXPECT_EQ(panel.manager.changeCount(), 3);
    EXPECT_NE(panel.document(), document(GetParam().before));
    panel.manager.undoLast();
    EXPECT_EQ(panel.document(), document(GetParam().before));
}

TEST_P(UiNumericTest, LabelHasAThirdOfTheRow) {
    bool isLabelDrawn = false;
    for(const Testing::DrawnText& text: drawnTexts("Panel"))
        isLabelDrawn = isLabelDrawn || text.text[0] == 'v';
    EXPECT_TRUE(isLabelDrawn);
    EXPECT_NEAR(panel.box().min.x, panel.position.x + width * 0.33f, 1.0f);
}

TEST_P(UiNumericTest, WithoutLabelTheWidgetStartsTheRow) {
    panel.show([this] {
        panel.ui.pushFlags(Ui::Flag::NoLabel);
        GetParam().draw(panel.ui);
        panel.mark();
        panel.ui.popFlags();
    });
    for(const Testing::DrawnText& text: drawnTexts("Panel"))
        EXPECT_NE(text.text[0], 'v');
    EXPECT_FLOAT_EQ(panel.box().min.x, left);
}

TEST_P(UiNumericTest, CtrlShowsThePath) {
    panel.show([this] {
        panel.ui.pushScope("objects").pushScope(3ul);
        GetParam().draw(panel.ui);
        panel.mark();
        panel.ui.popScope().popScope();
    });
    panel.input.moveTo(firstComponent());
    panel.input.idle(3);
    EXPECT_EQ(panel.tooltip(), "");
    panel.input.hold(ImGuiKeyModFlags_Ctrl);
    panel.input.idle(3);
    EXPECT_EQ(panel.tooltip(), "/objects/3/v");
}

TEST_P(UiNumericTest, MissingValueIsZeroWithoutAWarning) {
    for(const char* const json: {"{}", R"({"v":null})"}) {
        panel.setDocument(json);
        panel.input.idle(2);
        EXPECT_EQ(panel.warnings, "");
        EXPECT_EQ(panel.document(), json);
    }
}

TEST_P(UiNumericTest, TypedNumberIsWritten) {
    enter(panel, firstComponent(), "7");
    EXPECT_NE(panel.document().find(GetParam().typed), std::string::npos) << panel.document();
}

TEST_P(UiNumericTest, FieldHasTheIdOfItsScope) {
    ImGuiID expected = 0;
    panel.show([this, &expected] {
        ImGui::PushID("v");
        ImGui::PushID("##val");
        /* Fields of several components push an index, those of colours have labels */
        ImGuiWindow& window = *ImGui::GetCurrentWindow();
        expected = GetParam().count == 1 ? window.IDStack.back()
            : isColour()                 ? window.GetID("##X")
                                         : window.GetID(0);
        ImGui::PopID();
        ImGui::PopID();
        GetParam().draw(panel.ui);
        panel.mark();
    });
    panel.input.moveTo(firstComponent());
    panel.input.press();
    EXPECT_EQ(ImGui::GetCurrentContext()->ActiveId, expected);
    panel.input.release();
}

TEST_P(UiNumericTest, MenuPastesTheWholeValue) {
    panel.frame.clipboard = GetParam().after;
    panel.setDocument(document(GetParam().rewritten));
    panel.input.moveTo(firstComponent());
    panel.input.press(1);
    panel.input.release(1);
    panel.input.idle(2);
    ASSERT_EQ(ImGui::GetCurrentContext()->OpenPopupStack.Size, 1);
    panel.clickItem("?Paste", ImGui::GetCurrentContext()->OpenPopupStack.back().Window->Name);
    EXPECT_EQ(panel.document(), document(GetParam().after));
}

TEST_P(UiNumericTest, OnlyColoursHaveBounds) {
    const ImVec2 from = firstComponent();
    panel.input.drag(from, {from.x - 1000.0f, from.y});
    if(isColour())
        EXPECT_EQ(panel.document(), document(GetParam().before));
    else
        EXPECT_NE(panel.document().find(GetParam().count == 1 ? ":-" : "[-"), std::string::npos)
            << panel.document();
}

TEST_P(UiNumericTest, FloatsHaveThreeDecimals) {
    const std::vector<Testing::DrawnText> texts = drawnTexts("Panel");
    std::size_t count = 0;
    for(const Testing::DrawnText& text: texts) {
        const std::size_t point = text.text.find('.');
        count += point != std::string::npos && point + 4 == text.text.size() ? 1 : 0;
    }
    EXPECT_EQ(count, showsFloats() ? GetParam().count : 0);
}

/* Each key is written at once, and so is what was there before */
TEST_P(UiNumericTest, EscapeGivesUpTyping) {
    panel.input.doubleClick(firstComponent());
    panel.input.idle();
    panel.input.text("7");
    panel.input.type(ImGuiKey_Escape);
    EXPECT_EQ(panel.document(), document(GetParam().rewritten));
}

INSTANTIATE_TEST_SUITE_P(All, UiNumericTest, ::testing::ValuesIn(NumericCases),
    [](const auto& row) { return std::string{row.param.name}; });

struct UiNumberTest: ::testing::Test {
    void show(const std::string& value, std::function<bool(Ui&)> draw) {
        panel.setDocument(R"({"v":)" + value + "}");
        panel.show([this, draw = std::move(draw)] {
            panel.ui.pushFlags(Ui::Flag::NoLabel);
            draw(panel.ui);
            panel.mark();
            panel.ui.popFlags();
        });
    }

    std::string value() const { return panel.document().substr(5, panel.document().size() - 6); }

    /* What the widget shows, the component that is so many from its end */
    static std::string shown(const std::size_t fromEnd = 0) {
        const std::vector<Testing::DrawnText> texts = drawnTexts("Panel");
        return texts.size() > fromEnd ? texts[texts.size() - 1 - fromEnd].text : "";
    }

    UiPanel panel;
};

TEST_F(UiNumberTest, FloatTakesAnyNumber) {
    struct {
        const char *json, *shown;
    } const cases[]{{"2", "2.000"}, {"-2", "-2.000"}, {"2.5", "2.500"},
        {"4294967295", "4294967296.000"}, {"-4294967296", "-4294967296.000"},
        {"18446744073709551615", "18446744073709551616.000"}, {"1e300", "inf"}, {"-1e300", "-inf"},
        {"3.4028235e38", "340282346638528859811704183484516925440.000"}, {"1e-300", "0.000"}};
    for(const auto& i: cases) {
        show(i.json, [](Ui& ui) { return ui.inputFloat("v"); });
        EXPECT_EQ(shown(), i.shown);
        EXPECT_EQ(panel.manager.changeCount(), 0);
    }
}

TEST_F(UiNumberTest, FloatIsWidenedWhenWritten) {
    show("2", [](Ui& ui) { return ui.inputFloat("v"); });
    enter(panel, panel.box().center(), "0.1");
    EXPECT_EQ(value(), "0.10000000149011612");
}

TEST_F(UiNumberTest, StepOfATenthIsTheSpeed) {
    show("2", [](Ui& ui) { return ui.inputFloat("v"); });
    const ImVec2 from = panel.box().center();
    panel.input.moveTo(from);
    panel.input.press();
    panel.frame.io().MouseDragThreshold = 0.0f;
    panel.input.moveTo({from.x + 1.0f, from.y});
    panel.input.release();
    EXPECT_EQ(value(), "2.0999999046325684");
}

TEST_F(UiNumberTest, NoInfinityReachesTheDocument) {
    struct {
        const char *typed, *written;
    } const cases[]{{"1e99", "3.4028234663852886e+38"}, {"-1e99", "-3.4028234663852886e+38"}};
    for(const auto& i: cases) {
        show("2", [](Ui& ui) { return ui.inputFloat("v"); });
        enter(panel, panel.box().center(), i.typed);
        EXPECT_EQ(value(), i.written);
    }
}

TEST_F(UiNumberTest, IntTakesTheLow32Bits) {
    struct {
        const char *json, *shown;
    } const cases[]{{"7", "7"}, {"-7", "-7"}, {"2147483647", "2147483647"},
        {"2147483648", "-2147483648"}, {"4294967295", "-1"}, {"4294967303", "7"},
        {"-4294967289", "7"}, {"18446744073709551615", "-1"},
        /* 0x4004000000000000, and the low half of 0.1 */
        {"2.5", "0"}, {"0.1", "-1717986918"}};
    for(const auto& i: cases) {
        show(i.json, [](Ui& ui) { return ui.inputInt("v", 1, 0); });
        EXPECT_EQ(shown(), i.shown) << i.json;
        EXPECT_EQ(panel.manager.changeCount(), 0);
        EXPECT_EQ(panel.warnings, "");
        show(std::string{"["} + i.json + ",1]", [](Ui& ui) { return ui.inputInt2("v"); });
        EXPECT_EQ(shown(1), i.shown) << i.json;
    }
}

TEST_F(UiNumberTest, IntWithAPositiveMinimumHasNoBounds) {
    show("3", [](Ui& ui) { return ui.inputInt("v", 1, 5); });
    dragBy(panel, panel.box().center(), -20.0f);
    EXPECT_EQ(value(), "-17");
    dragBy(panel, panel.box().center(), 100.0f);
    EXPECT_EQ(value(), "83");
}

TEST_F(UiNumberTest, IntWithANegativeMinimumStaysBelowZero) {
    show("-3", [](Ui& ui) { return ui.inputInt("v", 1, -5); });
    dragBy(panel, panel.box().center(), 20.0f);
    EXPECT_EQ(value(), "0");
    dragBy(panel, panel.box().center(), -20.0f);
    EXPECT_EQ(value(), "-5");
}

TEST_F(UiNumberTest, IntSpeedIsPerPixel) {
    show("0", [](Ui& ui) { return ui.inputInt("v", 3, 0); });
    dragBy(panel, panel.box().center(), 10.0f);
    EXPECT_EQ(value(), "30");
}

TEST_F(UiNumberTest, TabGoesFromComponentToComponent) {
    show("[1,2,3]", [](Ui& ui) { return ui.inputFloat3("v"); });
    panel.input.doubleClick(panel.box().at(0.1f, 0.5f));
    panel.input.idle();
    panel.input.text("7");
    panel.input.type(ImGuiKey_Tab);
    panel.input.idle(2);
    panel.input.text("8");
    panel.input.type(ImGuiKey_Enter);
    EXPECT_EQ(value(), "[7.0,8.0,3.0]");
}

TEST_F(UiNumberTest, ColoursAreTyped) {
    show("[0.5,0,1]", [](Ui& ui) { return ui.colorEdit3("v"); });
    enter(panel, panel.box().at(0.1f, 0.5f), "255");
    EXPECT_EQ(value(), "[1.0,0.0,1.0]");
    EXPECT_EQ(panel.lastChange(), "Change /v: [0.5,0,1] -> [1.0,0.0,1.0]");
}

TEST_F(UiNumberTest, ColoursWithAlphaAreTyped) {
    show("[0.5,0,1,0,9]", [](Ui& ui) { return ui.colorEdit4("v"); });
    enter(panel, panel.box().at(0.1f, 0.5f), "255");
    EXPECT_EQ(value(), "[1.0,0.0,1.0,0.0]");
}

TEST_F(UiNumberTest, MissingColourIsBlack) {
    for(const char* const json: {"null", R"("text")"}) {
        show(json, [](Ui& ui) { return ui.colorEdit4("v"); });
        EXPECT_EQ(value(), json);
        EXPECT_EQ(panel.warnings,
            *json == 'n' ? "" : "Ui: expected an array of 4 numbers at /v but got a string\n");
        enter(panel, panel.box().at(0.1f, 0.5f), "255");
        EXPECT_EQ(value(), "[1.0,0.0,0.0,0.0]");
    }
}

using UiNumberDeathTest = UiNumberTest;

TEST_F(UiNumberDeathTest, ColourWithAlphaNeedsFourElements) {
    for(const char* const json: {"[]", "[1,2,3]"})
        EXPECT_DEATH(show(json, [](Ui& ui) { return ui.colorEdit4("v"); }),
            "^Ui::colorEdit4\\(\\): Json array for v too small\n$");
}

TEST_F(UiNumberDeathTest, NoProjectAndNoHistory) {
    panel.ui.changeManager = nullptr;
    show("1", [](Ui& ui) { return ui.inputFloat("v"); });
    EXPECT_DEATH(dragBy(panel, panel.box().center(), 10.0f), "^Ui: there is no change manager\n$");
    panel.ui.project = nullptr;
    EXPECT_DEATH(panel.input.idle(), "^Ui: there is no project\n$");
}

TEST_F(UiNumberDeathTest, NoDocument) {
    panel.project.document = nullptr;
    EXPECT_DEATH(panel.show([this] { panel.ui.inputFloat3("v"); }),
        "^Containers::Pointer: the pointer is null\n$");
}

}}
