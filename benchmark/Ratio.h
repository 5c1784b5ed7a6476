#ifndef Quillmere_benchmark_Ratio_h
#define Quillmere_benchmark_Ratio_h

#include <functional>
#include <string>

namespace benchmark {
class State;
}

namespace QuillmereBenchmark {

/** @brief Body of a Google Benchmark: sets up, runs `for(auto _ : state)`, cleans up */
using Body = std::function<void(benchmark::State&)>;

/** @brief Something that's measured against something else in the same run */
struct Row {
    std::string name;
    /** What it's measured against, for the reader */
    std::string yardstick;
    /** The ratio that the row is not to exceed */
    double most;
    Body body;
    /** Has to do the same amount of work per iteration as @ref body */
    Body yardstickBody;
    /** Rows of the same name and different variants make one line, that of the worst ratio */
    std::string variant = {};
};

/**
@brief Add a row to the benchmark

Both bodies run several times in random turns, so that a slow moment of the machine meets both. The
ratio is that of the fastest time of each. A row that calls `state.SkipWithError()` is reported as
failed.
*/
void addRow(Row row);

/** @brief A number that is measured and printed, but isn't a time. Printed as a line of its own. */
void printFigure(const std::string& name, double value, const std::string& unit);

/* One function per source of rows, called by main() before anything runs */
void addChangeRows();
void addConsoleRows();
void addHistoryPanelRows();
void addLogRows();
void addStoreRows();
void addUiRows();

}

#endif
