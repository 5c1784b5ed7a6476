#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "LogLines.h"
#include "Ratio.h"
#include "common/StringArrayView.h"
#include "plugins/console/lineTag.h"

namespace QuillmereBenchmark {

using namespace QuillmereEngine;

namespace {

bool isNotError(const char* const line) { return !hasErrorTag(line); }

/* Copies as many bytes as the other side produces, from the same place, into memory that's there */
Body copyBytes(const std::shared_ptr<const StringArray>& lines, const std::size_t size) {
    return [lines, size](benchmark::State& state) {
        std::vector<char> to(size, 'x');
        for([[maybe_unused]] auto _: state) {
            std::memcpy(to.data(), lines->data().data(), size);
            benchmark::DoNotOptimize(to.data());
            benchmark::ClobberMemory();
        }
    };
}

void addJoin(const std::string& size, const std::shared_ptr<const StringArray>& lines) {
    addRow({"store/join/" + size, "memcpy of the bytes produced", 1.5,
        [lines](benchmark::State& state) {
            for([[maybe_unused]] auto _: state)
                benchmark::DoNotOptimize(join(*lines, '\n').data());
        },
        copyBytes(lines, lines->data().size())});
}

void addFilter(
    const std::string& size, const std::shared_ptr<const StringArray>& lines, const double most) {
    addRow({"store/filter/" + size, "memcpy of the bytes produced", most,
        [lines](benchmark::State& state) {
            for([[maybe_unused]] auto _: state)
                benchmark::DoNotOptimize(filter(*lines, isNotError).data().data());
        },
        copyBytes(lines, filter(*lines, isNotError).data().size())});
}

void addAppend() {
    constexpr std::size_t lineCount = 100000;
    addRow({"store/append", "std::string::append of the same bytes", 1.5,
        [](benchmark::State& state) {
            const std::string line(100, 'x');
            for([[maybe_unused]] auto _: state) {
                StringArray lines;
                for(std::size_t i = 0; i != lineCount; ++i)
                    lines.append(line.data(), int(line.size()));
                benchmark::DoNotOptimize(lines.data().data());
            }
        },
        [](benchmark::State& state) {
            const std::string line(100, 'x');
            for([[maybe_unused]] auto _: state) {
                std::string lines;
                for(std::size_t i = 0; i != lineCount; ++i)
                    lines.append(line.data(), line.size() + 1);
                benchmark::DoNotOptimize(lines.data());
            }
        }});
}

}

void addStoreRows() {
    const std::shared_ptr<const StringArray> small = logLines(100000);
    const std::shared_ptr<const StringArray> large = logLines(1000000);
    addJoin("100k", small);
    addJoin("1M", large);
    addFilter("100k", small, 2.0);
    addFilter("1M", large, 1.5);
    addAppend();
}

}
