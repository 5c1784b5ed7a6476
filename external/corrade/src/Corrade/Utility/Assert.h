#ifndef Corrade_Utility_Assert_h
#define Corrade_Utility_Assert_h

/** @file
@brief Assertions that say what was expected

A failed one prints its message on the default error output, wherever
@ref Corrade::Utility::Error is redirected to, and aborts. Three macros change
this, for a whole target or not at all: `CORRADE_NO_ASSERT` leaves the checks
out, `CORRADE_GRACEFUL_ASSERT` lets a function with a redirected error return
instead, `CORRADE_STANDARD_ASSERT` makes each a C `assert()`.
*/

#include <Corrade/Utility/Macros.h>
#include <cstdlib>
#include <utility>

#ifdef CORRADE_STANDARD_ASSERT
#include <cassert>
#endif
#ifndef CORRADE_NO_ASSERT
#include <Corrade/Utility/Debug.h>
#endif

/* The statement form, for all that print a line and end the program */
#define CORRADE_ASSERT_IMPLEMENT_ABORT(...)                                                        \
    do {                                                                                           \
        Corrade::Utility::Error{Corrade::Utility::Error::defaultOutput()} << __VA_ARGS__;          \
        std::abort();                                                                              \
    } while(false)
#define CORRADE_ASSERT_IMPLEMENT_TEXT(expression)                                                  \
    "Assertion " expression " failed at " __FILE__ ":" CORRADE_LINE_STRING
#define CORRADE_ASSERT_IMPLEMENT_UNREACHABLE_TEXT                                                  \
    "Reached unreachable code at " __FILE__ ":" CORRADE_LINE_STRING

#if defined(CORRADE_NO_ASSERT)

#define CORRADE_ASSERT(condition, message, returnValue) static_cast<void>(0)
#define CORRADE_ASSERT_OUTPUT(call, message, returnValue) static_cast<void>(call)
#define CORRADE_ASSERT_UNREACHABLE(message, returnValue) std::abort()
#define CORRADE_CONSTEXPR_ASSERT(condition, message) static_cast<void>(0)
#define CORRADE_INTERNAL_ASSERT(condition) static_cast<void>(0)
#define CORRADE_INTERNAL_ASSERT_OUTPUT(call) static_cast<void>(call)
#define CORRADE_INTERNAL_ASSERT_EXPRESSION(...) (__VA_ARGS__)
#define CORRADE_INTERNAL_ASSERT_UNREACHABLE() std::abort()

#elif defined(CORRADE_STANDARD_ASSERT)

