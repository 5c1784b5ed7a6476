#ifndef Quillmere_editor_script_valueTextSource_h
#define Quillmere_editor_script_valueTextSource_h

namespace QuillmereEngine {

/**
@brief The part of @ref ValueText that is written in JavaScript

A function that gets `classOf` and `promiseOf` and gives an object of functions. UTF-8, ends with a
NUL.
*/
extern const char* const ValueTextSource;

}

#endif
