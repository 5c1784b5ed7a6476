#ifndef Quillmere_QuillmereEditor_Tools_logLine_h
#define Quillmere_QuillmereEditor_Tools_logLine_h

#include <ctime>
#include <string>

/**
@brief A second's local time as a line of the log begins with it
@return `[2024-03-07 09:05:02.`, to be followed by milliseconds. 21 characters for years of four
    digits, other years have as many as they need.
*/
std::string logSecondPrefix(const std::tm& time);

/** @brief Path of a log file that is opened at a given local time */
std::string logFileName(const char* dir, const std::tm& time);

#endif
