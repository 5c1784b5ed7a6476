#ifndef Quillmere_editor_Module_h
#define Quillmere_editor_Module_h

#include <string>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/PluginManager/PluginManager.h>

class AbstractModule;
struct ImGuiContext;

namespace QuillmereEngine {

struct EditorData;
class EditorView;
class ModuleCopy;
class QuillmereEditorApplication;

/** @brief What every panel is bound to. All of it outlives the modules. */
struct PanelHost {
    ImGuiContext* context = nullptr;
    EditorData* data = nullptr;
    QuillmereEditorApplication* application = nullptr;
};

/**
@brief One plugin module and its panel

Keeps the panel's state over a reload, also over one that failed, until a good file comes. Each
module has a plugin manager of its own, as each is opened from a folder of its own. UI thread.
*/
class Module {
public:
    /** @param path Of the original `.so`, for messages. The module is closed at first. */
    explicit Module(std::string path, const PanelHost& host);

    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    /** @brief Closes for good: the panel isn't asked for a state */
    ~Module();

    const std::string& path() const { return _path; }

    /** @brief File name without its suffix, under which the plugin manager knows the module */
    const std::string& name() const { return _name; }

    /** @brief The panel, null while the module is closed */
    EditorView* panel() { return _panel; }

    /**
    @brief Open a copy of the file, make the panel and hand it the state of the last one
    @return Empty, or why the module is still closed, as one line

    Expects that the module is closed.
    */
    std::string open(const ModuleCopy& copy);

    /** @brief Take the panel's state, delete it and close the file */
    void close();

private:
    using Manager = Corrade::PluginManager::Manager<AbstractModule>;

    void createPanel(const std::string& folder);
    void bindPanel();
    void saveState();
    void destroy();

    std::string _path;
    std::string _name;
    PanelHost _host;
    Corrade::Containers::Array<char> _state;
    Corrade::Containers::Pointer<Manager> _manager;
    Corrade::Containers::Pointer<AbstractModule> _instance;
    EditorView* _panel = nullptr;
};

}

#endif
