#include "plugins/console/consoleTextFrame.h"

#include "plugins/console/RowPositions.h"
#include "plugins/console/VisibleLines.h"

namespace QuillmereEngine {

namespace {

constexpr ImU32 ErrorColor = IM_COL32(255, 0, 0, 255);
constexpr ImU32 WarningColor = IM_COL32(255, 204, 0, 255);

/* Draws the selected part of one row, whose lower left corner is given */
void drawSelectedRow(const ConsoleTextFrame& frame, const WideText::Character* const begin,
    const WideText::Character* const end, const ImVec2& position, const ImU32 color) {
    float width = textWidth(begin, end);
    /* So that a selected empty row can be seen */
    if(width <= 0.0f)
        width = ImFloor(ImGui::GetFont()->GetCharAdvance(' ') * 0.5f);
    const ImRect clip{frame.clip};
    ImRect row{position.x, position.y - ImGui::GetFontSize(), position.x + width, position.y};
    row.ClipWith(clip);
    if(row.Overlaps(clip))
        frame.child->DrawList->AddRectFilled(row.Min, row.Max, color);
}

void drawSelection(const ConsoleTextFrame& frame) {
    const WideText& text = frame.wideText;
    const ImStb::STB_TexteditState& textEdit = frame.state->Stb;
    const int begin = ImMin(textEdit.select_start, textEdit.select_end);
    const int end = ImMax(textEdit.select_start, textEdit.select_end);
    const ImU32 color = ImGui::GetColorU32(ImGuiCol_TextSelectedBg, frame.hasCursor ? 1.0f : 0.6f);
    const float fontSize = ImGui::GetFontSize();

    const int firstRow = text.rowOf(begin);
    const auto rowCount = std::size_t(text.rowOf(end) - firstRow + 1);
    RowPositions bottoms{frame.origin.y + float(firstRow + 1) * fontSize, fontSize};
    std::size_t i = bottoms.firstNotAbove(frame.clip.y, rowCount);
    if(i == rowCount)
        return;

    int rowBegin = text.rowBegin(firstRow + int(i));
    /* A selection that ends behind a newline has nothing of the next row */
    for(; i != rowCount && rowBegin < end; ++i) {
        const float bottom = bottoms.position(i);
        if(bottom > frame.clip.w + fontSize)
            break;
        const WideText::Character* const row = text.data() + rowBegin;
        const WideText::Character* const selected = text.data() + ImMax(rowBegin, begin);
        const int rowEnd = text.rowEndFrom(rowBegin);
        const float left = frame.origin.x + textWidth(row, selected) - frame.state->ScrollX;
        drawSelectedRow(
            frame, selected, text.data() + ImMin(rowEnd, end), ImVec2{left, bottom}, color);
        rowBegin = rowEnd + 1;
    }
}

ImU32 lineColor(const LineLevel level) {
    if(level == LineLevel::Error)
        return ErrorColor;
    return level == LineLevel::Warning ? WarningColor : ImGui::GetColorU32(ImGuiCol_Text, 1.0f);
}

/* Lines are left out only where ImDrawList::AddText() would do nothing either: it rounds positions
   to whole pixels, so a few pixels more than the clip rectangle count as visible. */
void drawLines(const ConsoleTextFrame& frame) {
    constexpr float Margin = 4.0f;
    const StringArrayView& lines = frame.lines;
    const float fontSize = ImGui::GetFontSize();
    RowPositions tops{frame.origin.y, fontSize};
    const std::size_t firstRow = tops.firstNotAbove(frame.clip.y - fontSize - Margin, lines.size());
    const std::size_t endRow = tops.firstNotAbove(frame.clip.w + Margin, lines.size());

    for(VisibleLines line{lines, frame.levels, firstRow, endRow}; line.next();) {
        const char* const begin = lines.get(line.index());
        const char* const end = begin + lines.sizeOf(line.index()) - 1;
        frame.child->DrawList->AddText(ImGui::GetFont(), fontSize,
            ImVec2{frame.origin.x, tops.position(line.row())}, lineColor(line.level()), begin, end,
            0.0f, &frame.clip);
    }
}

}

void drawText(const ConsoleTextFrame& frame) {
    /* The input may have collapsed the selection that there was at the start of the frame */
    if(frame.hasSelection && frame.state->HasSelection())
        drawSelection(frame);
    drawLines(frame);
}

}
