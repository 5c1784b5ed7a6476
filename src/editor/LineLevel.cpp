#include "editor/LineLevel.h"

#include <algorithm>
#include <cstddef>

#include "editor/lowerCase.h"

namespace QuillmereEngine {

namespace {

struct SeverityWord {
    std::string_view word;
    LogLevel level;
};

constexpr SeverityWord SeverityWords[]{
    {"fatal", LogLevel::Error},
    {"critical", LogLevel::Error},
    {"error", LogLevel::Error},
    {"errors", LogLevel::Error},
    {"fail", LogLevel::Error},
    {"fails", LogLevel::Error},
    {"failed", LogLevel::Error},
    {"failure", LogLevel::Error},
    {"warn", LogLevel::Warn},
    {"warning", LogLevel::Warn},
    {"warnings", LogLevel::Warn},
    {"debug", LogLevel::Verbose},
    {"trace", LogLevel::Verbose},
    {"verbose", LogLevel::Verbose},
};

constexpr std::size_t LongestWord = 8;

bool isAsciiLetterOrDigit(const char c) {
    return (c >= '0' && c <= '9') || (lowerCase(c) >= 'a' && lowerCase(c) <= 'z');
}

bool isJoiner(const char c) { return c == '-' || c == '_' || c == '.' || c == '/'; }

/* Size in bytes of the letter or digit at i, 0 when there is none. Outside of ASCII everything
   counts as a letter but the blocks of signs and punctuation, U+0080 to U+00BF, U+2000 to U+2FFF
   and U+3000 to U+303F: typographic quotes and dashes around a word don't join it. */
std::size_t letterSize(const std::string_view line, const std::size_t i) {
    if(i >= line.size())
        return 0;
    const auto byte = [line](const std::size_t at) {
        return at < line.size() ? static_cast<unsigned char>(line[at]) : 0u;
    };
    const unsigned lead = byte(i);
    if(lead < 0x80)
        return isAsciiLetterOrDigit(line[i]) ? 1 : 0;
    const bool isSign = lead == 0xc2 || lead == 0xe2 || (lead == 0xe3 && byte(i + 1) == 0x80);
    const std::size_t size = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : lead >= 0xc3 ? 2 : 0;
    if(isSign || !size)
        return 0;
    for(std::size_t next = 1; next != size; ++next)
        if((byte(i + next) & 0xc0) != 0x80)
            return 0;
    return size;
}

/* End of the word that begins with the letter or digit at i */
std::size_t wordEnd(const std::string_view line, std::size_t i) {
    for(;;) {
        if(const std::size_t size = letterSize(line, i))
            i += size;
        else if(i < line.size() && isJoiner(line[i]) && letterSize(line, i + 1))
            ++i;
        else
            return i;
    }
}

const SeverityWord* findSeverity(const std::string_view word) {
    if(word.size() > LongestWord)
        return nullptr;
    for(const SeverityWord& severity: SeverityWords)
        if(std::equal(word.begin(), word.end(), severity.word.begin(), severity.word.end(),
               [](const char a, const char b) { return lowerCase(a) == b; }))
            return &severity;
    return nullptr;
}

}

LogLevel lineLevel(const std::string_view line) {
    for(std::size_t i = 0; i < line.size();) {
        if(!letterSize(line, i)) {
            ++i;
            continue;
        }
        const std::size_t end = wordEnd(line, i);
        if(const SeverityWord* const severity = findSeverity(line.substr(i, end - i)))
            return severity->level;
        i = end;
    }
    return LogLevel::Info;
}

}
