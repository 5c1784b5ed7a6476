#ifndef Quillmere_QuillmereEditor_EditorView_h
#define Quillmere_QuillmereEditor_EditorView_h

#include "host/AbstractModule.h"
#include "host/ViewChangeHandlers.h"

struct ImGuiContext;

namespace QuillmereEngine {

struct EditorData;
struct Editor;
struct ExitEvent;
struct KeyEvent;
struct MouseEvent;
struct MouseMoveEvent;
struct MouseScrollEvent;
class QuillmereEditorApplication;
class Ui;

/**
@brief Base of every panel that lives in a plugin module

Binds the panel to the host: adopts its Dear ImGui context, keeps its data and application, and
sends the process-wide log to the application's console while the panel is initialized. Survives a
reload of its module through @ref unload() and @ref load(), which hand over the host's pointers.

The host calls everything on its UI thread.
*/
class EditorView: public AbstractModule {
public:
    /** @brief Constructor, see @ref AbstractModule. The panel isn't bound to a host yet. */
    explicit EditorView(
        Corrade::PluginManager::AbstractManager& manager, Corrade::Containers::StringView plugin);

    /**
    @brief Initialize from the state of an earlier instance
    @param state    As returned by @ref unload(), not retained. With null data nothing happens.
        Its size is not checked.
    */
    void load(Corrade::Containers::ArrayView<char> state) override;

    using AbstractModule::load;

    /**
    @brief Save the host's pointers and let go of the host
    @param shutdown If true nothing is saved and the log callback stays installed
    @return The context, the editor data and the application as three pointers, or an empty array
        if @p shutdown is true. Valid in this process only. Has the default deleter, so that it
        can be freed after the module was closed.
    */
    Corrade::Containers::Array<char> unload(bool shutdown) override;

    /** @brief @ref ModuleType::EditorView */
    int moduleType() override;

    /** @brief Name of the panel, shown and used as its window's ID */
    virtual const char* title() const = 0;

    /**
    @brief Bind the panel to its host
    @param context      Made current in Dear ImGui
    @param data         Kept
    @param application  Kept; also gets every line of the log from now on

    Expects all three to be non-null and to outlive the panel or its @ref deinit(). The log has one
    callback for the whole process, so of several panels the last to initialize or deinitialize
    decides where it goes.
    */
    virtual void init(
        ImGuiContext* context, EditorData* data, QuillmereEditorApplication* application);

    /** @brief Remove the log callback, whoever installed it. The pointers stay as they are. */
    virtual void deinit();

    /** @brief Draw one frame. The host has made the context current. */
    virtual void draw() = 0;

    /** @brief Called once per frame, before anything is drawn. Does nothing by default. */
    virtual void update();

    /** @brief The mouse was moved. Does nothing by default, as all that follow. */
    virtual void mouseMoveEvent(MouseMoveEvent& event);

    /** @brief A button was pressed */
    virtual void mousePressEvent(MouseEvent& event);

    /** @brief A button was released */
    virtual void mouseReleaseEvent(MouseEvent& event);

    /** @brief The wheel was turned */
    virtual void mouseScrollEvent(MouseScrollEvent& event);

    /** @brief A key was pressed or is being held */
    virtual void keyPressEvent(KeyEvent& event);

    /** @brief A key was released */
    virtual void keyReleaseEvent(KeyEvent& event);

    /** @brief The user wants to quit. Accepting it keeps the editor open. */
    virtual void exitEvent(ExitEvent& event);

    /** @brief The application's editor. Expects that it has one. */
    Editor& editor();

    /** @brief The application's property widgets. Expects that it has them. */
    Ui& ui();

protected:
    /** @brief Hear of changes until the panel is closed, see
        @ref QuillmereEditorApplication::addChangeHandler(). Expects that it's initialized. */
    void addChangeHandler(
        Corrade::Containers::StringView key, ViewChangeHandlers::Function function);

    /** @brief What the panels share, null until @ref init() or @ref load() */
    EditorData* _editorData = nullptr;

    /** @brief The application, null as long as @ref _editorData is */
    QuillmereEditorApplication* _application = nullptr;
};

}

#endif
