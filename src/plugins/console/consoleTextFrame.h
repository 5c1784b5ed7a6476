#ifndef Quillmere_plugins_console_consoleTextFrame_h
#define Quillmere_plugins_console_consoleTextFrame_h

#include <cstddef>

#include <imgui.h>
#include <imgui_internal.h>

#include "common/StringArrayView.h"
#include "plugins/console/WideText.h"
#include "plugins/console/shownText.h"

/** @file
@brief What one frame of @ref ConsoleTextEx() knows, and the steps it's made of, in their order
*/

namespace QuillmereEngine {

/** @brief Filled step by step; nothing of it survives the frame */
struct ConsoleTextFrame {
    /** @{ @name What the caller gave */
    const StringArrayView& lines;
    const char* text;
    /** As given */
    int textSize;
    /** Greatest length that's looked at, so that nothing counted in int can overflow */
    int maxTextSize;
    ShownLevels levels;
    bool filtersChanged;
    ImGuiInputTextFlags flags;
    /** @} */

    /** @{ @name Where it lies */
    ImGuiContext& context;
    ImGuiWindow* window;
    ImGuiID id;
    ImRect frame;
    ImVec2 frameSize;
    ImGuiItemStatusFlags itemStatus = 0;
    /** Holds the text and its scrollbar */
    ImGuiWindow* child = nullptr;
    /** Of the frame without the scrollbar */
    ImVec2 innerSize{};
    /** Left, top, right, bottom of what's drawn */
    ImVec4 clip{};
    /** Upper left corner of the first line, moves when the child is scrolled */
    ImVec2 origin{};
    /** @} */

    /** @{ @name What the user does */
    bool isHovered = false;
    /** Whether the text takes the focus in this frame */
    bool isMadeActive = false;
    /** Whether the edit state is set up anew in this frame */
    bool isInitialized = false;
    /** Whether the text loses the focus at the end of this frame */
    bool isReleased = false;
    /** @} */

    /** @{ @name What's to be shown of it */
    /** The context's edit state, null while it belongs to somebody else */
    ImGuiInputTextState* state = nullptr;
    /** The edit state's copy of the text, up to date while there's a cursor or a selection */
    WideText wideText{};
    bool hasCursor = false;
    bool hasSelection = false;
    /** Bytes in front of the text's NUL */
    std::size_t textLength = 0;
    int rowCount = 1;
    float contentHeight = 0.0f;
    /** @} */

    bool isActive() const { return context.ActiveId == id; }
};

/** @brief Who the edit state belongs to, from now on and for how long */
void updateActivation(ConsoleTextFrame& frame);

/** @brief Bring the edit state's copy of the text up to date if it's going to be used */
void updateText(ConsoleTextFrame& frame);

/** @brief Mouse and keys of an active text */
void handleInput(ConsoleTextFrame& frame);

/** @brief Size of the content, and scrolling to where the cursor went */
void layOutText(ConsoleTextFrame& frame);

/** @brief The selection, then the lines over it */
void drawText(const ConsoleTextFrame& frame);

/**
@brief Width of a piece of a row in pixels
@param begin, end   Characters without a newline. Carriage returns take no room.
*/
float textWidth(const WideText::Character* begin, const WideText::Character* end);

}

#endif
