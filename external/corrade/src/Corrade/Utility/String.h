#ifndef Corrade_Utility_String_h
#define Corrade_Utility_String_h

/** @file
@brief Functions on standard strings
*/

#include <Corrade/Utility/VisibilityMacros.h>
#include <string>
#include <vector>

namespace Corrade { namespace Utility { namespace String {

/** @brief Parts between delimiters, empty ones included. An empty string has none. */
CORRADE_UTILITY_EXPORT std::vector<std::string> split(const std::string& string, char delimiter);

/** @brief Parts between delimiters that aren't empty */
CORRADE_UTILITY_EXPORT std::vector<std::string> splitWithoutEmptyParts(
    const std::string& string, char delimiter);

/** @brief All strings with the delimiter between two of them */
CORRADE_UTILITY_EXPORT std::string join(
    const std::vector<std::string>& strings, const std::string& delimiter);
CORRADE_UTILITY_EXPORT std::string join(const std::vector<std::string>& strings, char delimiter);

/** @brief All strings that aren't empty with the delimiter between two of them */
CORRADE_UTILITY_EXPORT std::string joinWithoutEmptyParts(
    const std::vector<std::string>& strings, const std::string& delimiter);
CORRADE_UTILITY_EXPORT std::string joinWithoutEmptyParts(
    const std::vector<std::string>& strings, char delimiter);

/** @brief The string without spaces, tabs and line breaks at its ends */
CORRADE_UTILITY_EXPORT std::string trim(const std::string& string);

CORRADE_UTILITY_EXPORT bool beginsWith(const std::string& string, const std::string& prefix);
CORRADE_UTILITY_EXPORT bool beginsWith(const std::string& string, char prefix);
CORRADE_UTILITY_EXPORT bool endsWith(const std::string& string, const std::string& suffix);
CORRADE_UTILITY_EXPORT bool endsWith(const std::string& string, char suffix);

}}}

#endif
