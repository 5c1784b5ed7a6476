#include "editor/ByteRange.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>

namespace QuillmereEngine {

namespace {

/* More than any viewer or player asks for at once. Each costs a head of its own in the answer. */
constexpr std::size_t MaxRanges = 32;

std::string_view trimmed(std::string_view text) {
    const auto isBlank = [](const char c) { return c == ' ' || c == '\t'; };
    while(!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while(!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/* A number too great for 64 bits lies behind the end of every file, as the greatest does */
bool parsePosition(const std::string_view text, std::uint64_t& out) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, out);
    if(error == std::errc::result_out_of_range)
        out = std::numeric_limits<std::uint64_t>::max();
    else if(error != std::errc{})
        return false;
    return stop == end;
}

/* False when it isn't one. A range behind the end isn't added. */
bool addRange(
    const std::string_view text, const std::uint64_t fileSize, std::vector<ByteRange>& out) {
    const std::size_t dash = text.find('-');
    if(dash == std::string_view::npos)
        return false;
    const std::string_view firstText = text.substr(0, dash), lastText = text.substr(dash + 1);
    std::uint64_t first = 0, last = std::numeric_limits<std::uint64_t>::max();
    if(firstText.empty()) {
        std::uint64_t suffix;
        if(!parsePosition(lastText, suffix))
            return false;
        const std::uint64_t size = std::min(suffix, fileSize);
        if(size)
            out.push_back({fileSize - size, size});
        return true;
    }
    if(!parsePosition(firstText, first) || (!lastText.empty() && !parsePosition(lastText, last)) ||
        last < first)
        return false;
    if(first < fileSize)
        out.push_back({first, std::min(last, fileSize - 1) - first + 1});
    return true;
}

bool isUnit(const std::string_view text) {
    constexpr std::string_view Unit = "bytes=";
    return std::equal(text.begin(), text.end(), Unit.begin(), Unit.end(),
        [](const char a, const char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; });
}

}

std::optional<std::vector<ByteRange>> requestedRanges(
    const std::string_view header, const std::uint64_t fileSize) {
    const std::size_t unitSize = std::min(header.find('='), header.size() - 1) + 1;
    if(header.empty() || !isUnit(header.substr(0, unitSize)))
        return {};
    std::vector<ByteRange> out;
    std::uint64_t sum = 0;
    std::size_t count = 0;
    for(std::size_t begin = unitSize; begin <= header.size();) {
        const std::size_t end = std::min(header.find(',', begin), header.size());
        if(++count > MaxRanges ||
            !addRange(trimmed(header.substr(begin, end - begin)), fileSize, out))
            return {};
        begin = end + 1;
    }
    for(const ByteRange& range: out)
        sum += range.size;
    if(sum > fileSize)
        return {};
    return out;
}

}
