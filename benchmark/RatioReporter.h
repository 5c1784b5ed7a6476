#ifndef Quillmere_benchmark_RatioReporter_h
#define Quillmere_benchmark_RatioReporter_h

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace QuillmereBenchmark {

struct Row;

/** @brief Keeps the fastest time of each benchmark and prints the rows made of them */
class RatioReporter: public benchmark::BenchmarkReporter {
public:
    /** @param out  Where the results go, one JSON object per line */
    explicit RatioReporter(std::FILE* out);

    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;

    /** @return Whether every row ran and none exceeds its ratio */
    bool printRatios() const;

private:
    struct Result {
        const Row* row;
        /* In nanoseconds */
        double time;
        double ratio;
    };

    std::vector<Result> worstResults() const;

    std::map<std::string, double> _fastest;
    bool _failed = false;
};

}

#endif
