#include "host/MemberIndex.h"

#include <functional>

namespace QuillmereEngine {

namespace {

/* Set in a place whose key stands at others, too. The first one counts, and which one that is can't
   be told from looking at one of them. */
constexpr rapidjson::SizeType IsDuplicated = rapidjson::SizeType{1} << 31;

std::string_view keyAt(const rapidjson::Value& object, const rapidjson::SizeType place) {
    const rapidjson::Value& name = (object.MemberBegin() + place)->name;
    return {name.GetString(), name.GetStringLength()};
}

std::uintptr_t addressOf(const rapidjson::Value& object) {
    return reinterpret_cast<std::uintptr_t>(&*object.MemberBegin());
}

const rapidjson::Value* search(const rapidjson::Value& object, const std::string_view key) {
    const auto found = object.FindMember(
        rapidjson::Value{rapidjson::StringRef(key.data(), rapidjson::SizeType(key.size()))});
    return found == object.MemberEnd() ? nullptr : &found->value;
}

std::size_t hashOf(const std::string_view key) { return std::hash<std::string_view>{}(key); }

std::size_t tableSize(const rapidjson::SizeType count) {
    std::size_t size = 1;
    while(size < std::size_t{count} * 2)
        size *= 2;
    return size;
}

}

const rapidjson::Value* MemberIndex::find(
    const rapidjson::Value& object, const std::string_view key) {
    if(object.MemberCount() < LeastMembers)
        return search(object, key);

    Object& known = objectOf(object);
    if(known.count != object.MemberCount())
        rebuild(known, object);
    const std::size_t slot = slotOf(known, object, key);
    const rapidjson::SizeType place = known.places[slot];
    if(place && !(place & IsDuplicated))
        return &(object.MemberBegin() + (place - 1))->value;

    const rapidjson::Value* const found = search(object, key);
    /* Members have changed places or names since they were remembered */
    if(found && !place)
        rebuild(known, object);
    return found;
}

void MemberIndex::clear() {
    _objects.clear();
    _oldest = 0;
}

MemberIndex::Object& MemberIndex::objectOf(const rapidjson::Value& value) {
    const std::uintptr_t address = addressOf(value);
    for(Object& object: _objects)
        if(object.address == address)
            return object;

    if(_objects.size() < MostObjects)
        _objects.emplace_back();
    Object& object = _objects[_oldest];
    _oldest = (_oldest + 1) % MostObjects;
    object.address = address;
    object.count = 0;
    return object;
}

void MemberIndex::rebuild(Object& object, const rapidjson::Value& value) {
    object.count = value.MemberCount();
    object.places.assign(tableSize(object.count), 0);
    for(rapidjson::SizeType i = 0; i != object.count; ++i) {
        rapidjson::SizeType& place = object.places[slotOf(object, value, keyAt(value, i))];
        place = place ? place | IsDuplicated : i + 1;
    }
}

/* Where the place of a key is remembered, or would be */
std::size_t MemberIndex::slotOf(
    const Object& object, const rapidjson::Value& value, const std::string_view key) {
    const std::size_t mask = object.places.size() - 1;
    std::size_t slot = hashOf(key) & mask;
    for(; object.places[slot]; slot = (slot + 1) & mask)
        if(keyAt(value, (object.places[slot] & ~IsDuplicated) - 1) == key)
            break;
    return slot;
}

}
