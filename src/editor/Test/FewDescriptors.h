#ifndef Quillmere_editor_Test_FewDescriptors_h
#define Quillmere_editor_Test_FewDescriptors_h

#include <sys/resource.h>

namespace QuillmereEngine {

/**
@brief As long as it lives, the process can't open anything

Tests with it are skipped where the build is sanitized: the sanitizer opens a pipe to look at an object
of a class with virtual functions, and calls it broken where it can't.
*/
class FewDescriptors {
public:
    FewDescriptors() {
        getrlimit(RLIMIT_NOFILE, &_before);
        rlimit few = _before;
        /* The three standard ones are there, and what is open stays */
        few.rlim_cur = 3;
        setrlimit(RLIMIT_NOFILE, &few);
    }

    FewDescriptors(const FewDescriptors&) = delete;
    FewDescriptors& operator=(const FewDescriptors&) = delete;
    ~FewDescriptors() { setrlimit(RLIMIT_NOFILE, &_before); }

private:
    rlimit _before;
};

}

#endif
