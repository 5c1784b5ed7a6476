#include "editor/Screenshot.h"

#include <algorithm>
#include <cstddef>

#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/DebugStl.h>

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#include <stb_image_write.h>

#include "editor/files.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

constexpr int Channels = 3;

void append(void* const out, void* const data, const int size) {
    static_cast<std::string*>(out)->append(static_cast<char*>(data), std::size_t(size));
}

}

void flipRows(Image& image) {
    const auto rowSize = std::ptrdiff_t(image.width) * Channels;
    for(int top = 0, bottom = image.height - 1; top < bottom; ++top, --bottom)
        std::swap_ranges(image.pixels.begin() + top * rowSize,
            image.pixels.begin() + (top + 1) * rowSize, image.pixels.begin() + bottom * rowSize);
}

bool writePng(const std::string& path, const Image& image) {
    std::string png;
    std::string problem = "can't encode it";
    if(stbi_write_png_to_func(append, &png, image.width, image.height, Channels,
           image.pixels.data(), image.width * Channels))
        problem = writeWholeFile(path, png);
    if(!problem.empty())
        Utility::Error{} << "quillmere-editor: can't write screenshot" << path
                         << Utility::Error::nospace << ":" << problem;
    return problem.empty();
}

}
