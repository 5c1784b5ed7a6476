#include "QuillmereEditor/uiValue.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <set>
#include <string>
#include <string_view>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/DebugStl.h>
#include <Corrade/Utility/FormatStl.h>

#include "QuillmereEditor/changePath.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

constexpr float LargestFloat = std::numeric_limits<float>::max();
/* Doubles below are rounded to the largest float, the others to infinity */
constexpr double EndOfFloats = 0x1.ffffffp127;

/* Room for what's appended, as much as for any widget of today */
constexpr rapidjson::SizeType ReservedElements = 16;

std::set<std::string, std::less<>> warnedPaths;

bool isFirstWarning(const char* const path) {
    return warnedPaths.find(std::string_view{path}) == warnedPaths.end() &&
        warnedPaths.emplace(path).second;
}

const char* kindName(const rapidjson::Value& value) {
    switch(value.GetType()) {
        case rapidjson::kNullType:
            return "null";
        case rapidjson::kFalseType:
            return "false";
        case rapidjson::kTrueType:
            return "true";
        case rapidjson::kObjectType:
            return "an object";
        case rapidjson::kArrayType:
            return "an array";
        case rapidjson::kStringType:
            return "a string";
        case rapidjson::kNumberType:
            return "a number";
    }
    return "nothing";
}

/* What isn't as expected in a value that warnOfNumbers() is called for */
std::string numbersProblem(const std::size_t count, const rapidjson::Value& value) {
    if(!value.IsArray())
        return kindName(value);
    for(rapidjson::SizeType i = 0; i != value.Size() && i != count; ++i)
        if(!value[i].IsNumber() && !value[i].IsNull())
            return Utility::formatString("{} at index {}", kindName(value[i]), i);
    return Utility::formatString("one of {}", value.Size());
}

template<class T> rapidjson::Value makeArray(
    const Containers::ArrayView<const T> values, rapidjson::MemoryPoolAllocator<>& pool) {
    rapidjson::Value out{rapidjson::kArrayType};
    out.Reserve(ReservedElements, pool);
    for(const T value: values)
        out.PushBack(jsonNumber(value), pool);
    return out;
}

}

float floatFrom(const rapidjson::Value& value) {
    if(!value.IsNumber())
        return 0.0f;
    const double number = value.GetDouble();
    /* The language leaves open what a conversion gives there */
    if(std::abs(number) > double(LargestFloat))
        return float(std::copysign(
            std::abs(number) < EndOfFloats ? LargestFloat : std::numeric_limits<float>::infinity(),
            float(std::copysign(1.0, number))));
    return float(number);
}

int integerFrom(const rapidjson::Value& value) {
    std::uint64_t bits = 0;
    if(value.IsDouble()) {
        const double number = value.GetDouble();
        std::memcpy(&bits, &number, sizeof(bits));
    } else if(value.IsInt64()) {
        bits = std::uint64_t(value.GetInt64());
    } else if(value.IsUint64()) {
        bits = value.GetUint64();
    }
    const auto low = std::uint32_t(bits);
    std::int32_t out;
    std::memcpy(&out, &low, sizeof(out));
    return out;
}

rapidjson::Value jsonNumber(const float value) {
    if(std::isnan(value))
        return rapidjson::Value{0.0};
    return rapidjson::Value{double(std::isinf(value) ? std::copysign(LargestFloat, value) : value)};
}

rapidjson::Value jsonNumber(const int value) { return rapidjson::Value{value}; }

rapidjson::Value jsonArray(
    const Containers::ArrayView<const float> values, rapidjson::MemoryPoolAllocator<>& pool) {
    return makeArray(values, pool);
}

rapidjson::Value jsonArray(
    const Containers::ArrayView<const int> values, rapidjson::MemoryPoolAllocator<>& pool) {
    return makeArray(values, pool);
}

void warnOfShape(
    const char* const path, const char* const expected, const rapidjson::Value& value) {
    if(isFirstWarning(path))
        Utility::Warning{} << "Ui: expected" << expected << "at" << printable(path) << "but got"
                           << kindName(value);
}

void warnOfNumbers(const char* const path, const std::size_t count, const rapidjson::Value& value) {
    if(isFirstWarning(path))
        Utility::Warning{} << "Ui: expected an array of" << count << "numbers at" << printable(path)
                           << "but got" << numbersProblem(count, value);
}

}
