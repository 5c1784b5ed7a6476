#ifndef Quillmere_editor_JournalFile_h
#define Quillmere_editor_JournalFile_h

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace QuillmereEngine {

/**
@brief The file of a journal as whoever writes it sees it

Any thread, one at a time. Where something fails, @p problem gets the reason, as in "No space left on
device".
*/
class JournalFile {
public:
    virtual ~JournalFile();

    /** @brief Write bytes at a place. After a failure some of them may be there. */
    virtual bool write(std::uint64_t offset, std::string_view bytes, std::string& problem) = 0;

    /** @brief Wait until all that was written is on the disk. After a failure nothing is known of
        what was written since the last success. */
    virtual bool sync(std::string& problem) = 0;

    /** @brief Take the file away. Nothing else is called afterwards. */
    virtual void remove() = 0;
};

/** @brief A file on the disk, locked against other editors for as long as it's open */
class DiskJournalFile: public JournalFile {
public:
    /**
    @brief Make a new journal
    @return Null if that fails. Then what's there is as it was: also a journal that's in the way,
        another editor's or one that was left.

    The folder is made if it's missing. The file is its owner's alone to read.
    */
    static std::unique_ptr<DiskJournalFile> create(const std::string& path, std::string& problem);

    /** @brief What came of opening a journal that's there */
    enum class Opening {
        Opened,
        Missing,
        Locked, /**< It's another editor's */
        Failed
    };

    /** @brief Open a journal that's there. Only with `Opened` there's a @p file. */
    static Opening open(
        const std::string& path, std::unique_ptr<DiskJournalFile>& file, std::string& problem);

    DiskJournalFile(const DiskJournalFile&) = delete;
    DiskJournalFile& operator=(const DiskJournalFile&) = delete;
    ~DiskJournalFile() override;

    bool write(std::uint64_t offset, std::string_view bytes, std::string& problem) override;
    bool sync(std::string& problem) override;
    void remove() override;

    /** @brief All bytes */
    bool read(std::string& bytes, std::string& problem);

    /** @brief Drop what is behind a size */
    bool truncate(std::uint64_t size, std::string& problem);

    /**
    @brief Give it another name, one that's free
    @return The path with a number behind it, empty if that fails
    */
    std::string setAside();

private:
    explicit DiskJournalFile(std::string path, int descriptor);

    static Opening openLocked(const std::string& path, int flags,
        std::unique_ptr<DiskJournalFile>& file, std::string& problem);
    bool isAt(const std::string& path) const;
    void syncFolder();

    std::string _path;
    int _descriptor;
    bool _isFolderSynced = false;
};

}

#endif
