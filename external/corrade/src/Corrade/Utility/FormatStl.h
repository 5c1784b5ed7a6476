#ifndef Corrade_Utility_FormatStl_h
#define Corrade_Utility_FormatStl_h

/** @file
@brief Formatting of and into standard strings
*/

#include <Corrade/Utility/Format.h>
#include <string>

namespace Corrade { namespace Utility {

namespace Implementation {

template<> struct FormatTraits<std::string> {
    static FormatArgument argument(const std::string& value) {
        return FormatArgument{value.data(), value.size()};
    }
};

}

/**
@brief Format into a string from @p offset on
@return Place behind the last byte written

Overwrites what stands there, grows the string where needed and never cuts it.
*/
template<class... Args> std::size_t formatInto(
    std::string& string, std::size_t offset, const char* format, const Args&... args) {
    const Implementation::FormatArgument list[]{Implementation::formatArgument(args)..., {}};
    return Implementation::formatInto(
        string, offset, format, Implementation::formatArguments(list));
}

/** @brief Format into a new standard string */
template<class... Args> std::string formatString(const char* format, const Args&... args) {
    std::string out;
    formatInto(out, 0, format, args...);
    return out;
}

}}

#endif
