#ifndef Quillmere_plugins_console_WideText_h
#define Quillmere_plugins_console_WideText_h

#include <cstddef>

#include <Corrade/Containers/Array.h>

namespace QuillmereEngine {

/**
@brief Dear ImGui's 16-bit copy of a text and where its rows are

The copy lies in memory of the caller. Along with it goes a coarse index, made while the text is
converted, so that no question about rows needs another pass over all of it.
*/
class WideText {
public:
    /** @brief A character as Dear ImGui keeps it (`ImWchar16`) */
    using Character = unsigned short;

    /** @brief No text, one empty row */
    WideText() = default;

    /**
    @brief Convert a text
    @param out      Room for @p size characters and a NUL, which is written. Has to outlive the
        object.
    @param text     UTF-8, ends with its first NUL
    @param size     Greatest length of @p text in bytes; nothing from there on is read

    The same characters as `ImTextStrFromUtf8()` of Dear ImGui 1.86 gives: what's malformed and
    what's above U+FFFF becomes U+FFFD. Unlike there a sequence that is cut off by the end of the
    text never makes it read on behind the end. Linear in the text's length.
    */
    explicit WideText(Character* out, const char* text, int size);

    /** @brief Characters, the NUL not counted */
    int size() const { return _size; }

    /** @brief Bytes of the UTF-8 text that were converted */
    int byteCount() const { return _byteCount; }

    /** @brief Number of rows: a newline ends one, the last may be empty. At least 1. */
    int rowCount() const { return _newlineCount + 1; }

    /**
    @brief Row of a character, from 0
    @param index    At most @ref size(). A newline belongs to the row that it ends.
    */
    int rowOf(int index) const;

    /**
    @brief Index of the first character of a row
    @param row      Expected to be at least 0 and smaller than @ref rowCount()
    */
    int rowBegin(int row) const;

    /**
    @brief Index of the newline that ends the row of a character, or @ref size() for the last row
    @param index    At most @ref size()
    */
    int rowEndFrom(int index) const;

    const Character* data() const { return _text; }

private:
    const Character* _text = nullptr;
    int _size = 0;
    int _byteCount = 0;
    int _newlineCount = 0;
    /* The i-th is the number of newlines in front of the i-th chunk of ChunkSize characters */
    Corrade::Containers::Array<std::size_t> _newlinesBefore;
};

}

#endif
