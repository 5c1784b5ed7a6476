#include "Ratio.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <map>
#include <vector>

#include <benchmark/benchmark.h>

#include "RatioReporter.h"

namespace QuillmereBenchmark {

namespace {

constexpr const char* YardstickSuffix = " (yardstick)";

std::vector<Row>& rows() {
    static std::vector<Row> instance;
    return instance;
}

std::FILE*& results() {
    static std::FILE* file = stdout;
    return file;
}

void registerBody(const std::string& name, const Body& body) {
    benchmark::RegisterBenchmark(name.c_str(), body)->UseRealTime()->Unit(benchmark::kNanosecond);
}

}

void addRow(Row row) {
    registerBody(row.name, row.body);
    registerBody(row.name + YardstickSuffix, row.yardstickBody);
    rows().push_back(std::move(row));
}

void printFigure(const std::string& name, const double value, const std::string& unit) {
    std::fprintf(results(), "{\"name\": \"%s\", \"value\": %.6g, \"unit\": \"%s\"}\n", name.c_str(),
        value, unit.c_str());
    std::fflush(results());
}

RatioReporter::RatioReporter(std::FILE* const out) { results() = out; }

bool RatioReporter::ReportContext(const Context&) { return true; }

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    for(const Run& run: runs) {
        if(run.run_type != Run::RT_Iteration)
            continue;
        /* The name carries the settings of the run behind it, as in "store/join/real_time" */
        const std::string& name = run.run_name.function_name;
        if(run.error_occurred) {
            std::fprintf(stderr, "%s: %s\n", name.c_str(), run.error_message.c_str());
            _failed = true;
            continue;
        }
        const double time = run.GetAdjustedRealTime();
        const auto found = _fastest.emplace(name, time).first;
        found->second = std::min(found->second, time);
    }
}

bool RatioReporter::printRatios() const {
    bool good = !_failed;
    for(const Row& row: rows()) {
        const auto own = _fastest.find(row.name);
        const auto yardstick = _fastest.find(row.name + YardstickSuffix);
        if(own == _fastest.end() || yardstick == _fastest.end())
            continue;
        const double ratio = own->second / yardstick->second;
        std::fprintf(results(),
            "{\"name\": \"%s\", \"value\": %.6g, \"unit\": \"ns\", \"ratio_to\": \"%s\", "
            "\"ratio\": %.3f, \"most\": %.3g}\n",
            row.name.c_str(), own->second, row.yardstick.c_str(), ratio, row.most);
        good = good && ratio <= row.most;
    }
    std::fflush(results());
    return good;
}

}
