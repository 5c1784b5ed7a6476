#include <cstdlib>
#include <random>

#include <gtest/gtest.h>

#include "QuillmereEditor/Test/ChangeComparison.h"
#include "testing/sanitizer.h"

namespace QuillmereEngine { namespace Test {

namespace {

/* Sanitizers make each step ten to twenty times as long */
constexpr std::size_t DefaultOperationCount = Testing::IsSanitized ? 30000 : 300000;

constexpr std::size_t SequenceLength = 120;

/* QUILLMERE_MODEL_OPERATIONS asks for another number, for a long run */
std::size_t operationCount() {
    const char* const wanted = std::getenv("QUILLMERE_MODEL_OPERATIONS");
    return wanted ? std::strtoull(wanted, nullptr, 10) : DefaultOperationCount;
}

}

TEST(ChangeModelTest, HistoryDoesWhatTheModelSays) {
    std::size_t done = 0, restored = 0, unrestored = 0;
    for(unsigned seed = 0; done < operationCount(); ++seed) {
        std::mt19937 random{seed};
        ChangeComparison comparison{[&random] { return std::uint8_t(random() >> 8); }};
        std::size_t i = 0;
        while(i != SequenceLength && comparison.step())
            ++i;
        ASSERT_EQ(comparison.difference(), "") << "seed " << seed << ", operation " << i;
        done += i;
        restored += comparison.model().restored;
        unrestored += comparison.model().unrestored;
    }
    /* Both kinds of undoing were met often enough for the comparison to mean something */
    EXPECT_GT(restored, done / 50);
    EXPECT_GT(unrestored, done / 1000);
    RecordProperty("operations", int(done));
    RecordProperty("restored", int(restored));
    RecordProperty("unrestored", int(unrestored));
}

}}
