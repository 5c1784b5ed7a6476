#include "editor/files.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <initializer_list>
#include <memory>

namespace QuillmereEngine {

namespace {

namespace Fs = std::filesystem;

struct CloseFile {
    void operator()(std::FILE* const file) const { std::fclose(file); }
};

std::string firstExisting(const std::initializer_list<std::string> paths) {
    std::error_code ignored;
    for(const std::string& path: paths)
        if(Fs::exists(path, ignored))
            return path;
    return {};
}

}

std::optional<std::string> readWholeFile(const std::string& path, std::string& problem) {
    const std::unique_ptr<std::FILE, CloseFile> file{std::fopen(path.c_str(), "rb")};
    std::string out;
    char piece[65536];
    /* Opening a folder works, only reading from it doesn't */
    for(std::size_t size = 1; file && size;) {
        size = std::fread(piece, 1, sizeof(piece), file.get());
        out.append(piece, size);
    }
    if(!file || std::ferror(file.get())) {
        problem = std::strerror(errno);
        return {};
    }
    return out;
}

std::string writeWholeFile(const std::string& path, const std::string& content) {
    const std::string fresh = path + ".new";
    std::FILE* const file = std::fopen(fresh.c_str(), "wb");
    if(!file)
        return std::strerror(errno);
    errno = 0;
    const bool isWritten = std::fwrite(content.data(), 1, content.size(), file) == content.size();
    if(std::fclose(file) == 0 && isWritten && std::rename(fresh.c_str(), path.c_str()) == 0)
        return {};
    const std::string problem = std::strerror(errno);
    std::remove(fresh.c_str());
    return problem;
}

std::string programFolder() {
    std::error_code ignored;
    return Fs::read_symlink("/proc/self/exe", ignored).parent_path().string();
}

std::string userDataFolder() {
    constexpr const char* Name = "/QuillmereEngine";
    if(const char* const data = std::getenv("XDG_DATA_HOME"); data && data[0] == '/')
        return std::string{data} + Name;
    if(const char* const home = std::getenv("HOME"); home && *home)
        return std::string{home} + "/.local/share" + Name;
    return {};
}

std::string sharedFile(const std::string& name) {
    const std::string folder = programFolder();
    return firstExisting({folder + "/share/quillmere/" + name,
        folder + "/" QUILLMERE_SHARE_FROM_PROGRAM "/" + name});
}

std::string defaultModuleFolder() {
    const std::string folder = programFolder();
    const std::string beside = folder + "/modules";
    const std::string found = firstExisting({beside, folder + "/" QUILLMERE_MODULES_FROM_PROGRAM});
    return found.empty() ? beside : found;
}

std::string scriptProgram() {
    const std::string folder = programFolder();
    const std::string beside = folder + "/quillmere-script";
    const std::string found = firstExisting(
        {beside, folder + "/" QUILLMERE_SCRIPT_FROM_PROGRAM "/quillmere-script"});
    return found.empty() ? beside : found;
}

}
