#include "host/replaceFile.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <Corrade/Containers/ScopeGuard.h>
#include <Corrade/Containers/StringView.h>

using namespace Corrade;

namespace QuillmereEngine {

namespace {

constexpr int MaxAttempts = 100;

bool fail(std::string& error) {
    error = std::strerror(errno);
    return false;
}

bool writeAll(const int descriptor, Containers::StringView content) {
    while(!content.isEmpty()) {
        const ssize_t written = ::write(descriptor, content.data(), content.size());
        if(written < 0 && errno != EINTR)
            return false;
        content = content.exceptPrefix(std::size_t(written < 0 ? 0 : written));
    }
    return true;
}

/* Not mkstemp(): its files are their owner's alone, while a new project has to get the mode that
   any new file gets */
int createBeside(const std::string& file, std::string& temporary) {
    for(int i = 0; i != MaxAttempts; ++i) {
        temporary = file + ".saving-" + std::to_string(getpid()) + "-" + std::to_string(i);
        const int descriptor = open(
            temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if(descriptor >= 0 || errno != EEXIST)
            return descriptor;
    }
    return -1;
}

/* What is behind links, so that these stay. A file that doesn't exist yet is its own target. */
std::string targetOf(const std::string& file) {
    char* const resolved = realpath(file.c_str(), nullptr);
    const std::string target = resolved ? resolved : file;
    std::free(resolved);
    return target;
}

bool fillAndClose(const int descriptor, const Containers::StringView content,
    const struct stat* const former, std::string& error) {
    bool isGood = writeAll(descriptor, content) &&
        (!former || fchmod(descriptor, former->st_mode & 07777) == 0) && fsync(descriptor) == 0;
    if(!isGood)
        fail(error);
    /* Network file systems tell of a full disk as late as here */
    if(close(descriptor) != 0 && isGood)
        isGood = fail(error);
    return isGood;
}

/* The new name is on the disk only with the folder. By then the new content is in place, so there's
   nothing to report if a file system can't do it. */
void syncFolderOf(const std::string& file) {
    const std::size_t slash = file.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : file.substr(0, slash + 1);
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if(descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}

}

bool readWholeFile(const std::string& file, std::string& content, std::string& error) {
    std::FILE* const stream = std::fopen(file.c_str(), "rbe");
    if(!stream)
        return fail(error);
    const Containers::ScopeGuard closeStream{stream, std::fclose};

    content.clear();
    char buffer[1 << 16];
    while(const std::size_t count = std::fread(buffer, 1, sizeof(buffer), stream))
        content.append(buffer, count);
    return !std::ferror(stream) || fail(error);
}

bool replaceFile(
    const std::string& file, const Containers::StringView content, std::string& error) {
    const std::string target = targetOf(file);
    struct stat former;
    const bool exists = stat(target.c_str(), &former) == 0;
    if(exists && !S_ISREG(former.st_mode)) {
        error = "Not a regular file";
        return false;
    }

    std::string temporary;
    const int descriptor = createBeside(target, temporary);
    if(descriptor < 0)
        return fail(error);
    bool isGood = fillAndClose(descriptor, content, exists ? &former : nullptr, error);
    if(isGood && std::rename(temporary.c_str(), target.c_str()) != 0)
        isGood = fail(error);
    if(!isGood) {
        unlink(temporary.c_str());
        return false;
    }
    syncFolderOf(target);
    return true;
}

}
