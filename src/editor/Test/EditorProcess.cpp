#include "EditorProcess.h"

#include <algorithm>

#include <gtest/gtest.h>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_PNG
#include <stb_image.h>

#include "Process.h"

namespace QuillmereEngine {

std::vector<std::string> editorCommand(std::vector<std::string> arguments, const WindowMode mode) {
    if(mode == WindowMode::Headless)
        arguments.insert(arguments.begin(), "--headless");
    arguments.insert(arguments.begin(), QUILLMERE_EDITOR_PROGRAM);
    return arguments;
}

EditorRun runEditorProgram(
    std::vector<std::string> arguments, const std::string& input, const WindowMode mode) {
    Process editor{editorCommand(std::move(arguments), mode)};
    editor.write(input);
    const int status = editor.wait();
    return {status, editor.out(), editor.error()};
}

unsigned Picture::at(const int x, const int y) const {
    const unsigned char* const pixel = pixels.data() + std::ptrdiff_t(y * width + x) * channels;
    return unsigned(pixel[0]) << 16 | unsigned(pixel[1]) << 8 | pixel[2];
}

std::pair<int, int> Picture::rows(bool (*const looksSo)(unsigned)) const {
    int first = height, end = 0;
    for(int y = 0; y < height; ++y)
        for(int x = 0; x < width; ++x)
            if(looksSo(at(x, y))) {
                first = std::min(first, y);
                end = y + 1;
            }
    return first < end ? std::pair{first, end} : std::pair{0, 0};
}

Picture readPicture(const std::string& path) {
    Picture out;
    stbi_uc* const pixels = stbi_load(path.c_str(), &out.width, &out.height, &out.channels, 0);
    EXPECT_TRUE(pixels) << path;
    if(pixels)
        out.pixels.assign(pixels, pixels + std::ptrdiff_t(out.width) * out.height * out.channels);
    stbi_image_free(pixels);
    return out;
}

}
