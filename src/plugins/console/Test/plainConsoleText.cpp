#include "plugins/console/Test/plainConsoleText.h"

#include <cmath>
#include <cstring>

/* For the vectors; before the first inclusion of the internal header */
#define IMGUI_DEFINE_MATH_OPERATORS
#include <imgui.h>
#include <imgui_internal.h>

namespace ImStb {

static float plainWidth(const ImGuiInputTextState* const text, const int first, const int i) {
    const ImWchar character = text->TextW[first + i];
    if(character == '\n')
        return STB_TEXTEDIT_GETWIDTH_NEWLINE;
    return ImGui::GetFont()->GetCharAdvance(character) *
        (ImGui::GetFontSize() / ImGui::GetFont()->FontSize);
}

static void plainLayOut(
    StbTexteditRow* const row, const ImGuiInputTextState* const text, const int first) {
    int i = first;
    float width = 0.0f;
    while(i < text->CurLenW) {
        const ImWchar character = text->TextW[i++];
        if(character == '\n')
            break;
        if(character != '\r')
            width += plainWidth(text, first, i - 1 - first);
    }
    *row = {0.0f, width, ImGui::GetFontSize(), 0.0f, ImGui::GetFontSize(), i - first};
}

#define STB_TEXTEDIT_STRINGLEN(text) ((text)->CurLenW)
#define STB_TEXTEDIT_LAYOUTROW(row, text, first) plainLayOut(row, text, first)
#define STB_TEXTEDIT_GETWIDTH(text, first, i) plainWidth(text, first, i)
#define STB_TEXTEDIT_GETCHAR(text, i) ((text)->TextW[i])
#define STB_TEXTEDIT_NEWLINE '\n'
#define STB_TEXTEDIT_KEYTOTEXT(key) (key)
#define STB_TEXTEDIT_DELETECHARS(text, first, count) (void(text), void(first), void(count))
#define STB_TEXTEDIT_INSERTCHARS(text, first, characters, count) ((void)(characters), 0)
#define STB_TEXTEDIT_K_LEFT 0x200000
#define STB_TEXTEDIT_K_RIGHT 0x200001
#define STB_TEXTEDIT_K_UP 0x200002
#define STB_TEXTEDIT_K_DOWN 0x200003
#define STB_TEXTEDIT_K_LINESTART 0x200004
#define STB_TEXTEDIT_K_LINEEND 0x200005
#define STB_TEXTEDIT_K_TEXTSTART 0x200006
#define STB_TEXTEDIT_K_TEXTEND 0x200007
#define STB_TEXTEDIT_K_DELETE 0x200008
#define STB_TEXTEDIT_K_BACKSPACE 0x200009
#define STB_TEXTEDIT_K_UNDO 0x20000A
#define STB_TEXTEDIT_K_REDO 0x20000B
#define STB_TEXTEDIT_K_WORDLEFT 0x20000C
#define STB_TEXTEDIT_K_WORDRIGHT 0x20000D
#define STB_TEXTEDIT_K_PGUP 0x20000E
#define STB_TEXTEDIT_K_PGDOWN 0x20000F
#define STB_TEXTEDIT_K_SHIFT 0x400000
#define STB_TEXTEDIT_MOVEWORDLEFT(text, i) (i)
#define STB_TEXTEDIT_MOVEWORDRIGHT(text, i) (i)

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#define STB_TEXTEDIT_IMPLEMENTATION
#include <imstb_textedit.h>
#pragma GCC diagnostic pop

}

namespace QuillmereEngine { namespace Testing {

namespace {

/* One frame, whose functions are its steps */
class Plain {
public:
    ImGuiContext& g = *ImGui::GetCurrentContext();
    ImGuiWindow* window = nullptr;
    ImGuiWindow* child = nullptr;
    const StringArrayView& lines;
    const char* text;
    int textSize;
    bool showInfo, showWarnings, showErrors;
    ImGuiID id = 0;
    ImRect frame{};
    ImVec2 inner{}, origin{};
    ImRect clip{};
    ImGuiInputTextState* state = nullptr;
    bool hovered = false, makeActive = false, initialize = false, release = false;
    bool renderCursor = false, renderSelection = false;
    ImVec2 cursorOffset{}, selectionOffset{};
    float contentHeight = 0.0f;
    int flags = 0;

