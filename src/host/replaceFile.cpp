#include "host/replaceFile.h"

#include <cerrno>
#include <climits>
#include <cstdio>
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
/* As many as Linux itself follows */
constexpr int MaxLinks = 40;

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

/* With the slash, empty for a name alone */
std::string folderOf(const std::string& file) { return file.substr(0, file.rfind('/') + 1); }

/* Not mkstemp(): its files are their owner's alone, while a new project has to get the mode that
   any new file gets. Not the file's name with something behind, which may be as long as a name can
   be. */
int createBeside(const std::string& file, const mode_t mode, std::string& temporary) {
    for(int i = 0; i != MaxAttempts; ++i) {
        temporary = folderOf(file) + ".saving-" + std::to_string(getpid()) + "-" +
            std::to_string(i);
        const int descriptor = open(
            temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if(descriptor >= 0 || errno != EEXIST)
            return descriptor;
    }
    return -1;
}

/* What is behind links, so that these stay. Not realpath(), for which the last one has to lead to
   something. A file that doesn't exist yet is its own target. */
bool resolveLinks(std::string& file) {
    char target[PATH_MAX];
    for(int i = 0; i != MaxLinks; ++i) {
        const ssize_t size = readlink(file.c_str(), target, sizeof(target));
        if(size < 0)
            return true;
        file = (target[0] == '/' ? "" : folderOf(file)) + std::string(target, std::size_t(size));
    }
    errno = ELOOP;
    return false;
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
    const std::string folder = folderOf(file);
    const int descriptor = open(
        folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
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
    std::string target = file;
    if(!resolveLinks(target))
        return fail(error);
    struct stat former;
    const bool exists = stat(target.c_str(), &former) == 0;
    if(exists && !S_ISREG(former.st_mode)) {
        error = "Not a regular file";
        return false;
    }

    /* What is nobody else's to read isn't either while it's written */
    std::string temporary;
    const int descriptor = createBeside(target, exists ? 0600 : 0666, temporary);
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
