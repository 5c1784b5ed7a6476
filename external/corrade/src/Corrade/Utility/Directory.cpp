#include "Directory.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <system_error>

#include <dirent.h>

#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/DebugStl.h>

namespace Corrade { namespace Utility { namespace Directory {

namespace {

/* Prints "error 2 (No such file or directory)" */
class SystemError {
public:
    /* Made before anything is printed, which may set errno itself */
    explicit SystemError(const int number = errno): _number{number} {}

    friend Debug& operator<<(Debug& debug, const SystemError error) {
        return debug << "error" << error._number << "(" << Debug::nospace
                     << std::generic_category().message(error._number) << Debug::nospace << ")";
    }

private:
    int _number;
};

struct CloseDirectory {
    void operator()(DIR* const directory) const { closedir(directory); }
};
struct CloseFile {
    void operator()(std::FILE* const file) const { std::fclose(file); }
};
typedef std::unique_ptr<DIR, CloseDirectory> DirectoryHandle;
typedef std::unique_ptr<std::FILE, CloseFile> FileHandle;

bool isSkipped(const std::string& path, const char* const name, const Flags flags) {
    const std::string nameString = name;
    if(flags >= Flag::SkipDotAndDotDot && (nameString == "." || nameString == ".."))
        return true;
    if(!(flags & (Flag::SkipFiles | Flag::SkipDirectories | Flag::SkipSpecial)))
        return false;

    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(
        join(path, nameString), error);
    if(std::filesystem::is_regular_file(status))
        return flags >= Flag::SkipFiles;
    if(std::filesystem::is_directory(status))
        return flags >= Flag::SkipDirectories;
    return flags >= Flag::SkipSpecial;
}

bool copyBytes(std::FILE* const from, const std::string& fromPath, std::FILE* const to,
    const std::string& toPath) {
    char buffer[65536];
    while(const std::size_t size = std::fread(buffer, 1, sizeof(buffer), from)) {
        if(std::fwrite(buffer, 1, size, to) != size) {
            const SystemError error;
            Error{} << "Utility::Path::copy(): can't write to" << toPath << Debug::nospace << ":"
                    << error;
            return false;
        }
    }
    if(std::ferror(from)) {
        const SystemError error;
        Error{} << "Utility::Path::copy(): can't read from" << fromPath << Debug::nospace << ":"
                << error;
        return false;
    }
    return true;
}

}

std::string join(const std::string& base, const std::string& path) {
    if(base.empty() || (!path.empty() && path.front() == '/'))
        return path;
    return base.back() == '/' ? base + path : base + '/' + path;
}

std::string join(const std::initializer_list<std::string> paths) {
    std::string out;
    for(const std::string& path: paths)
        out = &path == paths.begin() ? path : join(out, path);
    return out;
}

std::string toNativeSeparators(const std::string& path) { return path; }

std::string fromNativeSeparators(const std::string& path) { return path; }

std::string home() {
    if(const char* const home = std::getenv("HOME"))
        return home;
    Error{} << "Utility::Path::homeDirectory(): $HOME not available";
    return {};
}

bool exists(const std::string& path) {
    std::error_code error;
    return std::filesystem::exists(path, error);
}

bool isDirectory(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_directory(path, error);
}

bool mkpath(const std::string& path) {
    const std::size_t last = path.find_last_not_of('/');
    /* Nothing or the root */
    if(last == std::string::npos)
        return true;
    const std::string folder = path.substr(0, last + 1);
    if(isDirectory(folder))
        return true;
    if(exists(folder)) {
        Error{} << "Utility::Path::make():" << folder << "exists but is not a directory";
        return false;
    }

    const std::size_t slash = folder.find_last_of('/');
    if(slash != std::string::npos && !mkpath(folder.substr(0, slash)))
        return false;
    std::error_code error;
    std::filesystem::create_directory(folder, error);
    /* Not an error if somebody else was faster */
    if(!error || isDirectory(folder))
        return true;
    Error{} << "Utility::Path::make(): can't create" << folder << Debug::nospace << ":"
            << SystemError{error.value()};
    return false;
}

std::vector<std::string> list(const std::string& path, const Flags flags) {
    std::vector<std::string> out;
    const DirectoryHandle directory{opendir(path.data())};
    if(!directory) {
        const SystemError error;
        Error{} << "Utility::Path::list(): can't list" << path << Debug::nospace << ":" << error;
        return out;
    }
    while(const dirent* const entry = readdir(directory.get())) {
        if(!isSkipped(path, entry->d_name, flags))
            out.emplace_back(entry->d_name);
    }
    if(flags >= Flag::SortAscending)
        std::sort(out.begin(), out.end());
    else if(flags >= Flag::SortDescending)
        std::sort(out.begin(), out.end(), std::greater<std::string>{});
    return out;
}

bool copy(const std::string& from, const std::string& to) {
    const FileHandle source{std::fopen(from.data(), "rb")};
    if(!source) {
        const SystemError error;
        Error{} << "Utility::Path::copy(): can't open" << from << "for reading:" << error;
        return false;
    }
    if(isDirectory(from)) {
        Error{} << "Utility::Path::copy(): can't read from" << from << "which is a directory";
        return false;
    }
    /* Opening it for writing would leave nothing to copy */
    std::error_code ignored;
    if(std::filesystem::equivalent(from, to, ignored))
        return true;

    FileHandle target{std::fopen(to.data(), "wb")};
    if(!target) {
        const SystemError error;
        Error{} << "Utility::Path::copy(): can't open" << to << "for writing:" << error;
        return false;
    }
    if(!copyBytes(source.get(), from, target.get(), to))
        return false;
    /* The last bytes are written here */
    if(std::fclose(target.release()) == 0)
        return true;
    const SystemError error;
    Error{} << "Utility::Path::copy(): can't write to" << to << Debug::nospace << ":" << error;
    return false;
}

}}}
