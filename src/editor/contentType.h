#ifndef Quillmere_editor_contentType_h
#define Quillmere_editor_contentType_h

#include <string_view>

namespace QuillmereEngine {

/**
@brief What a browser is to take a file for
@param name File name, of which the last extension counts, in any case of letters
@return As in `Content-Type`, null-terminated. `application/octet-stream` for what isn't known.

Types as registered with IANA. Text is declared to be UTF-8, as browsers would otherwise guess.
*/
std::string_view contentType(std::string_view name);

}

#endif
