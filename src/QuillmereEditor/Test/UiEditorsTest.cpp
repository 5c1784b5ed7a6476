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

using namespace Corrade;
using Testing::DrawnText;
using Testing::drawnTexts;
using Testing::ScreenBox;
using Testing::UiPanel;

/* One property called v, drawn by what a test gives */
struct UiEditorsTest: ::testing::Test {
    void show(const std::string& value, std::function<bool()> draw) {
        panel.setDocument(R"({"other":0,"v":)" + value + "}");
        panel.show([this, draw = std::move(draw)] {
            isChanged = draw();
            changed += isChanged;
            panel.mark();
        });
    }

    std::string value() const {
        const std::string document = panel.document();
        return document.substr(15, document.size() - 16);
    }

    /* So that the first entry of the history, which isn't merged into, is another one */
    void beginHistory() {
        for(int i = 0; i != 2; ++i)
            panel.manager.pushChange("/other", rapidjson::Value{0}, false);
    }

    bool isShown(const std::string& text, const char* const window = "Panel") const {
        for(const DrawnText& drawn: drawnTexts(window))
            if(drawn.text == text)
                return true;
        return false;
    }

    void openMenu() {
        panel.input.moveTo(panel.box().center());
        panel.input.press(1);
        panel.input.release(1);
        panel.input.idle(2);
    }

    bool isMenuOpen() const { return !ImGui::GetCurrentContext()->OpenPopupStack.empty(); }

    void expectPathTooltip(const ImVec2& position) {
        panel.input.moveTo(position);
        panel.input.hold(ImGuiKeyModFlags_Ctrl);
        panel.input.idle(3);
        EXPECT_EQ(panel.tooltip(), "/v");
        panel.input.hold(ImGuiKeyModFlags_None);
    }

    UiPanel panel;
    bool isChanged = false;
    int changed = 0;
};

TEST_F(UiEditorsTest, CheckboxTogglesABoolean) {
    show("false", [this] { return panel.ui.checkbox("v"); });
    EXPECT_TRUE(isShown("v"));
    for(const char* const expected: {"true", "false", "true"}) {
        panel.input.click(panel.box().center());
        EXPECT_EQ(value(), expected);
    }
    EXPECT_EQ(changed, 3);
    EXPECT_EQ(panel.manager.changeCount(), 3) << "each toggle is a step of its own";
    EXPECT_EQ(panel.lastChange(), "Change /v: false -> true");
}

TEST_F(UiEditorsTest, CheckboxOfAnythingElseIsUnchecked) {
    for(const char* const json: {"1", "null", R"("true")", "[true]"}) {
        show(json, [this] { return panel.ui.checkbox("v"); });
        EXPECT_EQ(panel.warnings, "");
        EXPECT_EQ(value(), json);
        panel.input.click(panel.box().center());
        EXPECT_EQ(value(), "true");
    }
}

TEST_F(UiEditorsTest, UnlabelledCheckboxShowsItsBoxOnly) {
    show("true", [this] { return panel.ui.checkboxUnlabled("v"); });
    EXPECT_FALSE(isShown("v"));
    panel.input.click(panel.box().center());
    EXPECT_EQ(value(), "false");
}

TEST_F(UiEditorsTest, CheckboxesHaveNoMenuButAPath) {
    const std::function<bool()> draws[]{[this] { return panel.ui.checkbox("v"); },
        [this] { return panel.ui.checkboxUnlabled("v"); },
        [this] { return panel.ui.checkboxBit("v", 3, nullptr); },
        [this] { return panel.ui.checkboxBits("v", 6, {}); }};
    for(const auto& draw: draws) {
        show("0", draw);
        openMenu();
        EXPECT_FALSE(isMenuOpen());
        expectPathTooltip(panel.box().center());
    }
    EXPECT_EQ(panel.manager.changeCount(), 0);
}

