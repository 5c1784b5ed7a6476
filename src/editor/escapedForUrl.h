#ifndef Quillmere_editor_escapedForUrl_h
#define Quillmere_editor_escapedForUrl_h

#include <string>
#include <string_view>

namespace QuillmereEngine {

/**
@brief A file name as a part of a URL
@param name     Any bytes
@return Unreserved characters of RFC 3986, 2.3, and `%2F` and the like for all other bytes
*/
std::string escapedForUrl(std::string_view name);

}

#endif
