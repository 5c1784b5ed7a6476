#include "editor/ServerConnection.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace QuillmereEngine {

ServerConnection::ServerConnection(
    const int socket, const int stopEvent, const ServerLimits limits):
    _socket{socket},
    _stopEvent{stopEvent},
    _limits{limits} {
    /* Programs that the editor starts would otherwise hold the connection open */
    fcntl(_socket, F_SETFD, FD_CLOEXEC);
    fcntl(_socket, F_SETFL, fcntl(_socket, F_GETFL) | O_NONBLOCK);
    /* Head and body of an answer are written apart. The kernel would hold back a short body until
       the client has acknowledged the head, for which that takes its time: 40 ms each. */
    const int isOn = 1;
    setsockopt(_socket, IPPROTO_TCP, TCP_NODELAY, &isOn, sizeof(isOn));
}

ServerConnection::~ServerConnection() { close(_socket); }

ServerConnection::Wait ServerConnection::wait(
    const short events, const Clock::time_point end) const {
    pollfd descriptors[]{{_socket, events, 0}, {_stopEvent, POLLIN, 0}};
    for(;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
        const int count = poll(descriptors, 2, int(std::max<decltype(left)>(left, 0)));
        if(count == -1 && errno == EINTR)
            continue;
        if(descriptors[1].revents)
            return Wait::Stopping;
        return count > 0 ? Wait::Ready : Wait::TimeOut;
    }
}

bool ServerConnection::isStopping() const { return wait(0, Clock::now()) == Wait::Stopping; }

/* At the end of the client's bytes and when it's gone, nothing is received */
bool ServerConnection::receive(const Clock::time_point end) {
    while(wait(POLLIN, end) == Wait::Ready) {
        const ssize_t size = recv(_socket, _buffer.data(), _buffer.size(), 0);
        if(size == -1 && (errno == EINTR || errno == EAGAIN))
            continue;
        _begin = 0;
        _end = size > 0 ? std::size_t(size) : 0;
        return size > 0;
    }
    return false;
}

bool ServerConnection::waitForRequest() {
    if(isStopping() || (_begin == _end && !receive(Clock::now() + _limits.idle)))
        return false;
    _requestBegin = Clock::now();
    _requestSize = 0;
    _requestLine.clear();
    _isRequestLineOver = false;
    _response = {};
    return true;
}

std::ptrdiff_t ServerConnection::read(char* const out, const std::size_t size) {
    const std::size_t wanted = std::min(size, MaxRequestSize - _requestSize);
    if(wanted == 0)
        return 0;
    if(_begin == _end && !receive(_requestBegin + _limits.request))
        return isStopping() ? -1 : 0;
    const std::size_t count = std::min(wanted, _end - _begin);
    std::copy_n(_buffer.data() + _begin, count, out);
    _begin += count;
    _requestSize += count;
    if(!_isRequestLineOver) {
        const char* const lineEnd = std::find(out, out + count, '\n');
        _requestLine.append(out, std::size_t(lineEnd - out));
        _isRequestLineOver = lineEnd != out + count;
    }
    return std::ptrdiff_t(count);
}

bool ServerConnection::write(const char* const data, const std::size_t size) {
    for(std::size_t done = 0; done != size;) {
        ssize_t count = -1;
        if(wait(POLLOUT, Clock::now() + _limits.stall) == Wait::Ready) {
            /* A client that has gone must not end the editor with SIGPIPE */
            count = send(_socket, data + done, size - done, MSG_NOSIGNAL);
            if(count == -1 && (errno == EINTR || errno == EAGAIN))
                continue;
        }
        if(count == -1)
            return false;
        _response.pass({data + done, std::size_t(count)});
        done += std::size_t(count);
    }
    return true;
}

ServedRequest ServerConnection::request() const {
    ServedRequest out;
    out.line = _requestLine;
    out.status = _response.status();
    out.bytes = _response.bodySize();
    out.duration = std::chrono::duration_cast<std::chrono::microseconds>(
        Clock::now() - _requestBegin);
    /* The library takes an answer for whole that was cut because the server stops */
    const bool isHead = _requestLine.compare(0, 5, "HEAD ") == 0;
    out.isBrokenOff = !_response.isWhole(
        isHead ? ResponseMeter::Body::None : ResponseMeter::Body::Expected);
    return out;
}

void ServerConnection::finish() {
    shutdown(_socket, SHUT_WR);
    const Clock::time_point end = Clock::now() + _limits.linger;
    for(std::size_t size = 0; size < MaxLingerSize && receive(end);)
        size += _end - _begin;
}

}
