#ifndef Quillmere_QuillmereEditor_Tools_Test_limitedMemory_h
#define Quillmere_QuillmereEditor_Tools_Test_limitedMemory_h

#include <cstddef>

namespace QuillmereEngine { namespace Testing {

/** @brief While it exists, this thread gets no block of memory with more bytes */
class LimitedMemory {
public:
    explicit LimitedMemory(std::size_t greatestBlock);
    LimitedMemory(const LimitedMemory&) = delete;
    LimitedMemory& operator=(const LimitedMemory&) = delete;
    ~LimitedMemory();
};

}}

#endif
