#ifndef Corrade_Test_TemporaryFolder_h
#define Corrade_Test_TemporaryFolder_h

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace Corrade { namespace Test {

/** @brief Folder of a test's own that's gone afterwards */
class TemporaryFolder {
public:
    explicit TemporaryFolder():
        _path{(std::filesystem::temp_directory_path() / "corrade-test-XXXXXX").string()} {
        if(!mkdtemp(&_path[0]))
            throw std::runtime_error{"can't make a temporary folder"};
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(_path); }
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return _path; }
    std::string path(const std::string& name) const { return _path + "/" + name; }

    void write(const std::string& name, const std::string& data) const {
        std::ofstream{path(name), std::ios::binary} << data;
    }

private:
    std::string _path;
};

}}

#endif
