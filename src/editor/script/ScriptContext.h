#ifndef Quillmere_editor_script_ScriptContext_h
#define Quillmere_editor_script_ScriptContext_h

#include <js/TypeDecls.h>

namespace QuillmereEngine {

class EditorConnection;
class ValueText;

/** @brief What functions that scripts call need, kept as the private pointer of the context */
struct ScriptContext {
    EditorConnection& connection;
    ValueText& texts;

    /** @brief Of the context of a call */
    static ScriptContext& of(JSContext* context);
};

}

#endif
