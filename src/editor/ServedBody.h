#ifndef Quillmere_editor_ServedBody_h
#define Quillmere_editor_ServedBody_h

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "editor/ByteRange.h"
#include "editor/ServedFile.h"

namespace QuillmereEngine {

/**
@brief The bytes of an answer: parts of a file, with text around them if there are several

The file is read while the answer is sent, never as a whole.
*/
class ServedBody {
public:
    /** @brief The whole file or a single part of it */
    explicit ServedBody(ServedFile file, ByteRange range);

    /**
    @brief Several parts, as `multipart/byteranges` of RFC 9110, 14.6
    @param type     Content type of the file
    @param boundary Doesn't occur in the file
    */
    explicit ServedBody(ServedFile file, const std::vector<ByteRange>& ranges,
        std::string_view type, const std::string& boundary);

    std::uint64_t size() const { return _size; }

    /**
    @brief Read from a place in it
    @return How many bytes were read, at least one. None at the end, or when the file has become
        shorter or can't be read.
    */
    std::size_t read(std::uint64_t offset, char* out, std::size_t size) const;

private:
    /* Text and the part of the file behind it */
    struct Piece {
        std::string text;
        ByteRange range;
    };

    void add(Piece piece);

    ServedFile _file;
    std::vector<Piece> _pieces;
    std::uint64_t _size = 0;
};

/** @brief Value of `Content-Range` for a part of a file */
std::string contentRange(ByteRange range, std::uint64_t fileSize);

}

#endif
