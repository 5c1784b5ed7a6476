#ifndef Quillmere_editor_ModuleCopy_h
#define Quillmere_editor_ModuleCopy_h

#include <cstdint>
#include <optional>
#include <string>

namespace QuillmereEngine {

/** @brief What tells one content of a module's two files from the next without reading them */
struct ModuleStamp {
    struct File {
        std::uint64_t device = 0, inode = 0, size = 0;
        std::int64_t seconds = 0, nanoseconds = 0;
    };

    /** @brief Of a module's `.so` and the `.conf` beside it. A missing file's numbers are 0. */
    static ModuleStamp of(const std::string& path);

    /** @brief Whether there is a `.so` at all */
    bool exists() const { return library.inode; }

    File library, metadata;
};

bool operator==(const ModuleStamp& a, const ModuleStamp& b);
inline bool operator!=(const ModuleStamp& a, const ModuleStamp& b) { return !(a == b); }

/** @brief Content of a module's two files */
struct ModuleFiles {
    std::string library, metadata;
};

/**
@brief Private copy of a module

Its `.so` and `.conf` under their own names in a fresh folder for temporary files. What's opened is
the copy, so writing over the original neither pulls the code away under the process nor makes the
dynamic loader take the new file for the one that it has already. The folder goes with the object;
what was opened from it stays usable.
*/
class ModuleCopy {
public:
    /**
    @brief Copy a module
    @param path     Of the `.so`, for its name
    @param files    What was read and found to be good, so that the copy is nothing else
    @param problem  Why there is no result: a file can't be written
    */
    static std::optional<ModuleCopy> make(
        const std::string& path, const ModuleFiles& files, std::string& problem);

    ModuleCopy(const ModuleCopy&) = delete;
    ModuleCopy(ModuleCopy&& other) noexcept;
    ~ModuleCopy();
    ModuleCopy& operator=(const ModuleCopy&) = delete;
    ModuleCopy& operator=(ModuleCopy&&) = delete;

    /** @brief Where the two files lie, absolute and without a slash at its end */
    const std::string& folder() const { return _folder; }

private:
    explicit ModuleCopy(std::string folder);

    std::string _folder;
};

/** @brief Path of the `.conf` that belongs to a `.so` */
std::string metadataPath(const std::string& path);

}

#endif
