#include "plugins/outline/resourceTypes.h"

#include <cstring>

#include <rapidjson/document.h>

namespace QuillmereEngine {

namespace {

constexpr std::size_t LongestPayloadType = 32;

bool isResources(const rapidjson::Value& value) {
    return value.IsObject() && !value.ObjectEmpty() && value.MemberBegin()->value.IsObject();
}

}

std::vector<std::string> resourceTypes(const rapidjson::Value& root) {
    std::vector<std::string> out;
    if(!root.IsObject())
        return out;
    for(const rapidjson::Value::Member& member: root.GetObject()) {
        const char* const key = member.name.GetString();
        const std::size_t size = std::strlen(key);
        if(isResources(member.value) && size != 0 && size <= LongestPayloadType &&
            std::strcmp(key, "objects") != 0)
            out.push_back(key);
    }
    return out;
}

}
