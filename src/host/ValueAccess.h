#ifndef Quillmere_host_ValueAccess_h
#define Quillmere_host_ValueAccess_h

#include <cstddef>

#include <rapidjson/fwd.h>

namespace QuillmereEngine {

/**
@brief Reads one value of the project's document, which need not be there

A reference to the document: valid until that changes.
*/
class JsonObject {
public:
    /** @brief Constructor. The value may be null, which stands for nothing. */
    explicit JsonObject(const rapidjson::Value* value): _value{value} {}

    /** @brief Whether there's a value, a JSON null included */
    bool exists() const { return _value; }

    bool isString() const;

    /** @brief The string, "" if it's none. Belongs to the document. */
    const char* asString() const;

    /** @brief Whether it's the JSON true; anything else isn't */
    bool asBool() const;

protected:
    /* The member of that name, null if there's none or this is no object. The function is named if
       the key is null. */
    const rapidjson::Value* member(const char* key, const char* function) const;

    const rapidjson::Value* _value;
};

/** @brief A value inside of another, "name" of a resource for example */
class SubValueAccess: public JsonObject {
public:
    using JsonObject::JsonObject;

    /** @brief A member, a value that doesn't exist if there's none of that name */
    SubValueAccess operator[](const char* key) const {
        return SubValueAccess{member(key, "SubValueAccess::operator[]():")};
    }
};

/**
@brief The keys of an object in the document's order

Gives each key as NUL-terminated string that belongs to the document. @p Access is the type whose
keys these are.
*/
template<class Access> class KeyIterator {
public:
    explicit KeyIterator(const Access& access, std::size_t index):
        _access{&access},
        _index{index} {}

    const char* operator*() const { return _access->key(_index); }

    KeyIterator& operator++() {
        ++_index;
        return *this;
    }

    bool operator==(const KeyIterator& other) const { return _index == other._index; }
    bool operator!=(const KeyIterator& other) const { return _index != other._index; }

private:
    const Access* _access;
    std::size_t _index;
};

/** @brief A value and its members: all resources of a type, or one resource */
class ValueAccess: public JsonObject {
public:
    using JsonObject::JsonObject;

    explicit ValueAccess(const rapidjson::Value& value): JsonObject{&value} {}

    /** @brief A member as something that has members itself */
    ValueAccess operator[](const char* key) const {
        return ValueAccess{member(key, "ValueAccess::operator[]():")};
    }

    /** @brief The member itself, for its value */
    SubValueAccess subValue(const char* key) const {
        return SubValueAccess{member(key, "ValueAccess::subValue():")};
    }

    /** @brief Number of members, zero for anything but an object */
    std::size_t size() const;

    /** @brief Key of the member @p index. Expects that it's less than @ref size(). */
    const char* key(std::size_t index) const;

    /** @brief The member @p index itself, without a search. Expects that it's less than @ref size(). */
    ValueAccess at(std::size_t index) const;

    /** @brief Over the keys of the members, none for anything but an object. The iterators refer to
        this instance. */
    KeyIterator<ValueAccess> begin() const { return KeyIterator<ValueAccess>{*this, 0}; }
    KeyIterator<ValueAccess> end() const { return KeyIterator<ValueAccess>{*this, size()}; }
};

}

#endif
