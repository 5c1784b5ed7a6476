#ifndef Quillmere_plugins_console_lineTag_h
#define Quillmere_plugins_console_lineTag_h

#include <cstdint>
#include <cstring>

/** @file
@brief Tests on a line's severity tag, inline as they run for every line of a store in each frame
*/

namespace QuillmereEngine {

/** @brief Length of the time prefix that the log puts in front of the tag */
constexpr int LineTagOffset = 25;

/* Both tags of a line are looked at in one load of eight bytes. It begins one byte before the tag,
   which is masked off, so as not to reach past the longest tag's end. */
namespace Implementation {

inline std::uint64_t eightBytes(const char* const begin) {
    std::uint64_t out;
    std::memcpy(&out, begin, sizeof(out));
    return out;
}

inline bool hasTag(const char* const line, const char (&tag)[9], const char (&mask)[9]) {
    return ((eightBytes(line + LineTagOffset - 1) ^ eightBytes(tag)) & eightBytes(mask)) == 0;
}

}

/** @brief See @ref isError() */
inline bool hasErrorTag(const char* const line) {
    return Implementation::hasTag(line, "\0[error]", "\0\xff\xff\xff\xff\xff\xff\xff");
}

/** @brief See @ref isWarning() */
inline bool hasWarningTag(const char* const line) {
    return Implementation::hasTag(line, "\0[warn]\0", "\0\xff\xff\xff\xff\xff\xff\0");
}

/** @brief See @ref isInfo() */
inline bool hasInfoTag(const char* const line) {
    return Implementation::hasTag(line, "\0[info]\0", "\0\xff\xff\xff\xff\xff\xff\0");
}

}

#endif
