#include "editor/ServedBody.h"

#include <algorithm>
#include <utility>

namespace QuillmereEngine {

ServedBody::ServedBody(ServedFile file, const ByteRange range): _file{std::move(file)} {
    add({{}, range});
}

ServedBody::ServedBody(ServedFile file, const std::vector<ByteRange>& ranges,
    const std::string_view type, const std::string& boundary):
    _file{std::move(file)} {
    for(const ByteRange& range: ranges)
        add({(_pieces.empty() ? "--" : "\r\n--") + boundary +
                "\r\nContent-Type: " + std::string{type} +
                "\r\nContent-Range: " + contentRange(range, _file.size()) + "\r\n\r\n",
            range});
    add({"\r\n--" + boundary + "--\r\n", {0, 0}});
}

void ServedBody::add(Piece piece) {
    _size += piece.text.size() + piece.range.size;
    _pieces.push_back(std::move(piece));
}

std::size_t ServedBody::read(std::uint64_t offset, char* const out, const std::size_t size) const {
    for(const Piece& piece: _pieces) {
        if(offset < piece.text.size())
            return piece.text.copy(out, size, std::size_t(offset));
        offset -= piece.text.size();
        if(offset < piece.range.size)
            return _file.read(piece.range.offset + offset, out,
                std::size_t(std::min<std::uint64_t>(size, piece.range.size - offset)));
        offset -= piece.range.size;
    }
    return 0;
}

std::string contentRange(const ByteRange range, const std::uint64_t fileSize) {
    return "bytes " + std::to_string(range.offset) + "-" +
        std::to_string(range.offset + range.size - 1) + "/" + std::to_string(fileSize);
}

}
