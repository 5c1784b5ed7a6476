#include "plugins/inspector/objectMember.h"

#include <algorithm>
#include <cstring>

#include <rapidjson/document.h>

namespace QuillmereEngine {

namespace {

constexpr rapidjson::SizeType LongestVector = 4;

bool isInteger(const rapidjson::Value& value) { return value.IsInt(); }
bool isNumber(const rapidjson::Value& value) { return value.IsNumber(); }
bool isText(const rapidjson::Value& value) { return value.IsString(); }

ValueShape shapeOfArray(const rapidjson::Value& array) {
    const auto areAll = [&array](bool (*const is)(const rapidjson::Value&)) {
        return std::all_of(array.Begin(), array.End(), is);
    };
    if(!array.Empty() && areAll(isText))
        return ValueShape::Texts;
    if(array.Size() < 2 || array.Size() > LongestVector || !areAll(isNumber))
        return ValueShape::Array;
    return areAll(isInteger) ? ValueShape::Integers : ValueShape::Numbers;
}

std::size_t sizeOf(const rapidjson::Value& value) {
    if(value.IsObject())
        return value.MemberCount();
    return value.IsArray() ? value.Size() : 0;
}

}

ValueShape shapeOf(const rapidjson::Value& value) {
    switch(value.GetType()) {
        case rapidjson::kNullType:
            return ValueShape::Null;
        case rapidjson::kFalseType:
        case rapidjson::kTrueType:
            return ValueShape::Boolean;
        case rapidjson::kObjectType:
            return ValueShape::Object;
        case rapidjson::kArrayType:
            return shapeOfArray(value);
        case rapidjson::kStringType:
            return ValueShape::Text;
        case rapidjson::kNumberType:
            break;
    }
    return isInteger(value) ? ValueShape::Integer : ValueShape::Number;
}

std::string escapedKey(const std::string& key) {
    std::string out;
    for(const char c: key) {
        if(c == '~')
            out += "~0";
        else if(c == '/')
            out += "~1";
        else
            out += c;
    }
    return out;
}

std::vector<ObjectMember> membersOf(const rapidjson::Value& value, const std::size_t most) {
    std::vector<ObjectMember> out;
    if(value.IsObject())
        for(const rapidjson::Value::Member& member: value.GetObject()) {
            if(out.size() == most)
                break;
            if(std::strlen(member.name.GetString()) == member.name.GetStringLength())
                out.push_back(
                    {member.name.GetString(), shapeOf(member.value), sizeOf(member.value)});
        }
    else if(value.IsArray())
        for(rapidjson::SizeType i = 0; i < value.Size() && out.size() != most; ++i)
            out.push_back({std::to_string(i), shapeOf(value[i]), sizeOf(value[i])});
    return out;
}

}
