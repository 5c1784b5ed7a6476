#ifndef Corrade_Utility_Debug_h
#define Corrade_Utility_Debug_h

/** @file
@brief Classes @ref Corrade::Utility::Debug, @ref Corrade::Utility::Warning and @ref Corrade::Utility::Error
*/

#include <Corrade/Containers/EnumSet.h>
#include <Corrade/Utility/Utility.h>
#include <Corrade/Utility/VisibilityMacros.h>
#include <cstddef>
#include <iosfwd>
#include <type_traits>
#include <utility>

namespace Corrade { namespace Utility {

/**
@brief One line of debug output

Values are separated by spaces; the destructor ends the line and flushes. An
object made with a stream redirects all later objects of the same class in the
same thread, until its destructor. Takes no locks: lines of several threads on
one stream may mix.
*/
class CORRADE_UTILITY_EXPORT Debug {
public:
    enum class Flag : unsigned char {
        NoNewlineAtTheEnd = 1,
        DisableColors = 2,
        NoSpace = 4,
        Packed = 8,
        Color = 16
    };
    typedef Containers::EnumSet<Flag> Flags;
    CORRADE_ENUMSET_FRIEND_OPERATORS(Flags)

    typedef void (*Modifier)(Debug&);

    /** @brief No space before the next value */
    static void nospace(Debug& debug);
    /** @brief A line break, with no spaces around it */
    static void newline(Debug& debug);
    /** @brief One space, with no others around it */
    static void space(Debug& debug);
    /** @brief The next container without braces and separators */
    static void packed(Debug& debug);

    /** @brief `std::cout` */
    static std::ostream* defaultOutput();
    /** @brief Present output of this class in this thread, null for silence */
    static std::ostream* output();

    explicit Debug(Flags flags = {});
    /** @brief Redirect to @p output, null for silence, until the destructor. Not retained longer. */
    explicit Debug(std::ostream* output, Flags flags = {});

    Debug(const Debug&) = delete;
    Debug(Debug&&) = delete;
    ~Debug();
    Debug& operator=(const Debug&) = delete;
    Debug& operator=(Debug&&) = delete;

    /** @brief Flags of all values of this line */
    Flags flags() const { return _flags; }
    void setFlags(Flags flags) { _flags = flags; }
    /** @brief Flags of the next value: @ref flags() and what was set for that value alone */
    Flags immediateFlags() const { return _flags | _immediateFlags; }
    void setImmediateFlags(Flags flags) { _immediateFlags = flags; }

    Debug& operator<<(bool value);
    Debug& operator<<(int value);
    Debug& operator<<(unsigned int value);
    Debug& operator<<(long value);
    Debug& operator<<(unsigned long value);
    Debug& operator<<(long long value);
    Debug& operator<<(unsigned long long value);
    Debug& operator<<(float value);
    Debug& operator<<(double value);
    Debug& operator<<(std::nullptr_t);
    Debug& operator<<(const char* value);
    Debug& operator<<(const void* value);
    Debug& operator<<(Containers::StringView value);
    Debug& operator<<(Containers::MutableStringView value);
    Debug& operator<<(const Containers::String& value);
    Debug& operator<<(Modifier modifier) {
        modifier(*this);
        return *this;
    }

protected:
    /* Where the present output of a class in this thread is kept */
    typedef std::ostream*& (*Slot)();

    explicit Debug(Slot slot, Flags flags);
    explicit Debug(Slot slot, std::ostream* output, Flags flags);

private:
    Debug& print(const char* data, std::size_t size);

    std::ostream* _output;
    std::ostream* _previousOutput;
    Slot _redirected;
    Flags _flags, _immediateFlags;
    bool _written;
};

/** @brief One line of a warning, by default on `std::cerr` */
class CORRADE_UTILITY_EXPORT Warning: public Debug {
public:
    static std::ostream* defaultOutput();
    static std::ostream* output();

    explicit Warning(Flags flags = {});
    explicit Warning(std::ostream* output, Flags flags = {});
    ~Warning();
};

/** @brief One line of an error, by default on `std::cerr` */
class CORRADE_UTILITY_EXPORT Error: public Debug {
public:
    static std::ostream* defaultOutput();
    static std::ostream* output();

    explicit Error(Flags flags = {});
    explicit Error(std::ostream* output, Flags flags = {});
    ~Error();
};

/** @brief Print into a temporary, `Debug{} << value` */
template<class T> Debug& operator<<(Debug&& debug, const T& value) { return debug << value; }

namespace Implementation {

template<class T, class = void> struct HasRange: std::false_type {};
template<class T> struct HasRange<T,
    std::void_t<decltype(std::declval<const T&>().begin()),
        decltype(std::declval<const T&>().end())>>: std::true_type {};

/* Text has begin() and end(), too, but isn't printed by elements. The standard
   strings are known by their character traits, which saves including them. */
template<class T, class = void> struct IsText: std::false_type {};
template<class T> struct IsText<T, std::void_t<typename T::traits_type>>: std::true_type {};
template<class T> struct IsText<Containers::BasicStringView<T>>: std::true_type {};
template<> struct IsText<Containers::String>: std::true_type {};

template<class T> struct IsContainer: std::bool_constant<HasRange<T>::value && !IsText<T>::value> {
};

}

/**
@brief Print a container as `{1, 2, 3}`

Containers in a container stand on a line each.
*/
template<class T> std::enable_if_t<Implementation::IsContainer<T>::value, Debug&> operator<<(
    Debug& debug, const T& container) {
    typedef std::decay_t<decltype(*container.begin())> Element;
    const char* const separator = Implementation::IsContainer<Element>::value ? ",\n " : ", ";
    const Debug::Flags packed = debug.immediateFlags() & Debug::Flag::Packed;
    /* Packed, the empty text makes the space that's due before the whole */
    debug << (packed ? "" : "{");

    bool first = true;
    for(const auto& element: container) {
        if(!first && !packed)
            debug << Debug::nospace << separator;
        debug.setImmediateFlags(Debug::Flag::NoSpace | packed);
        debug << element;
        first = false;
    }

    return packed ? debug : debug << Debug::nospace << "}";
}

}}

#endif
