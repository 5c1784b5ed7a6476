#ifndef Quillmere_editor_script_errorText_h
#define Quillmere_editor_script_errorText_h

#include <string>

#include <js/TypeDecls.h>

namespace QuillmereEngine {

/**
@brief Take the pending exception and say where it comes from

    a.js:3:11: uncaught Error: message
        f@a.js:3:11
        @a.js:7:1

Lines and columns from 1. Empty if the script was stopped meanwhile.
*/
std::string takeErrorText(JSContext* context);

/** @brief The same for what a promise was rejected with */
std::string rejectionText(JSContext* context, JS::HandleObject promise);

}

#endif
