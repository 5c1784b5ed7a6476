#include "limitedMemory.h"

#include <cstdlib>
#include <new>

/* In a source of its own: where the compiler sees one of these and not the other it warns of a
   mismatch */

namespace {

thread_local std::size_t limit = 0;

}

void* operator new(const std::size_t size) {
    if(!limit || size <= limit)
        if(void* const block = std::malloc(size ? size : 1))
            return block;
    throw std::bad_alloc{};
}

void operator delete(void* const block) noexcept { std::free(block); }

void operator delete(void* const block, std::size_t) noexcept { std::free(block); }

namespace QuillmereEngine { namespace Testing {

LimitedMemory::LimitedMemory(const std::size_t greatestBlock) { limit = greatestBlock; }

LimitedMemory::~LimitedMemory() { limit = 0; }

}}
