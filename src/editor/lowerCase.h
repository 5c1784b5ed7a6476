#ifndef Quillmere_editor_lowerCase_h
#define Quillmere_editor_lowerCase_h

namespace QuillmereEngine {

/** @brief An ASCII letter made small, any other byte as it is, whatever the locale */
constexpr char lowerCase(const char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; }

}

#endif
