#ifndef Quillmere_editor_Test_JournaledProject_h
#define Quillmere_editor_Test_JournaledProject_h

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "QuillmereEditor/ChangeObserver.h"
#include "RandomEdits.h"
#include "editor/ProjectJournal.h"
#include "editor/ProjectSession.h"

namespace QuillmereEngine {

/** @brief A project as an editor has it open, which counts the states of its document */
class JournaledProject: private ChangeObserver {
public:
    explicit JournaledProject(const std::string& path) {
        file.load(path, [this](const Corrade::Containers::StringView text) {
            loaded = FileIdentity::of({text.data(), text.size()});
        });
        session.emplace(file, changes, path);
        changes.addObserver(*this);
    }

    /** @brief How many writings there were. That is the number of the state. */
    std::uint64_t stateNumber() const { return _count; }

    /** @brief Called after each writing */
    std::function<void()> reached;

    std::optional<FileIdentity> loaded;
    ProjectFile file;
    ChangeManager changes{file};
    std::optional<ProjectSession> session;

private:
    void changeWritten(Corrade::Containers::StringView, const rapidjson::Value*,
        const rapidjson::Value*) override {
        ++_count;
        if(reached)
            reached();
    }

    std::uint64_t _count = 0;
};

}

#endif
