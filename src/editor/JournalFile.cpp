#include "editor/JournalFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace QuillmereEngine {

namespace {

constexpr int MaxAttempts = 100;

bool fail(std::string& problem) {
    problem = std::strerror(errno);
    return false;
}

std::string folderOf(const std::string& path) {
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    return folder.empty() ? "." : folder;
}

}

JournalFile::~JournalFile() = default;

DiskJournalFile::DiskJournalFile(std::string path, const int descriptor):
    _path{std::move(path)},
    _descriptor{descriptor} {}

/* Which also unlocks it */
DiskJournalFile::~DiskJournalFile() { close(_descriptor); }

std::unique_ptr<DiskJournalFile> DiskJournalFile::create(
    const std::string& path, std::string& problem) {
    std::error_code error;
    std::filesystem::create_directories(folderOf(path), error);
    std::unique_ptr<DiskJournalFile> out;
    if(openLocked(path, O_CREAT, out, problem) != Opening::Opened)
        return nullptr;
    struct stat status;
    if(fstat(out->_descriptor, &status) == 0 && status.st_size != 0) {
        problem = "There is one from earlier";
        return nullptr;
    }
    return out;
}

DiskJournalFile::Opening DiskJournalFile::open(
    const std::string& path, std::unique_ptr<DiskJournalFile>& file, std::string& problem) {
    return openLocked(path, 0, file, problem);
}

DiskJournalFile::Opening DiskJournalFile::openLocked(const std::string& path, const int flags,
    std::unique_ptr<DiskJournalFile>& file, std::string& problem) {
    for(int i = 0; i != MaxAttempts; ++i) {
        /* Not through a link, which somebody else may have put there, and without waiting for the
           other end of a pipe */
        const int descriptor = ::open(
            path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | flags, 0600);
        if(descriptor < 0) {
            const bool isMissing = errno == ENOENT;
            fail(problem);
            return isMissing ? Opening::Missing : Opening::Failed;
        }
        std::unique_ptr<DiskJournalFile> opened{new DiskJournalFile{path, descriptor}};
        struct stat status;
        if(fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
            problem = "Not a regular file";
            return Opening::Failed;
        }
        /* A file system without locks is no reason to do without a journal */
        if(flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
            problem = "It's another editor's";
            return Opening::Locked;
        }
        /* Between opening and locking its owner may have removed it */
        if(opened->isAt(path)) {
            file = std::move(opened);
            return Opening::Opened;
        }
    }
    problem = "It comes and goes";
    return Opening::Failed;
}

bool DiskJournalFile::isAt(const std::string& path) const {
    struct stat mine, there;
    return fstat(_descriptor, &mine) == 0 && lstat(path.c_str(), &there) == 0 &&
        mine.st_dev == there.st_dev && mine.st_ino == there.st_ino;
}

bool DiskJournalFile::write(std::uint64_t offset, std::string_view bytes, std::string& problem) {
    while(!bytes.empty()) {
        const ssize_t written = pwrite(_descriptor, bytes.data(), bytes.size(), off_t(offset));
        if(written < 0 && errno != EINTR)
            return fail(problem);
        if(written > 0) {
            bytes.remove_prefix(std::size_t(written));
            offset += std::uint64_t(written);
        }
    }
    return true;
}

bool DiskJournalFile::sync(std::string& problem) {
    /* Somebody may have cleaned up the folder. What isn't there isn't safe. */
    if(!isAt(_path)) {
        problem = "Somebody removed it";
        return false;
    }
    if(fdatasync(_descriptor) != 0)
        return fail(problem);
    syncFolder();
    return true;
}

/* The name of a new file is on the disk only with the folder. Some file systems can't do it, and
   there's nothing to be done about that. */
void DiskJournalFile::syncFolder() {
    if(std::exchange(_isFolderSynced, true))
        return;
    const int folder = ::open(folderOf(_path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if(folder < 0)
        return;
    fsync(folder);
    close(folder);
}

void DiskJournalFile::remove() {
    if(isAt(_path))
        unlink(_path.c_str());
}

bool DiskJournalFile::read(std::string& bytes, std::string& problem) {
    bytes.clear();
    char buffer[1 << 16];
    for(;;) {
        const ssize_t count = pread(_descriptor, buffer, sizeof(buffer), off_t(bytes.size()));
        if(count < 0 && errno != EINTR)
            return fail(problem);
        if(count == 0)
            return true;
        if(count > 0)
            bytes.append(buffer, std::size_t(count));
    }
}

bool DiskJournalFile::truncate(const std::uint64_t size, std::string& problem) {
    return ftruncate(_descriptor, off_t(size)) == 0 || fail(problem);
}

std::string DiskJournalFile::setAside() {
    for(int i = 1; i <= MaxAttempts; ++i) {
        const std::string path = _path + "." + std::to_string(i);
        /* Not rename(), which would replace what has the name already */
        if(link(_path.c_str(), path.c_str()) == 0) {
            unlink(_path.c_str());
            _path = path;
            return path;
        }
        if(errno != EEXIST)
            return {};
    }
    return {};
}

}
