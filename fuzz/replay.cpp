/* Stands in for libFuzzer where that isn't built: runs the files given, and those in the folders
   given, through the target. Says how many there were, and fails when there were none, as a corpus
   that went missing would otherwise pass. */

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::string> filesIn(const std::string& path) {
    if(!std::filesystem::is_directory(path))
        return {path};
    std::vector<std::string> out;
    for(const auto& entry: std::filesystem::directory_iterator{path})
        out.push_back(entry.path().string());
    std::sort(out.begin(), out.end());
    return out;
}

}

int main(const int argc, char** const argv) {
    std::size_t count = 0;
    for(int i = 1; i < argc; ++i) {
        for(const std::string& file: filesIn(argv[i])) {
            std::ifstream in{file, std::ios::binary};
            if(!in) {
                std::fprintf(stderr, "Can't read %s\n", file.c_str());
                return 1;
            }
            const std::vector<char> bytes{std::istreambuf_iterator<char>{in}, {}};
            /* Before it runs, so that the last name in the output is the one that failed */
            std::printf("%s\n", file.c_str());
            std::fflush(stdout);
            LLVMFuzzerTestOneInput(
                reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            ++count;
        }
    }
    std::printf("%zu inputs\n", count);
    return count ? 0 : 1;
}
