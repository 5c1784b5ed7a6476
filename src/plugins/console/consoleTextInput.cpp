#include "plugins/console/consoleTextFrame.h"

#include "plugins/console/RowPositions.h"
#include "plugins/console/locateInRow.h"
#include "plugins/console/textEditKey.h"

namespace QuillmereEngine {

namespace {

/* The same as stb_text_locate_coord() on the whole text, but the row is found by its number and not
   by measuring all rows above */
int locate(const WideText& text, const ImVec2& position) {
    if(position.y < 0.0f)
        return 0;
    RowPositions ends{ImGui::GetFontSize(), ImGui::GetFontSize()};
    const auto rowCount = std::size_t(text.rowCount());
    std::size_t row = ends.firstNotAbove(position.y, rowCount);
    if(row != rowCount && ends.position(row) == position.y)
        ++row;
    if(row == rowCount)
        return text.size();

    const int begin = text.rowBegin(int(row));
    const int end = ImMin(text.rowEndFrom(begin) + 1, text.size());
    /* An empty last row isn't one that can be hit */
    return begin == end ? end
                        : begin + locateInRow(text.data() + begin, text.data() + end, position.x);
}

void placeCursor(ImGuiInputTextState& state, const int index) {
    state.Stb.cursor = state.Stb.select_start = state.Stb.select_end = index;
    state.Stb.has_preferred_x = 0;
    state.CursorAnimReset();
}

void dragCursor(ImGuiInputTextState& state, const int index) {
    if(!state.HasSelection())
        state.Stb.select_start = state.Stb.cursor;
    state.Stb.cursor = state.Stb.select_end = index;
    state.CursorAnimReset();
    state.CursorFollow = true;
}

void handleDoubleClick(ImGuiInputTextState& state, const bool selectsWord) {
    if(selectsWord) {
        state.OnKeyPressed(TextEditKeyWordLeft);
        state.OnKeyPressed(TextEditKeyWordRight | TextEditKeyShift);
    } else {
        state.SelectAll();
        state.SelectedAllMouseLock = true;
    }
}

void handleMouse(const ConsoleTextFrame& frame) {
    const ImGuiIO& io = frame.context.IO;
    const ImVec2 padding = frame.context.Style.FramePadding;
    ImGuiInputTextState& state = *frame.state;
    const ImVec2 position{io.MousePos.x - frame.frame.Min.x - padding.x + state.ScrollX,
        io.MousePos.y - frame.origin.y - padding.y};

    if(frame.isHovered && io.MouseDoubleClicked[0]) {
        handleDoubleClick(state, io.ConfigMacOSXBehaviors);
    } else if(io.MouseClicked[0] && !state.SelectedAllMouseLock) {
        if(frame.isHovered)
            placeCursor(state, locate(frame.wideText, position));
    } else if(io.MouseDown[0] && !state.SelectedAllMouseLock &&
        (io.MouseDelta.x != 0.0f || io.MouseDelta.y != 0.0f)) {
        dragCursor(state, locate(frame.wideText, position));
    }
    if(!io.MouseDown[0])
        state.SelectedAllMouseLock = false;
}

/* Keys held, and what they mean on the platform whose habits are followed */
struct Modifiers {
    explicit Modifiers(const ImGuiIO& io):
        isControl{io.KeyCtrl},
        isControlOnly{io.KeyMods == ImGuiKeyModFlags_Ctrl},
        isShortcut{io.ConfigMacOSXBehaviors ? io.KeyMods == ImGuiKeyModFlags_Super : isControlOnly},
        isWordMove{io.ConfigMacOSXBehaviors ? io.KeyAlt : io.KeyCtrl},
        isStartEnd{io.ConfigMacOSXBehaviors && io.KeySuper && !io.KeyCtrl && !io.KeyAlt},
        shift{io.KeyShift ? TextEditKeyShift : 0} {}

