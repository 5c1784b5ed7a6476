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

std::string fullName(const Row& row) {
    return row.variant.empty() ? row.name : row.name + "/" + row.variant;
}

void registerBody(const std::string& name, const Body& body) {
    benchmark::RegisterBenchmark(name.c_str(), body)->UseRealTime()->Unit(benchmark::kNanosecond);
}

}

void addRow(Row row) {
    registerBody(fullName(row), row.body);
    registerBody(fullName(row) + YardstickSuffix, row.yardstickBody);
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

std::vector<RatioReporter::Result> RatioReporter::worstResults() const {
    std::vector<Result> out;
    for(const Row& row: rows()) {
        const auto own = _fastest.find(fullName(row));
        const auto yardstick = _fastest.find(fullName(row) + YardstickSuffix);
        if(own == _fastest.end() || yardstick == _fastest.end())
            continue;
        const Result result{&row, own->second, own->second / yardstick->second};
        const auto other = std::find_if(
            out.begin(), out.end(), [&row](const Result& i) { return i.row->name == row.name; });
        if(other == out.end())
            out.push_back(result);
        else if(other->ratio < result.ratio)
            *other = result;
    }
    return out;
}

bool RatioReporter::printRatios() const {
    bool good = !_failed;
    for(const Result& result: worstResults()) {
        const Row& row = *result.row;
        std::fprintf(results(),
            "{\"name\": \"%s\", \"value\": %.6g, \"unit\": \"ns\", \"ratio_to\": \"%s\", "
            "\"ratio\": %.3f, \"most\": %.3g}\n",
            row.name.c_str(), result.time, row.yardstick.c_str(), result.ratio, row.most);
        good = good && result.ratio <= row.most;
    }
    std::fflush(results());
    return good;
}

}
