#ifndef Quillmere_editor_ScriptProject_h
#define Quillmere_editor_ScriptProject_h

#include <cstddef>
#include <string>
#include <string_view>

#include <rapidjson/document.h>

namespace QuillmereEngine {

class ChangeManager;
class Message;
class ProjectFile;
struct ScriptPlace;

/**
@brief Carries out what scripts want of the project

Each change is one of the history. It's checked before: what the history would refuse, couldn't undo
or would abort at is refused with a message for an exception, and nothing is changed. Undoing restores
the document but for the order of an object's members: to that end a change in an empty container, or
one that empties it, is one of the container. UI thread.
*/
class ScriptProject {
public:
    /** The most bytes of values that one script may set: the history keeps all of them */
    static constexpr std::size_t MaxValueSize = std::size_t{128} << 20;

    /** @brief Both have to outlive this */
    explicit ScriptProject(ProjectFile& project, ChangeManager& changes);

    ScriptProject(const ScriptProject&) = delete;
    ScriptProject& operator=(const ScriptProject&) = delete;

    /** @brief Calls @ref scriptEnded() */
    ~ScriptProject();

    /**
    @brief Carry out a request
    @return The message to answer with, see @ref ScriptProtocol.h

    `get` gives what's in the document, without defaults, and nothing where nothing is. The first
    `begin` opens a group and locks the history, what comes within it joins it, and the last
    `commit` closes it.
    */
    std::string answer(const Message& request);

    /** @brief Commit the group if the script has left one open */
    void scriptEnded();

private:
    /* These give a message, the next two a problem, empty for none */
    std::string carryOut(const Message& request);
    std::string get(std::string_view pointer) const;
    std::string begin();
    std::string commit();
    std::string set(std::string_view pointer, std::string_view json);
    std::string remove(std::string_view pointer);
    void push(std::string_view text, const ScriptPlace& place, rapidjson::Document& value);
    bool isOthersEdit() const;

    ProjectFile& _project;
    ChangeManager& _changes;
    int _groupDepth = 0;
    std::size_t _valueSize = 0;
};

}

#endif
