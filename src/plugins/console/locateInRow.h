#ifndef Quillmere_plugins_console_locateInRow_h
#define Quillmere_plugins_console_locateInRow_h

namespace QuillmereEngine {

/**
@brief Index of the character boundary that is nearest to a position in a row of text
@param begin    First character of the row, in Dear ImGui's 16-bit characters
@param end      Behind the row's newline if it has one, else behind its last character. Expected to
    be greater than @p begin.
@param x        In pixels from the start of the row
@return Number of characters from @p begin. Never behind the newline.

The widths are those of Dear ImGui's present font and size.
*/
int locateInRow(const unsigned short* begin, const unsigned short* end, float x);

}

#endif
