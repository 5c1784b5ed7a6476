/* quillmere-random-input SEED FRAMES WIDTH HEIGHT: prints a replay file of random input */

#include <charconv>
#include <cstdio>
#include <cstring>

#include "editor/Test/randomInput.h"

namespace {

template<class Number> bool read(const char* const text, Number& out) {
    const char* const end = text + std::strlen(text);
    const auto result = std::from_chars(text, end, out);
    return result.ec == std::errc{} && result.ptr == end && out != Number{};
}

}

int main(const int argc, char** const argv) {
    std::uint32_t seed;
    unsigned long frames;
    QuillmereEngine::WorkArea area;
    if(argc != 5 || !read(argv[1], seed) || !read(argv[2], frames) || !read(argv[3], area.width) ||
        !read(argv[4], area.height) || area.width < 0 || area.height < 0) {
        std::fputs(
            "Usage: quillmere-random-input SEED FRAMES WIDTH HEIGHT, numbers above 0\n", stderr);
        return 2;
    }
    const std::string out = QuillmereEngine::randomInput(seed, frames, area);
    return std::fwrite(out.data(), 1, out.size(), stdout) == out.size() && !std::fflush(stdout) ? 0
                                                                                                : 1;
}
