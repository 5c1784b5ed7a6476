#ifndef Quillmere_host_Editor_h
#define Quillmere_host_Editor_h

#include <Corrade/Containers/Pointer.h>

#include "common/StringArrayView.h"

namespace QuillmereEngine {

/** @brief Where the "Server" tab's lines come from */
class ServerSource {
public:
    virtual ~ServerSource();

    /**
    @brief The server's output so far
    @return A store that lives as long as the source. Whoever touches it holds
        @ref QuillmereEditorApplication::logMutex. Its lines begin with time and level as those of
        the log do, by which the console filters them, and at least @ref StringArray::Padding bytes
        behind the last one are readable.
    */
    virtual StringArrayView& serverLines() = 0;
};

/** @brief The editor's own objects, as far as panels need them */
struct Editor {
    /** Never null while a console panel is drawn */
    Corrade::Containers::Pointer<ServerSource> serverSource;

    /** Output of the JavaScript engine, never null while a console panel is drawn. Guarded by
        @ref QuillmereEditorApplication::logMutex. Its lines begin as those of the log do. */
    Corrade::Containers::Pointer<StringArray> javaScriptLines;
};

}

#endif