TEST_F(UiEditorsTest, BitIsToggledAmongTheOthers) {
    struct {
        const char* before;
        int bit;
        const char* after;
    } const cases[]{{"0", 0, "1"}, {"5", 0, "4"}, {"5", 1, "7"}, {"0", 31, "-2147483648"},
        {"-1", 31, "2147483647"}, {"4294967295", 0, "-2"}, {"null", 4, "16"}};
    for(const auto& i: cases) {
        show(i.before, [&] { return panel.ui.checkboxBit("v", i.bit, "Name"); });
        EXPECT_TRUE(isShown("Name"));
        EXPECT_EQ(panel.warnings, "");
        panel.input.click(panel.box().at(0.1f, 0.5f));
        EXPECT_EQ(value(), i.after);
    }
}

TEST_F(UiEditorsTest, BitWithoutNameHasItsNumber) {
    show("0", [this] { return panel.ui.checkboxBit("v", 12, nullptr); });
    EXPECT_TRUE(isShown("12"));
}

TEST_F(UiEditorsTest, BitOfEachHasAnIdOfItsOwn) {
    std::vector<ImGuiID> ids;
    show("0", [&] {
        ids.clear();
        for(const int bit: {1, 2}) {
            panel.ui.checkboxBit("v", bit, "Same");
            ids.push_back(ImGui::GetItemID());
        }
        return false;
    });
    EXPECT_NE(ids[0], ids[1]);
}

TEST_F(UiEditorsTest, BitsAreInRowsOfFour) {
    show("0", [this] { return panel.ui.checkboxBits("v", 6, {}); });
    std::vector<ImVec2> positions;
    for(const char* const name: {"0", "1", "2", "3", "4", "5"})
        for(const DrawnText& text: drawnTexts("Panel"))
            if(text.text == name)
                positions.push_back(text.position);
    ASSERT_EQ(positions.size(), 6u);
    for(const int i: {1, 2, 3})
        EXPECT_NEAR(positions[i].y, positions[0].y, 2.0f);
    EXPECT_GT(positions[4].y, positions[0].y + 10.0f);
    EXPECT_NEAR(positions[5].y, positions[4].y, 2.0f);
    EXPECT_NEAR(positions[5].x, positions[1].x, 3.0f);
    /* A quarter of what the label leaves of the width */
    const float width = panel.size.x - 2.0f * ImGui::GetStyle().WindowPadding.x;
    EXPECT_NEAR(positions[2].x - positions[1].x, width * 0.67f * 0.25f, 3.0f);
}

TEST_F(UiEditorsTest, TogglingOneBitIsOneChangeOfTheWholeMask) {
    const char* names[]{"A", "B", "C", "D", "E", "F", "G", "H"};
    show("5", [&] { return panel.ui.checkboxBits("v", 10, names); });
    for(const char* const name: {"A", "H", "8", "9"})
        EXPECT_TRUE(isShown(name)) << name;
    panel.clickItem("B", "Panel");
    EXPECT_EQ(panel.lastChange(), "Change /v: 5 -> 7");
    panel.clickItem("9", "Panel");
    EXPECT_EQ(panel.lastChange(), "Change /v: 7 -> 519");
    EXPECT_EQ(panel.manager.changeCount(), 2);
    EXPECT_EQ(changed, 2);
}

TEST_F(UiEditorsTest, AllBitsAndNone) {
    for(const int count: {32, 1, 0, -1}) {
        show("-1", [&] { return panel.ui.checkboxBits("v", count, {}); });
        EXPECT_EQ(value(), "-1");
    }
    show("-1", [this] { return panel.ui.checkboxBits("v", 32, {}); });
    panel.clickItem("31", "Panel");
    EXPECT_EQ(value(), "2147483647");
}

TEST_F(UiEditorsTest, EnumIsChosenFromItsNames) {
    const char* const names[]{"point", "spot", "sun"};
    show(R"("spot")", [&] { return panel.ui.inputEnum("v", names); });
    EXPECT_TRUE(isShown("spot"));
    panel.input.click(panel.box().center());
    panel.clickItem("sun", "##Combo_00");
    EXPECT_EQ(panel.lastChange(), R"(Change /v: "spot" -> "sun")");
    EXPECT_EQ(changed, 1);
    panel.input.click(panel.box().center());
    panel.clickItem("point", "##Combo_00");
    EXPECT_EQ(value(), R"("point")");
    EXPECT_EQ(panel.manager.changeCount(), 2);
}

