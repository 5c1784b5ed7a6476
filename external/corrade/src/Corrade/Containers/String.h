#ifndef Corrade_Containers_String_h
#define Corrade_Containers_String_h

/** @file
@brief Class @ref Corrade::Containers::String
*/

#include <Corrade/Containers/StringView.h>
#include <Corrade/Tags.h>
#include <string>

namespace Corrade { namespace Containers {

/**
@brief Owning string, always followed by a NUL

Bytes in no particular encoding, NULs included. A short one allocates nothing.
*/
class CORRADE_UTILITY_EXPORT String {
public:
    String();
    String(StringView view);
    String(MutableStringView view);
    String(ArrayView<const char> view);
    /** @brief Up to the first NUL. A null pointer gives an empty string. */
    String(const char* data);
    /** @brief Expects that @p data isn't null, unless @p size is zero */
    String(const char* data, std::size_t size);
    explicit String(ValueInitT, std::size_t size);
    explicit String(NoInitT, std::size_t size);
    explicit String(DirectInitT, std::size_t size, char character);
    /** @brief From a string that another header knows, such as StringStl.h */
    template<class Other,
        class = decltype(Implementation::StringAdapter<const char, std::decay_t<Other>>::from(
            std::declval<Other>())),
        class = std::enable_if_t<!std::is_same<std::decay_t<Other>, String>::value>>
    String(Other&& other):
        String{StringView{Implementation::StringAdapter<const char, std::decay_t<Other>>::from(
            std::forward<Other>(other))}} {}

    String(const String& other);
    String(String&& other) noexcept;
    ~String();
    String& operator=(const String& other);
    String& operator=(String&& other) noexcept;

    operator ArrayView<const char>() const { return {data(), size()}; }
    /** @brief To a string that another header knows */
    template<class Other,
        class = decltype(Implementation::StringAdapter<const char, Other>::to(nullptr, 0))>
    operator Other() const {
        return Implementation::StringAdapter<const char, Other>::to(data(), size());
    }

    /** @brief Whether there is at least one byte */
    explicit operator bool() const { return size(); }

    /** @brief Never null, not even of an empty string */
    char* data() { return _data.data(); }
    const char* data() const { return _data.data(); }
    std::size_t size() const { return _data.size(); }
    bool isEmpty() const { return _data.empty(); }

    char* begin() { return data(); }
    const char* begin() const { return data(); }
    const char* cbegin() const { return data(); }
    char* end() { return data() + size(); }
    const char* end() const { return data() + size(); }
    const char* cend() const { return data() + size(); }

    /** @brief First byte. Expects that there is one. */
    char& front() { return view().front(); }
    char front() const { return view().front(); }
    /** @brief Last byte. Expects that there is one. */
    char& back() { return view().back(); }
    char back() const { return view().back(); }
    char& operator[](std::size_t i) { return data()[i]; }
    char operator[](std::size_t i) const { return data()[i]; }

    MutableStringView slice(char* begin, char* end) { return view().slice(begin, end); }
    StringView slice(const char* begin, const char* end) const { return view().slice(begin, end); }
    MutableStringView slice(std::size_t begin, std::size_t end) { return view().slice(begin, end); }
    StringView slice(std::size_t begin, std::size_t end) const { return view().slice(begin, end); }
    MutableStringView prefix(char* end) { return view().prefix(end); }
    StringView prefix(const char* end) const { return view().prefix(end); }
    MutableStringView prefix(std::size_t count) { return view().prefix(count); }
    StringView prefix(std::size_t count) const { return view().prefix(count); }
    MutableStringView exceptPrefix(std::size_t count) { return view().exceptPrefix(count); }
    StringView exceptPrefix(std::size_t count) const { return view().exceptPrefix(count); }
    MutableStringView exceptPrefix(StringView prefix) { return view().exceptPrefix(prefix); }
    StringView exceptPrefix(StringView prefix) const { return view().exceptPrefix(prefix); }
    MutableStringView exceptSuffix(std::size_t count) { return view().exceptSuffix(count); }
    StringView exceptSuffix(std::size_t count) const { return view().exceptSuffix(count); }
    MutableStringView exceptSuffix(StringView suffix) { return view().exceptSuffix(suffix); }
    StringView exceptSuffix(StringView suffix) const { return view().exceptSuffix(suffix); }

    bool hasPrefix(StringView prefix) const { return view().hasPrefix(prefix); }
    bool hasPrefix(char prefix) const { return view().hasPrefix(prefix); }
    bool hasSuffix(StringView suffix) const { return view().hasSuffix(suffix); }
    bool hasSuffix(char suffix) const { return view().hasSuffix(suffix); }
    bool contains(StringView substring) const { return view().contains(substring); }
    bool contains(char character) const { return view().contains(character); }
    MutableStringView find(StringView substring) { return view().find(substring); }
    StringView find(StringView substring) const { return view().find(substring); }
    MutableStringView find(char character) { return view().find(character); }
    StringView find(char character) const { return view().find(character); }

private:
    MutableStringView view() { return {data(), size(), StringViewFlag::NullTerminated}; }
    StringView view() const { return {data(), size(), StringViewFlag::NullTerminated}; }

    std::string _data;
};

namespace Implementation {

template<> struct StringAdapter<const char, String> {
    static StringView from(const String& string) {
        return {string.data(), string.size(), StringViewFlag::NullTerminated};
    }
};

template<> struct StringAdapter<char, String> {
    static MutableStringView from(String& string) {
        return {string.data(), string.size(), StringViewFlag::NullTerminated};
    }
};

}

}}

#endif
