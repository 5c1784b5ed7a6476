#ifndef Quillmere_plugins_history_shortText_h
#define Quillmere_plugins_history_shortText_h

#include <cstddef>
#include <string>
#include <string_view>

#include <rapidjson/fwd.h>

namespace QuillmereEngine {

struct Change;

/** @brief Path of a change without its NUL */
std::string_view pathOf(const Change& change);

/**
@brief The start of a value's compact JSON
@param limit    The most code points
@return One line of valid UTF-8 with three dots more where something was left out. What can't be
    shown, such as control characters in strings, is escaped as in JSON; bytes that aren't UTF-8
    are U+FFFD. A number of single precision has the digits that tell it from others of that.

Takes time by the limit and not by the value, which may be a whole scene.
*/
std::string shortJson(const rapidjson::Value& value, std::size_t limit);

/**
@brief The end of a path, with three dots before it where something was left out
@param limit    The most bytes without the dots

One line of valid UTF-8, escaped as by @ref shortJson(). Takes time by the limit.
*/
std::string shortPath(std::string_view path, std::size_t limit);

}

#endif
