#include "editor/ResponseMeter.h"

#include <algorithm>
#include <charconv>

namespace QuillmereEngine {

namespace {

/* Of `HTTP/1.1 200 OK` */
int statusOf(const std::string_view head) {
    constexpr std::size_t Begin = 9, Size = 3;
    int out = 0;
    if(head.size() >= Begin + Size && head.substr(0, 5) == "HTTP/")
        std::from_chars(head.data() + Begin, head.data() + Begin + Size, out);
    return out;
}

/* The library writes the name so */
std::uint64_t contentLengthOf(const std::string_view head) {
    constexpr std::string_view Name = "\r\nContent-Length: ";
    std::uint64_t out = 0;
    if(const std::size_t begin = head.find(Name); begin != std::string_view::npos)
        std::from_chars(head.data() + begin + Name.size(), head.data() + head.size(), out);
    return out;
}

}

void ResponseMeter::pass(const std::string_view bytes) {
    if(_isHeadOver) {
        _bodySize += bytes.size();
        return;
    }
    constexpr std::string_view HeadEnd = "\r\n\r\n";
    const std::size_t searched = _head.size() - std::min(_head.size(), HeadEnd.size() - 1);
    _head += bytes;
    if(!_status && _head.find('\n') != std::string::npos)
        _status = statusOf(_head);
    if(const std::size_t end = _head.find(HeadEnd, searched); end != std::string::npos) {
        _isHeadOver = true;
        _contentLength = contentLengthOf({_head.data(), end + 2});
        _bodySize = _head.size() - end - HeadEnd.size();
        _head.clear();
    }
}

bool ResponseMeter::isWhole(const Body body) const {
    return _isHeadOver && (body == Body::None || _bodySize >= _contentLength);
}

}
