#ifndef Corrade_Containers_EnumSet_h
#define Corrade_Containers_EnumSet_h

/** @file
@brief Class @ref Corrade::Containers::EnumSet and its operators
*/

#include <Corrade/Containers/Containers.h>

namespace Corrade { namespace Containers {

/**
@brief Set of the bits of an enum class
@tparam T           Enum whose values are bits or unions of bits
@tparam fullValue   Bits that a complement may contain

The operators with an enum value on the left come from
@ref CORRADE_ENUMSET_OPERATORS or @ref CORRADE_ENUMSET_FRIEND_OPERATORS.
*/
template<class T, std::underlying_type_t<T> fullValue> class EnumSet {
public:
    typedef T Type;
    typedef std::underlying_type_t<T> UnderlyingType;
    enum : UnderlyingType { FullValue = fullValue };

    constexpr EnumSet() noexcept: _value{} {}
    constexpr EnumSet(T value) noexcept: _value{UnderlyingType(value)} {}

    constexpr bool operator==(EnumSet other) const { return _value == other._value; }
    constexpr bool operator!=(EnumSet other) const { return _value != other._value; }
    /** @brief Whether all bits of @p other are in this set */
    constexpr bool operator>=(EnumSet other) const {
        return (_value & other._value) == other._value;
    }
    /** @brief Whether all bits of this set are in @p other */
    constexpr bool operator<=(EnumSet other) const { return other >= *this; }

    constexpr EnumSet operator|(EnumSet other) const { return of(_value | other._value); }
    constexpr EnumSet operator&(EnumSet other) const { return of(_value & other._value); }
    constexpr EnumSet operator^(EnumSet other) const { return of(_value ^ other._value); }
    constexpr EnumSet& operator|=(EnumSet other) { return *this = *this | other; }
    constexpr EnumSet& operator&=(EnumSet other) { return *this = *this & other; }
    constexpr EnumSet& operator^=(EnumSet other) { return *this = *this ^ other; }
    /** @brief What of the full value isn't in this set */
    constexpr EnumSet operator~() const { return of(fullValue & ~_value); }

    constexpr explicit operator bool() const { return _value != UnderlyingType{}; }
    constexpr explicit operator UnderlyingType() const { return _value; }

private:
    /* Integer promotion makes an int of a smaller underlying type */
    template<class U> static constexpr EnumSet of(U value) { return EnumSet{T(value)}; }

    UnderlyingType _value;
};

/** @brief Number behind an enum value */
template<class T> constexpr std::enable_if_t<std::is_enum<T>::value, std::underlying_type_t<T>>
enumCastUnderlyingType(T value) {
    return std::underlying_type_t<T>(value);
}

/** @brief Number behind an enum set */
template<class T, std::underlying_type_t<T> fullValue>
constexpr std::underlying_type_t<T> enumCastUnderlyingType(EnumSet<T, fullValue> value) {
    return std::underlying_type_t<T>(value);
}

}}

#define CORRADE_ENUMSET_IMPLEMENT_OPERATORS(specifiers, ...)                                       \
    specifiers constexpr bool operator==(typename __VA_ARGS__::Type a, __VA_ARGS__ b) {            \
        return __VA_ARGS__{a} == b;                                                                \
    }                                                                                              \
    specifiers constexpr bool operator!=(typename __VA_ARGS__::Type a, __VA_ARGS__ b) {            \
        return __VA_ARGS__{a} != b;                                                                \
    }                                                                                              \
    specifiers constexpr bool operator>=(typename __VA_ARGS__::Type a, __VA_ARGS__ b) {            \
        return __VA_ARGS__{a} >= b;                                                                \
    }                                                                                              \
    specifiers constexpr bool operator<=(typename __VA_ARGS__::Type a, __VA_ARGS__ b) {            \
        return __VA_ARGS__{a} <= b;                                                                \
    }                                                                                              \
    specifiers constexpr __VA_ARGS__ operator|(typename __VA_ARGS__::Type a, __VA_ARGS__ b) {      \
        return __VA_ARGS__{a} | b;                                                                 \
    }                                                                                              \
    specifiers constexpr __VA_ARGS__ operator&(typename __VA_ARGS__::Type a, __VA_ARGS__ b) {      \
        return __VA_ARGS__{a} & b;                                                                 \
    }                                                                                              \
    specifiers constexpr __VA_ARGS__ operator^(typename __VA_ARGS__::Type a, __VA_ARGS__ b) {      \
        return __VA_ARGS__{a} ^ b;                                                                 \
    }                                                                                              \
    specifiers constexpr __VA_ARGS__ operator~(typename __VA_ARGS__::Type a) {                     \
        return ~__VA_ARGS__{a};                                                                    \
    }

/** @brief Operators with a value of the enum on the left, at namespace scope */
#define CORRADE_ENUMSET_OPERATORS(...)                                                             \
    CORRADE_ENUMSET_IMPLEMENT_OPERATORS([[maybe_unused]] inline, __VA_ARGS__)
/** @brief Operators with a value of the enum on the left, inside a class */
#define CORRADE_ENUMSET_FRIEND_OPERATORS(...)                                                      \
    CORRADE_ENUMSET_IMPLEMENT_OPERATORS([[maybe_unused]] friend, __VA_ARGS__)

#endif
