#ifndef Quillmere_editor_ServedRequest_h
#define Quillmere_editor_ServedRequest_h

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "QuillmereEditor/Tools/Log.h"

namespace QuillmereEngine {

/** @brief A request and what became of it */
struct ServedRequest {
    /** What came up to the first newline, any bytes */
    std::string line;
    /** Of the answer, 0 when there was none */
    int status = 0;
    /** Bytes of the answer's body that were sent */
    std::uint64_t bytes = 0;
    /** From the first byte of the request to the last of the answer */
    std::chrono::microseconds duration{};
    /** Whether not all was sent: the client has gone, the file has become shorter, the server stops */
    bool isBrokenOff = false;
};

/** @brief Level that a request is logged with. One without an answer is a warning. */
LogLevel requestLevel(int status);

/**
@brief What is logged of a request
@return For example `GET /a%20b.png 200 5120 bytes 0.4 ms`, with a `-` for what the request lacks

The path is shown as it came, with its escapes and its query, since only so one sees what was asked
for; what could hide or fake something is escaped as by @ref escapedForLog().
*/
std::string requestMessage(const ServedRequest& request);

/**
@brief A text from outside that can't change how a line looks
@param text     Any bytes
@return Printable UTF-8 without spaces. Control characters, blanks and bytes that aren't UTF-8 become
    `\x0a`, characters that aren't seen or change the direction of others `\u{202e}`, a backslash
    two. A text of more than 1,000 bytes is cut, with the number of left out bytes at its end.
*/
std::string escapedForLog(std::string_view text);

}

#endif
