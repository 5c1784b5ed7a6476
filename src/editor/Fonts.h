#ifndef Quillmere_editor_Fonts_h
#define Quillmere_editor_Fonts_h

#include <string>
#include <vector>

struct ImFontAtlas;

namespace QuillmereEngine {

/** @brief A font that is looked for in several places, as distributions differ */
struct FontFile {
    /** For messages */
    const char* name;
    std::vector<std::string> paths;
    /** Pairs of first and last code point, then a 0. Lives as long as the atlas. */
    const unsigned short* ranges;
    /** In pixels, before the scale */
    float size;
};

/** @brief The text font, a second one for the signs it lacks, and Font Awesome's icons */
std::vector<FontFile> editorFonts();

/**
@brief Build the editor's font
@param atlas    Cleared before
@param fonts    Each only adds what those before it don't have
@param scale    Pixels of the screen per pixel of the interface
@return What couldn't be used, one line each

When not even the first font is there, Dear ImGui's own takes its place.
*/
std::vector<std::string> buildFonts(
    ImFontAtlas& atlas, const std::vector<FontFile>& fonts, float scale);

}

#endif
