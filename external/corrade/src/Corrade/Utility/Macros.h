#ifndef Corrade_Utility_Macros_h
#define Corrade_Utility_Macros_h

/** @file
@brief Preprocessor helpers
*/

#define CORRADE_STRINGIFY_EXPANDED(value) #value
#define CORRADE_STRINGIFY(value) CORRADE_STRINGIFY_EXPANDED(value)

/** @brief Line of the place of use, as a string literal */
#define CORRADE_LINE_STRING CORRADE_STRINGIFY(__LINE__)

/** @brief Silence deprecation warnings up to @ref CORRADE_IGNORE_DEPRECATED_POP. No semicolon. */
#define CORRADE_IGNORE_DEPRECATED_PUSH                                                             \
    _Pragma("GCC diagnostic push") _Pragma("GCC diagnostic ignored \"-Wdeprecated-declarations\"")
/** @brief Let deprecation warnings be what they were again. No semicolon. */
#define CORRADE_IGNORE_DEPRECATED_POP _Pragma("GCC diagnostic pop")

#endif
