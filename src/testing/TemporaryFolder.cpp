#include "testing/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <iterator>
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

std::string readFile(const std::string& path) {
    std::ifstream in{path, std::ios::binary};
    EXPECT_TRUE(in) << path;
    return {std::istreambuf_iterator<char>{in}, {}};
}

}}
