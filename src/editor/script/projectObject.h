#ifndef Quillmere_editor_script_projectObject_h
#define Quillmere_editor_script_projectObject_h

#include <js/TypeDecls.h>

namespace QuillmereEngine {

/**
@brief Give scripts the editor's `project`

Its functions wait until the editor has done what they ask for. False with an exception pending if
that failed.
*/
bool defineProject(JSContext* context, JS::HandleObject global);

}

#endif
