#include "host/ProjectFile.h"

#include <algorithm>
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

using Token = rapidjson::Pointer::Token;

bool isEqual(const Token& a, const Token& b) {
    return a.length == b.length && std::memcmp(a.name, b.name, a.length) == 0;
}

bool isWildcard(const Token& token) { return token.length == 1 && token.name[0] == '*'; }

bool isSame(const rapidjson::Pointer& a, const rapidjson::Pointer& b) {
    return std::equal(a.GetTokens(), a.GetTokens() + a.GetTokenCount(), b.GetTokens(),
        b.GetTokens() + b.GetTokenCount(), isEqual);
}

bool matches(const rapidjson::Pointer& pattern, const rapidjson::Pointer& path) {
    return std::equal(pattern.GetTokens(), pattern.GetTokens() + pattern.GetTokenCount(),
        path.GetTokens(), path.GetTokens() + path.GetTokenCount(),
        [](const Token& a, const Token& b) { return isWildcard(a) || isEqual(a, b); });
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

    const rapidjson::Document& root = *document;
    const rapidjson::Pointer pointer{path};
    if(pointer.IsValid()) {
        /* Const is the project, not what it holds: the document is a public member */
        if(const rapidjson::Value* const value = pointer.Get(root))
            return const_cast<rapidjson::Value*>(value);
        if(const Default* const found = findDefault(pointer))
            return const_cast<rapidjson::Value*>(&found->value);
    }
    return strict ? nullptr : &_absent;
}

const ProjectFile::Default* ProjectFile::findDefault(const rapidjson::Pointer& path) const {
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

bool ProjectFile::load(const std::string& file) {
    std::string text, reason;
    if(!readWholeFile(file, text, reason)) {
        Utility::Error{} << "ProjectFile::load(): can't read" << file << Utility::Debug::nospace
                         << ":" << reason;
        return false;
    }

    Containers::Pointer<rapidjson::Document> loaded{InPlaceInit};
    JsonTextError error;
    if(!parseJson({text.data(), text.size()}, *loaded, error)) {
        Utility::Error{} << "ProjectFile::load(): can't parse" << file << "line" << error.line
                         << "column" << error.column << Utility::Debug::nospace << ":"
                         << error.message;
        return false;
    }

    const std::string duplicate = duplicateMember(*loaded);
    if(!duplicate.empty())
        Utility::Warning{} << "ProjectFile::load():" << file << "has more than one member"
                           << duplicate << Utility::Debug::nospace << ", the first one counts";
    document = std::move(loaded);
    return true;
}

bool ProjectFile::save(const std::string& file) const {
    const rapidjson::Document& root = *document;
    std::string reason = "Nested deeper than " + std::to_string(MaxJsonDepth) + " levels";
    if(isJsonDepthValid(root)) {
        const std::string text = RapidJsonUtils::toPrettyJson(root);
        if(replaceFile(file, {text.data(), text.size()}, reason))
            return true;
    }
    Utility::Error{} << "ProjectFile::save(): can't write" << file << Utility::Debug::nospace << ":"
                     << reason;
    return false;
}

}
