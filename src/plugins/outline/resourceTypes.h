#ifndef Quillmere_plugins_outline_resourceTypes_h
#define Quillmere_plugins_outline_resourceTypes_h

#include <string>
#include <vector>

#include <rapidjson/fwd.h>

namespace QuillmereEngine {

/**
@brief The types of which a project has resources, without its objects
@param root     The project's document
@return Keys of the members whose values are objects that begin with an object, in the document's
    order. Without those that Dear ImGui can't drag, as their name has more than 32 bytes.
*/
std::vector<std::string> resourceTypes(const rapidjson::Value& root);

}

#endif
