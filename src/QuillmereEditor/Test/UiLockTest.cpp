#include <functional>
#include <ostream>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/Test/UiPanel.h"
#include "QuillmereEditor/Tools/System.h"
#include "QuillmereEditor/Ui.h"
#include "testing/HeadlessFrameDrawing.h"

namespace QuillmereEngine { namespace {

using namespace Corrade;
using Testing::UiPanel;

/* In front of a history that may be reserved for someone else */
struct LockedPanel: UiPanel {
    /* A panel with a value v, what the widget returned is counted */
    void showValue(const std::string& value, std::function<bool(Ui&)> draw) {
        setDocument(R"({"objects":{"o1":{"name":"Lamp"}},"v":)" + value + "}");
        show([this, draw = std::move(draw)] {
            ImGui::Button("Source");
            mark("source");
            if(ImGui::BeginDragDropSource()) {
                ImGui::SetDragDropPayload("objects", "o1", 3);
                ImGui::EndDragDropSource();
            }
            changed += draw(ui);
            mark();
            alphaBehind = ImGui::GetStyle().Alpha;
        });
    }

    std::string value() const {
        const std::string out = document();
        const std::size_t begin = out.find("\"v\":") + 4;
        return out.substr(begin, out.size() - begin - 1);
    }

    void dragBy10() {
        const ImVec2 from = box().at(0.1f, 0.5f);
        input.drag(from, {from.x + 10.0f, from.y});
    }

    void typeInto(const char* const text) {
        input.click(box().center());
        input.text(text);
        input.click({600.0f, 400.0f});
    }

    void choose(const char* const item) {
        input.click(box().at(0.1f, 0.5f));
        if(ImGui::GetCurrentContext()->OpenPopupStack.empty())
            return;
        clickItem(item, "##Combo_00");
    }

    void openMenu() {
        input.moveTo(box().at(0.1f, 0.5f));
        input.press(1);
        input.release(1);
        input.idle(2);
    }

    void drop() {
        input.moveTo(box("source").center());
        input.press();
        input.moveTo(box().at(-0.5f, 0.5f));
        input.idle(2);
        input.release();
    }

