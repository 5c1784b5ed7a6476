#ifndef Quillmere_plugins_console_LineClassification_h
#define Quillmere_plugins_console_LineClassification_h

namespace QuillmereEngine {

/**
@brief Whether a line of the log carries the tag `[error]`
@param line     Readable up to and including index 31, whatever its length

The tag stands behind the log's time prefix, so the seven characters from index 25 on are compared
and the tag isn't searched elsewhere. A shorter line is judged by the bytes that follow it: line
stores keep @ref StringArray::Padding zeros behind their last line.
*/
bool isError(const char* line);

/** @brief The same for `[warn]`, six characters */
bool isWarning(const char* line);

/** @brief The same for `[info]`, six characters */
bool isInfo(const char* line);

}

#endif
