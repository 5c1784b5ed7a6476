#include "editor/escapedForLog.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <iterator>

namespace QuillmereEngine {

namespace {

constexpr std::size_t MaxShownBytes = 1000;

struct CharacterRange {
    char32_t first, last;
};

/* Blanks, controls, fillers and other characters without a shape of their own, those that change the
   direction of text, and those that never stand for text: what the Unicode Character Database 15 has
   as Zs, Cc, Cf, Zl, Zp, Default_Ignorable_Code_Point or Noncharacter_Code_Point. Sorted. */
constexpr CharacterRange Hidden[]{{0x00, 0x20}, {0x7f, 0xa0}, {0xad, 0xad}, {0x34f, 0x34f},
    {0x600, 0x605}, {0x61c, 0x61c}, {0x6dd, 0x6dd}, {0x70f, 0x70f}, {0x890, 0x891}, {0x8e2, 0x8e2},
    {0x115f, 0x1160}, {0x1680, 0x1680}, {0x17b4, 0x17b5}, {0x180b, 0x180f}, {0x2000, 0x200f},
    {0x2028, 0x202f}, {0x205f, 0x206f}, {0x2800, 0x2800}, {0x3000, 0x3000}, {0x3164, 0x3164},
    {0xfdd0, 0xfdef}, {0xfe00, 0xfe0f}, {0xfeff, 0xfeff}, {0xffa0, 0xffa0}, {0xfff0, 0xfffb},
    {0xfffe, 0xffff}, {0x110bd, 0x110bd}, {0x110cd, 0x110cd}, {0x13430, 0x1343f},
    {0x1bca0, 0x1bca3}, {0x1d173, 0x1d17a}, {0xe0000, 0x10ffff}};

bool isHidden(const char32_t character) {
    const auto* const range = std::lower_bound(std::begin(Hidden), std::end(Hidden), character,
        [](const CharacterRange& a, const char32_t b) { return a.last < b; });
    return (range != std::end(Hidden) && range->first <= character) ||
        (character & 0xfffe) == 0xfffe;
}

struct Decoded {
    char32_t character;
    /* 0 when it isn't UTF-8 */
    std::size_t size;
};

Decoded decode(const std::string_view text) {
    const auto byte = [text](const std::size_t i) { return std::uint8_t(text[i]); };
    const std::uint8_t first = byte(0);
    if(first < 0x80)
        return {first, 1};
    const std::size_t size = first >= 0xf0 ? 4 : first >= 0xe0 ? 3 : 2;
    if(first < 0xc2 || first > 0xf4 || text.size() < size)
        return {0, 0};
    char32_t out = first & (0x7fu >> size);
    for(std::size_t i = 1; i != size; ++i) {
        if((byte(i) & 0xc0) != 0x80)
            return {0, 0};
        out = out << 6 | (byte(i) & 0x3f);
    }
    constexpr char32_t Least[]{0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = out >= 0xd800 && out <= 0xdfff;
    return out < Least[size] || out > 0x10ffff || isSurrogate ? Decoded{0, 0} : Decoded{out, size};
}

void appendEscaped(std::string& out, const char* const format, const unsigned value) {
    char text[16];
    std::snprintf(text, sizeof(text), format, value);
    out += text;
}

void appendEscaped(std::string& out, const std::string_view text, const Decoded decoded) {
    if(decoded.size < 2)
        appendEscaped(out, "\\x%02x", std::uint8_t(text[0]));
    else
        appendEscaped(out, "\\u{%x}", unsigned(decoded.character));
}

/* Without those that letters and pictures are put together with */
bool isControl(const char32_t character) {
    return (character < 0x20 && character != '\t') || (character >= 0x7f && character < 0xa0) ||
        character == 0x61c || character == 0x200e || character == 0x200f ||
        (character >= 0x2028 && character <= 0x202e) ||
        (character >= 0x2066 && character <= 0x2069);
}

}

std::string escapedForLog(const std::string_view text) {
    std::string out;
    std::size_t i = 0;
    while(i != text.size() && i < MaxShownBytes) {
        const Decoded decoded = decode(text.substr(i));
        const std::size_t size = std::max<std::size_t>(decoded.size, 1);
        if(decoded.size == 0 || isHidden(decoded.character))
            appendEscaped(out, text.substr(i), decoded);
        else if(decoded.character == '\\')
            out += "\\\\";
        else
            out += text.substr(i, size);
        i += size;
    }
    if(i != text.size())
        out += "\\...(" + std::to_string(text.size() - i) + "_more)";
    return out;
}

std::string withoutControls(const std::string_view text) {
    std::string out;
    for(std::size_t i = 0; i != text.size();) {
        const Decoded decoded = decode(text.substr(i));
        const std::size_t size = std::max<std::size_t>(decoded.size, 1);
        if(decoded.size == 0 || isControl(decoded.character))
            appendEscaped(out, text.substr(i), decoded);
        else
            out += text.substr(i, size);
        i += size;
    }
    return out;
}

}