    int changed = 0;
    float alphaBehind = 0.0f;
};

struct LockCase {
    const char* name;
    std::function<bool(Ui&)> draw;
    std::function<void(LockedPanel&)> edit;
    const char *before, *after;
};

/* For widgets that don't tell */
template<class Draw> std::function<bool(Ui&)> silent(Draw draw) {
    return [draw](Ui& ui) {
        draw(ui);
        return false;
    };
}

int selected = 0;

/* Alpha of the first text below the source, 0 if there's none */
unsigned int alphaOf(const UiPanel& panel) {
    for(const Testing::DrawnText& text: Testing::drawnTexts("Panel"))
        if(text.position.y > panel.box("source").max.y)
            return text.color >> IM_COL32_A_SHIFT;
    return 0;
}

constexpr unsigned int Opaque = 255;
/* Of the text's alpha, by the style */
constexpr unsigned int Dimmed = 153;

void rename(LockedPanel& panel) {
    panel.input.doubleClick(panel.box().center());
    panel.input.idle(3);
    panel.input.text("new");
    panel.input.type(ImGuiKey_Enter);
}

void pasteByShortcut(LockedPanel& panel) {
    panel.frame.clipboard = "5";
    panel.input.moveTo(panel.box().center());
    panel.input.type(ImGuiKey_V, ImGuiKeyModFlags_Super);
}

void pasteInTheMenu(LockedPanel& panel) {
    panel.frame.clipboard = "5";
    panel.openMenu();
    if(!ImGui::GetCurrentContext()->OpenPopupStack.empty())
        panel.clickItem("?Paste", ImGui::GetCurrentContext()->OpenPopupStack.back().Window->Name);
}

void pick(LockedPanel& panel) {
    panel.ui.pickingId = ImHashStr("v", 0, ImGui::FindWindowByName("Panel")->ID);
    panel.ui.pickedObject = "o1";
    panel.input.idle(2);
    EXPECT_EQ(panel.ui.pickingId, 0u);
    EXPECT_EQ(panel.ui.pickedObject, nullptr);
}

const auto DragBy10 = [](LockedPanel& panel) { panel.dragBy10(); };
const auto Click = [](LockedPanel& panel) { panel.input.click(panel.box().at(0.05f, 0.5f)); };
const auto Type = [](LockedPanel& panel) { panel.typeInto("x"); };

const LockCase LockCases[]{
    {"Float", [](Ui& ui) { return ui.inputFloat("v"); }, DragBy10, "1", "2.0"},
    {"Float2", [](Ui& ui) { return ui.inputFloat2("v"); }, DragBy10, "[1,2]", "[2.0,2.0]"},
    {"Float3", [](Ui& ui) { return ui.inputFloat3("v"); }, DragBy10, "[1,2,3]", "[2.0,2.0,3.0]"},
    {"Float4", [](Ui& ui) { return ui.inputFloat4("v"); }, DragBy10, "[1,2,3,4]",
        "[2.0,2.0,3.0,4.0]"},
    {"Int", [](Ui& ui) { return ui.inputInt("v", 1, 0); }, DragBy10, "1", "11"},
    {"Int2", [](Ui& ui) { return ui.inputInt2("v"); }, DragBy10, "[1,2]", "[11,2]"},
    {"Int3", [](Ui& ui) { return ui.inputInt3("v"); }, DragBy10, "[1,2,3]", "[11,2,3]"},
    {"Int4", [](Ui& ui) { return ui.inputInt4("v"); }, DragBy10, "[1,2,3,4]", "[11,2,3,4]"},
    {"Colour3", [](Ui& ui) { return ui.colorEdit3("v"); }, DragBy10, "[0,1,0]",
        "[0.03921568766236305,1.0,0.0]"},
    {"Colour4", [](Ui& ui) { return ui.colorEdit4("v"); }, DragBy10, "[0,1,0,1]",
        "[0.03921568766236305,1.0,0.0,1.0]"},
    {"Checkbox", [](Ui& ui) { return ui.checkbox("v"); }, Click, "false", "true"},
    {"CheckboxUnlabled", [](Ui& ui) { return ui.checkboxUnlabled("v"); }, Click, "false", "true"},
    {"Bit", [](Ui& ui) { return ui.checkboxBit("v", 2, "Name"); }, Click, "0", "4"},
    {"Bits", [](Ui& ui) { return ui.checkboxBits("v", 6, {}); },
        [](LockedPanel& panel) { panel.clickItem("2", "Panel"); }, "0", "4"},
    {"Enum",
        [](Ui& ui) {
            return ui.inputEnum("v", {"a", "b"});
        },
        [](LockedPanel& panel) { panel.choose("b"); }, R"("a")", R"("b")"},
    {"Text", [](Ui& ui) { return ui.inputText("v"); }, Type, R"("")", R"("x")"},
    {"Multiline", [](Ui& ui) { return ui.inputTextMultiline("v"); }, Type, R"("")", R"("x")"},
    {"Renameable", silent([](Ui& ui) { ui.renameable("v"); }), rename, R"("old")", R"("new")"},
    {"Resource", [](Ui& ui) { return ui.selectResource("v", "objects", false); },
        [](LockedPanel& panel) {
            panel.input.click({panel.size.x * 0.33f + 20.0f, panel.box().center().y});
            if(!ImGui::GetCurrentContext()->OpenPopupStack.empty())
                panel.clickItem("Lamp", "##Combo_00");
        },
        "null", R"("o1")"},
    {"Drop", [](Ui& ui) { return ui.selectResource("v", "objects", false); },
        [](LockedPanel& panel) { panel.drop(); }, "null", R"("o1")"},
    {"Pick", [](Ui& ui) { return ui.selectResource("v", "objects", false); }, pick, "null",
        R"("o1")"},
    {"PickByName", [](Ui& ui) { return ui.selectResource("v", "objects", true); }, pick, "null",
        R"("")"},
    {"File", [](Ui& ui) { return ui.fileSelect("v", "Title", {}); }, Click, "null", R"("file")"},
    {"PasteByShortcut", silent([](Ui& ui) { ui.inputFloat("v"); }), pasteByShortcut, "1", "5"},
    {"PasteInTheMenu", silent([](Ui& ui) { ui.inputInt("v", 1, 0); }), pasteInTheMenu, "1", "5"}};

void PrintTo(const LockCase& row, std::ostream* const out) { *out << row.name; }

struct UiLockTest: ::testing::TestWithParam<LockCase> {
    UiLockTest() {
        setDialogAnswer(
            [](const DialogRequest&, void*) {
                return Containers::Array<std::string>{Corrade::DirectInit, 1, "file"};
            },
            nullptr);
    }

