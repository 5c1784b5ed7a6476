#ifndef Quillmere_host_QuillmereEditorApplication_h
#define Quillmere_host_QuillmereEditorApplication_h

#include <mutex>

#include <Corrade/Containers/Pointer.h>

#include "common/StringArrayView.h"
#include "host/Editor.h"

namespace QuillmereEngine {

class ChangeManager;
class ProjectFile;
class Ui;

/**
@brief The application as its panels see it

Lives on the UI thread; @ref logMutex and what it guards may be used from any thread. Not to be
moved, as panels and the log callback keep its address.
*/
class QuillmereEditorApplication {
public:
    QuillmereEditorApplication();
    QuillmereEditorApplication(const QuillmereEditorApplication&) = delete;
    QuillmereEditorApplication& operator=(const QuillmereEditorApplication&) = delete;
    virtual ~QuillmereEditorApplication();

    /** Guards all line stores: @ref consoleLines, the server's and the JavaScript engine's */
    std::mutex logMutex;

    /** Every line that went through `log()`, guarded by @ref logMutex */
    StringArray consoleLines;

    /**
    @brief Told after lines were appended to @ref consoleLines, so that they get drawn

    Called on the thread that logged, @ref logMutex isn't held. Does nothing by default.
    */
    virtual void consoleLinesChanged();

    /** @brief Never null while a panel is drawn */
    Corrade::Containers::Pointer<Editor> editor;

    /**
    @brief The open project, an empty one while no file is open

    Null only in an application without a document of its own, and then so are @ref changeManager
    and @ref ui.
    */
    Corrade::Containers::Pointer<ProjectFile> project;

    /** @brief History of @ref project, gets every edit */
    Corrade::Containers::Pointer<ChangeManager> changeManager;

    /** @brief The property widgets, edit @ref project through @ref changeManager */
    Corrade::Containers::Pointer<Ui> ui;
};

/**
@brief Append a line to the console of an application, as a log callback
@param line         Null-terminated UTF-8, copied
@param application  The @ref QuillmereEditorApplication

Locks @ref QuillmereEditorApplication::logMutex, appends to the console's lines and calls
@ref QuillmereEditorApplication::consoleLinesChanged(). Lies in this library and not in a module: a
thread may still be inside of it when a module is closed. Any thread.
*/
void appendConsoleLine(const char* line, void* application);

}

#endif
