#ifndef Quillmere_plugins_console_Test_ConsoleTextFixture_h
#define Quillmere_plugins_console_Test_ConsoleTextFixture_h

#include <string>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "common/StringArrayView.h"
#include "plugins/console/shownText.h"
#include "testing/HeadlessFrame.h"
#include "testing/HeadlessFrameDrawing.h"
#include "testing/InputDriver.h"

namespace QuillmereEngine { namespace Testing {

constexpr ImU32 ErrorColor = 0xff0000ff;
constexpr ImU32 WarningColor = 0xff00ccff;

/**
@brief A console text in a window of its own, with a text input and a button below

The text's frame has its upper left corner at the origin. All characters of the built-in font are
as wide, so places in the text can be calculated.
*/
class ConsoleTextFixture: public testing::Test {
protected:
    static constexpr float FontSize = 13.0f;
    static constexpr float CharacterWidth = 7.0f;
    inline static const ImVec2 FramePadding{4.0f, 3.0f};

    ConsoleTextFixture();

    /** @brief Append a line, tagged if @p tag isn't empty. Tagged lines begin with 25 characters. */
    void append(const std::string& line, const std::string& tag = {});

    /** @brief Append lines of which each consists of its number */
    void appendNumbers(int count);

    void draw();

    /** @brief Middle of the left half of a character, as far as the mouse is concerned */
    ImVec2 at(int row, int column) const;

    /** @brief Click and so activate the text */
    void activate(int row = 0, int column = 0);

    /** @brief Select by dragging */
    void select(int fromRow, int fromColumn, int toRow, int toColumn);

    ImGuiInputTextState& state() const { return frame.context()->InputTextState; }
    const ImStb::STB_TexteditState& textEdit() const { return state().Stb; }
    ImGuiWindow* child() const;
    bool isActive() const { return frame.context()->ActiveId == id; }
    bool isOwned() const { return state().ID == id; }

    /** @brief Rectangles of the selection, as while there's a cursor or dimmed */
    std::vector<DrawnQuad> selection() const;
    std::vector<DrawnQuad> dimmedSelection() const;

    HeadlessFrame frame;
    InputDriver input;
    StringArray lines;
    /** What's passed as text; by default all lines joined */
    std::string text;
    bool textFollowsLines = true;
    /** Whether the size that's passed counts the text's NUL */
    bool sizeCountsNul = true;
    ShownLevels levels{true, true, true};
    bool filtersChanged = false;
    bool scrollToBottom = false;
    bool result = true;
    /** Whether Dear ImGui captures what's drawn, and what it captured of the text */
    bool isLogged = false;
    std::string logged;
    int flags = 0;
    ImVec2 size{400.0f, 200.0f};
    const char* label = "##text";
    char otherText[32]{};

    ImGuiID id = 0;
    ImVec2 buttonPosition{};
    ImVec2 otherPosition{};
};

}}

#endif
