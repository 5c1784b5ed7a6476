#ifndef Quillmere_editor_Test_FewDescriptors_h
#define Quillmere_editor_Test_FewDescriptors_h

#include <sys/resource.h>

namespace QuillmereEngine {

/** @brief As long as it lives, the process can't open anything */
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
