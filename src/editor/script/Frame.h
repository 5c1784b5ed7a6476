#ifndef Quillmere_editor_script_Frame_h
#define Quillmere_editor_script_Frame_h

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace QuillmereEngine {

/**
@brief A message as it goes over the socket
@param content  At most @ref MaxFrameSize bytes, which isn't checked here
@return Its size as four bytes, the lowest first, and the content
*/
std::string encodedFrame(std::string_view content);

/** @brief Puts frames together from the pieces in which they arrive */
class FrameReader {
public:
    /** @param maxSize  The most bytes that a frame may have */
    explicit FrameReader(std::size_t maxSize): _maxSize{maxSize} {}

    /** @brief Add what arrived */
    void append(std::string_view bytes) { _bytes += bytes; }

    /** @brief Content of the next frame, nothing if it's not whole yet or there's a problem */
    std::optional<std::string> next();

    /**
    @brief Why the connection can't go on: a frame announced more bytes than allowed. Else empty.

    Looked at as soon as the size is there, so that no memory is taken for such a frame.
    */
    const std::string& problem() const { return _problem; }

    /** @brief Whether a part of a frame is there, which is a loss if the connection ends now */
    bool isInFrame() const { return _begin != _bytes.size(); }

private:
    std::size_t _maxSize;
    std::string _bytes;
    std::size_t _begin = 0;
    std::string _problem;
};

}

#endif
