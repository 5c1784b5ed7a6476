#ifndef Quillmere_editor_ServedRequest_h
#define Quillmere_editor_ServedRequest_h

#include <chrono>
#include <cstdint>
#include <string>

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

}

#endif
