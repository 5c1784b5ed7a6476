#ifndef Quillmere_testing_HeadlessFrameDrawing_h
#define Quillmere_testing_HeadlessFrameDrawing_h

#include <optional>
#include <string>
#include <vector>

#include <imgui.h>

/** @file
@brief What the last frame drew, read back from Dear ImGui's draw data
*/

namespace QuillmereEngine { namespace Testing {

/** @brief An upright rectangle made of two triangles: a glyph or a filled rectangle */
struct DrawnQuad {
    ImVec2 min, max;
    ImU32 color;
    /** Left, top, right, bottom of what can be seen of it */
    ImVec4 clip;
    /** The character, or 0 for a filled rectangle */
    ImWchar glyph;
};

/** @brief A row of glyphs of one colour */
struct DrawnText {
    /** UTF-8 without spaces, which draw nothing */
    std::string text;
    ImU32 color;
    /** Upper left corner of the first glyph */
    ImVec2 position;
};

/**
@brief All rectangles and glyphs of a frame in the order in which they're drawn
@param window   Name of the window they belong to, as given to `Begin()` or `BeginChild()`. Empty
    for all windows.
*/
std::vector<DrawnQuad> drawnQuads(const std::string& window = {});

/** @brief Filled rectangles of one colour */
std::vector<DrawnQuad> drawnRectangles(ImU32 color, const std::string& window = {});

/** @brief Glyphs of one colour */
std::vector<DrawnQuad> drawnGlyphs(ImU32 color, const std::string& window = {});

/**
@brief Glyphs that follow one another in a line of text, put together

A new text begins where the colour changes or a glyph begins left of the one before, behind a gap
wider than two lines are high, or in another line.
*/
std::vector<DrawnText> drawnTexts(const std::string& window = {});

/**
@brief Where a text was drawn
@param text     ASCII without spaces
@param window   See @ref drawnQuads()
@return Upper left corner of the first glyph of the last place with that text, also as a part of a
    longer one. Nothing if there's none.
*/
std::optional<ImVec2> placeOfText(const std::string& text, const std::string& window = {});

/** @brief Smallest rectangle around all of them: left, top, right, bottom. Zeros for none. */
ImVec4 boundingBox(const std::vector<DrawnQuad>& quads);

/** @brief All vertices of a window's list, to be compared with those of another frame */
std::vector<ImDrawVert> drawnVertices(const std::string& window = {});

}}

#endif
