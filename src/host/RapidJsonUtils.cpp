#include "host/RapidJsonUtils.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Debug.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "host/jsonWalk.h"

using namespace Corrade;

namespace QuillmereEngine { namespace RapidJsonUtils {

namespace {

using Allocator = rapidjson::Document::AllocatorType;
using Pretty = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

/* Below this many levels lines aren't indented any further: the indentation of a document that is
   nested 10,000 deep would be hundreds of megabytes */
constexpr std::size_t MaxIndentedLevels = 64;
constexpr unsigned IndentWidth = 4;

/* RapidJSON's writers, but for doubles: they have no say in their digits and end at a NaN */
template<class Writer> class NumberWriter: public Writer {
public:
    using Writer::Writer;

    bool Double(const double value) {
        if(!std::isfinite(value))
            return Writer::Null();
        /* The longest is -2.2250738585072014e-308 */
        char text[32];
        char* end = std::to_chars(text, text + sizeof(text) - 2, value).ptr;
        if(std::none_of(text, end, [](const char c) { return c == '.' || c == 'e'; })) {
            *end++ = '.';
            *end++ = '0';
        }
        return Writer::RawValue(text, std::size_t(end - text), rapidjson::kNumberType);
    }
};

class IndentingWriter: public NumberWriter<Pretty> {
public:
    explicit IndentingWriter(rapidjson::StringBuffer& out): NumberWriter<Pretty>{out} {}

    bool StartArray() { return NumberWriter::StartArray() && enter(1); }
    bool StartObject() { return NumberWriter::StartObject() && enter(1); }

    /* The width is that of the line with the bracket, so it's set before and after */
    bool EndArray(const rapidjson::SizeType count) {
        return enter(-1) && NumberWriter::EndArray(count);
    }
    bool EndObject(const rapidjson::SizeType count) {
        return enter(-1) && NumberWriter::EndObject(count);
    }

private:
    bool enter(const int levels) {
        _depth += levels;
        SetIndent(' ', std::size_t(_depth) < MaxIndentedLevels ? IndentWidth : 0);
        return true;
    }

    int _depth = 0;
};

bool isContainer(const rapidjson::Value& value) { return value.IsArray() || value.IsObject(); }

rapidjson::Value copyPlain(const rapidjson::Value& value, Allocator& allocator) {
    if(value.IsString())
        return rapidjson::Value{value.GetString(), value.GetStringLength(), allocator};
    return rapidjson::Value{value, allocator};
}

/* Vectors, colours and matrices, which are most of what is edited. Needs none of the buffers that
   a whole tree does, which is a third of the time of a change. */
rapidjson::Value copyFlat(const rapidjson::Value& array, Allocator& allocator) {
    rapidjson::Value out{rapidjson::kArrayType};
    out.Reserve(array.Size(), allocator);
    for(const rapidjson::Value& value: array.GetArray()) {
        rapidjson::Value element = copyPlain(value, allocator);
        out.PushBack(element, allocator);
    }
    return out;
}

rapidjson::Value copyTree(const rapidjson::Value& value, Allocator& allocator) {
    rapidjson::Document out{&allocator};
    auto send = [&value](rapidjson::Document& document) { return walkJson(value, document); };
    out.Populate(send);
    rapidjson::Value copied;
    copied.Swap(out);
    return copied;
}

}

int enumStringToValue(
    const char* const string, const Containers::ArrayView<const char* const> names) {
    CORRADE_ASSERT(string, "RapidJsonUtils::enumStringToValue(): string was nullptr", -1);
    for(std::size_t i = 0; i != names.size(); ++i)
        if(std::strcmp(string, names[i]) == 0)
            return int(i);
    return -1;
}

rapidjson::Value copy(const rapidjson::Value& value, Allocator& allocator) {
    if(!isContainer(value))
        return copyPlain(value, allocator);
    if(value.IsArray() && std::none_of(value.Begin(), value.End(), isContainer))
        return copyFlat(value, allocator);
    return copyTree(value, allocator);
}

std::string toJson(const rapidjson::Value& value) {
    rapidjson::StringBuffer out;
    NumberWriter<rapidjson::Writer<rapidjson::StringBuffer>> writer{out};
    walkJson(value, writer);
    return {out.GetString(), out.GetSize()};
}

std::string toPrettyJson(const rapidjson::Value& value) {
    rapidjson::StringBuffer out;
    IndentingWriter writer{out};
    walkJson(value, writer);
    out.Put('\n');
    return {out.GetString(), out.GetSize()};
}

}}

namespace rapidjson {

Utility::Debug& operator<<(Utility::Debug& debug, const Value& value) {
    const std::string json = QuillmereEngine::RapidJsonUtils::toJson(value);
    return debug << Containers::StringView{json.data(), json.size()};
}

}