TEST_F(UiEditorsTest, EnumOfAListTakesTheSame) {
    show(R"("a")", [this] { return panel.ui.inputEnum("v", {"a", "b"}); });
    panel.input.click(panel.box().center());
    panel.clickItem("b", "##Combo_00");
    EXPECT_EQ(value(), R"("b")");
    openMenu();
    EXPECT_TRUE(isMenuOpen());
}

TEST_F(UiEditorsTest, EnumShowsSevenNamesAtATime) {
    const char* const names[]{"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"};
    show(R"("a")", [&] { return panel.ui.inputEnum("v", names); });
    panel.input.click(panel.box().center());
    panel.input.idle(2);
    const ImGuiStyle& style = ImGui::GetStyle();
    const float rows = 7.0f * (ImGui::GetFontSize() + style.ItemSpacing.y) - style.ItemSpacing.y;
    EXPECT_FLOAT_EQ(
        ImGui::FindWindowByName("##Combo_00")->Size.y, rows + 2.0f * style.WindowPadding.y);
}

TEST_F(UiEditorsTest, EnumOutsideOfItsNamesIsEmpty) {
    for(const char* const json: {R"("area")", "null"}) {
        show(json, [this] { return panel.ui.inputEnum("v", {"a", "b"}); });
        EXPECT_FALSE(isShown("a"));
        EXPECT_EQ(panel.warnings, "");
        EXPECT_EQ(value(), json);
    }
}

TEST_F(UiEditorsTest, EnumWithoutNamesCanBeOpened) {
    show(R"("a")",
        [this] { return panel.ui.inputEnum("v", Containers::ArrayView<const char* const>{}); });
    panel.input.click(panel.box().center());
    EXPECT_EQ(panel.manager.changeCount(), 0);
}

TEST_F(UiEditorsTest, TypingIsOneStepToUndo) {
    show(R"("ab")", [this] { return panel.ui.inputText("v"); });
    beginHistory();
    panel.input.click(panel.box().center());
    panel.input.type(ImGuiKey_End);
    for(const char* const key: {"c", "d", "\xc3\xa9"})
        panel.input.text(key);
    EXPECT_EQ(value(), "\"abcd\xc3\xa9\"");
    EXPECT_EQ(changed, 3);
    EXPECT_EQ(panel.manager.changeCount(), 3);
    panel.manager.undoLast();
    EXPECT_EQ(value(), R"("ab")");
}

TEST_F(UiEditorsTest, TabGoesToTheNextText) {
    show(R"("")", [this] {
        const bool isFirstChanged = panel.ui.inputText("v");
        panel.mark("first");
        return panel.ui.inputText("w") || isFirstChanged;
    });
    panel.input.click(panel.box("first").center());
    panel.input.text("a");
    panel.input.type(ImGuiKey_Tab);
    panel.input.idle(2);
    panel.input.text("b");
    EXPECT_EQ(panel.document(), R"({"other":0,"v":"a","w":"b"})");
    EXPECT_EQ(panel.manager.changeCount(), 2);
}

TEST_F(UiEditorsTest, WithoutLabelTheWidgetStartsTheRow) {
    const std::function<bool()> draws[]{[this] { return panel.ui.inputText("v"); },
        [this] { return panel.ui.inputTextMultiline("v"); },
        [this] {
            return panel.ui.inputEnum("v", {"a", "b"});
        },
        [this] { return panel.ui.checkboxBit("v", 3, nullptr); },
        [this] { return panel.ui.checkboxBits("v", 3, {}); }};
    for(const auto& draw: draws) {
        const bool isText = &draw < draws + 3;
        show(isText ? R"("a")" : "0", draw);
        EXPECT_TRUE(isShown("v")) << &draw - draws;
        show(isText ? R"("a")" : "0", [&] {
            panel.ui.pushFlags(Ui::Flag::NoLabel);
            const bool result = draw();
            panel.ui.popFlags();
            return result;
        });
        EXPECT_FALSE(isShown("v")) << &draw - draws;
        EXPECT_FLOAT_EQ(panel.box().min.x, ImGui::GetStyle().WindowPadding.x) << &draw - draws;
    }
}

