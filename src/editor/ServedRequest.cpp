#include "editor/ServedRequest.h"

#include <algorithm>
#include <cstdio>

namespace QuillmereEngine {

namespace {

constexpr std::size_t MaxShownBytes = 1000;
/* The longest registered one has 17 */
constexpr std::size_t MaxMethodSize = 32;

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

bool isMethod(const std::string_view text) {
    static constexpr std::string_view Marks = "!#$%&'*+-.^_`|~";
    return !text.empty() && text.size() <= MaxMethodSize &&
        std::all_of(text.begin(), text.end(), [](const char c) {
            return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                Marks.find(c) != std::string_view::npos;
        });
}

std::string_view takeWord(std::string_view& line) {
    const std::size_t size = std::min(line.find(' '), line.size());
    const std::string_view out = line.substr(0, size);
    line.remove_prefix(std::min(size + 1, line.size()));
    return out;
}

}

LogLevel requestLevel(const int status) {
    if(status >= 500)
        return LogLevel::Error;
    return status >= 400 || status == 0 ? LogLevel::Warn : LogLevel::Info;
}

std::string requestMessage(const ServedRequest& request) {
    std::string_view line = request.line;
    while(!line.empty() && (line.back() == '\n' || line.back() == '\r'))
        line.remove_suffix(1);
    std::string_view method = takeWord(line);
    std::string_view path = takeWord(line);
    if(!isMethod(method))
        method = path = {};

    char numbers[64];
    std::snprintf(numbers, sizeof(numbers), " %llu bytes %.1f ms",
        static_cast<unsigned long long>(request.bytes), double(request.duration.count()) / 1000.0);
    return (method.empty() ? "-" : std::string{method}) + " " +
        (path.empty() ? "-" : escapedForLog(path)) + " " +
        (request.status ? std::to_string(request.status) : "-") + numbers +
        (request.isBrokenOff ? ", broken off" : "");
}

std::string escapedForLog(const std::string_view text) {
    std::string out;
    std::size_t i = 0;
    while(i != text.size() && i < MaxShownBytes) {
        const Decoded decoded = decode(text.substr(i));
        const std::size_t size = std::max<std::size_t>(decoded.size, 1);
        if(decoded.size == 0 || (decoded.size == 1 && isHidden(decoded.character)))
            appendEscaped(out, "\\x%02x", std::uint8_t(text[i]));
        else if(decoded.character == '\\')
            out += "\\\\";
        else if(isHidden(decoded.character))
            appendEscaped(out, "\\u{%x}", unsigned(decoded.character));
        else
            out += text.substr(i, size);
        i += size;
    }
    if(i != text.size())
        out += "\\...(" + std::to_string(text.size() - i) + "_more)";
    return out;
}

}
