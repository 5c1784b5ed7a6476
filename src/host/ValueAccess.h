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

    /** @brief Whether it is a string */
    bool isString() const;

    /** @brief The string, "" if it's none. Belongs to the document. */
    const char* asString() const;

    /** @brief Whether it's the JSON true; anything else isn't */
    bool asBool() const;

protected:
    /**
    @brief The member of that name, null if there's none or this is no object
    @param key      Expected not to be null
    @param function Named in the message if it is
    */
    const rapidjson::Value* member(const char* key, const char* function) const;

    /** @brief The value, null for nothing */
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
    /** @brief At a key, or behind the last one. The access has to outlive the iterator. */
    explicit KeyIterator(const Access& access, std::size_t index):
        _access{&access},
        _index{index} {}

    /** @brief The key. Not behind the last one. */
    const char* operator*() const { return _access->key(_index); }

    /** @brief Go to the next key */
    KeyIterator& operator++() {
        ++_index;
        return *this;
    }

    /** @brief Whether both are at the same key of the same access */
    bool operator==(const KeyIterator& other) const { return _index == other._index; }

    /** @brief Whether they are not */
    bool operator!=(const KeyIterator& other) const { return _index != other._index; }

private:
    const Access* _access;
    std::size_t _index;
};

/** @brief A value and its members: all resources of a type, or one resource */
class ValueAccess: public JsonObject {
public:
    using JsonObject::JsonObject;

    /** @brief A value that exists */
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

    /** @brief Behind the last key */
    KeyIterator<ValueAccess> end() const { return KeyIterator<ValueAccess>{*this, size()}; }
};

}

#endif
