#ifndef Quillmere_editor_LineLevel_h
#define Quillmere_editor_LineLevel_h

#include <string_view>

#include "QuillmereEditor/Tools/Log.h"

namespace QuillmereEngine {

/**
@brief Level of a line that another program wrote
@param line     UTF-8, may be broken
@return Level of the first severity word, @ref LogLevel::Info when there is none

ASCII case doesn't matter. A word stands alone: letters and digits join, and so do `-`, `_`, `.`
and `/` that have a letter or digit on both sides. So "E: error: x" is an error and
"liberror-perl", "libgpg-error0" and "error.log" are not.
*/
LogLevel lineLevel(std::string_view line);

}

#endif