#define CORRADE_ASSERT(condition, message, returnValue) assert(condition)
#define CORRADE_ASSERT_OUTPUT(call, message, returnValue) CORRADE_INTERNAL_ASSERT_OUTPUT(call)
#define CORRADE_ASSERT_UNREACHABLE(message, returnValue) CORRADE_INTERNAL_ASSERT_UNREACHABLE()
#define CORRADE_CONSTEXPR_ASSERT(condition, message) assert(condition)
#define CORRADE_INTERNAL_ASSERT(condition) assert(condition)
#define CORRADE_INTERNAL_ASSERT_OUTPUT(call)                                                       \
    do {                                                                                           \
        const bool corradeAssertSucceeded = static_cast<bool>(call);                               \
        assert(corradeAssertSucceeded&& #call);                                                    \
        static_cast<void>(corradeAssertSucceeded);                                                 \
    } while(false)
#define CORRADE_INTERNAL_ASSERT_EXPRESSION(...)                                                    \
    Corrade::Utility::Implementation::assertStandard(__VA_ARGS__)
#define CORRADE_INTERNAL_ASSERT_UNREACHABLE()                                                      \
    do {                                                                                           \
        assert(!"unreachable code");                                                               \
        std::abort();                                                                              \
    } while(false)

#else

/** @brief Expect @p condition, or print @p message, which is `a << b << c` */
#ifdef CORRADE_GRACEFUL_ASSERT
#define CORRADE_ASSERT(condition, message, returnValue)                                            \
    do {                                                                                           \
        if(!(condition)) {                                                                         \
            Corrade::Utility::Error{} << message;                                                  \
            if(Corrade::Utility::Error::output() == Corrade::Utility::Error::defaultOutput())      \
                std::abort();                                                                      \
            return returnValue;                                                                    \
        }                                                                                          \
    } while(false)
#else
#define CORRADE_ASSERT(condition, message, returnValue)                                            \
    do {                                                                                           \
        if(!(condition))                                                                           \
            CORRADE_ASSERT_IMPLEMENT_ABORT(message);                                               \
    } while(false)
#endif

/** @brief Expect @p call to be true. Made also where assertions are left out. */
#define CORRADE_ASSERT_OUTPUT(call, message, returnValue) CORRADE_ASSERT(call, message, returnValue)

/** @brief Expect never to get here */
#ifdef CORRADE_GRACEFUL_ASSERT
#define CORRADE_ASSERT_UNREACHABLE(message, returnValue)                                           \
    do {                                                                                           \
        Corrade::Utility::Error{} << message;                                                      \
        if(Corrade::Utility::Error::output() == Corrade::Utility::Error::defaultOutput())          \
            std::abort();                                                                          \
        return returnValue;                                                                        \
    } while(false)
#else
#define CORRADE_ASSERT_UNREACHABLE(message, returnValue) CORRADE_ASSERT_IMPLEMENT_ABORT(message)
#endif

/**
@brief Expect @p condition, as an expression

For constexpr functions: `return CORRADE_CONSTEXPR_ASSERT(i < n, "…"), data[i];`.
Has no value to return to, so it aborts in any case.
*/
#define CORRADE_CONSTEXPR_ASSERT(condition, message)                                               \
    static_cast<void>((condition) ? 0 : ([&]() { CORRADE_ASSERT_IMPLEMENT_ABORT(message); }(), 0))

/** @brief Expect @p condition, or print it with the place it stands at */
#define CORRADE_INTERNAL_ASSERT(condition)                                                         \
    do {                                                                                           \
        if(!(condition))                                                                           \
            CORRADE_ASSERT_IMPLEMENT_ABORT(CORRADE_ASSERT_IMPLEMENT_TEXT(#condition));             \
    } while(false)

/** @brief Expect @p call to be true. Made also where assertions are left out. */
#define CORRADE_INTERNAL_ASSERT_OUTPUT(call)                                                       \
    do {                                                                                           \
        if(!(call))                                                                                \
            CORRADE_ASSERT_IMPLEMENT_ABORT(CORRADE_ASSERT_IMPLEMENT_TEXT(#call));                  \
    } while(false)

/** @brief Expect the expression to be true and give its value */
#define CORRADE_INTERNAL_ASSERT_EXPRESSION(...)                                                    \
    Corrade::Utility::Implementation::assertExpression(                                            \
        __VA_ARGS__, CORRADE_ASSERT_IMPLEMENT_TEXT(#__VA_ARGS__))

/** @brief Expect never to get here */
#define CORRADE_INTERNAL_ASSERT_UNREACHABLE()                                                      \
    CORRADE_ASSERT_IMPLEMENT_ABORT(CORRADE_ASSERT_IMPLEMENT_UNREACHABLE_TEXT)

#endif

namespace Corrade { namespace Utility { namespace Implementation {

#if defined(CORRADE_STANDARD_ASSERT) && !defined(CORRADE_NO_ASSERT)
template<class T> T assertStandard(T&& value) {
    assert(value);
    return std::forward<T>(value);
}
#elif !defined(CORRADE_NO_ASSERT)
/* A temporary is given on by value, so a reference to it may be kept */
template<class T> T assertExpression(T&& value, const char* const message) {
    if(!value)
        CORRADE_ASSERT_IMPLEMENT_ABORT(message);
    return std::forward<T>(value);
}
#endif

}}}

#endif
