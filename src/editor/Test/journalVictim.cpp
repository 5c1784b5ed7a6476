/* Edits a project at random until somebody kills it, and says on the standard output which state it
   leaves and which ones are on the disk: `E 5` before the edit that goes on from the state after five
   writings, `S 5` once that state, or a later one, can't get lost any more. */

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <thread>
#include <unistd.h>

#include "JournaledProject.h"

using namespace QuillmereEngine;

namespace {

void say(const char kind, const std::uint64_t state) {
    const std::string line = kind + (" " + std::to_string(state)) + "\n";
    if(write(STDOUT_FILENO, line.data(), line.size()) != ssize_t(line.size()))
        std::_Exit(2);
}

}

int main(const int argc, char** const argv) {
    if(argc != 3)
        return 1;
    using namespace std::chrono_literals;
    JournaledProject project{argv[1]};
    ProjectJournal journal{project.file, project.changes, *project.session, project.loaded, 5ms};
    if(journal.isAsking())
        journal.answer(RecoveryAnswer::Recover);
    RandomEdits edits{
        project.file, project.changes, std::uint32_t(std::strtoul(argv[2], nullptr, 10))};

    std::uint64_t synced = 0;
    for(;;) {
        say('E', project.stateNumber());
        const bool isSave = edits.step();
        if(isSave && project.session->save())
            synced = project.stateNumber();
        if(!project.changes.isGroupOpen())
            journal.frameDrawn();
        synced = std::max(synced, journal.writer().syncedChanges());
        say('S', synced);
        std::this_thread::sleep_for(200us);
    }
}
