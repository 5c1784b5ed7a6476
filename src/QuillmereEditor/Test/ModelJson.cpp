#include "QuillmereEditor/Test/ModelJson.h"

#include <algorithm>
#include <cstdio>
#include <limits>

namespace QuillmereEngine { namespace Test {

namespace {

std::string quoted(const std::string& text) {
    std::string out = "\"";
    for(const char c: text) {
        const std::size_t named = std::string{"\b\f\n\r\t\"\\"}.find(c);
        char escape[8];
        if(named != std::string::npos && c) {
            out += '\\';
            out += "bfnrt\"\\"[named];
        } else if(static_cast<unsigned char>(c) < 0x20) {
            std::snprintf(escape, sizeof(escape), "\\u%04X", unsigned(c));
            out += escape;
        } else {
            out += c;
        }
    }
    return out + '"';
}

ModelJson* child(ModelJson& parent, const std::string& component) {
    if(parent.isObject()) {
        const int i = parent.memberIndex(component);
        return i < 0 ? nullptr : &parent.members[std::size_t(i)].second;
    }
    const long long i = properIndex(component);
    if(!parent.isArray() || i < 0 || std::size_t(i) >= parent.items.size())
        return nullptr;
    return &parent.items[std::size_t(i)];
}

ModelJson& createChild(ModelJson& parent, const std::string& component) {
    const long long index = properIndex(component);
    if(parent.isArray() && component == "-")
        return parent.items.emplace_back();
    if(!parent.isObject() && index < 0)
        parent = ModelJson::object();
    else if(!parent.isContainer())
        parent = ModelJson::array();

    if(ModelJson* const there = child(parent, component))
        return *there;
    if(parent.isObject())
        return parent.members.emplace_back(component, ModelJson{}).second;
    parent.items.resize(std::size_t(index) + 1);
    return parent.items.back();
}

}

ModelJson ModelJson::number(const int value) {
    ModelJson out;
    out.kind = Kind::Number;
    out.value = value;
    return out;
}

ModelJson ModelJson::string(std::string value) {
    ModelJson out;
    out.kind = Kind::String;
    out.characters = std::move(value);
    return out;
}

ModelJson ModelJson::array(std::vector<ModelJson> items) {
    ModelJson out;
    out.kind = Kind::Array;
    out.items = std::move(items);
    return out;
}

ModelJson ModelJson::object(std::vector<std::pair<std::string, ModelJson>> members) {
    ModelJson out;
    out.kind = Kind::Object;
    out.members = std::move(members);
    return out;
}

int ModelJson::memberIndex(const std::string& name) const {
    for(std::size_t i = 0; i != members.size(); ++i)
        if(members[i].first == name)
            return int(i);
    return -1;
}

bool ModelJson::operator==(const ModelJson& other) const {
    return kind == other.kind && value == other.value && characters == other.characters &&
        items == other.items && members == other.members;
}

std::string ModelJson::text() const {
    std::string out;
    switch(kind) {
        case Kind::Null:
            return "null";
        case Kind::Number:
            return std::to_string(value);
        case Kind::String:
            return quoted(characters);
        case Kind::Array:
            for(const ModelJson& item: items)
                out += (out.empty() ? "" : ",") + item.text();
            return "[" + out + "]";
        case Kind::Object:
            for(const auto& member: members)
                out += (out.empty() ? "" : ",") + quoted(member.first) + ":" + member.second.text();
            return "{" + out + "}";
    }
    return {};
}

bool parsePointer(const std::string& path, ModelPath& components) {
    if(!path.empty() && path[0] != '/')
        return false;
    for(std::size_t i = 0; i != path.size(); ++i) {
        if(path[i] == '/') {
            components.emplace_back();
        } else if(path[i] != '~') {
            components.back() += path[i];
        } else {
            ++i;
            if(i == path.size() || (path[i] != '0' && path[i] != '1'))
                return false;
            components.back() += path[i] == '0' ? '~' : '/';
        }
    }
    return true;
}

bool isNumber(const std::string& component) {
    const std::size_t sign = component.compare(0, 1, "-") == 0 ? 1 : 0;
    return component.size() > sign &&
        component.find_first_not_of("0123456789", sign) == std::string::npos;
}

long long numberValue(const std::string& component) {
    const bool isNegative = component[0] == '-';
    long long value = 0;
    for(const char digit: component.substr(isNegative ? 1 : 0))
        value = std::min(value * 10 + (digit - '0'), 3000000000ll);
    return isNegative ? -value : value;
}

long long properIndex(const std::string& component) {
    const bool isProper = isNumber(component) && component[0] != '-' &&
        (component == "0" || component[0] != '0');
    return isProper ? numberValue(component) : -1;
}

ModelJson* find(ModelJson& root, const ModelPath& path) {
    ModelJson* at = &root;
    for(std::size_t i = 0; at && i != path.size(); ++i)
        at = child(*at, path[i]);
    return at;
}

ModelJson& create(ModelJson& root, const ModelPath& path) {
    ModelJson* at = &root;
    for(const std::string& component: path)
        at = &createChild(*at, component);
    return *at;
}

void erase(ModelJson& root, const ModelPath& path) {
    if(path.empty() || !find(root, path))
        return;
    ModelJson& parent = *find(root, {path.begin(), path.end() - 1});
    if(parent.isObject())
        parent.members.erase(parent.members.begin() + parent.memberIndex(path.back()));
    else
        parent.items.erase(parent.items.begin() + properIndex(path.back()));
}

}}
