#include "String.h"

#include <string_view>
#include <utility>

namespace Corrade { namespace Containers {

namespace Implementation {

const char* stringFind(const char* const data, const std::size_t size, const char* const needle,
    const std::size_t needleSize) {
    /* A null view has no place to point to, not even for nothing */
    if(!data || size < needleSize)
        return nullptr;
    if(!needleSize)
        return data;
    const std::size_t found = std::string_view{data, size}.find({needle, needleSize});
    return found == std::string_view::npos ? nullptr : data + found;
}

}

namespace {

std::string bytes(const char* const data, const std::size_t size) {
    return size ? std::string(data, size) : std::string{};
}

}

String::String() = default;

String::String(const StringView view): String{view.data(), view.size()} {}

String::String(const MutableStringView view): String{view.data(), view.size()} {}

String::String(const ArrayView<const char> view): String{view.data(), view.size()} {}

String::String(const char* const data): String{StringView{data}} {}

String::String(const char* const data, const std::size_t size) {
    CORRADE_ASSERT(data || !size, "Containers::String: received a null string of size" << size, );
    _data = bytes(data, size);
}

String::String(ValueInitT, const std::size_t size): _data(size, '\0') {}

String::String(NoInitT, const std::size_t size): _data(size, '\0') {}

String::String(DirectInitT, const std::size_t size, const char character): _data(size, character) {}

String::String(const String& other) = default;

/* The standard leaves the contents of a string that was moved from open */
String::String(String&& other) noexcept: _data{std::move(other._data)} { other._data.clear(); }

String::~String() = default;

String& String::operator=(const String& other) = default;

String& String::operator=(String&& other) noexcept {
    _data = std::move(other._data);
    other._data.clear();
    return *this;
}

String operator+(const StringView a, const StringView b) {
    String out{NoInit, a.size() + b.size()};
    if(a.size())
        std::memcpy(out.data(), a.data(), a.size());
    if(b.size())
        std::memcpy(out.data() + a.size(), b.data(), b.size());
    return out;
}

}}
