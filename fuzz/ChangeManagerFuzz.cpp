/* Sequences of changes, undone, redone, grouped and merged, compared with the model of the history */

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "QuillmereEditor/Test/ChangeComparison.h"

namespace {

/* Longer ones only repeat what shorter ones find */
constexpr int MaxSteps = 200;

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* const data, const std::size_t size) {
    std::size_t i = 0;
    QuillmereEngine::Test::ChangeComparison comparison{
        [&] { return i < size ? data[i++] : std::uint8_t{0}; }};
    for(int step = 0; step != MaxSteps && i < size && comparison.step(); ++step) {}
    if(!comparison.difference().empty()) {
        std::fprintf(stderr, "%s\n", comparison.difference().c_str());
        std::abort();
    }
    return 0;
}
