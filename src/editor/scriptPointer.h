#ifndef Quillmere_editor_scriptPointer_h
#define Quillmere_editor_scriptPointer_h

#include <cstddef>
#include <string>
#include <string_view>

#include <rapidjson/document.h>

namespace QuillmereEngine {

class ProjectFile;

/** @brief Where a script's JSON pointer leads */
struct ScriptPlace {
    /** Why nothing can be done there, empty if it can. For a message behind the pointer. */
    std::string problem;
    /** What stands there, null if nothing does */
    const rapidjson::Value* value = nullptr;
    /** How many levels it lies below the root */
    std::size_t depth = 0;
    /** How many of its components, from the first, lead to what is there. @ref depth if all do. */
    std::size_t found = 0;
    /** Whether the last component is a name although it's a number in a container that is missing */
    bool isLastName = false;
};

/**
@brief Look up a place to read from
@return Only a text that isn't a JSON pointer is a problem. Valid until the document changes.

Stricter than the history is: the text is as RFC 6901 has it, not a URI fragment, and has no NUL.
*/
ScriptPlace placeToRead(const ProjectFile& project, std::string_view pointer);

/**
@brief Look up a place to write to
@return It has a problem if what is on the way, or in front of the last component, is neither an
    array nor an object, or if a component isn't an index of the array that it's looked up in. The
    size of the array is one: there it's appended to. An array that isn't there yet has the size 0.
*/
ScriptPlace placeToWrite(const ProjectFile& project, std::string_view pointer);

/** @brief A text for a message of one line, in quotes */
std::string quoted(std::string_view text);

}

#endif
