#include "QuillmereEditor/changeLocation.h"

#include <cstdlib>
#include <string>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/DebugStl.h>

#include "QuillmereEditor/changePath.h"
#include "host/ProjectFile.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

/* RapidJSON pads an array up to the index that is created in it and doesn't look whether the pool
   had the memory. Below this size it's not worth asking. */
constexpr std::size_t PaddingWorthAsking = std::size_t{1} << 26;

bool isPaddingPossible(const std::size_t size) {
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

ChangeKind changeKind(
    const rapidjson::Value* const oldValue, const rapidjson::Value* const newValue) {
    if(!newValue)
        return ChangeKind::Removal;
    return oldValue ? ChangeKind::Replacement : ChangeKind::Creation;
}

ChangeLocation::ChangeLocation(const ProjectFile& project, const Containers::StringView path):
    _project(project),
    _path{path},
    _pool{_buffer, sizeof(_buffer)},
    _pointer(parsed(path, _pool)) {
    if(_pointer.IsValid())
        resolve();
    else
        _problem = "is not a JSON pointer";
}

bool ChangeLocation::isUsable(const char* const function, const ChangeKind kind) const {
    const char* const problem = _problem ? _problem : paddingProblem(kind);
    if(!problem)
        return true;
    Utility::Error{} << function << printable(_path) << problem;
    return false;
}

/* All arrays at once: each of them alone may have the memory that all of them haven't */
const char* ChangeLocation::paddingProblem(const ChangeKind kind) const {
    if(kind == ChangeKind::Removal)
        return nullptr;
    std::size_t size = _outerPadding + _lastPadding;
    if(isPaddingPossible(size))
        return nullptr;
    if(kind == ChangeKind::Creation && isMadeAnObject())
        size = _outerPadding;
    return isPaddingPossible(size) ? nullptr : "needs more memory than there is";
}

void ChangeLocation::resolve() {
    /* Not const: what is looked up here is what a change writes to */
    _value = const_cast<rapidjson::Document*>(&*_project.document);
    const Token* const tokens = _pointer.GetTokens();
    for(std::size_t i = 0; i != _pointer.GetTokenCount() && !_problem; ++i)
        enter(tokens[i]);
}

void ChangeLocation::enter(const Token& token) {
    _hasParent = _value;
    if(_value && _value->IsObject()) {
        const auto member = _value->FindMember(rapidjson::StringRef(token.name, token.length));
        _value = member == _value->MemberEnd() ? nullptr : &member->value;
        return;
    }

    /* RapidJSON notices only some overflows of an index, but nine digits are always right */
    const bool isInArray = _value && _value->IsArray() && token.index < _value->Size();
    if(!isInArray || token.length > 9)
        _problem = problemOf(token);
    if(!isInArray && token.index != rapidjson::kPointerInvalidIndex)
        (isLast(token) ? _lastPadding : _outerPadding) += (std::size_t{token.index} + 1) *
            sizeof(rapidjson::Value);
    _value = isInArray ? &(*_value)[token.index] : nullptr;
}

/* In an array each number is an index. Where nothing stands, or something that's to be replaced by
   a container, RapidJSON makes an array for a number without sign; and of a last component that has
   one the history would make an index, too. */
const char* ChangeLocation::problemOf(const Token& token) const {
    const IndexKind kind = indexKind(nameOf(token));
    const bool isArray = _value && _value->IsArray();
    if(kind != IndexKind::Negative && kind != IndexKind::TooLarge)
        return nullptr;

    if(!isArray && kind == IndexKind::Negative && !isLast(token))
        return nullptr;
    if(!isArray && isLast(token) && isMadeAnObject())
        return nullptr;
    return kind == IndexKind::Negative ? "has a negative array index"
                                       : "has an array index above 2147483647";
}

bool ChangeLocation::isLast(const Token& token) const {
    return &token == _pointer.GetTokens() + _pointer.GetTokenCount() - 1;
}

/* A default that's no container says that its parent is an object, whatever the member's name */
bool ChangeLocation::isMadeAnObject() const {
    if(_hasParent)
        return false;
    const rapidjson::Value* const standard = _project.getValue(std::string{_path}.c_str(), true);
    return standard && !standard->IsObject() && !standard->IsArray();
}

}
