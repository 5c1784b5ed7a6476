#ifndef Quillmere_common_blockReserve_h
#define Quillmere_common_blockReserve_h

#include <cstddef>

#include <Corrade/Containers/Array.h>

namespace QuillmereEngine {

/**
@brief Array on a block of the process's reserve
@param size     Number of elements
@param source   What will be copied into the array, may be null. The array begins at the same place
    in its page, as far as the alignment of eight bytes goes: on some processors (measured on a
    Zen 4) the C library's `memcpy()` is nine times as slow where the two places are close but not
    the same.
@return @p size elements of unspecified content. Its deleter gives the block back.

For large arrays that are made and freed in every frame: a block that comes back is handed out
again, so that its pages need not be faulted in anew. A block that nobody asked for during the last
64 requests is freed. Any thread.
*/
template<class T>
Corrade::Containers::Array<T> reserveArray(std::size_t size, const void* source = nullptr);

extern template Corrade::Containers::Array<char> reserveArray<char>(std::size_t, const void*);
extern template Corrade::Containers::Array<std::size_t> reserveArray<std::size_t>(
    std::size_t, const void*);

/** @brief Free all blocks that wait in the reserve. Any thread. */
void trimReserve();

/** @brief Blocks that wait in the reserve, for tests. Any thread. */
std::size_t reservedBlockCount();

}

#endif
