#ifndef Quillmere_editor_ServerConnection_h
#define Quillmere_editor_ServerConnection_h

#include <array>
#include <chrono>
#include <cstddef>
#include <string>

#include "editor/ResponseMeter.h"
#include "editor/ServedRequest.h"

namespace QuillmereEngine {

/** @brief How long a client is waited for */
struct ServerLimits {
    /** How long it may keep the connection open without asking for anything */
    std::chrono::milliseconds idle{1000};
    /** From the first byte of a request to the end of its head */
    std::chrono::milliseconds request{5000};
    /** In which it takes nothing of an answer: one that plays a video may pause */
    std::chrono::milliseconds stall{30000};
    /** To see an answer that was given before its request was over */
    std::chrono::milliseconds linger{1000};
};

/**
@brief Connection of the server with a client, which may send anything at any speed

Waits for the client, but never longer than the limits, and not at all once the server stops.
Used by one thread.
*/
class ServerConnection {
public:
    using Clock = std::chrono::steady_clock;

    /** Of a request's first line and headers together, in bytes */
    static constexpr std::size_t MaxRequestSize = 64 * 1024;
    /** That are read and thrown away while a client sends on after its answer */
    static constexpr std::size_t MaxLingerSize = 64 * 1024 * 1024;

    /**
    @param socket       Owned from now on
    @param stopEvent    Readable once the server stops, and from then on
    */
    explicit ServerConnection(int socket, int stopEvent, ServerLimits limits = {});
    ServerConnection(const ServerConnection&) = delete;
    ServerConnection& operator=(const ServerConnection&) = delete;
    ~ServerConnection();

    int socket() const { return _socket; }

    bool isStopping() const;

    /** @brief Wait for the first byte of the next request, false when none will come */
    bool waitForRequest();

    /**
    @brief Read some bytes of a request
    @return How many; 0 at the end of what the client sends and of each limit; -1 when the server
        stops
    */
    std::ptrdiff_t read(char* out, std::size_t size);

    /** @brief Send all of it, false when the client doesn't take it or the server stops */
    bool write(const char* data, std::size_t size);

    /** @brief What was asked and sent since @ref waitForRequest() */
    ServedRequest request() const;

    /**
    @brief Say that there won't be more, and wait until the client knows

    Without it, what the client still sends would be answered with a reset of the connection, upon
    which it may throw away what it has received, unread.
    */
    void finish();

private:
    enum class Wait { Ready, TimeOut, Stopping };

    Wait wait(short events, Clock::time_point end) const;
    bool receive(Clock::time_point end);

    int _socket, _stopEvent;
    ServerLimits _limits;
    std::array<char, 4096> _buffer;
    std::size_t _begin = 0, _end = 0;

    Clock::time_point _requestBegin;
    std::size_t _requestSize = 0;
    std::string _requestLine;
    bool _isRequestLineOver = false;
    ResponseMeter _response;
};

}

#endif
