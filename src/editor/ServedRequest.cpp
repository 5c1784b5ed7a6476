#include "editor/ServedRequest.h"

#include <algorithm>
#include <cstdio>

#include "editor/escapedForLog.h"

namespace QuillmereEngine {

namespace {

/* The longest registered one has 17 */
constexpr std::size_t MaxMethodSize = 32;

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

}
