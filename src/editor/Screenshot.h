#ifndef Quillmere_editor_Screenshot_h
#define Quillmere_editor_Screenshot_h

#include <string>
#include <vector>

namespace QuillmereEngine {

/** @brief Picture with three bytes a pixel, red first, rows from the top */
struct Image {
    int width = 0;
    int height = 0;
    /** `3*width*height` bytes */
    std::vector<unsigned char> pixels;
};

/**
@brief Turn a picture as OpenGL reads it, rows from the bottom, the right way up
*/
void flipRows(Image& image);

/**
@brief Write an 8-bit RGB PNG file
@return Whether it was written. If not, a line on Corrade's error output says why, and a file of
    that name is as it was before.
*/
bool writePng(const std::string& path, const Image& image);

}

#endif
