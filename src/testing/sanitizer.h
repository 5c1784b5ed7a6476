#ifndef Quillmere_testing_sanitizer_h
#define Quillmere_testing_sanitizer_h

namespace QuillmereEngine { namespace Testing {

/** @brief Whether the build is instrumented, so that long tests have to do with less */
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool IsSanitized = true;
#elif defined(__has_feature)
constexpr bool IsSanitized = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool IsSanitized = false;
#endif

}}

#endif
