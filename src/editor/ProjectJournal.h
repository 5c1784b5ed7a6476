#ifndef Quillmere_editor_ProjectJournal_h
#define Quillmere_editor_ProjectJournal_h

#include <cstdint>
#include <optional>
#include <string>

#include "editor/FileIdentity.h"
#include "editor/Journal.h"
#include "editor/JournalRecovery.h"
#include "editor/JournalThread.h"
#include "editor/JournalWriter.h"
#include "editor/RecoveryQuestion.h"

namespace QuillmereEngine {

class ChangeManager;
class ProjectFile;
class ProjectSession;

/**
@brief The journal of the open project, and the question what is to become of an earlier one

What happens to the journal is told in the log. UI thread.
*/
class ProjectJournal {
public:
    /**
    @brief Look for an earlier journal and begin to keep one
    @param project  As it was loaded just now
    @param changes  Its history, still empty
    @param session  Gets the journal
    @param loaded   Identity of the session's file, nothing for a new project
    @param syncDelay    From a change to the sync, see @ref JournalWriter::SyncDelay

    An earlier journal with changes that the file hasn't is asked about, and no other one is begun
    before that is answered. One that isn't of use any more is deleted; one that continues another
    state of the file, or that can't be read, gets another name. One of another version of the format
    stays where it is, and then, as while another editor writes it, this one's changes aren't kept.
    */
    explicit ProjectJournal(ProjectFile& project, ChangeManager& changes, ProjectSession& session,
        const std::optional<FileIdentity>& loaded,
        JournalWriter::Clock::duration syncDelay = JournalWriter::SyncDelay);

    ProjectJournal(const ProjectJournal&) = delete;
    ProjectJournal& operator=(const ProjectJournal&) = delete;

    /** @brief Brings the rest to the disk */
    ~ProjectJournal();

    /** @brief Whether an answer is waited for */
    bool isAsking() const { return _question.isAsked(); }

    /** @brief Draw the question, if there's one, and do what is answered. Inside of a frame. */
    void drawQuestion();

    /** @brief Do what was answered */
    void answer(RecoveryAnswer answer);

    /** @brief To be called after each frame: the journal goes when everything was undone */
    void frameDrawn();

    /** @brief The user leaves and doesn't want the changes any more */
    void discard();

    const JournalWriter& writer() const { return _writer; }

private:
    void look();
    void recover();
    void resume(const FileIdentity& saved);
    void start();
    std::string projectName() const;

    ProjectFile& _project;
    ChangeManager& _changes;
    ProjectSession& _session;
    std::optional<FileIdentity> _loaded;
    std::optional<FoundJournal> _found;
    RecoveryQuestion _question;
    std::uint64_t _comparedCount = 0;
    JournalWriter _writer;
    Journal _journal;
    /* The last one, as it uses the writer until its end */
    JournalThread _thread;
};

/** @brief Say in the log that there's a journal, for an editor that leaves it alone. Nothing if there's
    none. */
void reportIdleJournal(const std::string& project);

}

#endif
