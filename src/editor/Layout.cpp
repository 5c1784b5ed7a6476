#include "editor/Layout.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace QuillmereEngine {

namespace {

constexpr std::string_view AreaSection = "[Quillmere][WorkArea]";
constexpr std::string_view WindowSection = "[Window]";
constexpr std::string_view PositionKey = "Pos=";
constexpr std::string_view SizeKey = "Size=";
constexpr int LeastSize = 32;

bool startsWith(const std::string_view text, const std::string_view start) {
    return text.substr(0, start.size()) == start;
}

std::string_view takeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

/* "12,34" */
bool parsePair(const std::string_view text, int& first, int& second) {
    const char* const end = text.data() + text.size();
    const auto [comma, error] = std::from_chars(text.data(), end, first);
    return error == std::errc{} && comma != end && *comma == ',' &&
        std::from_chars(comma + 1, end, second).ec == std::errc{};
}

std::string pair(const std::string_view key, const int first, const int second) {
    return std::string{key} + std::to_string(first) + "," + std::to_string(second) + "\n";
}

WorkArea areaOf(std::string_view settings) {
    WorkArea out;
    bool isArea = false;
    while(!settings.empty()) {
        const std::string_view line = takeLine(settings);
        if(startsWith(line, "["))
            isArea = line == AreaSection;
        else if(isArea && startsWith(line, SizeKey))
            if(!parsePair(line.substr(SizeKey.size()), out.width, out.height))
                return {};
    }
    return out;
}

int scaledEdge(const int edge, const int from, const int to) {
    /* Settings are a user's file and may hold anything */
    const double scaled = std::round(double(edge) * to / from);
    return int(std::clamp(scaled, -32768.0, 32767.0));
}

/* A window's section with its place and size scaled. Takes it off the text. */
std::string fittedSection(std::string_view& settings, const WorkArea from, const WorkArea to) {
    std::string out;
    PanelRectangle rectangle;
    while(!settings.empty() && settings[0] != '[') {
        const std::string_view line = takeLine(settings);
        if(startsWith(line, PositionKey))
            parsePair(line.substr(PositionKey.size()), rectangle.x, rectangle.y);
        else if(startsWith(line, SizeKey))
            parsePair(line.substr(SizeKey.size()), rectangle.width, rectangle.height);
        else
            (out += line) += '\n';
    }
    rectangle = fitted(rectangle, from, to);
    return pair(PositionKey, rectangle.x, rectangle.y) +
        pair(SizeKey, rectangle.width, rectangle.height) + out;
}

}

PanelRectangle fitted(const PanelRectangle rectangle, const WorkArea from, const WorkArea to) {
    if(from.width <= 0 || from.height <= 0)
        return rectangle;
    const auto right = std::int64_t(rectangle.x) + rectangle.width;
    const auto bottom = std::int64_t(rectangle.y) + rectangle.height;
    const auto edge = [](const std::int64_t value) {
        return int(std::clamp<std::int64_t>(value, -32768, 32767));
    };
    PanelRectangle out;
    out.x = scaledEdge(rectangle.x, from.width, to.width);
    out.y = scaledEdge(rectangle.y, from.height, to.height);
    out.width = std::max(scaledEdge(edge(right), from.width, to.width) - out.x, LeastSize);
    out.height = std::max(scaledEdge(edge(bottom), from.height, to.height) - out.y, LeastSize);
    return out;
}

std::string fittedLayout(std::string_view settings, const WorkArea area) {
    const WorkArea from = areaOf(settings);
    if(from.width <= 0 || from.height <= 0)
        return std::string{settings};

    std::string out;
    while(!settings.empty()) {
        const std::string_view line = takeLine(settings);
        (out += line) += '\n';
        if(startsWith(line, WindowSection))
            out += fittedSection(settings, from, area);
        else if(line == AreaSection) {
            takeLine(settings);
            out += pair(SizeKey, area.width, area.height);
        }
    }
    return out;
}

std::string layoutWithArea(const std::string_view settings, const WorkArea area) {
    return std::string{settings} + std::string{AreaSection} + "\n" +
        pair(SizeKey, area.width, area.height);
}

}
