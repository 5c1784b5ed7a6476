#include "editor/script/EditorConnection.h"

#include <cerrno>
#include <optional>
#include <sys/socket.h>
#include <unistd.h>

namespace QuillmereEngine {

namespace {

/* More in one message is a mistake, and drawing and copying it would be a burden */
constexpr std::size_t MaxLogSize = std::size_t{1} << 20;

/* Cut between two characters: bytes 10xxxxxx go on with one */
void cut(std::string& text) {
    std::size_t end = MaxLogSize;
    while(end && (text[end] & 0xc0) == 0x80)
        --end;
    const std::size_t rest = text.size() - end;
    text.resize(end);
    text += "... and " + std::to_string(rest) + " more bytes";
}

}

Message EditorConnection::receive() {
    for(;;) {
        if(const std::optional<std::string> frame = _reader.next()) {
            std::optional<Message> message = Message::parse(*frame);
            if(!message)
                _exit(ScriptExit::BadMessage);
            return std::move(*message);
        }
        if(!_reader.problem().empty())
            _exit(ScriptExit::BadMessage);
        char piece[65536];
        const ssize_t size = recv(_socket, piece, sizeof(piece), 0);
        if(size > 0)
            _reader.append({piece, std::size_t(size)});
        else if(size == 0 || errno != EINTR)
            _exit(ScriptExit::ConnectionClosed);
    }
}

void EditorConnection::send(const std::string_view message) {
    const std::string frame = encodedFrame(message);
    for(std::size_t sent = 0; sent != frame.size();) {
        /* A broken connection is to end the process in the one way that is meant for it */
        const ssize_t size = ::send(
            _socket, frame.data() + sent, frame.size() - sent, MSG_NOSIGNAL);
        if(size >= 0)
            sent += std::size_t(size);
        else if(errno != EINTR)
            _exit(ScriptExit::ConnectionClosed);
    }
}

void EditorConnection::log(const int level, std::string text) {
    if(text.size() > MaxLogSize)
        cut(text);
    send(MessageWriter{"log"}.add("level", level).add("text", text).text());
}

Message EditorConnection::request(const std::string_view message) {
    send(message);
    return receive();
}

}
