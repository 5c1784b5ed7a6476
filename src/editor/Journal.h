#ifndef Quillmere_editor_Journal_h
#define Quillmere_editor_Journal_h

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "QuillmereEditor/ChangeObserver.h"
#include "editor/FileIdentity.h"
#include "editor/JournalFormat.h"
#include "editor/JournalWriter.h"

namespace QuillmereEngine {

class ChangeManager;
class ProjectFile;

/**
@brief Path of a project's journal
@param project  Path of the project's file, empty for a project without one
@return For `a/level.json` it's `a/.level.json.journal`, beside the file itself where that is a link
    to it, so that one file has one journal. Without a file it's `unnamed.journal` in
    @ref userDataFolder(). Empty if there's no place.
*/
std::string journalPath(const std::string& project);

/**
@brief Writes down each change since the last save, so that a crash doesn't lose them

Hears of what the history writes into the document and hands it on to a @ref JournalWriter. The file
comes with the first change after a save and goes with the next save, see @ref JournalFormat.h for
what is in it and @ref FoundJournal for how it's read.

A save is announced in the journal, and that is on the disk, before the project's file is replaced:
wherever a crash comes in between, either the file is the one that the journal began with, and all
changes are missing in it, or it's the announced one and has all that came before the announcement.

UI thread.
*/
class Journal: public ChangeObserver {
public:
    using Clock = JournalWriter::Clock;

    /** @brief Makes the file at a path, as @ref DiskJournalFile::create() does */
    using Creator =
        std::function<std::unique_ptr<JournalFile>(const std::string& path, std::string& problem)>;

    using Now = std::function<Clock::time_point()>;

    /**
    @brief Constructor. Writes nothing before @ref start().
    @param project  Has to outlive the journal
    @param changes  History of @p project, observed from now on
    @param writer   Has to outlive the journal
    @param creator  Makes the files, on the thread on which @p writer works
    @param now      Tells the time
    */
    explicit Journal(ProjectFile& project, ChangeManager& changes, JournalWriter& writer,
        Creator creator = DiskJournalFile::create, Now now = Clock::now);

    /**
    @brief Begin to write down changes
    @param path     Of the journal, see @ref journalPath()
    @param base     Identity of the file that the document was loaded from, nothing if it's a new
        project. The document is as it was then: if it was changed since the construction the journal
        can't begin before the next save.
    @return Whether it could begin
    */
    bool start(const std::string& path, const std::optional<FileIdentity>& base);

    /** @brief A journal that's on the disk already */
    struct Earlier {
        std::string path;
        std::unique_ptr<JournalFile> file;
        std::uint64_t size;
        JournalChain chain;
        /* Of the file that the document was loaded from, nothing if it was a new project */
        std::optional<FileIdentity> base;
        /* Of the saved document as @ref RapidJsonUtils::toPrettyJson() writes it */
        FileIdentity saved;
    };

    /** @brief Go on with an earlier journal, whose changes are in the document by now */
    void resume(Earlier earlier);

    /**
    @brief The project's file is about to be written
    @param file     Its path
    @param text     What is going to be in it

    Waits until everything is on the disk. A journal that can't be written doesn't keep anybody from
    saving.
    */
    void aboutToSave(const std::string& file, std::string_view text);

    /** @brief The project's file was written as announced. The journal goes, and the next change begins
        one for that file. */
    void saved();

    /**
    @brief The history says that there are no unsaved changes

    The journal goes if the document is the saved one indeed, to the byte. It need not be: undoing
    doesn't always restore the order of members, for example, and the next changes are made in the
    document as it is. Writes the document out to see that, so call it when something has changed.
    */
    void nothingUnsaved();

    /** @brief The changes aren't wanted any more: the journal goes, and no other one begins before the
        next save */
    void discard();

    /** @brief Whether there's a journal, or will be with the next sync */
    bool isOpen() const { return _isOpen; }

    /** @brief How many changes were made since the construction */
    std::uint64_t changeCount() const { return _changeCount; }

    void changeWritten(Corrade::Containers::StringView path, const rapidjson::Value* oldValue,
        const rapidjson::Value* newValue) override;

private:
    void begin();
    void remove();

    ProjectFile& _project;
    JournalWriter& _writer;
    Creator _creator;
    Now _now;
    std::string _path;
    /* Whether the document is one that a journal can begin with */
    bool _isStarted = false;
    bool _isOpen = false;
    std::optional<FileIdentity> _base;
    FileIdentity _saved;
    /* What aboutToSave() announced */
    std::string _announcedPath;
    FileIdentity _announced;
    JournalChain _chain;
    std::string _record;
    std::uint64_t _changeCount = 0;
};

}

#endif
