#ifndef Quillmere_editor_ModuleRead_h
#define Quillmere_editor_ModuleRead_h

#include <string>

#include "editor/ModuleCopy.h"

namespace QuillmereEngine {

/** @brief What a look at a module's two files found out. Nothing was opened yet. */
struct ModuleRead {
    enum class State {
        Good,       /**< The files belong together and the module fits this editor */
        Incomplete, /**< They don't belong together, as while the module is built */
        Unfit       /**< They do, but the module can't be loaded by this editor */
    };

    State state = State::Incomplete;
    std::string problem; /**< Why it isn't good, as a part of a sentence */
    std::string type;    /**< The build type, if it's good */
    ModuleFiles files;
};

/**
@brief Read a module's `.so` and `.conf` and compare them
@param path     Of the `.so`
*/
ModuleRead readModule(const std::string& path);

}

#endif
