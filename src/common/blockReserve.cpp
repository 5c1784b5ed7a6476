#include "common/blockReserve.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <mutex>
#include <new>

using namespace Corrade;

namespace QuillmereEngine {

namespace {

constexpr std::size_t PageSize = 4096;

/* The beginning of each block. Somewhere behind it, in the next page at the latest, the data
   begins, with the block's address right in front. */
struct Block {
    /* In bytes, wherever the data begins */
    std::size_t capacity;
    std::uint64_t returned;
};

constexpr std::size_t Overhead = sizeof(Block) + sizeof(Block*) + PageSize;

char* placeData(Block* const block, const void* const source) {
    char* const first = reinterpret_cast<char*>(block + 1) + sizeof(Block*);
    const std::size_t wanted = reinterpret_cast<std::uintptr_t>(source) & ~std::uintptr_t{7};
    const std::size_t shift = (wanted - reinterpret_cast<std::uintptr_t>(first)) % PageSize;
    char* const data = first + shift;
    std::memcpy(data - sizeof(Block*), &block, sizeof(Block*));
    return data;
}

Block* blockOf(const void* const data) {
    Block* block;
    std::memcpy(&block, static_cast<const char*>(data) - sizeof(Block*), sizeof(Block*));
    return block;
}

class Reserve {
public:
    Block* take(std::size_t size);
    void give(Block* block);
    void trim();
    std::size_t count();

private:
    /* A console frame has four large arrays at a time, two of its panels eight */
    static constexpr std::size_t SlotCount = 8;
    static constexpr std::uint64_t MaxAge = 64;
    /* A block may be this many times as large as what's asked for; small ones always fit */
    static constexpr std::size_t MaxWaste = 4;
    static constexpr std::size_t SmallBlock = 64 * 1024;

    void freeUnused(std::uint64_t maxAge);
    static bool fits(const Block& block, std::size_t size);

    std::mutex _mutex;
    Block* _blocks[SlotCount]{};
    std::uint64_t _requests = 0;
};

bool Reserve::fits(const Block& block, const std::size_t size) {
    return block.capacity >= size &&
        (block.capacity <= SmallBlock || block.capacity / MaxWaste <= size);
}

void Reserve::freeUnused(const std::uint64_t maxAge) {
    for(Block*& block: _blocks)
        if(block && _requests - block->returned >= maxAge) {
            ::operator delete(block);
            block = nullptr;
        }
}

Block* Reserve::take(const std::size_t size) {
    {
        const std::lock_guard<std::mutex> lock{_mutex};
        ++_requests;
        Block** best = nullptr;
        for(Block*& block: _blocks)
            if(block && fits(*block, size) && (!best || block->capacity < (*best)->capacity))
                best = &block;
        Block* const taken = best ? *best : nullptr;
        if(best)
            *best = nullptr;
        freeUnused(MaxAge);
        if(taken)
            return taken;
    }

    /* An eighth of room, as the text of a growing log is a little longer each time */
    const std::size_t capacity = size + size / 8;
    auto* const block = static_cast<Block*>(::operator new(Overhead + capacity));
    block->capacity = capacity;
    return block;
}

void Reserve::give(Block* block) {
    {
        const std::lock_guard<std::mutex> lock{_mutex};
        block->returned = _requests;
        /* The slots that nobody asked for longest make room, empty ones first */
        Block** const slot = std::min_element(
            std::begin(_blocks), std::end(_blocks), [](Block* a, Block* b) {
                return (a ? a->returned + 1 : 0) < (b ? b->returned + 1 : 0);
            });
        std::swap(*slot, block);
    }
    ::operator delete(block);
}

void Reserve::trim() {
    const std::lock_guard<std::mutex> lock{_mutex};
    freeUnused(0);
}

std::size_t Reserve::count() {
    const std::lock_guard<std::mutex> lock{_mutex};
    return std::size_t(std::count_if(
        std::begin(_blocks), std::end(_blocks), [](const Block* block) { return block; }));
}

/* Never destroyed, as stores that are may give blocks back up to the very end of the process */
Reserve& reserve() {
    static Reserve& instance = *new Reserve;
    return instance;
}

template<class T> void giveBack(T* const data, std::size_t) {
    if(data)
        reserve().give(blockOf(data));
}

}

template<class T>
Containers::Array<T> reserveArray(const std::size_t size, const void* const source) {
    char* const data = placeData(reserve().take(size * sizeof(T)), source);
    return Containers::Array<T>{reinterpret_cast<T*>(data), size, giveBack<T>};
}

template Containers::Array<char> reserveArray<char>(std::size_t, const void*);
template Containers::Array<std::size_t> reserveArray<std::size_t>(std::size_t, const void*);

void trimReserve() { reserve().trim(); }

std::size_t reservedBlockCount() { return reserve().count(); }

}
