#include "host/ProjectFile.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <utility>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/DebugStl.h>

#include "host/RapidJsonUtils.h"
#include "host/ValueAccess.h"
#include "host/jsonText.h"
#include "host/replaceFile.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

/* Paths that are longer are parsed on the heap, which takes as long as all the rest */
constexpr std::size_t UsualPathSize = 512;

/* Of parsed paths, whatever their allocator is */
template<class A, class B> bool isEqual(const A& a, const B& b) {
    return a.length == b.length && std::memcmp(a.name, b.name, a.length) == 0;
}

/* As in JSON pointers: digits, and no zero in front of others */
rapidjson::SizeType indexFrom(const std::string_view text) {
    rapidjson::SizeType index = 0;
    const std::from_chars_result result = std::from_chars(
        text.data(), text.data() + text.size(), index);
    const bool isIndex = result.ec == std::errc{} && result.ptr == text.data() + text.size() &&
        (text[0] != '0' || text.size() == 1);
    return isIndex ? index : rapidjson::kPointerInvalidIndex;
}

bool isWildcard(const rapidjson::Pointer::Token& token) {
    return token.length == 1 && token.name[0] == '*';
}

template<class A, class B> bool isSame(const A& a, const B& b) {
    return std::equal(a.GetTokens(), a.GetTokens() + a.GetTokenCount(), b.GetTokens(),
        b.GetTokens() + b.GetTokenCount(),
        [](const auto& i, const auto& j) { return isEqual(i, j); });
}

template<class Path> bool matches(const rapidjson::Pointer& pattern, const Path& path) {
    return std::equal(pattern.GetTokens(), pattern.GetTokens() + pattern.GetTokenCount(),
        path.GetTokens(), path.GetTokens() + path.GetTokenCount(),
        [](const auto& i, const auto& j) { return isWildcard(i) || isEqual(i, j); });
}

/* By their lengths, as a name in JSON may have a NUL in it */
bool isNamed(const rapidjson::Value& resource, const std::string& name) {
    if(!resource.IsObject())
        return false;
    const auto found = resource.FindMember("name");
    return found != resource.MemberEnd() &&
        found->value == rapidjson::Value{rapidjson::StringRef(name.data(), name.size())};
}

}

ProjectFile::ProjectFile(): document{InPlaceInit, rapidjson::kObjectType} {}

ProjectFile::~ProjectFile() = default;

rapidjson::MemoryPoolAllocator<>& ProjectFile::allocator() { return document->GetAllocator(); }

rapidjson::Value* ProjectFile::getValue(const char* const path, const bool strict) const {
    CORRADE_ASSERT(path, "ProjectFile::getValue(): path was nullptr", {});

    if(const rapidjson::Value* const value = findPlain(path))
        return const_cast<rapidjson::Value*>(value);

    alignas(std::max_align_t) char buffer[UsualPathSize];
    rapidjson::MemoryPoolAllocator<> pool{buffer, sizeof(buffer)};
    const Path pointer(path, &pool);
    if(pointer.IsValid()) {
        /* Const is the project, not what it holds: the document is a public member */
        if(const rapidjson::Value* const value = find(pointer))
            return const_cast<rapidjson::Value*>(value);
        if(const Default* const found = findDefault(pointer))
            return const_cast<rapidjson::Value*>(&found->value);
    }
    return strict ? nullptr : &_absent;
}

const rapidjson::Value* ProjectFile::child(const rapidjson::Value& value,
    const std::string_view name, const rapidjson::SizeType index) const {
    if(value.IsObject())
        return _memberIndex.find(value, name);
    return value.IsArray() && index < value.Size() ? &value[index] : nullptr;
}

/* Without parsing the path first, which takes longer than to follow it. Null also for a path with
   escapes and for one that's no JSON pointer. */
const rapidjson::Value* ProjectFile::findPlain(const char* const path) const {
    if(std::strpbrk(path, "~#"))
        return nullptr;
    std::string_view rest{path};
    const rapidjson::Value* value = &*document;
    while(!rest.empty() && value) {
        if(rest[0] != '/')
            return nullptr;
        const std::string_view name = rest.substr(1, rest.substr(1).find('/'));
        rest.remove_prefix(name.size() + 1);
        value = child(*value, name, value->IsArray() ? indexFrom(name) : 0);
    }
    return value;
}

