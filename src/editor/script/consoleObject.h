#ifndef Quillmere_editor_script_consoleObject_h
#define Quillmere_editor_script_consoleObject_h

#include <js/TypeDecls.h>

namespace QuillmereEngine {

/** @brief Give scripts their `console`. False with an exception pending if that failed. */
bool defineConsole(JSContext* context, JS::HandleObject global);

}

#endif