TEST_F(UiEditorsTest, NullIsTypedInto) {
    show("null", [this] { return panel.ui.inputText("v"); });
    EXPECT_EQ(panel.warnings, "");
    panel.input.click(panel.box().center());
    panel.input.text("x");
    EXPECT_EQ(panel.lastChange(), R"(Change /v: null -> "x")");
}

TEST_F(UiEditorsTest, MissingValueIsTypedInto) {
    show("0", [this] { return panel.ui.inputText("w"); });
    panel.input.click(panel.box().center());
    panel.input.text("x");
    EXPECT_EQ(panel.lastChange(), R"(Create /w: () -> "x")");
}

TEST_F(UiEditorsTest, LongTextGrowsTheBuffer) {
    show(R"("")", [this] { return panel.ui.inputText("v"); });
    EXPECT_EQ(panel.ui.textBuffer.size(), 2);
    const std::string text(5000, 'x');
    panel.input.click(panel.box().center());
    panel.input.text(text.c_str());
    panel.input.idle();
    EXPECT_EQ(value(), '"' + text + '"');
    EXPECT_GE(panel.ui.textBuffer.size(), 5002);
    const std::size_t size = panel.ui.textBuffer.size();
    panel.show([this] { panel.ui.inputText("w"); });
    EXPECT_EQ(panel.ui.textBuffer.size(), size) << "never shrinks";
}

TEST_F(UiEditorsTest, TextEndsAtANul) {
    show(R"("ab\u0000cd")", [this] { return panel.ui.inputText("v"); });
    EXPECT_EQ(value(), R"("ab\u0000cd")");
    panel.input.click(panel.box().center());
    panel.input.type(ImGuiKey_End);
    panel.input.text("x");
    EXPECT_EQ(value(), R"("abx")");
}

TEST_F(UiEditorsTest, SeveralLinesAreTyped) {
    show(R"("a")", [this] { return panel.ui.inputTextMultiline("v"); });
    beginHistory();
    panel.input.click(panel.box().center());
    panel.input.type(ImGuiKey_End, ImGuiKeyModFlags_Ctrl);
    panel.input.type(ImGuiKey_Enter);
    panel.input.text("b");
    EXPECT_EQ(value(), R"("a\nb")");
    EXPECT_EQ(panel.manager.changeCount(), 3);
}

TEST_F(UiEditorsTest, TextsHaveAMenuAndAPath) {
    const std::function<bool()> draws[]{[this] { return panel.ui.inputText("v"); },
        [this] { return panel.ui.inputTextMultiline("v"); },
        [this] { return panel.ui.inputEnum("v", {"a"}); }};
    for(const auto& draw: draws) {
        show(R"("a")", draw);
        expectPathTooltip(panel.box().center());
        openMenu();
        EXPECT_TRUE(isMenuOpen());
        panel.input.click({500.0f, 400.0f});
        EXPECT_FALSE(isMenuOpen());
    }
}

/* A name, and a button before and behind it */
struct UiRenameableTest: UiEditorsTest {
    UiRenameableTest() {
        show(R"("Lamp")", [this] {
            ImGui::Button("Before");
            panel.mark("before");
            panel.ui.renameable("v");
            panel.mark("name");
            ImGui::Button("Behind");
            panel.mark("behind");
            return false;
        });
        beginHistory();
    }

    void beginRenaming() {
        panel.input.doubleClick(panel.box("name").center());
        panel.input.idle(3);
        EXPECT_NE(panel.ui.renamingId, 0u);
    }

    bool isActive() const { return ImGui::GetCurrentContext()->ActiveId != 0; }
};

TEST_F(UiRenameableTest, IsATextAtFirst) {
    EXPECT_TRUE(isShown("Lamp"));
    panel.input.click(panel.box("name").center());
    EXPECT_EQ(panel.ui.renamingId, 0u);
    expectPathTooltip(panel.box("name").center());
    openMenu();
    EXPECT_FALSE(isMenuOpen());
}

