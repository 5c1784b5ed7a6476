#include "editor/Shortcut.h"

#include <GLFW/glfw3.h>
#include <gtest/gtest.h>

#include "host/Events.h"

namespace QuillmereEngine { namespace {

constexpr unsigned CtrlShift = ModifierCtrl | ModifierShift;

struct PressedKey {
    const char* name;
    int key;
    unsigned modifiers;
    Shortcut shortcut;
    Shortcut repeated;
};

class ShortcutTest: public ::testing::TestWithParam<PressedKey> {
protected:
    Shortcut pressed(const ShortcutKey key, const unsigned modifiers, const bool isRepeated) {
        KeyEvent event;
        event.key = GetParam().key;
        event.modifiers = modifiers;
        event.repeated = isRepeated;
        return shortcutOf(event, key);
    }
};

TEST_P(ShortcutTest, IsFoundByKeyAndModifiers) {
    EXPECT_EQ(pressed(ShortcutKey::Ctrl, GetParam().modifiers, false), GetParam().shortcut);
    EXPECT_EQ(pressed(ShortcutKey::Ctrl, GetParam().modifiers, true), GetParam().repeated);
}

TEST_P(ShortcutTest, CmdReplacesCtrl) {
    const unsigned modifiers = GetParam().modifiers;
    const unsigned swapped = (modifiers & ModifierShift) |
        (modifiers & ModifierCtrl ? unsigned(ModifierSuper) : 0u) |
        (modifiers & ModifierSuper ? unsigned(ModifierCtrl) : 0u) | (modifiers & ModifierAlt);
    EXPECT_EQ(pressed(ShortcutKey::Super, swapped, false), GetParam().shortcut);
}

constexpr PressedKey PressedKeys[]{
    {"Undo", GLFW_KEY_Z, ModifierCtrl, Shortcut::Undo, Shortcut::Undo},
    {"Redo", GLFW_KEY_Z, CtrlShift, Shortcut::Redo, Shortcut::Redo},
    {"RedoByY", GLFW_KEY_Y, ModifierCtrl, Shortcut::Redo, Shortcut::Redo},
    {"Save", GLFW_KEY_S, ModifierCtrl, Shortcut::Save, Shortcut::None},
    {"Quit", GLFW_KEY_Q, ModifierCtrl, Shortcut::Quit, Shortcut::None},
    {"PlainZ", GLFW_KEY_Z, ModifierNone, Shortcut::None, Shortcut::None},
    {"ShiftZ", GLFW_KEY_Z, ModifierShift, Shortcut::None, Shortcut::None},
    {"ShiftY", GLFW_KEY_Y, CtrlShift, Shortcut::None, Shortcut::None},
    {"ShiftS", GLFW_KEY_S, CtrlShift, Shortcut::None, Shortcut::None},
    {"AltGrZ", GLFW_KEY_Z, ModifierCtrl | ModifierAlt, Shortcut::None, Shortcut::None},
    {"OtherModifier", GLFW_KEY_Z, ModifierSuper, Shortcut::None, Shortcut::None},
    {"BothModifiers", GLFW_KEY_Z, ModifierCtrl | ModifierSuper, Shortcut::None, Shortcut::None},
    {"OtherKey", GLFW_KEY_X, ModifierCtrl, Shortcut::None, Shortcut::None},
};

INSTANTIATE_TEST_SUITE_P(All, ShortcutTest, ::testing::ValuesIn(PressedKeys),
    [](const auto& row) { return row.param.name; });

}}
