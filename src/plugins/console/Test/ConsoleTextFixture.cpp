#include "plugins/console/Test/ConsoleTextFixture.h"

#include "plugins/console/ConsoleTextEx.h"

using namespace Corrade;

namespace QuillmereEngine { namespace Testing {

ConsoleTextFixture::ConsoleTextFixture(): input{frame, [this] { draw(); }} {
    ImGui::GetStyle().WindowPadding = {0.0f, 0.0f};
    ImGui::GetStyle().WindowBorderSize = 0.0f;
}

void ConsoleTextFixture::append(const std::string& line, const std::string& tag) {
    const std::string prefix = tag.empty() ? "" : "[2024-03-07 09:05:02.045]" + tag;
    lines.append((prefix + line).c_str(), -1);
}

void ConsoleTextFixture::appendNumbers(const int count) {
    for(int i = 0; i != count; ++i)
        append(std::to_string(i));
}

void ConsoleTextFixture::draw() {
    if(textFollowsLines) {
        const Containers::Array<char> joined = join(lines, '\n');
        text = joined.isEmpty() ? "" : joined.data();
    }
    ImGui::SetNextWindowPos(ImVec2{0.0f, 0.0f});
    ImGui::SetNextWindowSize(ImVec2{600.0f, 400.0f});
    ImGui::Begin("Window", nullptr,
        ImGuiWindowFlags_NoTitleBar | ImGuiWindowFlags_NoMove | ImGuiWindowFlags_NoResize);
    id = ImGui::GetID(label);
    if(isLogged)
        ImGui::LogToBuffer();
    result = ConsoleTextEx(label, lines, text.c_str(), int(text.size()) + (sizeCountsNul ? 1 : 0),
        levels.info, levels.warnings, levels.errors, filtersChanged, scrollToBottom, size, flags);
    if(isLogged) {
        logged = frame.context()->LogBuffer.c_str();
        ImGui::LogFinish();
    }
    otherPosition = ImGui::GetCursorScreenPos();
    ImGui::InputText("other", otherText, sizeof(otherText));
    buttonPosition = ImGui::GetCursorScreenPos();
    ImGui::Button("button");
    ImGui::End();
}

/* The mouse is taken to be as much lower as the padding is high, once more than where the text is */
ImVec2 ConsoleTextFixture::at(const int row, const int column) const {
    return {FramePadding.x + CharacterWidth * (float(column) + 0.25f),
        FramePadding.y * 2.0f + FontSize * (float(row) + 0.5f)};
}

void ConsoleTextFixture::activate(const int row, const int column) {
    input.idle(2);
    input.click(at(row, column));
}

void ConsoleTextFixture::select(
    const int fromRow, const int fromColumn, const int toRow, const int toColumn) {
    input.idle(2);
    input.drag(at(fromRow, fromColumn), at(toRow, toColumn));
    input.idle(30);
}

ImGuiWindow* ConsoleTextFixture::child() const {
    for(ImGuiWindow* const window: frame.context()->Windows)
        if(window->ChildId == id)
            return window;
    return nullptr;
}

std::vector<DrawnQuad> ConsoleTextFixture::selection() const {
    return drawnRectangles(ImGui::GetColorU32(ImGuiCol_TextSelectedBg), "##text");
}

std::vector<DrawnQuad> ConsoleTextFixture::dimmedSelection() const {
    return drawnRectangles(ImGui::GetColorU32(ImGuiCol_TextSelectedBg, 0.6f), "##text");
}

}}
