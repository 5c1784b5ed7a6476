#include "plugins/console/consoleTextFrame.h"

#include <cmath>

#include "plugins/console/measureText.h"

namespace QuillmereEngine {

namespace {

/* Where the cursor is relative to the text's origin: the left side of its character, and the lower
   side of its row */
ImVec2 cursorOffset(const ConsoleTextFrame& frame) {
    const int cursor = frame.state->Stb.cursor;
    const int row = frame.wideText.rowOf(cursor);
    const WideText::Character* const text = frame.wideText.data();
    return {textWidth(text + frame.wideText.rowBegin(row), text + cursor),
        float(row + 1) * ImGui::GetFontSize()};
}

float scrolledX(const ConsoleTextFrame& frame, const float cursorX) {
    if(frame.flags & ImGuiInputTextFlags_NoHorizontalScroll)
        return 0.0f;
    const float scroll = frame.state->ScrollX;
    const float width = frame.innerSize.x;
    /* In steps, so that not every character that's typed or passed moves the text */
    const float step = width * 0.25f;
    if(cursorX < scroll)
        return std::floor(ImMax(0.0f, cursorX - step));
    return cursorX - width >= scroll ? std::floor(cursorX - width + step) : scroll;
}

float scrolledY(const ConsoleTextFrame& frame, const float cursorY) {
    const float scroll = frame.child->Scroll.y;
    const float rowTop = cursorY - ImGui::GetFontSize();
    if(rowTop < scroll)
        return ImMax(0.0f, rowTop);
    const float height = frame.innerSize.y;
    return cursorY - height >= scroll ? cursorY - height : scroll;
}

/* The child's scroll position is set directly, as a request would be met in the next frame only */
void followCursor(ConsoleTextFrame& frame) {
    const ImVec2 cursor = cursorOffset(frame);
    frame.state->ScrollX = scrolledX(frame, cursor.x);
    const float scrollY = scrolledY(frame, cursor.y);
    frame.origin.y += frame.child->Scroll.y - scrollY;
    frame.child->Scroll.y = scrollY;
    frame.state->CursorFollow = false;
}

}

float textWidth(const WideText::Character* const begin, const WideText::Character* const end) {
    const ImFont& font = *ImGui::GetFont();
    const float scale = ImGui::GetFontSize() / font.FontSize;
    float width = 0.0f;
    for(const WideText::Character* i = begin; i != end; ++i)
        if(*i != '\r')
            width += font.GetCharAdvance(*i) * scale;
    return width;
}

void layOutText(ConsoleTextFrame& frame) {
    if(frame.hasCursor || frame.hasSelection) {
        frame.rowCount = frame.wideText.rowCount();
    } else {
        const TextMeasure measure = measureText(frame.text, std::size_t(frame.maxTextSize));
        frame.textLength = measure.length;
        frame.rowCount = int(measure.newlineCount) + 1;
    }
    frame.contentHeight = float(frame.rowCount) * ImGui::GetFontSize();
    if(frame.hasCursor && frame.state->CursorFollow)
        followCursor(frame);
}

}
