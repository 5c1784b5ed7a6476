#ifndef Quillmere_host_QuillmereEditorApplication_h
#define Quillmere_host_QuillmereEditorApplication_h

#include <mutex>

#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/StringView.h>

#include "common/StringArrayView.h"
#include "host/Editor.h"
#include "host/ViewChangeHandlers.h"

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

    /**
    @brief Let a function of a panel hear of changes to @ref project
    @param view     Whose function it is
    @param key      One component of a path, of anywhere in it, see
        @ref ChangeManager::addChangeHandler(). Copied.
    @param function Copied or taken over. Called after each such change, of a group's when it's
        closed, the newest first. It may do what is said at @ref ViewChangeHandlers::Function.

    The way for a panel to do so: @ref changeManager itself would keep the function and the key when
    the panel's module has long been closed. Several functions may have the same key, of one panel or
    of several; they are called in the order in which they came. They stay when the history is reset
    and go with @ref forgetChangeHandlers(). Expects that there's a history.
    */
    void addChangeHandler(const EditorView& view, Corrade::Containers::StringView key,
        ViewChangeHandlers::Function function);

    /** @brief Destroy all functions of a panel. Whoever closes its module has to call this before. */
    void forgetChangeHandlers(const AbstractModule& view);

private:
    /* The last one, so that it goes while the history is still there */
    ViewChangeHandlers _viewChangeHandlers;
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
