#include "plugins/console/WideText.h"

#include <algorithm>
#include <cstdint>

#include <imgui.h>
#include <imgui_internal.h>

#include "common/blockReserve.h"

using namespace Corrade;

namespace QuillmereEngine {

static_assert(sizeof(ImWchar) == sizeof(WideText::Character), "expected 16-bit characters");

namespace {

/* Characters between two entries of the index. A small part of a frame's time to scan, and an index
   that's a thousandth of the text. */
constexpr int ChunkSize = 4096;
/* Characters that are converted at once if they're all ASCII */
constexpr int BlockSize = 64;

/* At most 65535 characters, so that the count fits into 16 bits and the loop into vectors */
int countNewlines(const WideText::Character* const begin, const WideText::Character* const end) {
    WideText::Character count = 0;
    for(const WideText::Character* i = begin; i != end; ++i)
        count = WideText::Character(count + (*i == '\n'));
    return count;
}

/* Where the conversion stands in the text */
struct Input {
    const char* next;
    const char* end;

    bool isAtEnd() const { return next == end || *next == '\0'; }
};

/* Writes BlockSize characters whatever it returns */
bool widenAscii(const char* const in, WideText::Character* const out) {
    unsigned char bits = 0;
    unsigned char zeroCount = 0;
    for(int i = 0; i != BlockSize; ++i) {
        const auto byte = static_cast<unsigned char>(in[i]);
        bits = static_cast<unsigned char>(bits | byte);
        zeroCount = static_cast<unsigned char>(zeroCount + (byte == 0));
        out[i] = byte;
    }
    return !(bits & 0x80) && !zeroCount;
}

/* Dear ImGui's decoder, told where the text ends: without that it takes a sequence to be as long
   as its first byte says and skips the text's NUL where the sequence is cut off */
WideText::Character decode(Input& in) {
    const auto byte = static_cast<unsigned char>(*in.next);
    if(byte < 0x80) {
        ++in.next;
        return byte;
    }
    const char* end = in.next;
    while(end - in.next != 4 && end != in.end && *end != '\0')
        ++end;
    unsigned character = 0;
    in.next += ImTextCharFromUtf8(&character, in.next, end);
    return WideText::Character(character);
}

/* Gives the end of what was written, which is @p outEnd unless the text ends */
WideText::Character* convertChunk(
    Input& in, WideText::Character* out, WideText::Character* const outEnd) {
    while(out != outEnd && !in.isAtEnd()) {
        if(outEnd - out >= BlockSize && in.end - in.next >= BlockSize && widenAscii(in.next, out)) {
            in.next += BlockSize;
            out += BlockSize;
            continue;
        }
        /* Where one character isn't ASCII, its neighbours aren't either */
        for(int i = 0; i != BlockSize && out != outEnd && !in.isAtEnd(); ++i)
            *out++ = decode(in);
    }
    return out;
}

}

WideText::WideText(Character* const out, const char* const text, const int size):
    _text{out},
    _newlinesBefore{reserveArray<std::size_t>(std::size_t(size) / ChunkSize + 1)} {
    Input in{text, text + size};
    Character* chunk = out;
    Character* chunkEnd = out;
    for(std::size_t i = 0;; ++i) {
        _newlinesBefore[i] = std::size_t(_newlineCount);
        chunkEnd = convertChunk(in, chunk, chunk + std::min(ChunkSize, size - int(chunk - out)));
        _newlineCount += countNewlines(chunk, chunkEnd);
        if(chunkEnd - chunk != ChunkSize)
            break;
        chunk = chunkEnd;
    }
    *chunkEnd = 0;
    _size = int(chunkEnd - out);
    _byteCount = int(in.next - text);
}

int WideText::rowOf(const int index) const {
    if(!_text)
        return 0;
    const int chunk = index / ChunkSize;
    return int(_newlinesBefore[std::size_t(chunk)]) +
        countNewlines(_text + chunk * ChunkSize, _text + index);
}

int WideText::rowBegin(const int row) const {
    if(row == 0)
        return 0;
    /* The chunk with the newline that ends the row before: the last one with fewer in front */
    const std::size_t* const begin = _newlinesBefore.data();
    const std::size_t* const end = begin + _size / ChunkSize + 1;
    const auto chunk = std::lower_bound(begin, end, std::size_t(row)) - 1 - begin;
    int remaining = row - int(begin[chunk]);
    const Character* character = _text + chunk * ChunkSize;
    while(remaining)
        remaining -= *character++ == '\n';
    return int(character - _text);
}

int WideText::rowEndFrom(const int index) const {
    return int(std::find(_text + index, _text + _size, '\n') - _text);
}

}
