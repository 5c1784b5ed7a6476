#include "plugins/history/HistoryView.h"

#include <algorithm>
#include <string_view>

#include <Corrade/Containers/ScopeGuard.h>
#include <imgui.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/Tools/Log.h"
#include "host/QuillmereEditorApplication.h"
#include "plugins/history/shortText.h"
#include "plugins/history/walkHistory.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

/* More than fits into a row and into a tooltip */
constexpr std::size_t RowText = 96, TooltipText = 400;

/* In font sizes: the bracket's place, its distance from the left, and the width of its ends */
constexpr float GutterWidth = 0.8f, BracketX = 0.3f, BracketTick = 0.35f;

/* What the path gets of the width that the values and it share */
constexpr float PathShare = 0.55f;

const char* kindOf(const Change& change) {
    if(!change.oldValue)
        return "Create";
    return change.newValue ? "Change" : "Remove";
}

/* Where a font has no arrow it would draw a question mark */
const char* arrow() {
    return ImGui::GetFont()->FindGlyphNoFallback(0x2192) ? " \xe2\x86\x92 " : " -> ";
}

std::string valuesOf(const Change& change, const std::size_t limit) {
    std::string out;
    if(change.oldValue)
        out = shortJson(*change.oldValue, limit);
    if(change.oldValue && change.newValue)
        out += arrow();
    if(change.newValue)
        out += shortJson(*change.newValue, limit);
    return out;
}

float widthOf(const char* const begin, const char* const end) {
    return ImGui::CalcTextSize(begin, end).x;
}

/* The end of a path says more than its start. Goes over the text once, a character at a time. */
std::string fittingEnd(std::string text, const float width) {
    const char* const end = text.data() + text.size();
    float excess = widthOf(text.data(), end) - width;
    if(excess <= 0.0f)
        return text;
    excess += ImGui::CalcTextSize("...").x;
    const char* begin = text.data();
    while(begin != end && excess > 0.0f) {
        const char* next = begin + 1;
        while(next != end && (*next & 0xc0) == 0x80)
            ++next;
        excess -= widthOf(begin, next);
        begin = next;
    }
    return "..." + std::string{begin, end};
}

void drawText(
    const ImVec2& position, const float right, const ImU32 color, const std::string& text) {
    const ImVec4 clip{position.x, position.y, right, position.y + ImGui::GetFontSize() * 2.0f};
    if(right > position.x)
        ImGui::GetWindowDrawList()->AddText(
            nullptr, 0.0f, position, color, text.data(), text.data() + text.size(), 0.0f, &clip);
}

void drawTooltip(const Change& change) {
    ImGui::BeginTooltip();
    ImGui::PushTextWrapPos(ImGui::GetFontSize() * 35.0f);
    const auto text = [](const std::string& line) { ImGui::TextUnformatted(line.c_str()); };
    text(std::string{kindOf(change)} + " " + shortPath(pathOf(change), TooltipText));
    if(change.oldValue)
        text("Old: " + shortJson(*change.oldValue, TooltipText));
    if(change.newValue)
        text("New: " + shortJson(*change.newValue, TooltipText));
    ImGui::PopTextWrapPos();
    ImGui::EndTooltip();
}

bool isPressed(const ImGuiKey key) { return ImGui::IsKeyPressed(ImGui::GetKeyIndex(key)); }

}

/* What a row shows */
struct HistoryView::Row {
    enum class Bracket { None, First, Middle, Last, Only };

    std::size_t state;
    /* Null for the state before all changes */
    const Change* change;
    Bracket bracket;
    bool isApplied, isCurrent, isSaved;
    /* The present state comes after it, but before the next row */
    bool isCurrentBehind;

    ImU32 color() const {
        return ImGui::GetColorU32(isApplied ? ImGuiCol_Text : ImGuiCol_TextDisabled);
    }

    /* Give whether all of the text was drawn */
    bool draw() const;
    bool drawChange(const ImVec2& position, float width, float right) const;
    void drawBracket(const ImVec2& min, const ImVec2& max) const;
};

