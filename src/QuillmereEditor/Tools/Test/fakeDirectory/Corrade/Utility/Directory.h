#ifndef Quillmere_QuillmereEditor_Tools_Test_fakeDirectory_Corrade_Utility_Directory_h
#define Quillmere_QuillmereEditor_Tools_Test_fakeDirectory_Corrade_Utility_Directory_h

#include <algorithm>
#include <string>

/** @file
@brief Of a system whose paths have backslashes
*/

/* Inline, so that it doesn't take the real function's place in our libraries */
namespace Corrade { namespace Utility { namespace Directory { inline namespace Fake {

inline std::string fromNativeSeparators(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

}}}}

#endif
