#include "QuillmereEditor/changePath.h"

#include <algorithm>
#include <climits>
#include <cstring>

using namespace Corrade;

namespace QuillmereEngine {

namespace {

const char* lastSlash(const Containers::StringView path) {
    const char* const begin = path.data();
    for(const char* i = begin + path.size(); i != begin; --i)
        if(i[-1] == '/')
            return i - 1;
    return nullptr;
}

Containers::StringView digits(const Containers::StringView component) {
    return component.hasPrefix('-') ? component.exceptPrefix(1) : component;
}

/* More than INT_MAX stays INT_MAX + 1 */
long long cappedValue(const Containers::StringView digits) {
    long long value = 0;
    for(const char digit: digits)
        value = std::min(value * 10 + (digit - '0'), INT_MAX + 1ll);
    return value;
}

}

Containers::StringView pathText(const Containers::ArrayView<const char> path) {
    if(path.isEmpty() || !path[0])
        return "";
    const void* const end = std::memchr(path.data(), '\0', path.size());
    return {
        path.data(), end ? std::size_t(static_cast<const char*>(end) - path.data()) : path.size()};
}

Containers::StringView parentPath(const Containers::StringView path) {
    const char* const slash = lastSlash(path);
    return {path.data(), slash ? std::size_t(slash - path.data()) : 0};
}

Containers::StringView lastComponent(const Containers::StringView path) {
    const char* const slash = lastSlash(path);
    return slash ? path.exceptPrefix(std::size_t(slash + 1 - path.data())) : path;
}

std::string printable(const Containers::StringView path) {
    constexpr const char* digits = "0123456789abcdef";
    std::string out;
    for(const char i: path) {
        const auto byte = static_cast<unsigned char>(i);
        if(byte < 0x20 || byte == 0x7f)
            out += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
        else
            out += i;
    }
    return out;
}

IndexKind indexKind(const Containers::StringView component) {
    const Containers::StringView number = digits(component);
    if(number.isEmpty() || !std::all_of(number.begin(), number.end(), [](const char c) {
           return c >= '0' && c <= '9';
       }))
        return IndexKind::None;

    const long long value = cappedValue(number);
    if(component.hasPrefix('-') && value)
        return IndexKind::Negative;
    return value > INT_MAX ? IndexKind::TooLarge : IndexKind::Index;
}

int indexValue(const Containers::StringView component) {
    return int(cappedValue(digits(component)));
}

}
