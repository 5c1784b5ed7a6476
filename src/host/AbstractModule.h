#ifndef Quillmere_host_AbstractModule_h
#define Quillmere_host_AbstractModule_h

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/PluginManager/AbstractPlugin.h>

/** @file
@brief Base of all modules and the interface that they register with
*/

/**
@brief The interface string that a module registers with, a literal

Its last part is the version of the contract between host and module, of @ref AbstractModule and of
the panel's base class.
*/
#define QUILLMERE_MODULE_INTERFACE "com.quillmere.QuillmereEditor.AbstractModule/1.1"

/**
@brief Base of everything the editor loads at run time and can exchange while it runs

Before a reload the host calls @ref unload() with `false` and keeps what it returns; the instance
made from the new file gets it through @ref load(). All of it happens on the UI thread.
*/
class AbstractModule: public Corrade::PluginManager::AbstractPlugin {
public:
    /** @brief @ref QUILLMERE_MODULE_INTERFACE as a global view */
    static Corrade::Containers::StringView pluginInterface();

    /**
    @brief Constructor
    @param manager  The manager that opened the module. Has to outlive the instance.
    @param plugin   Name under which the module was asked for, copied
    */
    explicit AbstractModule(
        Corrade::PluginManager::AbstractManager& manager, Corrade::Containers::StringView plugin);

    ~AbstractModule() override;

    /**
    @brief Take over the state of an earlier instance
    @param state    What @ref unload() returned in this process, not retained. A view with null
        data means that there was no earlier instance.
    */
    virtual void load(Corrade::Containers::ArrayView<char> state) = 0;

    /** @brief Start without an earlier instance */
    virtual void load() { load(Corrade::Containers::ArrayView<char>{}); }

    /**
    @brief Prepare for the module's closing
    @param shutdown Whether the process ends, so that no state has to be kept
    @return State for @ref load() of the next instance, empty if @p shutdown is true. Owned by the
        caller, freed without the module's help.
    */
    virtual Corrade::Containers::Array<char> unload(bool shutdown) = 0;

    /** @brief Kind of the module, one of @ref QuillmereEngine::ModuleType */
    virtual int moduleType() = 0;
};

/** @brief All of the editor but the base of its modules, its log and its helpers of the system */
namespace QuillmereEngine {

/** @brief What a module is to the host */
enum class ModuleType {
    Engine = 0,    /**< Code of the running game */
    EditorView = 1 /**< A panel of the editor */
};

}

#endif
