#include "LogLines.h"

#include <ctime>
#include <string>

#include <Corrade/Containers/StringStl.h>

#include "QuillmereEditor/Tools/logLine.h"

namespace QuillmereBenchmark {

using QuillmereEngine::StringArray;

namespace {

constexpr std::size_t LineSize = 100;

const char* level(const std::size_t i) {
    constexpr const char* names[]{
        "error", "warn", "verbose", "info", "info", "info", "info", "info", "info", "info"};
    /* The golden ratio in 64 bits (Knuth, The Art of Computer Programming, 6.4) spreads the
       numbers; the upper half of the product is the most mixed */
    return names[((i + 1) * 0x9e3779b97f4a7c15u >> 32) % 10];
}

std::string line(const std::string& prefix, const std::size_t i) {
    std::string out = logLine(prefix, 45000, level(i), "Loaded asset number " + std::to_string(i));
    /* Its newline isn't part of a stored line */
    out.pop_back();
    out.resize(LineSize, '.');
    return out;
}

}

std::shared_ptr<const StringArray> logLines(const std::size_t count) {
    std::tm time{};
    time.tm_year = 124;
    time.tm_mday = 7;
    const std::string prefix = logSecondPrefix(time);
    const auto out = std::make_shared<StringArray>();
    for(std::size_t i = 0; i != count; ++i)
        out->append(line(prefix, i).c_str(), -1);
    return out;
}

}
