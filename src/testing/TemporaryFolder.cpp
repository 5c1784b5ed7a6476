#include "testing/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdlib.h>

#include <gtest/gtest.h>

namespace QuillmereEngine { namespace Testing {

TemporaryFolder::TemporaryFolder() {
    _path = (std::filesystem::temp_directory_path() / "quillmere-XXXXXX").string();
    if(!mkdtemp(_path.data()))
        std::abort();
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(_path, ignored);
}

std::string TemporaryFolder::write(const std::string& name, const std::string& content) const {
    const std::string path = file(name);
    std::ofstream{path, std::ios::binary} << content;
    return path;
}

std::string TemporaryFolder::onlyFile() const {
    std::vector<std::string> files;
    for(const auto& entry: std::filesystem::directory_iterator{_path})
        files.push_back(entry.path().string());
    EXPECT_EQ(files.size(), 1);
    return files.empty() ? std::string{} : files.front();
}

std::string readFile(const std::string& path) {
    std::ifstream in{path, std::ios::binary};
    EXPECT_TRUE(in) << path;
    return {std::istreambuf_iterator<char>{in}, {}};
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> out;
    std::istringstream in{text};
    for(std::string line; std::getline(in, line);)
        out.push_back(line);
    return out;
}

}}
