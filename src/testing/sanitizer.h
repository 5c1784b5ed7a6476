#ifndef Quillmere_testing_sanitizer_h
#define Quillmere_testing_sanitizer_h

/* GCC has macros for it, clang asks */
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define QUILLMERE_IS_SANITIZED 1
#elif defined(__has_feature)
#define QUILLMERE_IS_SANITIZED (__has_feature(address_sanitizer) || __has_feature(thread_sanitizer))
#else
#define QUILLMERE_IS_SANITIZED 0
#endif

namespace QuillmereEngine { namespace Testing {

/** @brief Whether the build is instrumented, so that long tests have to do with less */
#if QUILLMERE_IS_SANITIZED
constexpr bool IsSanitized = true;
#else
constexpr bool IsSanitized = false;
#endif

}}

#endif