/* As RapidJSON's pointers look themselves up, but for the index of members */
const rapidjson::Value* ProjectFile::find(const Path& path) const {
    const rapidjson::Value* value = &*document;
    for(std::size_t i = 0; i != path.GetTokenCount() && value; ++i) {
        const Path::Token& token = path.GetTokens()[i];
        value = child(*value, {token.name, token.length}, token.index);
    }
    return value;
}

const ProjectFile::Default* ProjectFile::findDefault(const Path& path) const {
    const Default* found = nullptr;
    for(const Default& candidate: _defaults) {
        if(isSame(candidate.pattern, path))
            return &candidate;
        if(!found && matches(candidate.pattern, path))
            found = &candidate;
    }
    return found;
}

void ProjectFile::setDefault(const char* const pattern, const rapidjson::Value& value) {
    CORRADE_ASSERT(pattern, "ProjectFile::setDefault(): pattern was nullptr", );
    const rapidjson::Pointer parsed{pattern};
    CORRADE_ASSERT(parsed.IsValid(),
        "ProjectFile::setDefault(): expected a JSON pointer but got" << pattern, );

    rapidjson::Value copy = RapidJsonUtils::copy(value, _defaultAllocator);
    const auto found = std::find_if(_defaults.begin(), _defaults.end(),
        [&parsed](const Default& candidate) { return isSame(candidate.pattern, parsed); });
    if(found != _defaults.end())
        found->value = copy;
    else
        _defaults.push_back({parsed, std::move(copy)});
}

const char* ProjectFile::resourceByName(
    const std::string& typeName, const std::string& name) const {
    const rapidjson::Value& root = *document;
    if(!root.IsObject())
        return nullptr;
    /* A bare StringRef would be taken as a C string, which ends at a NUL in the name */
    const auto resources = root.FindMember(
        rapidjson::Value{rapidjson::StringRef(typeName.data(), typeName.size())});
    if(resources == root.MemberEnd() || !resources->value.IsObject())
        return nullptr;
    /* Not by key, which would be another search for each of them */
    for(const rapidjson::Value::Member& resource: resources->value.GetObject()) {
        if(isNamed(resource.value, name))
            return resource.name.GetString();
    }
    return nullptr;
}

ValueAccess ProjectFile::operator[](const char* const typeName) const {
    CORRADE_ASSERT(
        typeName, "ProjectFile::operator[](): typeName was nullptr", ValueAccess{nullptr});
    return ValueAccess{*document}[typeName];
}

ValueAccess ProjectFile::resource(const char* const typeName, const char* const key) const {
    const rapidjson::Value& root = *document;
    if(!root.IsObject())
        return ValueAccess{nullptr};
    const rapidjson::Value* const resources = _memberIndex.find(root, typeName);
    if(!resources || !resources->IsObject())
        return ValueAccess{nullptr};
    return ValueAccess{_memberIndex.find(*resources, key)};
}

bool ProjectFile::load(const std::string& file, const TextFunction& loaded) {
    std::string text, reason;
    if(!readWholeFile(file, text, reason)) {
        Utility::Error{} << "ProjectFile::load(): can't read" << file << Utility::Debug::nospace
                         << ":" << reason;
        return false;
    }

    Containers::Pointer<rapidjson::Document> parsed{InPlaceInit};
    JsonTextError error;
    if(!parseJson({text.data(), text.size()}, *parsed, error)) {
        Utility::Error{} << "ProjectFile::load(): can't parse" << file << "line" << error.line
                         << "column" << error.column << Utility::Debug::nospace << ":"
                         << error.message;
        return false;
    }

    const std::string duplicate = duplicateMember(*parsed);
    if(!duplicate.empty())
        Utility::Warning{} << "ProjectFile::load():" << file << "has more than one member"
                           << duplicate << Utility::Debug::nospace << ", the first one counts";
    document = std::move(parsed);
    _memberIndex.clear();
    if(loaded)
        loaded({text.data(), text.size()});
    return true;
}

bool ProjectFile::save(const std::string& file, const TextFunction& aboutToWrite) const {
    const rapidjson::Document& root = *document;
    std::string reason = "Nested deeper than " + std::to_string(MaxJsonDepth) + " levels";
    if(isJsonDepthValid(root)) {
        const std::string text = RapidJsonUtils::toPrettyJson(root);
        if(aboutToWrite)
            aboutToWrite({text.data(), text.size()});
        if(replaceFile(file, {text.data(), text.size()}, reason))
            return true;
    }
    Utility::Error{} << "ProjectFile::save(): can't write" << file << Utility::Debug::nospace << ":"
                     << reason;
    return false;
}

}
