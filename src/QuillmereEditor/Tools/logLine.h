#ifndef Quillmere_QuillmereEditor_Tools_logLine_h
#define Quillmere_QuillmereEditor_Tools_logLine_h

#include <cstdint>
#include <cstdio>
#include <ctime>
#include <string>

#include <Corrade/Containers/StringView.h>

#include "QuillmereEditor/Tools/Log.h"

/**
@brief A second's local time as a line of the log begins with it
@return `[2024-03-07 09:05:02.`, to be followed by milliseconds. 21 characters for years of four
    digits, other years have as many as they need.
*/
std::string logSecondPrefix(const std::tm& time);

/**
@brief A line of the log, with a newline at its end
@param secondPrefix As @ref logSecondPrefix() gives it
@param microseconds Time since the epoch, also a negative one. Only its milliseconds within their
    second are written, three digits.
*/
std::string logLine(Corrade::Containers::StringView secondPrefix, std::int64_t microseconds,
    Corrade::Containers::StringView levelName, Corrade::Containers::StringView message);

/**
@brief A line of the log as of now, with a newline at its end
@param level    A value outside of the enumeration counts as an error
*/
std::string logLine(LogLevel level, Corrade::Containers::StringView message);

/**
@brief Write a line in one piece and flush it
@param stream   The standard output or error
@param file     Gets it, too, and isn't flushed. Null for none.

Any thread.
*/
void writeLogLine(const std::string& line, std::FILE* stream, std::FILE* file);

/** @brief Where lines of a level go: the standard output or the standard error */
std::FILE* logStream(LogLevel level);

/** @brief Path of a log file that is opened at a given local time */
std::string logFileName(const char* dir, const std::tm& time);

#endif
