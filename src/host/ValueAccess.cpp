#include "host/ValueAccess.h"

#include <Corrade/Utility/Assert.h>
#include <rapidjson/document.h>

namespace QuillmereEngine {

bool JsonObject::isString() const { return _value && _value->IsString(); }

const char* JsonObject::asString() const { return isString() ? _value->GetString() : ""; }

bool JsonObject::asBool() const { return _value && _value->IsTrue(); }

const rapidjson::Value* JsonObject::member(
    const char* const key, const char* const function) const {
    CORRADE_ASSERT(key, function << "key was nullptr", {});
    if(!_value || !_value->IsObject())
        return nullptr;
    const auto found = _value->FindMember(key);
    return found == _value->MemberEnd() ? nullptr : &found->value;
}

std::size_t ValueAccess::size() const {
    return _value && _value->IsObject() ? _value->MemberCount() : 0;
}

const char* ValueAccess::key(const std::size_t index) const {
    CORRADE_ASSERT(index < size(),
        "ValueAccess::key(): expected an index below" << size() << "but got" << index, {});
    return _value->MemberBegin()[rapidjson::SizeType(index)].name.GetString();
}

ValueAccess ValueAccess::at(const std::size_t index) const {
    CORRADE_ASSERT(index < size(),
        "ValueAccess::at(): expected an index below" << size() << "but got" << index,
        ValueAccess{nullptr});
    return ValueAccess{_value->MemberBegin()[rapidjson::SizeType(index)].value};
}

}
