#include "plugins/console/consoleTextFrame.h"

#include <cstring>

namespace QuillmereEngine {

namespace {

void clampToText(ImGuiInputTextState& state, const int length) {
    state.CurLenW = length;
    state.CursorClamp();
}

/* Sets the state's copy of the text to what the caller has now */
void refreshText(ConsoleTextFrame& frame, ImGuiInputTextState& state) {
    state.TextW.resize(frame.maxTextSize + 1);
    frame.wideText = WideText{state.TextW.Data, frame.text, frame.maxTextSize};
    frame.textLength = std::size_t(frame.wideText.byteCount());
    state.CurLenA = frame.wideText.byteCount();
}

/* A state as stb_textedit makes it for a new multi-line text */
void resetTextEdit(ImStb::STB_TexteditState& textEdit) {
    textEdit.cursor = 0;
    textEdit.select_start = 0;
    textEdit.select_end = 0;
    textEdit.insert_mode = 0;
    textEdit.row_count_per_page = 0;
    textEdit.cursor_at_end_of_line = 0;
    textEdit.initialized = 1;
    textEdit.has_preferred_x = 0;
    textEdit.single_line = 0;
    textEdit.preferred_x = 0.0f;
    textEdit.undostate.undo_point = 0;
    textEdit.undostate.undo_char_point = 0;
    textEdit.undostate.redo_point = STB_TEXTEDIT_UNDOSTATECOUNT;
    textEdit.undostate.redo_char_point = STB_TEXTEDIT_UNDOCHARCOUNT;
}

void initializeState(ConsoleTextFrame& frame) {
    ImGuiInputTextState& state = frame.context.InputTextState;
    state.CursorAnimReset();
    refreshText(frame, state);

    const int length = int(frame.textLength);
    state.InitialTextA.resize(length + 1);
    std::memcpy(state.InitialTextA.Data, frame.text, frame.textLength);
    state.InitialTextA[length] = '\0';
    state.TextA.resize(0);
    state.TextAIsValid = false;

    if(frame.state) {
        /* Dear ImGui's conversion is given no room for a NUL behind textSize characters here, so
           a text as long as that ends one character earlier. It's whole again once it's
           refreshed, in this same frame; the cursor and the selection stay. */
        clampToText(state, ImMin(frame.wideText.size(), ImMax(frame.maxTextSize - 1, 0)));
    } else {
        state.ID = frame.id;
        state.ScrollX = 0.0f;
        resetTextEdit(state.Stb);
        frame.state = &state;
    }
    if(frame.flags & ImGuiInputTextFlags_AlwaysOverwrite)
        state.Stb.insert_mode = 1;
}

void makeActive(const ConsoleTextFrame& frame) {
    ImGuiContext& context = frame.context;
    ImGui::SetActiveID(frame.id, frame.window);
    ImGui::SetFocusID(frame.id, frame.window);
    ImGui::FocusWindow(frame.window);

    const auto keyBit = [](const ImGuiKey key) { return ImU64{1} << key; };
    context.ActiveIdUsingNavDirMask |= (1u << ImGuiDir_Left) | (1u << ImGuiDir_Right) |
        (1u << ImGuiDir_Up) | (1u << ImGuiDir_Down);
    context.ActiveIdUsingNavInputMask |= 1u << ImGuiNavInput_Cancel;
    context.ActiveIdUsingKeyInputMask |= keyBit(ImGuiKey_Home) | keyBit(ImGuiKey_End) |
        keyBit(ImGuiKey_PageUp) | keyBit(ImGuiKey_PageDown);
    if(frame.flags & (ImGuiInputTextFlags_CallbackCompletion | ImGuiInputTextFlags_AllowTabInput))
        context.ActiveIdUsingKeyInputMask |= keyBit(ImGuiKey_Tab);
}

bool isScrollbarActive(const ConsoleTextFrame& frame, const ImGuiID scrollbar) {
    return frame.state && frame.context.ActiveId == scrollbar;
}

void decideActivation(ConsoleTextFrame& frame, const ImGuiID scrollbar) {
    const ImGuiContext& context = frame.context;
    const bool isClicked = frame.isHovered && context.IO.MouseClicked[0];
    const bool isFocusRequested = frame.itemStatus & ImGuiItemStatusFlags_FocusedByTabbing;
    const bool isNavigationStarted = !frame.isActive() &&
        (context.NavActivateInputId == frame.id ||
            (context.NavActivateId == frame.id &&
                context.NavInputSource == ImGuiInputSource_Keyboard));
    /* The text stays selected while its scrollbar is dragged and gets the focus back afterwards */
    const bool isScrollbarFinished = frame.state && context.ActiveId == 0 &&
        context.ActiveIdPreviousFrame == scrollbar;

    frame.isMadeActive = isClicked || isScrollbarFinished || isNavigationStarted ||
        isFocusRequested;
    frame.isInitialized = frame.isMadeActive || isScrollbarActive(frame, scrollbar);
}

}

void updateActivation(ConsoleTextFrame& frame) {
    ImGuiContext& context = frame.context;
    frame.isHovered = ImGui::ItemHoverable(frame.frame, frame.id);
    if(frame.isHovered)
        context.MouseCursor = ImGuiMouseCursor_TextInput;

    if(context.InputTextState.ID == frame.id)
        frame.state = &context.InputTextState;
    if(frame.state && frame.filtersChanged)
        frame.state->ClearSelection();

    const ImGuiID scrollbar = ImGui::GetWindowScrollbarID(frame.child, ImGuiAxis_Y);
    decideActivation(frame, scrollbar);
    if(frame.isInitialized && !frame.isActive())
        initializeState(frame);
    if(frame.isMadeActive && !frame.isActive())
        makeActive(frame);

    if(frame.isActive() && !frame.state)
        ImGui::ClearActiveID();
    if(frame.isActive() && context.IO.MouseClicked[0] && !frame.isInitialized)
        frame.isReleased = true;
    frame.hasCursor = frame.isActive() || isScrollbarActive(frame, scrollbar);
}

void updateText(ConsoleTextFrame& frame) {
    ImGuiInputTextState* const state = frame.state;
    if(!state || (!frame.hasCursor && !state->HasSelection()))
        return;
    const bool hadSelection = state->HasSelection();
    if(!frame.wideText.data())
        refreshText(frame, *state);
    clampToText(*state, frame.wideText.size());
    frame.hasSelection = hadSelection && state->HasSelection();
}

}
