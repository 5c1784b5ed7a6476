#include <string>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/Test/UiPanel.h"
#include "QuillmereEditor/Ui.h"
#include "testing/HeadlessFrameDrawing.h"

namespace QuillmereEngine { namespace {

using Testing::UiPanel;

constexpr const char* Mismatch = "Pasted value did not match type of the target property.\n";
constexpr const char* NoJson = "Cannot parse pasted value.\n";

/* Several properties of which one can be copied to the other */
struct UiClipboardTest: ::testing::Test {
    UiClipboardTest() {
        panel.setDocument(
            R"({"a":{"position":[1,2.5,3]},"b":{"position":[4,5,6]},"color":[1,1,1,1],"size":2.5})");
        panel.show([this] {
            for(const char* const object: {"a", "b"}) {
                panel.ui.pushScope(object);
                panel.ui.inputFloat3("position");
                panel.mark(object);
                panel.ui.popScope();
            }
            panel.ui.colorEdit4("color");
            panel.mark("color");
            panel.ui.inputFloat("size");
            panel.mark("size");
        });
    }

    ImVec2 field(const std::string& name) const { return panel.box(name).at(0.1f, 0.5f); }

    void openMenu(const std::string& name) {
        panel.input.moveTo(field(name));
        panel.input.press(1);
        panel.input.release(1);
        panel.input.idle(3);
    }

    /* Name of the open context menu's window */
    static std::string menu() {
        const ImGuiContext& context = *ImGui::GetCurrentContext();
        return context.OpenPopupStack.empty() ? "" : context.OpenPopupStack.back().Window->Name;
    }

    void choose(const std::string& item) { panel.clickItem("?" + item, menu().c_str()); }

    void shortcut(const std::string& name, const ImGuiKey key) {
        panel.input.moveTo(field(name));
        panel.input.type(key, ImGuiKeyModFlags_Super);
    }

    /* Pastes onto a value of its own, by the member itself */
    std::string pasted(const std::string& target, const char* const text) {
        panel.setDocument(R"({"v":)" + target + "}");
        panel.frame.clipboard = text;
        panel.show([this, isFirst = true]() mutable {
            panel.ui.pushScope("v");
            if(isFirst)
                panel.ui.pasteValue();
            isFirst = false;
            panel.ui.popScope();
        });
        const std::string out = panel.document();
        return out.substr(5, out.size() - 6);
    }

