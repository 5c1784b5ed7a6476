#include "String.h"

namespace Corrade { namespace Utility { namespace String {

namespace {

enum class EmptyParts { Keep, Skip };

std::vector<std::string> split(
    const std::string& string, const char delimiter, const EmptyParts emptyParts) {
    std::vector<std::string> out;
    if(string.empty())
        return out;
    for(std::size_t begin = 0; begin != std::string::npos;) {
        const std::size_t end = string.find(delimiter, begin);
        const std::size_t size = (end == std::string::npos ? string.size() : end) - begin;
        if(size || emptyParts == EmptyParts::Keep)
            out.emplace_back(string, begin, size);
        begin = end == std::string::npos ? end : end + 1;
    }
    return out;
}

std::string join(const std::vector<std::string>& strings, const std::string& delimiter,
    const EmptyParts emptyParts) {
    std::string out;
    bool first = true;
    for(const std::string& string: strings) {
        if(string.empty() && emptyParts == EmptyParts::Skip)
            continue;
        if(!first)
            out += delimiter;
        out += string;
        first = false;
    }
    return out;
}

}

std::vector<std::string> split(const std::string& string, const char delimiter) {
    return split(string, delimiter, EmptyParts::Keep);
}

std::vector<std::string> splitWithoutEmptyParts(const std::string& string, const char delimiter) {
    return split(string, delimiter, EmptyParts::Skip);
}

std::string join(const std::vector<std::string>& strings, const std::string& delimiter) {
    return join(strings, delimiter, EmptyParts::Keep);
}

std::string join(const std::vector<std::string>& strings, const char delimiter) {
    return join(strings, std::string(1, delimiter));
}

std::string joinWithoutEmptyParts(
    const std::vector<std::string>& strings, const std::string& delimiter) {
    return join(strings, delimiter, EmptyParts::Skip);
}

std::string joinWithoutEmptyParts(const std::vector<std::string>& strings, const char delimiter) {
    return joinWithoutEmptyParts(strings, std::string(1, delimiter));
}

std::string trim(const std::string& string) {
    constexpr const char* Whitespace = " \t\f\v\r\n";
    const std::size_t begin = string.find_first_not_of(Whitespace);
    if(begin == std::string::npos)
        return {};
    return string.substr(begin, string.find_last_not_of(Whitespace) - begin + 1);
}

bool beginsWith(const std::string& string, const std::string& prefix) {
    return string.compare(0, prefix.size(), prefix) == 0;
}

bool beginsWith(const std::string& string, const char prefix) {
    return !string.empty() && string.front() == prefix;
}

bool endsWith(const std::string& string, const std::string& suffix) {
    return string.size() >= suffix.size() &&
        string.compare(string.size() - suffix.size(), suffix.size(), suffix) == 0;
}

bool endsWith(const std::string& string, const char suffix) {
    return !string.empty() && string.back() == suffix;
}

}}}