bool HistoryView::Row::draw() const {
    const ImVec2 min = ImGui::GetItemRectMin(), max = ImGui::GetItemRectMax();
    const float fontSize = ImGui::GetFontSize();
    const ImVec2 text{min.x + fontSize * GutterWidth, (min.y + max.y - fontSize) * 0.5f};
    float right = max.x - ImGui::GetStyle().ItemSpacing.x;
    if(isSaved) {
        right -= ImGui::CalcTextSize("saved").x;
        drawText({right, text.y}, max.x, color(), "saved");
        right -= ImGui::GetStyle().ItemSpacing.x;
    }
    drawBracket(min, max);
    if(isCurrentBehind)
        ImGui::GetWindowDrawList()->AddRectFilled(
            {min.x, max.y - 1.0f}, max, ImGui::GetColorU32(ImGuiCol_NavHighlight));
    if(change)
        return drawChange(text, max.x - text.x, right);
    drawText(text, right, color(), "Before all changes");
    return true;
}

void HistoryView::Row::drawBracket(const ImVec2& min, const ImVec2& max) const {
    if(bracket == Bracket::None)
        return;
    const float fontSize = ImGui::GetFontSize();
    const float left = min.x + fontSize * BracketX, right = left + fontSize * BracketTick;
    const bool isFirst = bracket == Bracket::First || bracket == Bracket::Only;
    const bool isLast = bracket == Bracket::Last || bracket == Bracket::Only;
    const float top = min.y + (isFirst ? 3.0f : 0.0f), bottom = max.y - (isLast ? 3.0f : 0.0f);
    const ImU32 lineColor = ImGui::GetColorU32(ImGuiCol_TextDisabled);
    ImDrawList& list = *ImGui::GetWindowDrawList();
    list.AddRectFilled({left, top}, {left + 1.0f, bottom}, lineColor);
    if(isFirst)
        list.AddRectFilled({left, top}, {right, top + 1.0f}, lineColor);
    if(isLast)
        list.AddRectFilled({left, bottom - 1.0f}, {right, bottom}, lineColor);
}

/* The width is that of all rows, so that what they show is in columns, and the right end the row's */
bool HistoryView::Row::drawChange(
    const ImVec2& position, const float width, const float right) const {
    const float gap = ImGui::GetStyle().ItemSpacing.x;
    /* All kinds are words of six letters, but not every font gives all letters one width */
    const float pathX = position.x + ImGui::CalcTextSize("Remove").x + gap;
    const float valuesX = pathX + std::max(position.x + width - pathX, 0.0f) * PathShare;
    drawText(position, std::min(pathX - gap, right), color(), kindOf(*change));
    const float pathWidth = std::min(valuesX - gap, right) - pathX;
    const std::string path = shortPath(pathOf(*change), RowText);
    const std::string fittingPath = fittingEnd(path, pathWidth);
    drawText({pathX, position.y}, pathX + pathWidth, color(), fittingPath);
    const std::string values = valuesOf(*change, RowText);
    drawText({valuesX, position.y}, right, color(), values);
    return path.size() <= RowText && fittingPath.size() == path.size() &&
        values.size() <= RowText && ImGui::CalcTextSize(values.c_str()).x <= right - valuesX;
}

HistoryView::HistoryView(
    PluginManager::AbstractManager& manager, const Containers::StringView plugin):
    EditorView{manager, plugin} {}

HistoryView::~HistoryView() = default;

const char* HistoryView::title() const { return "History"; }

void HistoryView::draw() {
    if(ImGui::Begin(title()))
        drawContent();
    ImGui::End();
}

void HistoryView::drawContent() {
    if(!_application->changeManager)
        return ImGui::TextDisabled("No project is open.");
    ChangeManager& changes = *_application->changeManager;
    ImGui::SetNextItemWidth(-1.0f);
    ImGui::InputTextWithHint("##filter", "Filter by path", _filter, sizeof(_filter));
    _rows.update(changes, _filter);
    drawRows(changes);
    walk(changes);
}

void HistoryView::drawRows(const ChangeManager& changes) {
    const Containers::ScopeGuard endChild{ImGui::EndChild};
    if(!ImGui::BeginChild("rows"))
        return;
    followPosition(changes);
    readKeys(changes);
    ImGui::BeginDisabled(!isWalkable(changes));
    const Containers::ScopeGuard endDisabled{ImGui::EndDisabled};
    ImGuiListClipper clipper;
    clipper.Begin(int(_rows.size()), ImGui::GetTextLineHeightWithSpacing());
    while(clipper.Step())
        for(int i = clipper.DisplayStart; i < clipper.DisplayEnd; ++i)
            drawRow(changes, std::size_t(i));
}

