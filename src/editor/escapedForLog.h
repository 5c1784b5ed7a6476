#ifndef Quillmere_editor_escapedForLog_h
#define Quillmere_editor_escapedForLog_h

#include <string>
#include <string_view>

namespace QuillmereEngine {

/**
@brief A text from outside that can't change how a line looks
@param text     Any bytes
@return Printable UTF-8 without spaces. Control characters, blanks and bytes that aren't UTF-8 become
    `\x0a`, characters that aren't seen or change the direction of others `\u{202e}`, a backslash
    two. A text of more than 1,000 bytes is cut, with the number of left out bytes at its end.
*/
std::string escapedForLog(std::string_view text);

/**
@brief A line that shows all that is in it
@param text     Any bytes
@return UTF-8 of the same text, in which control characters but for tabs, bytes that aren't UTF-8, and
    characters that begin a line or change the direction of others are written as by
    @ref escapedForLog(). All else is as it was, so that one can't tell `\x0a` from what is escaped so.
*/
std::string withoutControls(std::string_view text);

}

#endif