    bool isControl;
    bool isControlOnly;
    bool isShortcut;
    bool isWordMove;
    bool isStartEnd;
    int shift;
};

bool isPressed(const ImGuiKey key) {
    const int index = ImGui::GetIO().KeyMap[key];
    return index >= 0 && ImGui::IsKeyPressed(index);
}

int horizontalMove(const Modifiers& modifiers, const TextEditKey character, const TextEditKey word,
    const TextEditKey line) {
    if(modifiers.isStartEnd)
        return line;
    return modifiers.isWordMove ? word : character;
}

/* The cursor movement that a pressed key stands for, 0 if none does. Up and down with Ctrl are
   none. */
int pressedMove(const Modifiers& modifiers) {
    if(isPressed(ImGuiKey_LeftArrow))
        return horizontalMove(
            modifiers, TextEditKeyLeft, TextEditKeyWordLeft, TextEditKeyLineStart);
    if(isPressed(ImGuiKey_RightArrow))
        return horizontalMove(
            modifiers, TextEditKeyRight, TextEditKeyWordRight, TextEditKeyLineEnd);
    if(isPressed(ImGuiKey_UpArrow))
        return modifiers.isStartEnd ? TextEditKeyTextStart : TextEditKeyUp;
    if(isPressed(ImGuiKey_DownArrow))
        return modifiers.isStartEnd ? TextEditKeyTextEnd : TextEditKeyDown;
    if(isPressed(ImGuiKey_Home))
        return modifiers.isControl ? TextEditKeyTextStart : TextEditKeyLineStart;
    if(isPressed(ImGuiKey_End))
        return modifiers.isControl ? TextEditKeyTextEnd : TextEditKeyLineEnd;
    return 0;
}

void scroll(ImGuiWindow* const child, const int move) {
    if(move == TextEditKeyUp)
        ImGui::SetScrollY(child, ImMax(child->Scroll.y - ImGui::GetFontSize(), 0.0f));
    else
        ImGui::SetScrollY(
            child, ImMin(child->Scroll.y + ImGui::GetFontSize(), ImGui::GetScrollMaxY()));
}

/* The selection, or all of the text if nothing is selected */
void copy(const ImGuiInputTextState& state) {
    const int begin = state.HasSelection() ? ImMin(state.Stb.select_start, state.Stb.select_end)
                                           : 0;
    const int end = state.HasSelection() ? ImMax(state.Stb.select_start, state.Stb.select_end)
                                         : state.CurLenW;
    const ImWchar* const characters = state.TextW.Data;
    const int size = ImTextCountUtf8BytesFromStr(characters + begin, characters + end) + 1;
    auto* const utf8 = static_cast<char*>(ImGui::MemAlloc(std::size_t(size)));
    ImTextStrToUtf8(utf8, size, characters + begin, characters + end);
    ImGui::SetClipboardText(utf8);
    ImGui::MemFree(utf8);
}

void handleKeys(ConsoleTextFrame& frame) {
    const ImGuiIO& io = frame.context.IO;
    const Modifiers modifiers{io};
    ImGuiInputTextState& state = *frame.state;

    if(const int move = pressedMove(modifiers)) {
        if(modifiers.isControl && (move == TextEditKeyUp || move == TextEditKeyDown))
            scroll(frame.child, move);
        else
            state.OnKeyPressed(move | modifiers.shift);
    } else if(isPressed(ImGuiKey_Escape)) {
        frame.isReleased = true;
    } else if(modifiers.isShortcut && isPressed(ImGuiKey_A)) {
        state.SelectAll();
        state.CursorFollow = true;
    } else if(io.SetClipboardTextFn &&
        ((modifiers.isShortcut && isPressed(ImGuiKey_C)) ||
            (modifiers.isControlOnly && isPressed(ImGuiKey_Insert)))) {
        copy(state);
    }
}

}

void handleInput(ConsoleTextFrame& frame) {
    if(!frame.isActive())
        return;
    ImGuiContext& context = frame.context;
    ImGuiInputTextState& state = *frame.state;
    state.BufCapacityA = frame.textSize;
    state.Flags = frame.flags;
    context.ActiveIdAllowOverlap = !context.IO.MouseDown[0];
    context.WantTextInputNextFrame = 1;

    handleMouse(frame);
    if(!context.ActiveIdIsJustActivated && !frame.isReleased)
        handleKeys(frame);
    frame.hasSelection = frame.hasSelection || state.HasSelection();
    if(frame.isReleased)
        ImGui::ClearActiveID();
}

}