TEST_F(UiRenameableTest, EnterWritesTheNewName) {
    beginRenaming();
    EXPECT_TRUE(isActive());
    panel.input.text("Bu");
    panel.input.text("lb");
    EXPECT_EQ(value(), R"("Lamp")") << "not before it's done";
    panel.input.type(ImGuiKey_Enter);
    EXPECT_EQ(panel.lastChange(), R"(Change /v: "Lamp" -> "Bulb")");
    EXPECT_EQ(panel.ui.renamingId, 0u);
    EXPECT_FALSE(isActive());
    panel.input.idle(2);
    EXPECT_TRUE(isShown("Bulb"));
}

/* Without the padding and the border that a field has */
TEST_F(UiRenameableTest, TextStaysWhereItIs) {
    const auto position = [] {
        for(const DrawnText& text: drawnTexts("Panel"))
            if(text.text == "Lamp")
                return text.position;
        return ImVec2{};
    };
    const ImVec2 before = position();
    const float height = panel.box("name").max.y - panel.box("name").min.y;
    beginRenaming();
    EXPECT_FLOAT_EQ(position().x, before.x);
    EXPECT_FLOAT_EQ(position().y, before.y);
    EXPECT_FLOAT_EQ(panel.box("name").max.y - panel.box("name").min.y, height);
}

TEST_F(UiRenameableTest, LongNameGrowsTheBuffer) {
    beginRenaming();
    const std::string name(1000, 'x');
    panel.input.text(name.c_str());
    panel.input.type(ImGuiKey_Enter);
    EXPECT_EQ(value(), '"' + name + '"');
}

TEST_F(UiRenameableTest, EscapeKeepsTheName) {
    beginRenaming();
    panel.input.text("Bulb");
    panel.input.type(ImGuiKey_Escape);
    EXPECT_EQ(value(), R"("Lamp")");
    EXPECT_EQ(panel.manager.changeCount(), 2);
    EXPECT_EQ(panel.ui.renamingId, 0u);
    EXPECT_FALSE(isActive());
}

TEST_F(UiRenameableTest, ClickIntoTheFieldGoesOn) {
    beginRenaming();
    panel.input.text("Bulb");
    panel.input.click(panel.box("name").center());
    EXPECT_NE(panel.ui.renamingId, 0u);
    EXPECT_EQ(panel.manager.changeCount(), 2);
}

TEST_F(UiRenameableTest, ClickElsewhereWritesTheNewName) {
    struct {
        const char* name;
        ImVec2 position;
    } const places[]{{"nowhere", {500.0f, 400.0f}}, {"before", panel.box("before").center()},
        {"behind", panel.box("behind").center()}};
    for(const auto& place: places) {
        beginRenaming();
        panel.input.text(place.name);
        panel.input.click(place.position);
        EXPECT_EQ(value(), std::string{"\""} + place.name + "\"");
        EXPECT_EQ(panel.ui.renamingId, 0u);
    }
}

TEST_F(UiRenameableTest, RightClickElsewhereKeepsTheName) {
    beginRenaming();
    panel.input.text("Bulb");
    panel.input.moveTo({500.0f, 400.0f});
    panel.input.press(1);
    panel.input.release(1);
    EXPECT_EQ(value(), R"("Lamp")");
    EXPECT_EQ(panel.ui.renamingId, 0u);
    EXPECT_FALSE(isActive());
}

TEST_F(UiRenameableTest, OnlyOneOfTwoIsRenamed) {
    panel.setDocument(R"({"a":{"name":"x"},"b":{"name":"x"}})");
    panel.show([this] {
        for(const char* const key: {"a", "b"}) {
            panel.ui.pushScope(key);
            panel.ui.renameable("name");
            panel.mark(key);
            panel.ui.popScope();
        }
    });
    panel.input.doubleClick(panel.box("b").center());
    panel.input.idle(3);
    panel.input.text("new");
    panel.input.type(ImGuiKey_Enter);
    EXPECT_EQ(panel.document(), R"({"a":{"name":"x"},"b":{"name":"new"}})");
}

