#ifndef Quillmere_editor_Test_RandomEdits_h
#define Quillmere_editor_Test_RandomEdits_h

#include <cstdint>
#include <random>
#include <string>

#include "QuillmereEditor/ChangeManager.h"
#include "host/ProjectFile.h"

namespace QuillmereEngine {

/** @brief What an editor may do to a project, at random but the same for the same seed */
class RandomEdits {
public:
    explicit RandomEdits(ProjectFile& project, ChangeManager& changes, std::uint32_t seed);

    /**
    @brief Push, merge, remove, undo, redo or make a group
    @return Whether the project is to be saved now
    */
    bool step();

private:
    unsigned below(unsigned end);
    std::string path();
    rapidjson::Value value(int depth = 0);
    void push();
    void pushGroup();

    ProjectFile& _project;
    ChangeManager& _changes;
    std::mt19937 _random;
};

/** @brief The document, to the bit */
std::string stateOf(const ProjectFile& project);

}

#endif
