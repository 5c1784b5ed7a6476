#ifndef Quillmere_editor_Test_ConsolePicture_h
#define Quillmere_editor_Test_ConsolePicture_h

/** @file
@brief Where the console lies in a picture of 1280x720, below the outline, and how its lines look
*/

namespace QuillmereEngine {

constexpr int FirstRowY = 376, RowHeight = 16;
constexpr int CheckboxY = 356, ErrorsX = 244, ServerTabX = 98, ConsoleTabX = 30;

constexpr int red(const unsigned color) { return int(color >> 16 & 0xff); }
constexpr int green(const unsigned color) { return int(color >> 8 & 0xff); }
constexpr int blue(const unsigned color) { return int(color & 0xff); }

/* Of text the strokes' middles have the full colour or nearly so */
constexpr bool isError(const unsigned color) {
    return red(color) > 170 && green(color) < 40 && blue(color) < 40;
}

constexpr bool isWarning(const unsigned color) {
    return red(color) > 170 && green(color) > 130 && blue(color) < 40;
}

}

#endif
