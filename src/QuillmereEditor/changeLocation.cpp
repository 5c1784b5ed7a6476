#include "QuillmereEditor/changeLocation.h"

#include <cstdlib>
#include <string>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Debug.h>

#include "QuillmereEditor/changePath.h"
#include "host/ProjectFile.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

/* RapidJSON pads an array up to the index that is created in it and doesn't look whether the pool
   had the memory. Below this size it's not worth asking. */
constexpr std::size_t PaddingWorthAsking = std::size_t{1} << 26;

bool isPaddingPossible(const std::size_t index) {
    const std::size_t size = (index + 1) * sizeof(rapidjson::Value);
    if(size < PaddingWorthAsking)
        return true;
    void* const probe = std::malloc(size);
    std::free(probe);
    return probe;
}

/* As a URI fragment the path is decoded by looking one byte ahead, so that one has to be there */
ChangeLocation::Pointer parsed(
    const Containers::StringView path, rapidjson::MemoryPoolAllocator<>& pool) {
    if(path.hasPrefix('#'))
        return ChangeLocation::Pointer{
            std::string{path.data(), path.size()}.c_str(), path.size(), &pool};
    return ChangeLocation::Pointer{path.data(), path.size(), &pool};
}

Containers::StringView nameOf(const ChangeLocation::Pointer::Token& token) {
    return {token.name, token.length};
}

}

ChangeLocation::ChangeLocation(const ProjectFile& project, const Containers::StringView path):
    _path{path},
    _pool{_buffer, sizeof(_buffer)},
    _pointer(parsed(path, _pool)) {
    if(_pointer.IsValid())
        resolve(project);
    else
        _problem = "is not a JSON pointer";
}

bool ChangeLocation::isUsable(const char* const function) const {
    if(!_problem)
        return true;
    Utility::Error{} << function << _path << _problem;
    return false;
}

void ChangeLocation::resolve(const ProjectFile& project) {
    /* Not const: what is looked up here is what a change writes to */
    _value = const_cast<rapidjson::Document*>(&*project.document);
    const Token* const tokens = _pointer.GetTokens();
    for(std::size_t i = 0; i != _pointer.GetTokenCount() && !_problem; ++i)
        _problem = enter(project, tokens[i]);
}

const char* ChangeLocation::enter(const ProjectFile& project, const Token& token) {
    if(_value && _value->IsObject()) {
        const auto member = _value->FindMember(rapidjson::StringRef(token.name, token.length));
        _value = member == _value->MemberEnd() ? nullptr : &member->value;
        return nullptr;
    }

    /* RapidJSON notices only some overflows of an index, but nine digits are always right */
    const bool isInArray = _value && _value->IsArray() && token.index < _value->Size();
    if(isInArray && token.length <= 9) {
        _value = &(*_value)[token.index];
        return nullptr;
    }

    const char* const problem = problemOf(project, token);
    if(!problem && !isInArray && token.index != rapidjson::kPointerInvalidIndex &&
        !isPaddingPossible(token.index))
        return "needs more memory than there is";
    _value = isInArray ? &(*_value)[token.index] : nullptr;
    return problem;
}

/* In an array each number is an index. Where nothing stands, or something that's to be replaced by
   a container, RapidJSON makes an array for a number without sign; and of a last component that has
   one the history would make an index, too. */
const char* ChangeLocation::problemOf(const ProjectFile& project, const Token& token) const {
    const IndexKind kind = indexKind(nameOf(token));
    const bool isArray = _value && _value->IsArray();
    if(kind != IndexKind::Negative && kind != IndexKind::TooLarge)
        return nullptr;

    const bool isLast = &token == _pointer.GetTokens() + _pointer.GetTokenCount() - 1;
    if(!isArray && kind == IndexKind::Negative && !isLast)
        return nullptr;
    if(!isArray && isLast && isMadeAnObject(project))
        return nullptr;
    return kind == IndexKind::Negative ? "has a negative array index"
                                       : "has an array index above 2147483647";
}

/* A default that's no container says that its parent is an object, whatever the member's name */
bool ChangeLocation::isMadeAnObject(const ProjectFile& project) const {
    if(_value)
        return false;
    const rapidjson::Value* const standard = project.getValue(std::string{_path}.c_str(), true);
    return standard && !standard->IsObject() && !standard->IsArray();
}

}