    UiPanel panel;
};

TEST_F(UiClipboardTest, MenuCopiesJson) {
    openMenu("a");
    choose("Copy");
    EXPECT_EQ(panel.frame.clipboard, "[1,2.5,3]");
    EXPECT_EQ(panel.manager.changeCount(), 0);
    EXPECT_EQ(menu(), "");
    EXPECT_EQ(panel.tooltip(), "");
}

TEST_F(UiClipboardTest, MenuPastesAsOneChange) {
    openMenu("a");
    choose("Copy");
    openMenu("b");
    choose("Paste");
    EXPECT_EQ(panel.manager.changeCount(), 1);
    EXPECT_EQ(panel.lastChange(), "Change /b/position: [4,5,6] -> [1,2.5,3]");
}

TEST_F(UiClipboardTest, MenuItemsHaveTheirIcons) {
    openMenu("a");
    /* The built-in font has none of the icons, and draws what it has for any other character */
    const std::vector<Testing::DrawnText> texts = Testing::drawnTexts(menu());
    ASSERT_EQ(texts.size(), 4u);
    EXPECT_EQ(texts[0].text, "?Copy");
    EXPECT_EQ(texts[1].text, "Cmd+C");
    EXPECT_EQ(texts[2].text, "?Paste");
    EXPECT_EQ(texts[3].text, "Cmd+V");

    /* The whole label is the item's ID */
    const char* const labels[]{"\xef\x83\x85 Copy", "\xef\x83\xaa Paste"};
    for(int i = 0; i != 2; ++i) {
        const ImVec2 position = texts[std::size_t(i) * 2].position;
        panel.input.moveTo({position.x + 2.0f, position.y + 4.0f});
        panel.input.idle();
        EXPECT_EQ(ImGui::GetHoveredID(), ImGui::FindWindowByName(menu().c_str())->GetID(labels[i]));
    }
}

TEST_F(UiClipboardTest, MenuHasThePathAsId) {
    openMenu("b");
    ImGuiID id = ImGui::FindWindowByName("Panel")->ID;
    for(const char* const name: {"b", "position", "/b/position"})
        id = ImHashStr(name, 0, id);
    ASSERT_EQ(ImGui::GetCurrentContext()->OpenPopupStack.Size, 1);
    EXPECT_EQ(ImGui::GetCurrentContext()->OpenPopupStack[0].PopupId, id);
}

TEST_F(UiClipboardTest, EachPropertyHasItsMenu) {
    openMenu("a");
    const std::string first = menu();
    EXPECT_NE(first, "");
    panel.input.click({500.0f, 400.0f});
    EXPECT_EQ(menu(), "");
    openMenu("b");
    EXPECT_NE(menu(), "");
    EXPECT_NE(menu(), first);
}

TEST_F(UiClipboardTest, ShortcutsCopyAndPaste) {
    shortcut("a", ImGuiKey_C);
    EXPECT_EQ(panel.frame.clipboard, "[1,2.5,3]");
    shortcut("b", ImGuiKey_V);
    EXPECT_EQ(panel.lastChange(), "Change /b/position: [4,5,6] -> [1,2.5,3]");
    EXPECT_EQ(panel.manager.changeCount(), 1);
}

TEST_F(UiClipboardTest, ShortcutTellsThatItCopied) {
    panel.input.moveTo(field("a"));
    panel.input.hold(ImGuiKeyModFlags_Super);
    panel.input.keyDown(ImGuiKey_C);
    /* It's there for one frame, in which Dear ImGui only measures it */
    const ImGuiWindow* const tooltip = ImGui::FindWindowByName("##Tooltip_00");
    ASSERT_TRUE(tooltip && tooltip->Active);
    EXPECT_FLOAT_EQ(tooltip->DC.CursorMaxPos.x - tooltip->DC.CursorStartPos.x,
        ImGui::CalcTextSize("Copied!").x);
    panel.input.keyUp(ImGuiKey_C);
}

TEST_F(UiClipboardTest, HeldKeyPastesAgain) {
    panel.frame.clipboard = "[7,8,9]";
    panel.input.moveTo(field("b"));
    panel.input.hold(ImGuiKeyModFlags_Super);
    panel.input.keyDown(ImGuiKey_V);
    EXPECT_EQ(panel.manager.changeCount(), 1);
    panel.input.idle(60);
    EXPECT_GT(panel.manager.changeCount(), 2) << "each a change of its own";
    panel.input.keyUp(ImGuiKey_V);
}

TEST_F(UiClipboardTest, ShortcutsNeedTheirKeyAndTheMouse) {
    panel.input.moveTo(field("a"));
    panel.input.type(ImGuiKey_C);
    panel.input.type(ImGuiKey_C, ImGuiKeyModFlags_Ctrl);
    panel.input.moveTo({600.0f, 400.0f});
    panel.input.type(ImGuiKey_C, ImGuiKeyModFlags_Super);
    EXPECT_FALSE(panel.frame.isClipboardSet);
}

TEST_F(UiClipboardTest, NoShortcutsWhileDragging) {
    panel.frame.clipboard = "[7,8,9]";
    panel.input.moveTo(field("a"));
    panel.input.press();
    panel.input.type(ImGuiKey_C, ImGuiKeyModFlags_Super);
    panel.input.type(ImGuiKey_V, ImGuiKeyModFlags_Super);
    panel.input.release();
    EXPECT_FALSE(panel.frame.isClipboardSet);
    EXPECT_EQ(panel.manager.changeCount(), 0);
}

TEST_F(UiClipboardTest, DisabledItemIsCopiedByShortcut) {
    panel.show([this] {
        ImGui::BeginDisabled();
        panel.ui.inputFloat("size");
        panel.mark("size");
        ImGui::EndDisabled();
    });
    shortcut("size", ImGuiKey_C);
    EXPECT_EQ(panel.frame.clipboard, "2.5");
}

TEST_F(UiClipboardTest, OtherSizeIsRefused) {
    shortcut("a", ImGuiKey_C);
    shortcut("color", ImGuiKey_V);
    EXPECT_EQ(panel.warnings, "Pasted value array size did not match, expected 4 but got 3\n");
    EXPECT_EQ(panel.manager.changeCount(), 0);
}

TEST_F(UiClipboardTest, PasteIsNeverMerged) {
    panel.frame.clipboard = "5";
    for(int i = 1; i <= 4; ++i) {
        shortcut("size", ImGuiKey_V);
        EXPECT_EQ(panel.manager.changeCount(), i);
    }
    EXPECT_EQ(panel.lastChange(), "Change /size: 5 -> 5");
}

TEST_F(UiClipboardTest, SameTypeIsPasted) {
    struct {
        const char *target, *text, *after;
    } const cases[]{{"2.5", "5", "5"}, {"5", "2.5", "2.5"}, {"1", " \n\t7 \r", "7"},
        {"true", "true", "true"}, {"null", "null", "null"}, {R"("a")", R"("\u00e9")", "\"é\""},
        {R"({"a":1})", R"({"b":[]})", R"({"b":[]})"}, {"[1,2]", R"(["a",null])", R"(["a",null])"},
        {"[]", "[]", "[]"}, {"1", "0.1", "0.1"}, {"1", "5e-324", "5e-324"},
        {"1", "18446744073709551615", "18446744073709551615"}};
    for(const auto& i: cases) {
        EXPECT_EQ(pasted(i.target, i.text), i.after);
        EXPECT_EQ(panel.warnings, "") << i.text;
    }
}

TEST_F(UiClipboardTest, OtherTypesAreRefused) {
    const char* const values[]{"null", "false", "true", R"({"a":1})", "[1]", R"("a")", "1"};
    for(const char* const target: values)
        for(const char* const text: values) {
            if(target == text)
                continue;
            EXPECT_EQ(pasted(target, text), target);
            EXPECT_EQ(panel.warnings, Mismatch) << text;
        }
    EXPECT_EQ(panel.manager.changeCount(), 0);
}

TEST_F(UiClipboardTest, OnlyStrictJsonIsPasted) {
    const std::string deep = std::string(200000, '[') + std::string(200000, ']');
    const char* const texts[]{"", " ", "x", "1 2", "1,", "[1,]", "{a:1}", "// comment\n1", "'a'",
        "NaN", "Infinity", "01", "+1", ".5", "1.", "0x1", "tru", "\"a", "[1", "1e999",
        "\xef\xbb\xbf"
        "1",
        deep.c_str()};
    for(const char* const text: texts) {
        EXPECT_EQ(pasted("1", text), "1");
        EXPECT_EQ(panel.warnings, NoJson) << std::string{text}.substr(0, 20);
    }
    EXPECT_EQ(panel.manager.changeCount(), 0);
}

TEST_F(UiClipboardTest, NullClipboardCountsAsEmpty) {
    panel.frame.io().GetClipboardTextFn = [](void*) -> const char* { return nullptr; };
    EXPECT_EQ(pasted("1", "2"), "1");
    EXPECT_EQ(panel.warnings, NoJson);
}

TEST_F(UiClipboardTest, MissingValueTakesNullOnly) {
    panel.setDocument("{}");
    const auto paste = [this](const char* const text) {
        panel.frame.clipboard = text;
        panel.show([this, isFirst = true]() mutable {
            panel.ui.pushScope("new");
            if(isFirst)
                panel.ui.pasteValue();
            isFirst = false;
            panel.ui.popScope();
        });
        return panel.document();
    };
    EXPECT_EQ(paste("1"), "{}");
    EXPECT_EQ(panel.warnings, Mismatch);
    EXPECT_EQ(paste("null"), R"({"new":null})");
}

TEST_F(UiClipboardTest, CopyGivesTheWholeValue) {
    panel.setDocument(R"({"v":{"a":[1,{"b":null}],"c":"\"\u0001"}})");
    panel.show([this, isFirst = true]() mutable {
        panel.ui.pushScope("v");
        if(isFirst)
            panel.ui.copyValue();
        isFirst = false;
        panel.ui.popScope();
    });
    EXPECT_EQ(panel.frame.clipboard, R"({"a":[1,{"b":null}],"c":"\"\u0001"})");
}

