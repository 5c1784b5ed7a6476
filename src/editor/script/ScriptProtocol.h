#ifndef Quillmere_editor_script_ScriptProtocol_h
#define Quillmere_editor_script_ScriptProtocol_h

#include <csignal>
#include <cstddef>

/** @file
@brief What the editor and quillmere-script say to each other

They share a socket; each message is a frame, see @ref FrameReader, with a JSON object in it, whose
`type` says what it is. The editor sends

    {"type": "run", "name": "a.js", "source": "1 + 2", "result": true}
    {"type": "answer", "value": "[1, 2]"}       to a request; without a value for nothing
    {"type": "refusal", "message": "..."}       to a request that becomes an exception

and quillmere-script

    {"type": "log", "level": 1, "text": "..."}  level as in `LogLevel`
    {"type": "request", "operation": "set", "pointer": "/a", "value": "[1, 2]"}
    {"type": "done", "end": "finished"}         one of @ref ScriptEnd

Operations are `get`, `set`, `remove`, `begin` and `commit`. Values are texts of JSON inside of the
JSON: only their receivers parse them, each with the parser that keeps its kinds of numbers.
*/

namespace QuillmereEngine {

/** @brief The most bytes in a frame, enough for a project of 60 MB at once */
constexpr std::size_t MaxFrameSize = std::size_t{64} << 20;

/** @brief How a script ended that left the engine alive */
namespace ScriptEnd {
constexpr const char* Finished = "finished";
constexpr const char* Failed = "failed";
/** It ran longer than its limit */
constexpr const char* TimeLimit = "time";
/** The user wanted it to stop */
constexpr const char* Stopped = "stopped";
}

/**
@brief Asks quillmere-script to stop the script that is running

Sent again and again until the script has ended: one that comes before it has begun is lost. The
process starts with the signal blocked.
*/
constexpr int ScriptStopSignal = SIGUSR1;

/** @brief Exit statuses of quillmere-script */
namespace ScriptExit {
constexpr int ConnectionClosed = 0;
constexpr int BadArguments = 2;
/** A script needed more memory than the limit */
constexpr int MemoryLimit = 3;
constexpr int BadMessage = 4;
constexpr int NoEngine = 5;
}

}

#endif
