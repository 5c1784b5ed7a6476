#include "editor/ModuleCopy.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdlib.h>
#include <sys/stat.h>
#include <tuple>
#include <utility>

#include "editor/files.h"

namespace QuillmereEngine {

namespace {

namespace Fs = std::filesystem;

ModuleStamp::File stampOf(const std::string& path) {
    struct stat status;
    if(stat(path.c_str(), &status) == -1 || !S_ISREG(status.st_mode))
        return {};
    return {std::uint64_t(status.st_dev), std::uint64_t(status.st_ino),
        std::uint64_t(status.st_size), status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

auto asTuple(const ModuleStamp::File& file) {
    return std::tie(file.device, file.inode, file.size, file.seconds, file.nanoseconds);
}

std::string makeTemporaryFolder() {
    std::error_code error;
    std::string path = (Fs::temp_directory_path(error) / "quillmere-module-XXXXXX").string();
    if(error) {
        errno = error.value();
        return {};
    }
    return mkdtemp(path.data()) ? path : std::string{};
}

}

ModuleStamp ModuleStamp::of(const std::string& path) {
    return {stampOf(path), stampOf(metadataPath(path))};
}

bool operator==(const ModuleStamp& a, const ModuleStamp& b) {
    return asTuple(a.library) == asTuple(b.library) && asTuple(a.metadata) == asTuple(b.metadata);
}

std::string metadataPath(const std::string& path) {
    return Fs::path{path}.replace_extension(".conf").string();
}

std::optional<ModuleCopy> ModuleCopy::make(
    const std::string& path, const ModuleFiles& files, std::string& problem) {
    ModuleCopy out{makeTemporaryFolder()};
    if(out._folder.empty()) {
        problem = std::string{"can't make a temporary folder: "} + std::strerror(errno);
        return {};
    }

    const std::string copy = (out._folder / Fs::path{path}.filename()).string();
    std::string failure = writeWholeFile(copy, files.library);
    if(failure.empty())
        failure = writeWholeFile(metadataPath(copy), files.metadata);
    if(failure.empty())
        return out;
    problem = "can't write " + copy + ": " + failure;
    return {};
}

ModuleCopy::ModuleCopy(std::string folder): _folder{std::move(folder)} {}

ModuleCopy::ModuleCopy(ModuleCopy&& other) noexcept: _folder{std::move(other._folder)} {
    other._folder.clear();
}

ModuleCopy::~ModuleCopy() {
    std::error_code ignored;
    if(!_folder.empty())
        Fs::remove_all(_folder, ignored);
}

}
