#ifndef Quillmere_editor_ServedFile_h
#define Quillmere_editor_ServedFile_h

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace QuillmereEngine {

/** @brief A regular file, open for reading */
class ServedFile {
public:
    /** @param descriptor   Of a regular file, owned from now on */
    explicit ServedFile(int descriptor, std::uint64_t size);
    ServedFile(ServedFile&& other) noexcept;
    ServedFile& operator=(ServedFile&&) = delete;
    ~ServedFile();

    /** @brief Bytes in it when it was opened */
    std::uint64_t size() const { return _size; }

    /**
    @brief Read from a place in it
    @return How many bytes were read, fewer than @p size at the end of the file or when it can't be
        read

    Any thread.
    */
    std::size_t read(std::uint64_t offset, char* out, std::size_t size) const;

private:
    int _descriptor;
    std::uint64_t _size;
};

/** @brief What lies behind the path of a URL */
struct FileLookup {
    enum class Result {
        File,
        /** A folder with an `index.html`, named without the slash that the links in it need */
        FolderWithoutSlash,
        NotFound,
        Forbidden,
        /** The machine has run out of something or a disk is broken */
        Failed
    };

    Result result = Result::NotFound;
    /** With `File` only */
    std::optional<ServedFile> file;
    /** By which the content's type goes: that of the path, or `index.html` for a folder */
    std::string name;
};

/**
@brief Real path of a folder, without links
@param problem  Why there is no result. Untouched otherwise.
*/
std::optional<std::string> canonicalFolder(const std::string& path, std::string& problem);

/**
@brief Open what the path of a URL names in a folder
@param folder   As @ref canonicalFolder() gives it
@param urlPath  With its escapes decoded, any bytes

Gives regular files whose real path lies in the folder. Links are followed as long as they stay in
it. Whatever lies outside is not found, whether it exists or not, and so is a path with `..` in it,
from which a client could learn the names of the folders above. Files and folders whose name begins
with a dot, also behind a link, are not found either: they are the editor's and other programs', not
the project's. A folder, with a slash at the end of its path, stands for its `index.html`; there are
no listings. Nothing but regular files is opened, as already that can wait for ever (a pipe) or do
something (a device).

Any thread.
*/
FileLookup findServedFile(const std::string& folder, const std::string& urlPath);

}

#endif
