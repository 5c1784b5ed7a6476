/* quillmere-bench [Google Benchmark's options]: measures every row against its yardstick and prints
   one JSON object per line. Exits with 1 when a row exceeds the ratio it's to keep. */

#include <cstdio>
#include <unistd.h>

#include <benchmark/benchmark.h>

#include "Ratio.h"
#include "RatioReporter.h"

int main(int argc, char** argv) {
    /* The log rows send the standard output elsewhere, so the results keep a way of their own */
    std::FILE* const results = fdopen(dup(STDOUT_FILENO), "w");
    QuillmereBenchmark::RatioReporter reporter{results};

    QuillmereBenchmark::addChangeRows();
    QuillmereBenchmark::addStoreRows();
    QuillmereBenchmark::addLogRows();
    QuillmereBenchmark::addConsoleRows();
    QuillmereBenchmark::addHistoryPanelRows();
    QuillmereBenchmark::addUiRows();
    benchmark::Initialize(&argc, argv);
    if(benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return reporter.printRatios() ? 0 : 1;
}