HistoryView::Row HistoryView::rowAt(const ChangeManager& changes, const std::size_t row) const {
    Row out{};
    out.state = _rows.state(row);
    const std::size_t present = changes.appliedCount();
    out.isApplied = out.state <= present;
    out.isCurrent = out.state == present;
    out.isCurrentBehind = !out.isCurrent && _rows.rowOf(present) == row;
    out.isSaved = changes.isSavedStateKept() && changes.savedCount() == out.state;
    if(out.state == 0)
        return out;

    const Containers::ArrayView<const Change> list = changes.changes();
    out.change = &list[out.state - 1];
    const int group = out.change->group;
    const auto isIn = [&](const std::size_t state) {
        return state != 0 && state <= list.size() && list[state - 1].group == group;
    };
    /* One change alone needs no bracket, one whose neighbours aren't shown does */
    if(group < 0 || (!isIn(out.state - 1) && !isIn(out.state + 1)))
        return out;
    const bool isAfter = isIn(_rows.state(row - 1));
    const bool isBefore = row + 1 != _rows.size() && isIn(_rows.state(row + 1));
    out.bracket = isAfter ? isBefore ? Row::Bracket::Middle : Row::Bracket::Last
        : isBefore        ? Row::Bracket::First
                          : Row::Bracket::Only;
    return out;
}

void HistoryView::drawRow(const ChangeManager& changes, const std::size_t number) {
    const Row row = rowAt(changes, number);
    ImGui::PushID(int(row.state));
    const Containers::ScopeGuard popId{ImGui::PopID};
    /* The style's own colour of a selected row is hardly more than that of a hovered one */
    if(row.isCurrent) {
        ImGui::PushStyleColor(ImGuiCol_Header, ImGui::GetStyleColorVec4(ImGuiCol_TabActive));
        ImGui::PushStyleColor(
            ImGuiCol_HeaderHovered, ImGui::GetStyleColorVec4(ImGuiCol_TabHovered));
    }
    if(ImGui::Selectable("##change", row.isCurrent)) {
        _wantedState = row.state;
        _isWalkWanted = true;
    }
    ImGui::PopStyleColor(row.isCurrent ? 2 : 0);
    if(!row.draw() && ImGui::IsItemHovered(ImGuiHoveredFlags_AllowWhenDisabled))
        drawTooltip(*row.change);
}

void HistoryView::followPosition(const ChangeManager& changes) {
    const std::size_t row = _rows.rowOf(changes.appliedCount());
    if(row == _followedRow)
        return;
    _followedRow = row;
    const float height = ImGui::GetTextLineHeightWithSpacing();
    const float top = float(row) * height, bottom = top + height;
    const float shown = ImGui::GetWindowHeight();
    if(top < ImGui::GetScrollY())
        ImGui::SetScrollY(top);
    else if(bottom > ImGui::GetScrollY() + shown)
        ImGui::SetScrollY(bottom - shown);
}

void HistoryView::readKeys(const ChangeManager& changes) {
    /* With Dear ImGui's own keyboard navigation the arrows go from row to row without a click */
    if(!ImGui::IsWindowFocused() || ImGui::IsAnyItemActive() || ImGui::GetIO().NavActive ||
        !isWalkable(changes))
        return;
    const std::size_t present = changes.appliedCount();
    const std::size_t row = _rows.rowOf(present);
    if(isPressed(ImGuiKey_UpArrow) && present != 0) {
        /* A group is left as a whole, and what isn't shown is passed by */
        const std::size_t before = stateBefore(changes, present);
        _wantedState = _rows.state(_rows.rowOf(before));
        _isWalkWanted = true;
    } else if(isPressed(ImGuiKey_DownArrow) && row + 1 < _rows.size()) {
        _wantedState = _rows.state(row + 1);
        _isWalkWanted = true;
    }
}

void HistoryView::walk(ChangeManager& changes) {
    if(!_isWalkWanted)
        return;
    _isWalkWanted = false;
    const std::string problem = walkHistory(changes, _wantedState);
    if(!problem.empty())
        log(LogLevel::Warn, ("History: " + problem).c_str());
}

}