TEST_F(UiClipboardTest, CopyOfNothingIsNull) {
    panel.show([this] {
        panel.ui.pushScope("missing");
        panel.ui.copyValue();
        panel.ui.popScope();
    });
    EXPECT_EQ(panel.frame.clipboard, "null");
}

/* What a project's file holds isn't a mistake of the program, and inserting into it would end the
   process */
TEST_F(UiClipboardTest, NothingIsInsertedIntoAPlainValue) {
    panel.setDocument(R"({"list":"text","none":null})");
    panel.frame.clipboard = "null";
    for(const char* const path: {"list/0", "list/-1", "none/0"}) {
        panel.show([this, path, isFirst = true]() mutable {
            panel.ui.pushScope(path);
            if(isFirst)
                panel.ui.pasteValue();
            isFirst = false;
            panel.ui.popScope().popScope();
        });
        EXPECT_EQ(panel.document(), R"({"list":"text","none":null})");
        EXPECT_EQ(panel.warnings,
            std::string{"Ui: can't write /"} + path +
                ", its parent is neither an array nor an object\n");
    }
}

TEST_F(UiClipboardTest, SecondOfTwoEqualLabelsHasAMenuAndAPathOfItsOwn) {
    openMenu("b");
    choose("Copy");
    EXPECT_EQ(panel.frame.clipboard, "[4,5,6]");
    panel.input.moveTo(field("b"));
    panel.input.hold(ImGuiKeyModFlags_Ctrl);
    panel.input.idle(3);
    EXPECT_EQ(panel.tooltip(), "/b/position");
}

}}