    ~UiLockTest() override { setDialogAnswer(nullptr, nullptr); }

    LockedPanel panel;
};

TEST_P(UiLockTest, NothingIsWrittenUntilTheHistoryIsFree) {
    panel.manager.setLocked(true);
    panel.showValue(GetParam().before, GetParam().draw);
    GetParam().edit(panel);
    panel.input.idle(40);
    EXPECT_EQ(panel.value(), GetParam().before);
    EXPECT_EQ(panel.manager.changeCount(), 0);
    EXPECT_EQ(panel.changed, 0);
    EXPECT_EQ(panel.warnings, "");

    panel.manager.setLocked(false);
    panel.showValue(GetParam().before, GetParam().draw);
    GetParam().edit(panel);
    EXPECT_EQ(panel.value(), GetParam().after);
}

TEST_P(UiLockTest, WidgetIsDimmedAndWhatFollowsIsNot) {
    panel.showValue(GetParam().before, GetParam().draw);
    const unsigned int usual = alphaOf(panel);
    panel.manager.setLocked(true);
    panel.input.idle();
    EXPECT_EQ(alphaOf(panel), usual ? Dimmed : 0);
    EXPECT_EQ(panel.alphaBehind, 1.0f);
    panel.manager.setLocked(false);
    panel.input.idle();
    EXPECT_EQ(alphaOf(panel), usual ? Opaque : 0);
}

INSTANTIATE_TEST_SUITE_P(All, UiLockTest, ::testing::ValuesIn(LockCases),
    [](const auto& row) { return std::string{row.param.name}; });

/* What is under way when the history gets locked */
struct UiLockedMeanwhileTest: ::testing::Test {
    void lock() {
        panel.manager.setLocked(true);
        panel.input.idle();
    }

    void expectNothingChanged(const char* const value) {
        EXPECT_EQ(panel.value(), value);
        EXPECT_EQ(panel.manager.changeCount(), 0);
        EXPECT_EQ(panel.changed, 0);
    }

