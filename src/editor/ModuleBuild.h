#ifndef Quillmere_editor_ModuleBuild_h
#define Quillmere_editor_ModuleBuild_h

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace QuillmereEngine {

/**
@brief What a module was built against and what its finished file looks like

The group `[build]` of the module's `.conf`, which `quillmere_add_module()` writes. The editor reads
it before it opens the module: code that was compiled with other classes does harm as soon as it
runs, and a file that is still being written can't even be opened without danger.
*/
class ModuleBuild {
public:
    /**
    @brief Read the group
    @param metadata Content of the `.conf`. Its lines are read as the plugin manager does it: cut
        at the first `=`, both sides trimmed, `#` and `;` begin a comment. Other groups and lines
        of another form count as little as keys that aren't known.
    @param problem  Why there is no result: the group or a key of it is missing. Untouched
        otherwise.
    */
    static std::optional<ModuleBuild> read(std::string_view metadata, std::string& problem);

    /**
    @brief Why a module built so can't be loaded by this editor
    @return The first difference of those that matter with both sides, as in "it was built against
        library 1.2.0, but this is 1.3.0". Empty if there is none.

    All three numbers of the library's version have to be the same, see
    @ref QUILLMERE_VERSION. The build type isn't compared: Debug and Release builds go together.
    */
    std::string whyUnfit() const;

    /**
    @brief Why a file isn't the one that this was written with
    @param library  The file's content

    Empty if it is. Linear in the file's size, but only if the sizes are the same.
    */
    std::string whyIncomplete(std::string_view library) const;

    /** @brief Name of the CMake configuration, as in "Release". May be empty. */
    const std::string& type() const { return value("type"); }

private:
    /* Null if all are there */
    const char* missingKey() const;

    const std::string& value(const char* key) const { return _values.find(key)->second; }

    /* All keys that read() looks for are there */
    std::map<std::string, std::string, std::less<>> _values;
};

}

#endif
