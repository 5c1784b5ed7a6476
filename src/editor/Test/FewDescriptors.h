#ifndef Quillmere_editor_Test_FewDescriptors_h
#define Quillmere_editor_Test_FewDescriptors_h

#include <sys/resource.h>

namespace QuillmereEngine {

/**
@brief As long as it lives, the process can't open anything

Not the sanitizer either, which opens a pipe to look at an object of a class with virtual functions
that it hasn't seen before, and calls the object broken where it can't. So meanwhile only what was used
before is to be used, nothing of the fixture, and nothing expected.
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