    LockedPanel panel;
};

TEST_F(UiLockedMeanwhileTest, TextAndListAreDimmedToo) {
    const std::function<bool(Ui&)> draws[]{
        silent([](Ui& ui) { ui.text("v"); }), [](Ui& ui) { return ui.stringList("v", selected); }};
    panel.manager.setLocked(true);
    panel.showValue(R"("text")", draws[0]);
    EXPECT_EQ(alphaOf(panel), Dimmed);

    selected = 0;
    panel.showValue(R"(["a","b"])", draws[1]);
    panel.input.click({panel.box().min.x + 10.0f,
        panel.box().min.y + ImGui::GetTextLineHeightWithSpacing() + 4.0f});
    EXPECT_EQ(selected, 0);
    panel.manager.setLocked(false);
    panel.input.click({panel.box().min.x + 10.0f,
        panel.box().min.y + ImGui::GetTextLineHeightWithSpacing() + 4.0f});
    EXPECT_EQ(selected, 1);
}

TEST_F(UiLockedMeanwhileTest, DragEndsWhereverTheMouseIs) {
    panel.showValue("[1,2,3]", [](Ui& ui) { return ui.inputFloat3("v"); });
    for(const float y: {0.0f, 100.0f}) {
        panel.manager.setLocked(false);
        const ImVec2 from = panel.box().at(0.1f, 0.5f);
        panel.input.moveTo(from);
        panel.input.press();
        panel.input.moveTo({from.x + 10.0f, from.y + y});
        const std::string before = panel.value();
        const int changedBefore = panel.changed;
        panel.manager.setLocked(true);
        panel.input.moveTo({from.x + 20.0f, from.y + y});
        EXPECT_EQ(ImGui::GetCurrentContext()->ActiveId, 0u);
        panel.manager.setLocked(false);
        panel.input.moveTo({from.x + 30.0f, from.y + y});
        EXPECT_EQ(panel.value(), before);
        EXPECT_EQ(panel.changed, changedBefore);
        panel.input.release();
        panel.input.idle(40);
    }
}

TEST_F(UiLockedMeanwhileTest, TypingEnds) {
    const std::function<bool(Ui&)> draws[]{[](Ui& ui) { return ui.inputText("v"); },
        [](Ui& ui) { return ui.inputTextMultiline("v"); }};
    for(const auto& draw: draws) {
        panel.showValue(R"("a")", draw);
        panel.input.click(panel.box().center());
        EXPECT_TRUE(panel.frame.io().WantTextInput);
        /* Or the mouse would end it */
        panel.input.moveTo({600.0f, 400.0f});
        lock();
        panel.input.text("x");
        EXPECT_EQ(ImGui::GetCurrentContext()->ActiveId, 0u);
        panel.manager.setLocked(false);
        panel.input.text("y");
        panel.input.idle(2);
        EXPECT_FALSE(panel.frame.io().WantTextInput);
        expectNothingChanged(R"("a")");
    }
}

TEST_F(UiLockedMeanwhileTest, OpenListWritesNothing) {
    const std::function<bool(Ui&)> draws[]{[](Ui& ui) {
                                               return ui.inputEnum("v", {"a", "Lamp"});
                                           },
        [](Ui& ui) { return ui.selectResource("v", "objects", false); },
        [](Ui& ui) { return ui.selectResource("v", "objects", true); }};
    for(const auto& draw: draws) {
        panel.manager.setLocked(false);
        panel.showValue(R"("a")", draw);
        panel.input.click({panel.size.x * 0.33f + 20.0f, panel.box().center().y});
        ASSERT_EQ(ImGui::GetCurrentContext()->OpenPopupStack.Size, 1);
        lock();
        panel.clickItem("Lamp", "##Combo_00");
        expectNothingChanged(R"("a")");
        panel.input.click({600.0f, 400.0f});
    }
}

TEST_F(UiLockedMeanwhileTest, OpenMenuWritesNothing) {
    panel.showValue("1", silent([](Ui& ui) { ui.inputFloat("v"); }));
    panel.openMenu();
    ASSERT_EQ(ImGui::GetCurrentContext()->OpenPopupStack.Size, 1);
    panel.frame.clipboard = "5";
    lock();
    panel.clickItem("?Paste", ImGui::GetCurrentContext()->OpenPopupStack.back().Window->Name);
    expectNothingChanged("1");
}

TEST_F(UiLockedMeanwhileTest, OpenColourPickerWritesNothing) {
    panel.showValue("[0,1,0]", [](Ui& ui) { return ui.colorEdit3("v"); });
    panel.input.click({panel.box().max.x - 5.0f, panel.box().center().y});
    ASSERT_EQ(ImGui::GetCurrentContext()->OpenPopupStack.Size, 1);
    const ImGuiWindow& picker = *ImGui::GetCurrentContext()->OpenPopupStack.back().Window;
    const ImVec2 inside{picker.Pos.x + 60.0f, picker.Pos.y + 80.0f};
    panel.input.moveTo(inside);
    panel.input.press();
    lock();
    const int changesBefore = int(panel.manager.changeCount()), returnedBefore = panel.changed;
    const std::string before = panel.value();
    panel.input.moveTo({inside.x + 20.0f, inside.y + 20.0f});
    EXPECT_EQ(panel.value(), before);
    EXPECT_EQ(int(panel.manager.changeCount()), changesBefore);
    EXPECT_EQ(panel.changed, returnedBefore);
}

TEST_F(UiLockedMeanwhileTest, RenamingEnds) {
    char other[8] = "";
    panel.showValue(R"("old")", silent([&](Ui& ui) {
        ui.renameable("v");
        panel.mark("name");
        ImGui::InputText("Other", other, sizeof(other));
    }));
    panel.input.doubleClick(panel.box("name").center());
    panel.input.idle(3);
    panel.input.text("new");
    lock();
    EXPECT_EQ(panel.ui.renamingId, 0u);
    panel.input.click(panel.box().at(0.1f, 0.5f));
    panel.input.text("kept");
    EXPECT_STREQ(other, "kept");
    panel.manager.setLocked(false);
    panel.input.type(ImGuiKey_Enter);
    panel.input.idle(2);
    expectNothingChanged(R"("old")");
}

TEST_F(UiLockedMeanwhileTest, KeyboardTogglesNothing) {
    panel.frame.io().ConfigFlags |= ImGuiConfigFlags_NavEnableKeyboard;
    panel.showValue("false", [](Ui& ui) { return ui.checkbox("v"); });
    panel.input.click(panel.box().center());
    ASSERT_EQ(panel.value(), "true");
    panel.input.moveTo({600.0f, 400.0f});
    panel.input.type(ImGuiKey_DownArrow);
    panel.input.type(ImGuiKey_Space);
    panel.input.idle(2);
    ASSERT_EQ(panel.value(), "false");
    const int before = panel.changed;
    lock();
    panel.input.type(ImGuiKey_Space);
    panel.input.idle(2);
    EXPECT_EQ(panel.value(), "false");
    EXPECT_EQ(panel.changed, before);
}

TEST_F(UiLockedMeanwhileTest, CollapsedWindowCanStillBeMoved) {
    panel.manager.setLocked(true);
    panel.showValue("1", [](Ui& ui) {
        ImGui::SetWindowCollapsed(true);
        return ui.inputFloat("v");
    });
    ImGuiWindow& window = *ImGui::FindWindowByName("Panel");
    panel.input.moveTo({window.Pos.x + 100.0f, window.Pos.y + 8.0f});
    panel.input.press();
    panel.input.idle(2);
    EXPECT_EQ(ImGui::GetCurrentContext()->ActiveId, window.MoveId);
    panel.input.release();
}

TEST_F(UiLockedMeanwhileTest, ValueCanStillBeCopied) {
    panel.manager.setLocked(true);
    panel.showValue("[1,2,3]", [](Ui& ui) { return ui.inputFloat3("v"); });
    panel.input.moveTo(panel.box().at(0.1f, 0.5f));
    panel.input.type(ImGuiKey_C, ImGuiKeyModFlags_Super);
    EXPECT_EQ(panel.frame.clipboard, "[1,2,3]");
}

bool throwingFilter(ValueAccess&) { throw std::runtime_error{"filter"}; }

/* The panel looks that nothing is left open */
TEST_F(UiLockedMeanwhileTest, WhatThrowsEndsTheDisabledPart) {
    panel.showValue("null", [](Ui& ui) { return ui.selectResource("v", "meshes", false); });
    panel.input.click(panel.box().center());
    panel.showValue(
        "null", [](Ui& ui) { return ui.selectResource("v", "objects", false, throwingFilter); });
    panel.manager.setLocked(true);
    panel.caught = 0;
    panel.input.idle();
    EXPECT_EQ(panel.caught, 1);
    EXPECT_EQ(ImGui::GetStyle().Alpha, 1.0f);
}

TEST_F(UiLockedMeanwhileTest, PanelWithoutAHistoryIsDrawn) {
    panel.ui.changeManager = nullptr;
    panel.showValue(R"("text")", silent([](Ui& ui) { ui.text("v"); }));
    EXPECT_EQ(alphaOf(panel), Opaque);
}

}}
