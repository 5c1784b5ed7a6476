#include "editor/scriptPointer.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include <rapidjson/pointer.h>
#include <rapidjson/stringbuffer.h>

#include "host/ProjectFile.h"

namespace QuillmereEngine {

namespace {

using Token = rapidjson::Pointer::Token;

bool areDigits(const std::string_view text) {
    return !text.empty() &&
        std::all_of(text.begin(), text.end(), [](const char i) { return i >= '0' && i <= '9'; });
}

enum class Kind { Name, Index, Negative };

/* A number as people write one. With a leading zero it's a name to the document. */
Kind kindOf(const std::string_view name) {
    if(name.size() > 1 && name[0] == '-' && areDigits(name.substr(1)))
        return Kind::Negative;
    return areDigits(name) && (name.size() == 1 || name[0] != '0') ? Kind::Index : Kind::Name;
}

bool isBeyond(const std::string_view index, const std::size_t size) {
    std::size_t value = 0;
    return std::from_chars(index.data(), index.data() + index.size(), value).ec != std::errc{} ||
        value > size;
}

/* Walks down one pointer */
class Walk {
public:
    explicit Walk(const ProjectFile& project, const std::string_view text):
        _project{project},
        _text{text},
        _pointer{_text.c_str(), text.size()},
        _value{&*project.document} {}

    bool isValid() const {
        return _pointer.IsValid() && (_text.empty() || _text[0] == '/') &&
            _text.find('\0') == std::string::npos;
    }

    ScriptPlace toRead() const {
        const rapidjson::Value* const value = _pointer.Get(*_project.document);
        return {{}, value, _pointer.GetTokenCount()};
    }

    ScriptPlace toWrite() {
        const std::size_t count = _pointer.GetTokenCount();
        std::size_t found = 0;
        for(std::size_t i = 0; i != count; ++i) {
            std::string problem = enter(i);
            if(!problem.empty())
                return {std::move(problem)};
            found += _value != nullptr;
        }
        return {{}, _value, count, found, found + 1 < count && isNameByDefault(count - 1)};
    }

private:
    static std::string_view nameOf(const Token& token) { return {token.name, token.length}; }

    /* The pointer up to a component */
    std::string textBefore(const std::size_t index) const {
        rapidjson::StringBuffer out;
        rapidjson::Pointer{_pointer.GetTokens(), index}.Stringify(out);
        return quoted({out.GetString(), out.GetSize()});
    }

    std::string enter(const std::size_t i) {
        const std::string_view name = nameOf(_pointer.GetTokens()[i]);
        if(_value && !_value->IsArray() && !_value->IsObject())
            return textBefore(i) + " is neither an array nor an object";
        if(_value && _value->IsObject()) {
            const auto member = _value->FindMember(
                rapidjson::StringRef(name.data(), rapidjson::SizeType(name.size())));
            _value = member == _value->MemberEnd() ? nullptr : &member->value;
            return {};
        }
        return _value ? enterArray(i, name) : enterNothing(i, name);
    }

    std::string enterArray(const std::size_t i, const std::string_view name) {
        const std::size_t size = _value->Size();
        if(kindOf(name) == Kind::Name)
            return quoted(name) + " is not an index of the array " + textBefore(i);
        std::string problem = indexProblem(i, name, size);
        if(!problem.empty())
            return problem;
        rapidjson::SizeType index = 0;
        std::from_chars(name.data(), name.data() + name.size(), index);
        _value = index < size ? &(*_value)[index] : nullptr;
        return {};
    }

    /* A number makes an array and a name an object, unless a default says that numbers are names */
    std::string enterNothing(const std::size_t i, const std::string_view name) const {
        const bool isNumber = kindOf(name) != Kind::Name || areDigits(name) || name == "-0";
        return isNumber && !isNameByDefault(i) ? indexProblem(i, name, 0) : std::string{};
    }

    std::string indexProblem(
        const std::size_t i, const std::string_view name, const std::size_t size) const {
        if(kindOf(name) == Kind::Negative)
            return quoted(name) + " is a negative index";
        if(isBeyond(name, size) || kindOf(name) != Kind::Index)
            return "index " + std::string{name} + " is beyond the size of " + textBefore(i) +
                ", which is " + std::to_string(size);
        return {};
    }

    bool isNameByDefault(const std::size_t i) const {
        if(i + 1 != _pointer.GetTokenCount() || i == 0)
            return false;
        const rapidjson::Value* const standard = _project.getValue(_text.c_str(), true);
        return standard && !standard->IsArray() && !standard->IsObject();
    }

    const ProjectFile& _project;
    std::string _text;
    rapidjson::Pointer _pointer;
    const rapidjson::Value* _value;
};

}

std::string quoted(const std::string_view text) {
    constexpr const char* Digits = "0123456789abcdef";
    std::string out = "\"";
    for(const char i: text) {
        const auto byte = static_cast<unsigned char>(i);
        if(byte < 0x20 || byte == 0x7f)
            out += {'\\', 'x', Digits[byte >> 4], Digits[byte & 15]};
        else
            out += i;
    }
    return out += '"';
}

ScriptPlace placeToRead(const ProjectFile& project, const std::string_view pointer) {
    const Walk walk{project, pointer};
    if(!walk.isValid())
        return {"not a JSON pointer"};
    return walk.toRead();
}

ScriptPlace placeToWrite(const ProjectFile& project, const std::string_view pointer) {
    Walk walk{project, pointer};
    if(!walk.isValid())
        return {"not a JSON pointer"};
    if(pointer.empty())
        return {"the root can't be changed"};
    return walk.toWrite();
}

}
