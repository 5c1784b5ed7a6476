#ifndef Corrade_Tags_h
#define Corrade_Tags_h

/** @file
@brief Tags that tell constructors apart by name
*/

namespace Corrade {

namespace Implementation {
/* Keeps the tags from being made of a pair of braces, which would make every
   overload set that takes one ambiguous */
enum class TagToken { Only };
}

/** @brief Leave new elements to default initialization */
struct DefaultInitT {
    constexpr explicit DefaultInitT(Implementation::TagToken) noexcept {}
};

/** @brief Zero or value-construct new elements */
struct ValueInitT {
    constexpr explicit ValueInitT(Implementation::TagToken) noexcept {}
};

/** @brief Leave the memory of new elements untouched */
struct NoInitT {
    constexpr explicit NoInitT(Implementation::TagToken) noexcept {}
};

/** @brief Create an object that holds nothing */
struct NoCreateT {
    constexpr explicit NoCreateT(Implementation::TagToken) noexcept {}
};

/** @brief Construct each element from the same arguments */
struct DirectInitT {
    constexpr explicit DirectInitT(Implementation::TagToken) noexcept {}
};

/** @brief Construct in place from the arguments that follow */
struct InPlaceInitT {
    constexpr explicit InPlaceInitT(Implementation::TagToken) noexcept {}
};

constexpr DefaultInitT DefaultInit{Implementation::TagToken::Only};
constexpr ValueInitT ValueInit{Implementation::TagToken::Only};
constexpr NoInitT NoInit{Implementation::TagToken::Only};
constexpr NoCreateT NoCreate{Implementation::TagToken::Only};
constexpr DirectInitT DirectInit{Implementation::TagToken::Only};
constexpr InPlaceInitT InPlaceInit{Implementation::TagToken::Only};

}

#endif
