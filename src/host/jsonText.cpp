#include "host/jsonText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <locale.h>
#include <string_view>
#include <vector>

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/pointer.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>

#include "host/jsonWalk.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

/* Numbers come as text: RapidJSON 1.1.0 shifts by the width of an integer to read a zero with a
   negative exponent in full precision, which is undefined */
constexpr unsigned ParseFlags = rapidjson::kParseIterativeFlag |
    rapidjson::kParseFullPrecisionFlag | rapidjson::kParseNumbersAsStringsFlag;

/* A double of any syntax that RapidJSON let pass, infinite if it's too large for one */
double doubleFrom(const char* const text, const std::size_t length) {
    double value = 0.0;
    if(std::from_chars(text, text + length, value).ec == std::errc{})
        return value;
    /* Too small or too large, which from_chars() doesn't tell apart */
    static const locale_t independent = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(std::string{text, length}.c_str(), nullptr, independent);
}

template<class Integer>
bool integerFrom(const char* const text, const std::size_t length, Integer& value) {
    const auto result = std::from_chars(text, text + length, value);
    return result.ec == std::errc{} && result.ptr == text + length;
}

/* Hands everything on, makes numbers of their text, and stops where a level too deep begins or a
   number is too large */
template<class Target> class CheckedTarget {
public:
    explicit CheckedTarget(Target& target): _target(target) {}

    bool isTooDeep() const { return _depth > MaxJsonDepth; }
    bool isNumberTooLarge() const { return _isNumberTooLarge; }

    bool Null() { return _target.Null(); }
    bool Bool(const bool value) { return _target.Bool(value); }
    bool Int(const int value) { return _target.Int(value); }
    bool Uint(const unsigned value) { return _target.Uint(value); }
    bool Int64(const std::int64_t value) { return _target.Int64(value); }
    bool Uint64(const std::uint64_t value) { return _target.Uint64(value); }
    bool Double(const double value) { return _target.Double(value); }
    /* The narrowest kind isn't looked for, a value knows by itself into which it fits */
    bool RawNumber(const char* const text, const rapidjson::SizeType length, bool) {
        std::int64_t integer;
        std::uint64_t large;
        if(integerFrom(text, length, integer))
            return _target.Int64(integer);
        if(integerFrom(text, length, large))
            return _target.Uint64(large);
        const double value = doubleFrom(text, length);
        _isNumberTooLarge = std::isinf(value);
        return !_isNumberTooLarge && _target.Double(value);
    }
    bool String(const char* const text, const rapidjson::SizeType length, const bool copy) {
        return _target.String(text, length, copy);
    }
    bool Key(const char* const text, const rapidjson::SizeType length, const bool copy) {
        return _target.Key(text, length, copy);
    }
    bool StartObject() { return ++_depth <= MaxJsonDepth && _target.StartObject(); }
    bool StartArray() { return ++_depth <= MaxJsonDepth && _target.StartArray(); }
    bool EndObject(const rapidjson::SizeType count) {
        --_depth;
        return _target.EndObject(count);
    }
    bool EndArray(const rapidjson::SizeType count) {
        --_depth;
        return _target.EndArray(count);
    }

private:
    Target& _target;
    std::size_t _depth = 0;
    bool _isNumberTooLarge = false;
};

void setPlace(JsonTextError& error, const std::string_view text, const std::size_t offset) {
    const std::string_view before = text.substr(0, offset);
    error.line = 1 + std::size_t(std::count(before.begin(), before.end(), '\n'));
    const std::string_view line = before.substr(before.rfind('\n') + 1);
    error.column = 1 + std::size_t(std::count_if(line.begin(), line.end(), [](const char byte) {
        return (byte & 0xc0) != 0x80;
    }));
}

/* RapidJSON stops at a NUL and takes it for the end of the text */
bool endsAt(const std::string_view text, const rapidjson::MemoryStream& stream) {
    return stream.Tell() >= text.size();
}

std::string_view nameOf(const rapidjson::Value::Member& member) {
    return {member.name.GetString(), member.name.GetStringLength()};
}

