#ifndef Quillmere_editor_LineSplitter_h
#define Quillmere_editor_LineSplitter_h

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace QuillmereEngine {

/**
@brief Makes lines of bytes that come in pieces

A line ends with LF; one CR in front of it belongs to the line's end. A NUL becomes U+FFFD, as the
log takes C strings. All other bytes stay as they are.
*/
class LineSplitter {
public:
    /** Longest line in bytes. What is longer, such as an endless stream without a line end,
        becomes several lines. */
    static constexpr std::size_t MaxLineSize = 64 * 1024 * 1024;

    /** @param sink Gets each line without its end; the string is valid during the call only */
    explicit LineSplitter(std::function<void(const std::string&)> sink);

    /** @brief Take the next bytes. Calls the sink for each line that ends in them. */
    void push(std::string_view bytes);

    /** @brief Make a line of what is left without a line end, if anything is */
    void finish();

private:
    void append(std::string_view bytes);
    void emitLine();

    std::function<void(const std::string&)> _sink;
    std::string _line;
};

}

#endif
