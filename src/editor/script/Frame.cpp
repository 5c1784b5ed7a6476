#include "editor/script/Frame.h"

#include <cstdint>

namespace QuillmereEngine {

namespace {

constexpr std::size_t HeaderSize = 4;

std::uint32_t sizeAt(const char* const bytes) {
    std::uint32_t out = 0;
    for(std::size_t i = 0; i != HeaderSize; ++i)
        out |= std::uint32_t(static_cast<unsigned char>(bytes[i])) << (8 * i);
    return out;
}

}

std::string encodedFrame(const std::string_view content) {
    std::string out;
    out.reserve(HeaderSize + content.size());
    for(std::size_t i = 0; i != HeaderSize; ++i)
        out += char(std::uint32_t(content.size()) >> (8 * i) & 0xff);
    return out += content;
}

std::optional<std::string> FrameReader::next() {
    if(!_problem.empty() || _bytes.size() - _begin < HeaderSize)
        return {};
    const std::size_t size = sizeAt(_bytes.data() + _begin);
    if(size > _maxSize) {
        _problem = "a message of " + std::to_string(size) + " bytes, the most is " +
            std::to_string(_maxSize);
        return {};
    }
    if(_bytes.size() - _begin - HeaderSize < size)
        return {};

    std::string out = _bytes.substr(_begin + HeaderSize, size);
    _begin += HeaderSize + size;
    /* Not after each of many small frames, which would move the rest every time */
    if(_begin == _bytes.size() || _begin > _bytes.size() / 2) {
        _bytes.erase(0, _begin);
        _begin = 0;
    }
    return out;
}

}
