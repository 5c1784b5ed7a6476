#ifndef Quillmere_QuillmereEditor_Test_ModelJson_h
#define Quillmere_QuillmereEditor_Test_ModelJson_h

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace QuillmereEngine { namespace Test {

/**
@brief A JSON value as plain as can be, for the model that the history is compared with

Shares nothing with RapidJSON, so that a mistake about its ways shows.
*/
struct ModelJson {
    enum class Kind { Null, Number, String, Array, Object };

    static ModelJson number(int value);
    static ModelJson string(std::string value);
    static ModelJson array(std::vector<ModelJson> items = {});
    static ModelJson object(std::vector<std::pair<std::string, ModelJson>> members = {});

    bool isArray() const { return kind == Kind::Array; }
    bool isObject() const { return kind == Kind::Object; }
    bool isContainer() const { return isArray() || isObject(); }

    /** @brief Number of elements or members */
    std::size_t size() const { return isArray() ? items.size() : members.size(); }

    /** @brief Position of a member, -1 if there's none */
    int memberIndex(const std::string& name) const;

    bool operator==(const ModelJson& other) const;

    /** @brief Compact JSON */
    std::string text() const;

    Kind kind = Kind::Null;
    int value = 0;
    std::string characters;
    std::vector<ModelJson> items;
    std::vector<std::pair<std::string, ModelJson>> members;
};

/** @brief Components of a JSON pointer with their escapes resolved, see @ref parsePointer() */
using ModelPath = std::vector<std::string>;

/** @return Whether @p path is a JSON pointer, and then its components */
bool parsePointer(const std::string& path, ModelPath& components);

/** @brief What an array index in its only proper form says, -1 for anything else */
long long properIndex(const std::string& component);

/** @brief Whether it's an optional minus and decimal digits */
bool isNumber(const std::string& component);

/** @brief What @ref isNumber() is, at most a bit more than `INT_MAX` */
long long numberValue(const std::string& component);

/** @brief The value at a place, null if there's none */
ModelJson* find(ModelJson& root, const ModelPath& path);

/** @brief The value at a place, made there with all that's missing on the way */
ModelJson& create(ModelJson& root, const ModelPath& path);

/** @brief Take out the value at a place, if there's one and it isn't the root */
void erase(ModelJson& root, const ModelPath& path);

}}

#endif
