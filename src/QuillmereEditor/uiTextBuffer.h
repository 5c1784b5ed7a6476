#ifndef Quillmere_QuillmereEditor_uiTextBuffer_h
#define Quillmere_QuillmereEditor_uiTextBuffer_h

#include <cstddef>

#include <Corrade/Containers/Array.h>

namespace QuillmereEngine {

/**
@brief Make an array larger
@param size     At least what it has. The new bytes are zero.
*/
void growZeroed(Corrade::Containers::Array<char>& array, std::size_t size);

/**
@brief Put a string and its NUL into a text field's buffer

The buffer never shrinks and has at least one byte more than it needs.
*/
void fillTextBuffer(Corrade::Containers::Array<char>& buffer, const char* string);

}

#endif
