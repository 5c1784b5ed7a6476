#ifndef Quillmere_host_MemberIndex_h
#define Quillmere_host_MemberIndex_h

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include <rapidjson/document.h>

namespace QuillmereEngine {

/**
@brief Finds members of objects as `FindMember()` does, but remembers where they were

RapidJSON compares with one member after the other, which takes tens of microseconds in an object of
10,000. What is remembered here is a place, and the key that stands there is looked at before it's
trusted, so it doesn't matter who changes the object and when. Objects of few members are searched.

A key that stands at several places is searched, too. What a look at one place can't see is a second
member with its key that came in front of it while the object went back to as many members as it
had, between two look-ups: that takes an `AddMember()` of a key that is there and a removal, which
neither the history nor loading does.

Refers to nothing: objects may go at any time. UI thread only.
*/
class MemberIndex {
public:
    /** @brief Members from which on an object is worth it */
    static constexpr rapidjson::SizeType LeastMembers = 64;

    /** @brief Number of objects whose places are remembered. Beyond that the oldest one goes. */
    static constexpr std::size_t MostObjects = 8;

    /**
    @brief Value of a member
    @param object   Expects that it's an object
    @param key      Looked up as it is, without its NUL
    @return The value of the first member with that key, null if there's none

    Linear in the number of members for a key that isn't there, and after members were added or
    removed for the first one that is looked up. No allocation unless the object has grown.
    */
    const rapidjson::Value* find(const rapidjson::Value& object, std::string_view key);

    /** @brief Forget everything, when a document goes as a whole */
    void clear();

private:
    /* The places of one object's members, a hash table with open addressing */
    struct Object {
        /* Where the members were. Only compared, as they may be gone. */
        std::uintptr_t address = 0;
        rapidjson::SizeType count = 0;
        /* Place + 1, 0 for nothing. A power of two in size, half of it empty at least. */
        std::vector<rapidjson::SizeType> places;
    };

    Object& objectOf(const rapidjson::Value& value);
    static void rebuild(Object& object, const rapidjson::Value& value);
    static std::size_t slotOf(
        const Object& object, const rapidjson::Value& value, std::string_view key);

    std::vector<Object> _objects;
    /* The one that goes next */
    std::size_t _oldest = 0;
};

}

#endif
