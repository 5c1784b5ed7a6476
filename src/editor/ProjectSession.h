#ifndef Quillmere_editor_ProjectSession_h
#define Quillmere_editor_ProjectSession_h

#include <string>

namespace QuillmereEngine {

class ChangeManager;
class Journal;
class ProjectFile;

/**
@brief The open project between its file and its history

Knows whether what's in the document is also in the file. UI thread.
*/
class ProjectSession {
public:
    /**
    @brief Constructor, calls @ref restart()
    @param project  Has to outlive the session
    @param changes  History of @p project. Has to outlive the session.
    @param file     What the project was loaded from, empty for a project without a file
    */
    explicit ProjectSession(ProjectFile& project, ChangeManager& changes, std::string file);

    ProjectSession(const ProjectSession&) = delete;
    ProjectSession& operator=(const ProjectSession&) = delete;

    /** @brief Let a journal know of saves. It has to outlive the session or the next call. Null, as at
        first, for none. */
    void setJournal(Journal* journal) { _journal = journal; }

    /** @brief Let the document count as changed until it's saved, whatever is undone */
    void setChanged() { _isAlwaysChanged = true; }

    /** @brief Begin the history anew, with what's in the document as what was saved */
    void restart();

    /** @brief File of the project, empty if it has none yet */
    const std::string& file() const { return _file; }

    /**
    @brief Whether the document isn't what was saved

    Unlike @ref ChangeManager::hasUnsavedChanges() also after the saved entry of the history was
    merged into and after it was replaced. If in doubt the document counts as changed: it may have
    become the saved one by undoing edits of several values that alternated, after a save in between.
    */
    bool hasUnsavedChanges() const;

    /**
    @brief Save into the project's file
    @return Whether that worked. The log tells what happened.

    For a project without a file the user is asked for one, and it's the project's from then on. It
    isn't saved if they cancel, and no project is saved while the history is locked.
    */
    bool save();

    /** @brief Undo the newest step, unless the history is locked or has an open group */
    void undo();

    /** @brief Redo the step undone last, see @ref undo() */
    void redo();

    /** @brief Name of the project with a mark if there are unsaved changes: "a/project.json*". Empty
        for a project without a file that wasn't changed. */
    std::string name() const;

    /** @brief Title of the window */
    std::string title() const;

private:
    bool canStep() const;

    ProjectFile& _project;
    ChangeManager& _changes;
    Journal* _journal = nullptr;
    std::string _file;
    bool _isAlwaysChanged = false;
};

}

#endif