    void convert(int limit);
    void activate(bool filtersChanged, ImGuiItemStatusFlags status);
    void initializeState();
    void claim();
    void refresh();
    void mouse();
    void keys();
    void copy();
    void geometry();
    void follow();
    void selection();
    void allLines();
};

/* Where the sequence at the end of the text is cut off, Dear ImGui would read behind its NUL without
   being told of the end */
void Plain::convert(const int limit) {
    const char* end = nullptr;
    state->TextW.resize(textSize + 1);
    state->CurLenW = ImTextStrFromUtf8(
        state->TextW.Data, limit, text, text + std::strlen(text), &end);
    state->CurLenA = int(end - text);
}

void Plain::initializeState() {
    const bool isOwned = state;
    state = &g.InputTextState;
    state->CursorAnim = -0.3f;
    state->InitialTextA.resize(int(std::strlen(text)) + 1);
    std::strcpy(state->InitialTextA.Data, text);
    state->TextA.resize(0);
    state->TextAIsValid = false;
    convert(textSize);
    if(isOwned) {
        state->CursorClamp();
    } else {
        state->ID = id;
        state->ScrollX = 0.0f;
        ImStb::stb_textedit_initialize_state(&state->Stb, 0);
    }
    if(flags & ImGuiInputTextFlags_AlwaysOverwrite)
        state->Stb.insert_mode = 1;
}

void Plain::claim() {
    ImGui::SetActiveID(id, window);
    ImGui::SetFocusID(id, window);
    ImGui::FocusWindow(window);
    for(const ImGuiDir i: {ImGuiDir_Left, ImGuiDir_Right, ImGuiDir_Up, ImGuiDir_Down})
        g.ActiveIdUsingNavDirMask |= 1u << i;
    g.ActiveIdUsingNavInputMask |= 1u << ImGuiNavInput_Cancel;
    for(const ImGuiKey i: {ImGuiKey_Home, ImGuiKey_End, ImGuiKey_PageUp, ImGuiKey_PageDown})
        g.ActiveIdUsingKeyInputMask |= ImU64{1} << i;
    if(flags & (ImGuiInputTextFlags_CallbackCompletion | ImGuiInputTextFlags_AllowTabInput))
        g.ActiveIdUsingKeyInputMask |= ImU64{1} << ImGuiKey_Tab;
}

void Plain::activate(const bool filtersChanged, const ImGuiItemStatusFlags status) {
    hovered = ImGui::ItemHoverable(frame, id);
    if(hovered)
        ImGui::SetMouseCursor(ImGuiMouseCursor_TextInput);
    state = g.InputTextState.ID == id ? &g.InputTextState : nullptr;
    if(state && filtersChanged)
        state->Stb.select_start = state->Stb.select_end = state->Stb.cursor;

    const ImGuiID scrollbar = ImGui::GetWindowScrollbarID(child, ImGuiAxis_Y);
    const bool clicked = hovered && g.IO.MouseClicked[0];
    const bool focused = status & ImGuiItemStatusFlags_FocusedByTabbing;
    const bool navigation = g.ActiveId != id &&
        (g.NavActivateInputId == id ||
            (g.NavActivateId == id && g.NavInputSource == ImGuiInputSource_Keyboard));
    const bool finished = state && g.ActiveId == 0 && g.ActiveIdPreviousFrame == scrollbar;
    makeActive = clicked || finished || navigation || focused;
    initialize = makeActive || (state && g.ActiveId == scrollbar);

    if(initialize && g.ActiveId != id)
        initializeState();
    if(makeActive && g.ActiveId != id)
        claim();
    if(g.ActiveId == id && !state)
        ImGui::ClearActiveID();
    release = g.ActiveId == id && g.IO.MouseClicked[0] && !initialize;
    renderCursor = g.ActiveId == id || (state && g.ActiveId == scrollbar);
}

void Plain::refresh() {
    if(!state || !(renderCursor || state->HasSelection()))
        return;
    renderSelection = state->HasSelection();
    convert(textSize + 1);
    state->CursorClamp();
    renderSelection = renderSelection && state->HasSelection();
}

void Plain::mouse() {
    state->BufCapacityA = textSize;
    state->Flags = flags;
    g.ActiveIdAllowOverlap = !g.IO.MouseDown[0];
    g.WantTextInputNextFrame = 1;

    const float x = g.IO.MousePos.x - frame.Min.x - g.Style.FramePadding.x + state->ScrollX;
    const float y = g.IO.MousePos.y - origin.y - g.Style.FramePadding.y;
    ImStb::STB_TexteditState& stb = state->Stb;
    if(hovered && g.IO.MouseDoubleClicked[0] && !g.IO.ConfigMacOSXBehaviors) {
        state->SelectAll();
        state->SelectedAllMouseLock = true;
    } else if(hovered && g.IO.MouseDoubleClicked[0]) {
        state->OnKeyPressed(STB_TEXTEDIT_K_WORDLEFT);
        state->OnKeyPressed(STB_TEXTEDIT_K_WORDRIGHT | STB_TEXTEDIT_K_SHIFT);
    } else if(g.IO.MouseClicked[0] && !state->SelectedAllMouseLock) {
        if(hovered) {
            stb.cursor = stb.select_start = stb.select_end = ImStb::stb_text_locate_coord(
                state, x, y);
            stb.has_preferred_x = 0;
            state->CursorAnim = -0.3f;
        }
    } else if(g.IO.MouseDown[0] && !state->SelectedAllMouseLock &&
        (g.IO.MouseDelta.x != 0.0f || g.IO.MouseDelta.y != 0.0f)) {
        if(!state->HasSelection())
            stb.select_start = stb.cursor;
        stb.cursor = stb.select_end = ImStb::stb_text_locate_coord(state, x, y);
        state->CursorAnim = -0.3f;
        state->CursorFollow = true;
    }
    if(state->SelectedAllMouseLock && !g.IO.MouseDown[0])
        state->SelectedAllMouseLock = false;
}

void Plain::copy() {
    const bool selected = state->HasSelection();
    const ImWchar* const all = state->TextW.Data;
    const ImWchar* const begin = selected
        ? all + ImMin(state->Stb.select_start, state->Stb.select_end)
        : all;
    const ImWchar* const end = selected
        ? all + ImMax(state->Stb.select_start, state->Stb.select_end)
        : all + state->CurLenW;
    ImVector<char> utf8;
    utf8.resize(ImTextCountUtf8BytesFromStr(begin, end) + 1);
    ImTextStrToUtf8(utf8.Data, utf8.Size, begin, end);
    ImGui::SetClipboardText(utf8.Data);
}

void Plain::keys() {
    const bool mac = g.IO.ConfigMacOSXBehaviors;
    const bool shortcut = g.IO.KeyMods == (mac ? ImGuiKeyModFlags_Super : ImGuiKeyModFlags_Ctrl);
    const bool word = mac ? g.IO.KeyAlt : g.IO.KeyCtrl;
    const bool startEnd = mac && g.IO.KeySuper && !g.IO.KeyCtrl && !g.IO.KeyAlt;
    const int shift = g.IO.KeyShift ? STB_TEXTEDIT_K_SHIFT : 0;
    const auto pressed = [](const ImGuiKey key) { return ImGui::IsKeyPressedMap(key, true); };
    const bool copies = (shortcut && pressed(ImGuiKey_C)) ||
        (g.IO.KeyMods == ImGuiKeyModFlags_Ctrl && pressed(ImGuiKey_Insert));

    if(pressed(ImGuiKey_LeftArrow))
        state->OnKeyPressed((startEnd      ? STB_TEXTEDIT_K_LINESTART
                                    : word ? STB_TEXTEDIT_K_WORDLEFT
                                           : STB_TEXTEDIT_K_LEFT) |
            shift);
    else if(pressed(ImGuiKey_RightArrow))
        state->OnKeyPressed((startEnd      ? STB_TEXTEDIT_K_LINEEND
                                    : word ? STB_TEXTEDIT_K_WORDRIGHT
                                           : STB_TEXTEDIT_K_RIGHT) |
            shift);
    else if(pressed(ImGuiKey_UpArrow) && g.IO.KeyCtrl)
        ImGui::SetScrollY(child, ImMax(child->Scroll.y - g.FontSize, 0.0f));
    else if(pressed(ImGuiKey_UpArrow))
        state->OnKeyPressed((startEnd ? STB_TEXTEDIT_K_TEXTSTART : STB_TEXTEDIT_K_UP) | shift);
    else if(pressed(ImGuiKey_DownArrow) && g.IO.KeyCtrl)
        ImGui::SetScrollY(child, ImMin(child->Scroll.y + g.FontSize, ImGui::GetScrollMaxY()));
    else if(pressed(ImGuiKey_DownArrow))
        state->OnKeyPressed((startEnd ? STB_TEXTEDIT_K_TEXTEND : STB_TEXTEDIT_K_DOWN) | shift);
    else if(pressed(ImGuiKey_Home))
        state->OnKeyPressed(
            (g.IO.KeyCtrl ? STB_TEXTEDIT_K_TEXTSTART : STB_TEXTEDIT_K_LINESTART) | shift);
    else if(pressed(ImGuiKey_End))
        state->OnKeyPressed(
            (g.IO.KeyCtrl ? STB_TEXTEDIT_K_TEXTEND : STB_TEXTEDIT_K_LINEEND) | shift);
    else if(pressed(ImGuiKey_Escape))
        release = true;
    else if(shortcut && pressed(ImGuiKey_A)) {
        state->SelectAll();
        state->CursorFollow = true;
    } else if(copies && g.IO.SetClipboardTextFn)
        copy();
}

float plainTextWidth(const ImWchar* const begin, const ImWchar* const end) {
    float width = 0.0f;
    for(const ImWchar* i = begin; i != end; ++i)
        if(*i != '\r')
            width += ImGui::GetFont()->GetCharAdvance(*i) *
                (ImGui::GetFontSize() / ImGui::GetFont()->FontSize);
    return width;
}

void Plain::geometry() {
    int rows = 1;
    if(!renderCursor && !renderSelection) {
        for(const char* i = text; *i; ++i)
            rows += *i == '\n';
        contentHeight = float(rows) * g.FontSize;
        return;
    }
    const ImWchar* const begin = state->TextW.Data;
    const ImWchar* const cursor = begin + state->Stb.cursor;
    const ImWchar* const selected = begin + ImMin(state->Stb.select_start, state->Stb.select_end);
    int cursorRow = 1;
    int selectedRow = 1;
    for(const ImWchar* i = begin; *i; ++i)
        if(*i == '\n') {
            ++rows;
            cursorRow += i < cursor;
            selectedRow += i < selected;
        }
    cursorOffset = {
        plainTextWidth(ImStrbolW(cursor, begin), cursor), float(cursorRow) * g.FontSize};
    selectionOffset = {
        plainTextWidth(ImStrbolW(selected, begin), selected), float(selectedRow) * g.FontSize};
    contentHeight = float(rows) * g.FontSize;
}

void Plain::follow() {
    if(!renderCursor || !state->CursorFollow)
        return;
    const float step = inner.x * 0.25f;
    if(flags & ImGuiInputTextFlags_NoHorizontalScroll)
        state->ScrollX = 0.0f;
    else if(cursorOffset.x < state->ScrollX)
        state->ScrollX = std::floor(ImMax(0.0f, cursorOffset.x - step));
    else if(cursorOffset.x - inner.x >= state->ScrollX)
        state->ScrollX = std::floor(cursorOffset.x - inner.x + step);

    float scrollY = child->Scroll.y;
    if(cursorOffset.y - g.FontSize < scrollY)
        scrollY = ImMax(0.0f, cursorOffset.y - g.FontSize);
    else if(cursorOffset.y - inner.y >= scrollY)
        scrollY = cursorOffset.y - inner.y;
    origin.y += child->Scroll.y - scrollY;
    child->Scroll.y = scrollY;
    state->CursorFollow = false;
}

void Plain::selection() {
    if(!renderSelection)
        return;
    const ImU32 color = ImGui::GetColorU32(ImGuiCol_TextSelectedBg, renderCursor ? 1.0f : 0.6f);
    const ImWchar* i = state->TextW.Data + ImMin(state->Stb.select_start, state->Stb.select_end);
    const ImWchar* const end = state->TextW.Data +
        ImMax(state->Stb.select_start, state->Stb.select_end);
    ImVec2 position = origin + selectionOffset - ImVec2{state->ScrollX, 0.0f};
    while(i < end) {
        if(position.y > clip.Max.y + g.FontSize)
            break;
        const ImWchar* rowEnd = i;
        while(rowEnd != end && *rowEnd != '\n')
            ++rowEnd;
        if(position.y >= clip.Min.y) {
            float width = plainTextWidth(i, rowEnd);
            if(width <= 0.0f)
                width = std::floor(g.Font->GetCharAdvance(' ') * 0.5f);
            ImRect row{position - ImVec2{0.0f, g.FontSize}, position + ImVec2{width, 0.0f}};
            row.ClipWith(clip);
            if(row.Overlaps(clip))
                child->DrawList->AddRectFilled(row.Min, row.Max, color);
        }
        i = rowEnd == end ? end : rowEnd + 1;
        position.x = origin.x - state->ScrollX;
        position.y += g.FontSize;
    }
}

void Plain::allLines() {
    const ImVec4 clipRect = clip.ToVec4();
    float y = origin.y;
    for(std::size_t i = 0; i != lines.size(); ++i) {
        const char* const line = lines.get(i);
        ImU32 color = ImGui::GetColorU32(ImGuiCol_Text, 1.0f);
        bool isShown = showInfo;
        if(std::memcmp(line + 25, "[error]", 7) == 0) {
            color = 0xff0000ff;
            isShown = showErrors;
        } else if(std::memcmp(line + 25, "[warn]", 6) == 0) {
            color = 0xff00ccff;
            isShown = showWarnings;
        }
        if(!isShown)
            continue;
        child->DrawList->AddText(g.Font, g.FontSize, ImVec2{origin.x, y}, color, line,
            line + lines.sizeOf(i) - 1, 0.0f, &clipRect);
        y += g.FontSize;
    }
}

bool beginFrameChild(const char* const label, const ImGuiID id, const ImVec2& size) {
    const ImGuiStyle& style = ImGui::GetStyle();
    ImGui::PushStyleColor(ImGuiCol_ChildBg, style.Colors[ImGuiCol_FrameBg]);
    ImGui::PushStyleVar(ImGuiStyleVar_ChildRounding, style.FrameRounding);
    ImGui::PushStyleVar(ImGuiStyleVar_ChildBorderSize, style.FrameBorderSize);
    ImGui::PushStyleVar(ImGuiStyleVar_WindowPadding, style.FramePadding);
    const bool out = ImGui::BeginChildEx(
        label, id, size, true, ImGuiWindowFlags_NoMove | ImGuiWindowFlags_AlwaysUseWindowPadding);
    ImGui::PopStyleVar(3);
    ImGui::PopStyleColor();
    return out;
}

void runSteps(Plain& plain, const bool filtersChanged, const bool scrollToBottom,
    const ImGuiItemStatusFlags status) {
    plain.activate(filtersChanged, status);
    plain.refresh();
    if(plain.g.ActiveId == plain.id) {
        plain.mouse();
        if(!plain.g.ActiveIdIsJustActivated && !plain.release)
            plain.keys();
        plain.renderSelection = plain.renderSelection || plain.state->HasSelection();
        if(plain.release)
            ImGui::ClearActiveID();
    }
    plain.geometry();
    plain.follow();
    plain.selection();
    plain.allLines();
    if(scrollToBottom)
        ImGui::SetScrollY(plain.child->ScrollMax.y);
    ImGui::Dummy(ImVec2{plain.inner.x, plain.contentHeight + plain.g.FontSize});
}

}

bool plainConsoleText(const char* const label, const StringArrayView lines, const char* const text,
    const int textSize, const bool showInfo, const bool showWarnings, const bool showErrors,
    const bool filtersChanged, const bool scrollToBottom, const ImVec2& size, const int flags) {
    ImGuiWindow* const window = ImGui::GetCurrentWindow();
    if(window->SkipItems)
        return false;
    Plain plain{*ImGui::GetCurrentContext(), window, nullptr, lines, text, textSize, showInfo,
        showWarnings, showErrors, window->GetID(label)};
    plain.flags = flags;
    ImGui::BeginGroup();
    const ImGuiStyle& style = ImGui::GetStyle();
    const ImVec2 labelSize = ImGui::CalcTextSize(label, nullptr, true);
    const ImVec2 frameSize = ImGui::CalcItemSize(
        size, ImGui::CalcItemWidth(), plain.g.FontSize * 8.0f + style.FramePadding.y * 2.0f);
    plain.frame = {window->DC.CursorPos, window->DC.CursorPos + frameSize};
    ImRect total = plain.frame;
    if(labelSize.x > 0.0f)
        total.Max.x += style.ItemInnerSpacing.x + labelSize.x;
    if(!ImGui::ItemAdd(total, plain.id, &plain.frame, 0)) {
        ImGui::ItemSize(total, style.FramePadding.y);
        ImGui::EndGroup();
        return false;
    }
    const ImGuiItemStatusFlags status = plain.g.LastItemData.StatusFlags;
    if(!beginFrameChild(label, plain.id, frameSize)) {
        ImGui::EndChild();
        ImGui::EndGroup();
        return false;
    }
    plain.child = ImGui::GetCurrentWindow();
    plain.child->DC.NavLayersActiveMaskNext = short(
        plain.child->DC.NavLayersActiveMaskNext | (1 << plain.child->DC.NavLayerCurrent));
    plain.inner = {frameSize.x - plain.child->ScrollbarSizes.x, frameSize.y};
    plain.clip = {plain.frame.Min, plain.frame.Min + plain.inner};
    plain.origin = plain.child->DC.CursorPos;

    runSteps(plain, filtersChanged, scrollToBottom, status);
    ImGui::EndChild();
    ImGui::EndGroup();
    if(plain.g.LogEnabled)
        ImGui::LogRenderedText(&plain.origin, text, text + std::strlen(text));
    if(labelSize.x > 0.0f)
        ImGui::RenderText({plain.frame.Max.x + style.ItemInnerSpacing.x,
                              plain.frame.Min.y + style.FramePadding.y},
            label, nullptr, true);
    return false;
}

}}
