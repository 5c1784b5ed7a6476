#ifndef Quillmere_host_jsonWalk_h
#define Quillmere_host_jsonWalk_h

#include <vector>

#include <rapidjson/document.h>

namespace QuillmereEngine {

struct JsonLevel {
    const rapidjson::Value* container;
    rapidjson::SizeType next;
};

template<class Handler> bool sendNumber(const rapidjson::Value& value, Handler& handler) {
    if(value.IsDouble())
        return handler.Double(value.GetDouble());
    if(value.IsInt())
        return handler.Int(value.GetInt());
    if(value.IsUint())
        return handler.Uint(value.GetUint());
    if(value.IsInt64())
        return handler.Int64(value.GetInt64());
    return handler.Uint64(value.GetUint64());
}

/* Strings are announced as ones to copy, those held by reference, too */
template<class Handler>
bool sendValue(const rapidjson::Value& value, Handler& handler, std::vector<JsonLevel>& levels) {
    switch(value.GetType()) {
        case rapidjson::kNullType:
            return handler.Null();
        case rapidjson::kFalseType:
            return handler.Bool(false);
        case rapidjson::kTrueType:
            return handler.Bool(true);
        case rapidjson::kNumberType:
            return sendNumber(value, handler);
        case rapidjson::kStringType:
            return handler.String(value.GetString(), value.GetStringLength(), true);
        case rapidjson::kArrayType:
            levels.push_back({&value, 0});
            return handler.StartArray();
        case rapidjson::kObjectType:
            levels.push_back({&value, 0});
            return handler.StartObject();
    }
    return false;
}

/* The next child of the innermost container, null at its end */
template<class Handler>
const rapidjson::Value* nextChild(JsonLevel& level, Handler& handler, bool& isGood) {
    if(level.container->IsArray())
        return level.next == level.container->Size() ? nullptr : &(*level.container)[level.next++];
    if(level.next == level.container->MemberCount())
        return nullptr;
    const auto& member = level.container->MemberBegin()[level.next++];
    isGood = handler.Key(member.name.GetString(), member.name.GetStringLength(), true);
    return &member.value;
}

/**
@brief Send a value to a RapidJSON handler
@param value    Not to be changed by the handler
@return Whether the handler took everything

Does what `rapidjson::Value::Accept()` does, but on the heap instead of the stack: a document can be
nested as deep as its file is long.
*/
template<class Handler> bool walkJson(const rapidjson::Value& value, Handler& handler) {
    std::vector<JsonLevel> levels;
    bool isGood = sendValue(value, handler, levels);
    while(isGood && !levels.empty()) {
        const rapidjson::Value& container = *levels.back().container;
        if(const rapidjson::Value* const child = nextChild(levels.back(), handler, isGood)) {
            isGood = isGood && sendValue(*child, handler, levels);
            continue;
        }
        levels.pop_back();
        isGood = container.IsArray() ? handler.EndArray(container.Size())
                                     : handler.EndObject(container.MemberCount());
    }
    return isGood;
}

}

#endif
