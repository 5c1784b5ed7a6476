#include "plugins/console/measureText.h"

namespace QuillmereEngine {

namespace {

/* Below 256, so that the counts in a block fit into bytes: then the compiler makes vector
   instructions of whichever processor of the loop */
constexpr std::size_t BlockSize = 240;

struct BlockMeasure {
    unsigned char zeroCount;
    unsigned char newlineCount;
};

BlockMeasure measureBlock(const char* const block) {
    unsigned char zeroCount = 0;
    unsigned char newlineCount = 0;
    for(std::size_t i = 0; i != BlockSize; ++i) {
        zeroCount = static_cast<unsigned char>(zeroCount + (block[i] == '\0'));
        newlineCount = static_cast<unsigned char>(newlineCount + (block[i] == '\n'));
    }
    return {zeroCount, newlineCount};
}

}

TextMeasure measureText(const char* const text, const std::size_t size) {
    TextMeasure out{0, 0};
    while(size - out.length >= BlockSize) {
        const BlockMeasure block = measureBlock(text + out.length);
        if(block.zeroCount)
            break;
        out.length += BlockSize;
        out.newlineCount += block.newlineCount;
    }
    for(; out.length != size && text[out.length] != '\0'; ++out.length)
        out.newlineCount += text[out.length] == '\n';
    return out;
}

}
