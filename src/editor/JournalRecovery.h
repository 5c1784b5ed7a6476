#ifndef Quillmere_editor_JournalRecovery_h
#define Quillmere_editor_JournalRecovery_h

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "editor/FileIdentity.h"
#include "editor/JournalFile.h"
#include "editor/JournalFormat.h"

namespace QuillmereEngine {

class ChangeManager;
class ProjectFile;

/** @brief What was found where a project's journal lies */
enum class JournalFinding {
    None,         /**< Nothing, or a journal without a change that the file hasn't */
    Changes,      /**< Changes that are missing in the file */
    OtherState,   /**< A journal that continues something else than the file is now */
    OtherVersion, /**< A journal in another format */
    Unreadable,   /**< Something else, or a journal whose first record is damaged */
    InUse,        /**< Another editor writes it */
    Failed        /**< It can't be opened or read */
};

/**
@brief A journal that an earlier editor left, locked against others for as long as this lives

UI thread.
*/
class FoundJournal {
public:
    /**
    @brief Look for a journal
    @param path     Where it would be, see @ref journalPath()
    @param project  Identity of the file that the document was loaded from, nothing for a new project

    Only looks: also a journal that isn't needed any more stays.
    */
    explicit FoundJournal(std::string path, std::optional<FileIdentity> project);

    JournalFinding finding() const { return _finding; }

    const std::string& path() const { return _path; }

    /** @brief Why, for a finding of `Failed`; the version for `OtherVersion` */
    const std::string& problem() const { return _problem; }

    /** @brief How many changes are missing in the file */
    std::size_t changeCount() const { return _changeCount; }

    /** @brief How many bytes at its end aren't a whole record */
    std::size_t tornSize() const { return _bytes.size() - _wholeSize; }

    /** @brief What came of @ref apply() */
    struct Applied {
        std::size_t changeCount = 0;
        /** Whether all were. If not, the rest doesn't fit into the document. */
        bool isComplete = true;
        /** Whether undoing takes all of them back */
        bool isUndoable = true;
    };

    /**
    @brief Make the changes again
    @param project  As loaded
    @param changes  Its history, in which a group is open that gets them. Whoever closes it lets the
        handlers hear of them, and what handlers change then comes on top.

    Expects a finding of `Changes`. The document becomes what it was after the last whole record, to
    the bit. What was undone before the crash can't be redone, and what was one entry of the history
    may be several: the journal tells what was written and not why.
    */
    Applied apply(ProjectFile& project, ChangeManager& changes) const;

    /** @brief Delete it. Does nothing if there's none or if it couldn't be opened. */
    void remove();

    /** @brief Give it another name, so that there's place for a new one. Empty if that fails, otherwise
        the new path. */
    std::string setAside();

    /** @brief Drop what isn't whole, and hand out the file for more. False if that fails. */
    bool release(std::unique_ptr<JournalFile>& file);

    /** @brief Size of all whole records, where more can be written after @ref release() */
    std::size_t wholeSize() const { return _wholeSize; }

    /** @brief Where the chain of records stands there */
    JournalChain chain() const { return _chain; }

private:
    JournalFinding find();
    JournalFinding match();
    bool holds(const JournalRecord& save) const;

    std::string _path;
    std::optional<FileIdentity> _project;
    std::unique_ptr<DiskJournalFile> _file;
    std::string _bytes;
    std::string _problem;
    /* Records from here on are changes that the file hasn't */
    std::size_t _firstMissing = 0;
    std::size_t _changeCount = 0;
    std::size_t _wholeSize = 0;
    JournalChain _chain;
    JournalFinding _finding;
};

}

#endif
