#ifndef Corrade_Utility_DebugStl_h
#define Corrade_Utility_DebugStl_h

/** @file
@brief Printing of standard strings through @ref Corrade::Utility::Debug
*/

#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/Debug.h>
#include <string>

namespace Corrade { namespace Utility {

/** @brief Print a standard string as text */
inline Debug& operator<<(Debug& debug, const std::string& value) {
    return debug << Containers::StringView{value.data(), value.size()};
}

}}

#endif
