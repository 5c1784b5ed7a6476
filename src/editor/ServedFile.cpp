#include "editor/ServedFile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace QuillmereEngine {

namespace {

using Result = FileLookup::Result;

constexpr const char* IndexName = "index.html";

class Descriptor {
public:
    explicit Descriptor(const int descriptor): _descriptor{descriptor} {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if(_descriptor != -1)
            close(_descriptor);
    }

    int get() const { return _descriptor; }
    int release() { return std::exchange(_descriptor, -1); }

private:
    int _descriptor;
};

/* `..`, from which one could learn names outside, and files that begin with a dot: the journal of the
   project, what version control keeps, and settings, which may hold passwords. `.` is the same folder. */
bool hasHiddenPart(const std::string_view path) {
    for(std::size_t begin = 0; begin < path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        if(path[begin] == '.' && end - begin > 1)
            return true;
        begin = end + 1;
    }
    return false;
}

bool isWellFormed(const std::string& path) {
    return !path.empty() && path[0] == '/' && path.find('\0') == std::string::npos &&
        !hasHiddenPart(path);
}

/* A link may have another name than what it leads to. The folder itself may lie in a hidden one. */
bool isServed(const std::string& path, const std::string& folder) {
    const std::string begin = folder == "/" ? folder : folder + "/";
    return path == folder ||
        (path.compare(0, begin.size(), begin) == 0 &&
            !hasHiddenPart(std::string_view{path}.substr(begin.size())));
}

/* Out of descriptors or memory, or a broken disk. All else counts as not there. */
bool isOurs(const int error) {
    return error == EMFILE || error == ENFILE || error == ENOMEM || error == EIO;
}

FileLookup notFound(const int error) {
    FileLookup out;
    out.result = isOurs(error) ? Result::Failed : Result::NotFound;
    return out;
}

FileLookup unreadable(const int error) {
    if(error != EACCES && error != EPERM)
        return notFound(error);
    FileLookup out;
    out.result = Result::Forbidden;
    return out;
}

std::string linkToDescriptor(const int descriptor) {
    return "/proc/self/fd/" + std::to_string(descriptor);
}

/* Between looking at the path and opening it, somebody may have put a link into it */
bool isStillServed(const int descriptor, const std::string& folder, std::error_code& error) {
    const std::string path = std::filesystem::read_symlink(linkToDescriptor(descriptor), error);
    return !error && isServed(path, folder);
}

FileLookup openFile(const int place, const std::uint64_t size) {
    /* Not by the path again, which may name something else meanwhile */
    Descriptor file{open(linkToDescriptor(place).c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY)};
    if(file.get() == -1)
        return unreadable(errno);
    FileLookup out;
    out.result = Result::File;
    out.file.emplace(file.release(), size);
    return out;
}

FileLookup findIndex(const std::string& folder, const std::string& urlPath) {
    const bool hasSlash = urlPath.back() == '/';
    FileLookup out = findServedFile(folder, urlPath + (hasSlash ? "" : "/") + IndexName);
    /* A folder of that name has no page, whatever is in it */
    if(out.result == Result::FolderWithoutSlash)
        return {};
    if(out.result == Result::File && !hasSlash) {
        FileLookup redirect;
        redirect.result = Result::FolderWithoutSlash;
        return redirect;
    }
    return out;
}

}

ServedFile::ServedFile(const int descriptor, const std::uint64_t size):
    _descriptor{descriptor},
    _size{size} {}

ServedFile::ServedFile(ServedFile&& other) noexcept:
    _descriptor{std::exchange(other._descriptor, -1)},
    _size{other._size} {}

ServedFile::~ServedFile() {
    if(_descriptor != -1)
        close(_descriptor);
}

std::size_t ServedFile::read(
    const std::uint64_t offset, char* const out, const std::size_t size) const {
    std::size_t done = 0;
    while(done != size) {
        const ssize_t part = pread(_descriptor, out + done, size - done, off_t(offset + done));
        if(part == -1 && errno == EINTR)
            continue;
        if(part <= 0)
            break;
        done += std::size_t(part);
    }
    return done;
}

std::optional<std::string> canonicalFolder(const std::string& path, std::string& problem) {
    std::error_code error;
    const std::string out = std::filesystem::canonical(path, error);
    if(!error && !std::filesystem::is_directory(out, error) && !error)
        error = std::make_error_code(std::errc::not_a_directory);
    if(!error)
        return out;
    problem = error.message();
    return {};
}

FileLookup findServedFile(const std::string& folder, const std::string& urlPath) {
    if(!isWellFormed(urlPath))
        return {};
    std::error_code error;
    const std::string path = std::filesystem::canonical(folder + urlPath, error);
    if(error)
        return notFound(error.value());
    if(!isServed(path, folder))
        return {};

    const Descriptor place{open(path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC)};
    struct stat status;
    if(place.get() == -1 || fstat(place.get(), &status) == -1)
        return notFound(errno);
    if(!isStillServed(place.get(), folder, error))
        return notFound(error.value());
    if(S_ISDIR(status.st_mode))
        return findIndex(folder, urlPath);
    if(!S_ISREG(status.st_mode))
        return {};
    FileLookup out = openFile(place.get(), std::uint64_t(status.st_size));
    out.name = urlPath.substr(urlPath.rfind('/') + 1);
    return out;
}

}
