#include "QuillmereEditor/Tools/System.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <set>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>
#include <vector>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/DebugStl.h>
#include <Corrade/Utility/Directory.h>
#include <Corrade/Utility/FormatStl.h>

#include "QuillmereEditor/Tools/systemPlatform.h"

namespace QuillmereEngine {

using namespace Corrade;

namespace {

void runOpener(const char* const format, const std::string& argument) {
    [[maybe_unused]] const int status = std::system(
        Utility::formatString(format, openCommand(), argument).c_str());
}

/* fgets() doesn't tell how much it read, and what it read may have NUL bytes. So the buffer is
   filled with something else before, and the last NUL in it is the one that fgets() put there. */
template<std::size_t size> bool appendLine(std::FILE* const file, std::string& output) {
    char buffer[size];
    std::memset(buffer, '\n', size);
    if(!std::fgets(buffer, int(size), file))
        return false;
    const auto end = std::find(std::rbegin(buffer), std::rend(buffer), '\0');
    output.append(buffer, std::size_t(std::rend(buffer) - end) - 1);
    return true;
}

/* What tells files and folders apart, whatever names and links lead to them */
struct FileId {
    dev_t device{};
    ino_t inode{};
    mode_t mode{};
};

bool operator==(const FileId& a, const FileId& b) {
    return a.device == b.device && a.inode == b.inode;
}

bool operator<(const FileId& a, const FileId& b) {
    return std::tie(a.device, a.inode) < std::tie(b.device, b.inode);
}

/* Nothing is at a path without a mode */
FileId identify(const std::string& path) {
    struct stat status;
    if(stat(path.c_str(), &status) != 0)
        return {};
    return {status.st_dev, status.st_ino, status.st_mode};
}

/* Reading a pipe may wait for ever, and of the character devices only the null device surely has an
   end */
bool isEndless(const std::string& path) {
    struct stat status, null;
    if(stat(path.c_str(), &status) != 0)
        return false;
    if(S_ISCHR(status.st_mode))
        return stat("/dev/null", &null) != 0 || status.st_rdev != null.st_rdev;
    return S_ISFIFO(status.st_mode);
}

/* The walk of copyRecursive(), level by level */
class TreeCopy {
public:
    explicit TreeCopy(const std::string& from, const std::string& to): _from{from}, _to{to} {}

    bool run() {
        _entries.push_back({{}, {}, 0});
        for(std::size_t i = 0; i != _entries.size(); ++i) {
            const std::string source = Utility::Directory::join(_from, _entries[i].path);
            if(Utility::Directory::isDirectory(source))
                enterFolder(i, source);
            else if(!copyFile(source, Utility::Directory::join(_to, _entries[i].path)))
                return false;
        }
        return true;
    }

private:
    struct Entry {
        std::string path; /* Relative to both folders */
        FileId id;        /* Of folders only */
        std::size_t parent;
    };

    void enterFolder(const std::size_t index, const std::string& source) {
        const FileId id = identify(source);
        _entries[index].id = id;
        if(id == identify(_to) || isFilled(id) || isOwnAncestor(index))
            return;
        const std::string path = _entries[index].path;
        const std::string target = Utility::Directory::join(_to, path);
        Utility::Directory::mkpath(target);
        _filled.insert(identify(target));
        for(const std::string& name:
            Utility::Directory::list(source, Utility::Directory::Flag::SkipDotAndDotDot))
            _entries.push_back({Utility::Directory::join(path, name), {}, index});
    }

    /* A source folder that we fill ourselves would grow as long as we copy it */
    bool isFilled(const FileId& id) const { return _filled.find(id) != _filled.end(); }

    bool isOwnAncestor(const std::size_t index) const {
        for(std::size_t i = index; i != 0;) {
            i = _entries[i].parent;
            if(_entries[i].id == _entries[index].id)
                return true;
        }
        return false;
    }

    bool copyFile(const std::string& source, const std::string& target) const {
        if(isEndless(source))
            return true;
        Utility::Debug{} << "Copying" << source << "to" << target;
        /* Opening it would wait for somebody who reads */
        if(S_ISFIFO(identify(target).mode)) {
            Utility::Error{} << "copyRecursive():" << target
                             << "is a pipe, nothing is copied to it";
            return false;
        }
        return Utility::Directory::copy(source, target);
    }

    const std::string& _from;
    const std::string& _to;
    std::vector<Entry> _entries;
    std::set<FileId> _filled; /* Folders of the target that the walk has reached */
};

}

void openBrowser(const std::string& url) { runOpener("{} {}", url); }

void openWithSystemFilebrowser(const std::string& path) { runOpener("{} \"{}\"", path); }

void openWithSystemDefault(const std::string& path) { runOpener("{} \"{}\"", path); }

int runCommandCapture(const std::string& command, std::string& output) {
    std::FILE* const pipe = popen((command + " 2>&1").c_str(), "r");
    if(!pipe)
        return 0;
    try {
        while(appendLine<128>(pipe, output)) {}
    } catch(...) {
        /* The status is all that the caller can use now */
    }
    return pclose(pipe);
}

int changeDirectory(const std::string& path) { return chdir(path.c_str()); }

int copyRecursive(const std::string& from, const std::string& to) {
    return TreeCopy{from, to}.run() ? 0 : 1;
}

}
