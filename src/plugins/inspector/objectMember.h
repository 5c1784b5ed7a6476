#ifndef Quillmere_plugins_inspector_objectMember_h
#define Quillmere_plugins_inspector_objectMember_h

#include <cstddef>
#include <string>
#include <vector>

#include <rapidjson/fwd.h>

namespace QuillmereEngine {

/** @brief What decides about the widget of a value that nothing else is known about */
enum class ValueShape {
    Null,
    Boolean,
    Integer, /**< Fits into 32 bits */
    Number,
    Text,
    Integers, /**< Array of two to four integers that fit into 32 bits */
    Numbers,  /**< Array of two to four numbers, not all of them such integers */
    Texts,    /**< Array of strings, at least one */
    Array,    /**< Any other array */
    Object
};

/** @brief A member of an object or an element of an array */
struct ObjectMember {
    /** Key as it's shown, an element's index in decimal */
    std::string key;
    ValueShape shape;
    /** Number of elements or members, 0 if it can't have any */
    std::size_t size;
};

ValueShape shapeOf(const rapidjson::Value& value);

/** @brief A key as a component of a JSON pointer, with `~` as `~0` and `/` as `~1` (RFC 6901) */
std::string escapedKey(const std::string& key);

/**
@brief The members of an object or the elements of an array in their order
@param value    Anything else has none
@param most     How many to give at most

A copy, as a widget may change the document while they're drawn. Without members whose key has a NUL
in it, which no path reaches.
*/
std::vector<ObjectMember> membersOf(const rapidjson::Value& value, std::size_t most);

}

#endif