/* Name that occurs twice in an object, with null data if there's none */
std::string_view duplicateName(const rapidjson::Value& object) {
    std::vector<std::string_view> names;
    names.reserve(object.MemberCount());
    for(const rapidjson::Value::Member& member: object.GetObject())
        names.push_back(nameOf(member));
    std::sort(names.begin(), names.end());
    const auto found = std::adjacent_find(names.begin(), names.end());
    return found == names.end() ? std::string_view{} : *found;
}

struct SearchLevel {
    const rapidjson::Value* value;
    rapidjson::SizeType next;
};

void appendComponent(std::string& path, const std::string_view name) {
    path += '/';
    for(const char c: name) {
        if(c == '~')
            path += "~0";
        else if(c == '/')
            path += "~1";
        else
            path += c;
    }
}

/* The path of what the search has reached, behind each level's last child */
std::string searchPath(const std::vector<SearchLevel>& levels) {
    std::string path;
    for(std::size_t i = 0; i + 1 < levels.size(); ++i) {
        const rapidjson::SizeType child = levels[i].next - 1;
        if(levels[i].value->IsArray())
            appendComponent(path, std::to_string(child));
        else
            appendComponent(path, nameOf(levels[i].value->MemberBegin()[child]));
    }
    return path;
}

/* The next container in a container, null if there's none any more */
const rapidjson::Value* nextContainer(SearchLevel& level) {
    const rapidjson::Value& value = *level.value;
    const rapidjson::SizeType count = value.IsArray() ? value.Size() : value.MemberCount();
    while(level.next != count) {
        const rapidjson::SizeType i = level.next++;
        const rapidjson::Value& child = value.IsArray() ? value[i] : value.MemberBegin()[i].value;
        if(child.IsArray() || child.IsObject())
            return &child;
    }
    return nullptr;
}

}

bool parseJson(
    const Containers::StringView fullText, rapidjson::Document& out, JsonTextError& error) {
    std::string_view text{fullText.data(), fullText.size()};
    if(text.substr(0, 3) == "\xef\xbb\xbf")
        text.remove_prefix(3);

    rapidjson::MemoryStream stream{text.data(), text.size()};
    rapidjson::Reader reader;
    rapidjson::ParseResult result;
    rapidjson::Document parsed;
    auto parse = [&](rapidjson::Document& document) {
        CheckedTarget<rapidjson::Document> target{document};
        result = reader.Parse<ParseFlags>(stream, target);
        if(target.isTooDeep())
            error.message = "Nested deeper than " + std::to_string(MaxJsonDepth) + " levels.";
        else if(target.isNumberTooLarge())
            error.message = rapidjson::GetParseError_En(rapidjson::kParseErrorNumberTooBig);
        else if(result.IsError())
            error.message = rapidjson::GetParseError_En(result.Code());
        else if(!endsAt(text, stream))
            error.message = "A NUL character outside of a string.";
        else
            return true;
        setPlace(error, text, result.IsError() ? result.Offset() : stream.Tell());
        return false;
    };
    parsed.Populate(parse);
    if(result.IsError() || !endsAt(text, stream))
        return false;
    out = std::move(parsed);
    return true;
}

bool isJsonDepthValid(const rapidjson::Value& value) {
    rapidjson::BaseReaderHandler<> nowhere;
    CheckedTarget<rapidjson::BaseReaderHandler<>> target{nowhere};
    return walkJson(value, target);
}

std::string duplicateMember(const rapidjson::Value& value) {
    std::vector<SearchLevel> levels;
    const rapidjson::Value* container = value.IsArray() || value.IsObject() ? &value : nullptr;
    while(container || !levels.empty()) {
        if(!container) {
            levels.pop_back();
        } else {
            levels.push_back({container, 0});
            const std::string_view name = container->IsObject() ? duplicateName(*container)
                                                                : std::string_view{};
            if(name.data()) {
                std::string path = searchPath(levels);
                appendComponent(path, name);
                return path;
            }
        }
        container = levels.empty() ? nullptr : nextContainer(levels.back());
    }
    return {};
}

}
