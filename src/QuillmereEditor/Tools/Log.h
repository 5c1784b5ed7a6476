#ifndef Quillmere_QuillmereEditor_Tools_Log_h
#define Quillmere_QuillmereEditor_Tools_Log_h

#include <cstdio>
#include <utility>

/** @file
@brief The process-wide log

Every message becomes one line with local time and level in front,

    [2024-03-07 09:05:02.045][info] Project loaded

which goes to the standard streams, to a log file if one is open, and to one callback. As long as
the year has four digits the level stands behind exactly 25 characters; the console's filters rely
on it.
*/

/** @brief How much a message matters */
enum class LogLevel { Verbose = 0, Info = 1, Warn = 2, Error = 3 };

/**
@brief Gets every line of the log
@param line     NUL-terminated and without a newline, valid during the call only
@param userData As given to @ref setLogCallback()

Called on the thread that logs, so from several at once. May log itself.
*/
using LogCallback = void (*)(const char* line, void* userData);

/** @brief The open log file, null when there is none. Not guarded: see @ref setLogDir(). */
extern std::FILE* logFile;

/**
@brief Set the one callback of the process
@param callback     Null removes the present one
@param userData     Handed to the callback, not touched here

Any thread. A thread that logs meanwhile calls the earlier or the new pair of callback and data,
never one half of each; it may be inside the earlier callback for a while after this returned.
*/
void setLogCallback(LogCallback callback, void* userData);

/** @brief The callback and its user data as they were set. Any thread. */
std::pair<LogCallback, void*> getLogCallback();

/**
@brief Start a log file
@param dir  Existing folder, UTF-8. The file in it is named after the local time,
    `QuillmereEditor-2024-03-07-09-05-02.log`; one of the same name is overwritten.

From here on the file is closed, and so written to its last line, at normal exit and on `SIGABRT`,
`SIGFPE`, `SIGILL`, `SIGINT` and `SIGSEGV`, which end the process with the signal's number as exit
status. When the file can't be created a message on Corrade's error output says so, @ref logFile is
null and no handler is installed.

A file that was open before stays open, but nobody refers to it any more. Call this and
@ref closeLogFile() while no other thread logs.
*/
void setLogDir(const char* dir);

/** @brief Close the log file. Does nothing when there is none. */
void closeLogFile();

/**
@brief Write one line to the log
@param level    Verbose and info go to the standard output, all else to the standard error. A value
    outside of the enumeration counts as an error.
@param message  UTF-8, NUL-terminated, not retained. A null pointer counts as an empty message.

Any thread; takes no lock but the streams' own, which keep a line and its newline in one piece. The
standard streams are flushed with every line, the file is not. Errors in writing are ignored.
*/
void log(LogLevel level, const char* message);

#endif
