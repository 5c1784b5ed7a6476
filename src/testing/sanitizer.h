#ifndef Quillmere_testing_sanitizer_h
#define Quillmere_testing_sanitizer_h

/* QUILLMERE_TEST_SANITIZED: defined under the address or thread sanitizer. GCC says it with macros,
   clang with features. */
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define QUILLMERE_TEST_SANITIZED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define QUILLMERE_TEST_SANITIZED
#endif
#endif

#endif
