#include "common/blockReserve.h"

#include <atomic>
#include <cstdint>
#include <cstring>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace QuillmereEngine { namespace {

using namespace Corrade;

TEST(BlockReserveTest, HandsOutBlocksThatDoNotOverlap) {
    const Containers::Array<char> a = reserveArray<char>(100000);
    const Containers::Array<char> b = reserveArray<char>(100000);
    EXPECT_TRUE(a.end() <= b.begin() || b.end() <= a.begin());
}

TEST(BlockReserveTest, DoesNotWasteALargeBlockOnASmallRequest) {
    const char* const large = reserveArray<char>(10000000).data();
    EXPECT_NE(reserveArray<char>(100000).data(), large);
    EXPECT_EQ(reserveArray<char>(9000000).data(), large);
}

TEST(BlockReserveTest, FreesWhatNobodyAskedForInAWhile) {
    { const Containers::Array<char> large = reserveArray<char>(10000000); }
    const std::size_t before = reservedBlockCount();
    ASSERT_GE(before, 1);
    for(int i = 0; i != 100; ++i)
        const Containers::Array<char> small = reserveArray<char>(10);
    EXPECT_EQ(reservedBlockCount(), 1);
}

TEST(BlockReserveTest, DataBeginsWhereItsSourceDoesInThePage) {
    alignas(4096) static const char page[4096]{};
    for(const std::size_t place: {0, 1, 8, 63, 64, 2048, 4095}) {
        const Containers::Array<std::size_t> array = reserveArray<std::size_t>(10, page + place);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(array.data()) % 4096, place & ~7ull) << place;
    }
}

TEST(BlockReserveTest, KeepsABoundedNumberOfBlocks) {
    std::vector<Containers::Array<char>> blocks;
    for(int i = 0; i != 50; ++i)
        blocks.push_back(reserveArray<char>(1000));
    blocks.clear();
    EXPECT_LE(reservedBlockCount(), 8);
}

TEST(BlockReserveTest, ServesManyThreads) {
    std::atomic<bool> intact{true};
    std::vector<std::thread> threads;
    for(char id = 0; id != 4; ++id)
        threads.emplace_back([&intact, id] {
            for(std::size_t i = 0; i != 2000; ++i) {
                const Containers::Array<std::size_t> a = reserveArray<std::size_t>(
                    1 + i % 77, nullptr);
                Containers::Array<char> b = reserveArray<char>(1 + i % 1000);
                std::memset(b.data(), id, b.size());
                for(const char c: b)
                    if(c != id)
                        intact = false;
            }
        });
    for(std::thread& thread: threads)
        thread.join();
    EXPECT_TRUE(intact);
}

}}
