#ifndef Quillmere_plugins_console_measureText_h
#define Quillmere_plugins_console_measureText_h

#include <cstddef>

namespace QuillmereEngine {

/** @brief Length of a text and what it's made of */
struct TextMeasure {
    /** Bytes in front of the NUL */
    std::size_t length;
    std::size_t newlineCount;
};

/**
@brief Find the end of a text and count its newlines, in one pass
@param text     Text whose first NUL is its end
@param size     Greatest length; nothing from there on is read
*/
TextMeasure measureText(const char* text, std::size_t size);

}

#endif