struct UiStringListTest: UiEditorsTest {
    void showList(const std::string& json) {
        show(json, [this] { return panel.ui.stringList("v", selected); });
    }

    /* The list is a child window, and the only one */
    static std::vector<std::string> shownStrings() {
        std::vector<std::string> out;
        for(const DrawnText& text: drawnTexts())
            if(text.text != "Panel")
                out.push_back(text.text);
        return out;
    }

    int selected = -1;
};

TEST_F(UiStringListTest, ClickSelects) {
    showList(R"(["one","two","three"])");
    EXPECT_EQ(shownStrings(), (std::vector<std::string>{"one", "two", "three"}));
    panel.clickItem("two", "v");
    EXPECT_EQ(selected, 1);
    EXPECT_EQ(changed, 1);
    EXPECT_EQ(panel.manager.changeCount(), 0);
    EXPECT_EQ(value(), R"(["one","two","three"])");
}

/* Used to select the first of them only */
TEST_F(UiStringListTest, EqualStringsAreItemsOfTheirOwn) {
    for(const char* const json: {R"(["one","one","two","one"])", R"(["","","two",""])"}) {
        showList(json);
        const float row = ImGui::GetTextLineHeightWithSpacing();
        for(const int i: {3, 1, 0, 2}) {
            const ImVec2 corner = panel.box().min;
            panel.input.click({corner.x + 20.0f, corner.y + row * (float(i) + 0.3f)});
            EXPECT_EQ(selected, i) << json;
        }
    }
}

TEST_F(UiStringListTest, SelectedElementIsMarked) {
    showList(R"(["one","two"])");
    const auto marked = [] {
        return Testing::drawnRectangles(ImGui::GetColorU32(ImGuiCol_Header), "v").size();
    };
    for(const int i: {-1, 0, 1, 2}) {
        selected = i;
        panel.input.idle();
        EXPECT_EQ(marked(), i == 0 || i == 1 ? 1u : 0u) << i;
    }
}

TEST_F(UiStringListTest, IsAHundredPixelsHighAndAsWideAsTheWindow) {
    showList(R"(["one"])");
    const ScreenBox box = panel.box();
    EXPECT_FLOAT_EQ(box.max.y - box.min.y, 100.0f);
    EXPECT_FLOAT_EQ(box.max.x - box.min.x, panel.size.x - 2.0f * ImGui::GetStyle().WindowPadding.x);
    expectPathTooltip(box.center());
}

TEST_F(UiStringListTest, NoElementsAreNoItems) {
    for(const char* const json: {"[]", "null"}) {
        showList(json);
        EXPECT_TRUE(shownStrings().empty());
        panel.input.click(panel.box().at(0.1f, 0.1f));
        EXPECT_EQ(changed, 0);
        EXPECT_EQ(selected, -1);
        EXPECT_EQ(panel.warnings, "");
    }
}

using UiEditorsDeathTest = UiEditorsTest;

TEST_F(UiEditorsDeathTest, BitsNeedEightNamesOrNone) {
    const char* names[]{"A", "B", "C", "D", "E", "F"};
    EXPECT_DEATH(show("0", [&] { return panel.ui.checkboxBits("v", 6, names); }),
        "^Ui::checkboxBits\\(\\): expected names to have 6 elements\n$");
}

TEST_F(UiEditorsDeathTest, MoreBitsThanThereAre) {
    EXPECT_DEATH(show("0", [this] { return panel.ui.checkboxBits("v", 33, {}); }),
        "^Ui::checkboxBits\\(\\): expected at most 32 bits but got 33\n$");
    for(const int bit: {-1, 32})
        EXPECT_DEATH(show("0", [&] { return panel.ui.checkboxBit("v", bit, nullptr); }),
            "^Ui::checkboxBit\\(\\): expected a bit below 32 but got " + std::to_string(bit) +
                "\n$");
}

TEST_F(UiEditorsDeathTest, NoDocument) {
    panel.project.document = nullptr;
    EXPECT_DEATH(panel.show([this] { panel.ui.inputText("v"); }),
        "^Containers::Pointer: the pointer is null\n$");
}

}}
