#ifndef Quillmere_editor_script_EditorConnection_h
#define Quillmere_editor_script_EditorConnection_h

#include <string>
#include <string_view>

#include "editor/script/Frame.h"
#include "editor/script/Message.h"
#include "editor/script/ScriptProtocol.h"

namespace QuillmereEngine {

/**
@brief The editor as quillmere-script sees it

The thread that runs scripts only. The process ends when the editor is gone, or when it says
something that isn't a message: without the editor there's nothing left to do.
*/
class EditorConnection {
public:
    /** @param socket   Blocking stream socket, stays the caller's */
    explicit EditorConnection(int socket): _socket{socket} {}

    /** @brief Wait for a message */
    Message receive();

    /** @param message  At most @ref MaxFrameSize bytes */
    void send(std::string_view message);

    /** @brief Send a line, or several, for the console. What is longer than a megabyte is cut. */
    void log(int level, std::string text);

    /** @brief Send a request and wait for what the editor says to it */
    Message request(std::string_view message);

private:
    int _socket;
    FrameReader _reader{MaxFrameSize};
};

}

#endif
