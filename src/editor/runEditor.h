#ifndef Quillmere_editor_runEditor_h
#define Quillmere_editor_runEditor_h

#include <Corrade/Containers/ArrayView.h>

namespace QuillmereEngine {

/**
@brief The whole program
@param arguments    Without the program's name
@return Exit status: 0, 1 when nothing can be rendered here, or 2 when something that the user
    named can't be used. A line on the standard error says what.
*/
int runEditor(Corrade::Containers::ArrayView<const char* const> arguments);

}

#endif
