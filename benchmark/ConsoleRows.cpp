#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "LogLines.h"
#include "Ratio.h"
#include "common/StringArrayView.h"
#include "plugins/console/Test/ConsolePanel.h"
#include "plugins/console/shownText.h"
#include "testing/HeadlessFrame.h"
#include "testing/HeadlessFrameDrawing.h"
#include "testing/InputDriver.h"

namespace QuillmereBenchmark {

using namespace Corrade;
using namespace QuillmereEngine;
using namespace QuillmereEngine::Testing;

namespace {

constexpr ImU32 ErrorColor = 0xff0000ff;

enum class Scroll { ToEnd, ToTop };

/* What both sides of a row have in common: something that's drawn in the whole of the display, and
   hands to its input */
class Side {
public:
    virtual ~Side() = default;
    virtual InputDriver& input() = 0;
    virtual ImGuiWindow* textWindow() = 0;
};

class PanelSide: public Side {
public:
    explicit PanelSide(const StringArrayView& lines) {
        _panel.consoleLines() = filter(lines, [](const char*) { return true; });
        _panel.settle();
    }

    InputDriver& input() override { return _panel.input; }
    ImGuiWindow* textWindow() override { return _panel.textWindow(); }

private:
    ConsolePanel _panel;
};

class InputTextSide: public Side {
public:
    explicit InputTextSide(Containers::Array<char> text):
        _text{std::move(text)},
        _input{_frame, [this] { draw(); }} {
        _input.idle(4);
    }

    InputDriver& input() override { return _input; }
    ImGuiWindow* textWindow() override { return findWindow("/text_"); }

private:
    void draw() {
        ImGui::SetNextWindowPos(ImVec2{0.0f, 0.0f});
        ImGui::SetNextWindowSize(_frame.io().DisplaySize);
        ImGui::Begin("Text");
        ImGui::InputTextMultiline(
            "text", _text.data(), _text.size(), ImVec2{-1.0f, -1.0f}, ImGuiInputTextFlags_ReadOnly);
        ImGui::End();
    }

    Containers::Array<char> _text;
    HeadlessFrame _frame;
    InputDriver _input;
};

/* Each of these gives whether the side is then as it's to be */

bool scroll(Side& side, const Scroll where) {
    ImGuiWindow* const window = side.textWindow();
    const float y = where == Scroll::ToTop ? 0.0f : window->ScrollMax.y;
    ImGui::SetScrollY(window, y);
    side.input().idle(3);
    return window->Scroll.y == y && window->ScrollMax.y > 0.0f && !ImGui::IsAnyItemActive();
}

/* Clicks the box whose label is the first with an E */
bool hideErrors(Side& side) {
    const std::vector<DrawnQuad> glyphs = drawnQuads("Console");
    const auto letter = std::find_if(
        glyphs.begin(), glyphs.end(), [](const DrawnQuad& i) { return i.glyph == 'E'; });
    if(letter == glyphs.end() || drawnGlyphs(ErrorColor, "#console").empty())
        return false;
    side.input().click(letter->min);
    return drawnGlyphs(ErrorColor, "#console").empty();
}

bool selectAll(Side& side) {
    side.input().click(ImVec2{600.0f, 400.0f});
    side.input().type(ImGuiKey_A, ImGuiKeyModFlags_Ctrl);
    side.input().idle(3);
    const ImGuiInputTextState& text = ImGui::GetCurrentContext()->InputTextState;
    return ImGui::IsAnyItemActive() && text.CurLenW && text.Stb.select_start == 0 &&
        text.Stb.select_end == text.CurLenW;
}

using MakeSide = std::function<std::unique_ptr<Side>()>;

Body frames(MakeSide makeSide, std::function<bool(Side&)> prepare) {
    return [makeSide = std::move(makeSide), prepare = std::move(prepare)](benchmark::State& state) {
        const std::unique_ptr<Side> side = makeSide();
        if(!prepare(*side))
            state.SkipWithError("the interface isn't in the state that's to be measured");
        for([[maybe_unused]] auto _: state)
            side->input().idle();
    };
}

const char* variantName(const Scroll where) { return where == Scroll::ToEnd ? "end" : "top"; }

void addInactive(
    const std::string& size, const std::shared_ptr<const StringArray>& lines, const double most) {
    for(const Scroll where: {Scroll::ToEnd, Scroll::ToTop}) {
        const auto prepare = [where](Side& side) { return scroll(side, where); };
        addRow({"console/inactive/" + size,
            "ImGui::InputTextMultiline, inactive, scrolled to the same place", most,
            frames([lines] { return std::make_unique<PanelSide>(*lines); }, prepare),
            frames(
                [lines] { return std::make_unique<InputTextSide>(join(*lines, '\n')); }, prepare),
            variantName(where)});
    }
}

void addActive(const std::string& size, const std::shared_ptr<const StringArray>& lines) {
    addRow({"console/active/" + size, "ImGui::InputTextMultiline, active, all selected", 0.10,
        frames([lines] { return std::make_unique<PanelSide>(*lines); }, selectAll),
        frames(
            [lines] { return std::make_unique<InputTextSide>(join(*lines, '\n')); }, selectAll)});
}

void addFiltered(
    const std::string& size, const std::shared_ptr<const StringArray>& lines, const double most) {
    for(const Scroll where: {Scroll::ToEnd, Scroll::ToTop}) {
        addRow({"console/filtered/" + size,
            "ImGui::InputTextMultiline of the filtered text, inactive", most,
            frames([lines] { return std::make_unique<PanelSide>(*lines); },
                [where](Side& side) { return hideErrors(side) && scroll(side, where); }),
            frames(
                [lines] {
                    return std::make_unique<InputTextSide>(shownText(*lines, {false, true, true}));
                },
                [where](Side& side) { return scroll(side, where); }),
            variantName(where)});
    }
}

}

void addConsoleRows() {
    for(const bool isLarge: {false, true}) {
        const std::shared_ptr<const StringArray> lines = logLines(isLarge ? 1000000 : 100000);
        const std::string size = isLarge ? "1M" : "100k";
        addInactive(size, lines, isLarge ? 0.35 : 0.25);
        addActive(size, lines);
        addFiltered(size, lines, isLarge ? 0.70 : 0.40);
    }
}

}
