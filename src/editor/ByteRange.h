#ifndef Quillmere_editor_ByteRange_h
#define Quillmere_editor_ByteRange_h

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace QuillmereEngine {

/** @brief A part of a file, in bytes. Never empty. */
struct ByteRange {
    std::uint64_t offset, size;
};

/**
@brief The parts of a file that a client asks for
@param header   Value of `Range`, as RFC 9110 has it in 14.2: `bytes=0-99,-5`
@return In the order they are asked for, those that begin behind the end of the file left out: with
    none left, the request can't be satisfied. Nothing when the whole file is to be sent instead,
    which is what the RFC wants for a header that isn't understood, and allows for one that asks for
    very many parts or, as parts overlap, for more than the file.
*/
std::optional<std::vector<ByteRange>> requestedRanges(
    std::string_view header, std::uint64_t fileSize);

}

#endif
