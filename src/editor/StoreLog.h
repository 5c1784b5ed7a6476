#ifndef Quillmere_editor_StoreLog_h
#define Quillmere_editor_StoreLog_h

#include <Corrade/Containers/StringView.h>

#include "QuillmereEditor/Tools/Log.h"
#include "common/StringArrayView.h"

namespace QuillmereEngine {

class QuillmereEditorApplication;

/**
@brief Appends lines to a store of the application, formed as those of the log

For what has a tab of its own beside the log's. Any thread.
*/
class StoreLog {
public:
    /** @brief Whether lines go to the standard streams, too, as those of the log do */
    enum class Echo { No, Yes };

    /**
    @param application  Its mutex guards the store, and it's told of new lines. Outlives this.
    @param store        Outlives this
    */
    explicit StoreLog(QuillmereEditorApplication& application, StringArray& store, Echo echo);

    /**
    @brief Append a message
    @param message  Any bytes. One of several lines becomes as many, each with time and level in
        front, a newline at its end doesn't add one. What could hide a part of a line or fake another
        is escaped as by @ref withoutControls().

    Waits for the application's mutex, which must not be held here.
    */
    void append(LogLevel level, Corrade::Containers::StringView message);

private:
    void appendLine(LogLevel level, Corrade::Containers::StringView line);

    QuillmereEditorApplication& _application;
    StringArray& _store;
    Echo _echo;
};

}

#endif
