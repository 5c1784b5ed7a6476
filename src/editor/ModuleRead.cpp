#include "editor/ModuleRead.h"

#include <optional>
#include <utility>

#include "editor/ModuleBuild.h"
#include "editor/files.h"

namespace QuillmereEngine {

namespace {

bool readFile(
    const std::string& path, const char* const what, std::string& content, std::string& problem) {
    std::string reason;
    std::optional<std::string> read = readWholeFile(path, reason);
    if(!read) {
        problem = std::string{"its "} + what + " can't be read: " + reason;
        return false;
    }
    content = std::move(*read);
    return true;
}

}

ModuleRead readModule(const std::string& path) {
    using State = ModuleRead::State;

    ModuleRead out;
    if(!readFile(path, "file", out.files.library, out.problem) ||
        !readFile(metadataPath(path), ".conf", out.files.metadata, out.problem))
        return out;
    const std::optional<ModuleBuild> build = ModuleBuild::read(out.files.metadata, out.problem);
    if(!build) {
        out.state = State::Unfit;
        return out;
    }
    /* First, as a .conf of the module's last build tells nothing about this one */
    out.problem = build->whyIncomplete(out.files.library);
    if(!out.problem.empty())
        return out;
    out.problem = build->whyUnfit();
    out.state = out.problem.empty() ? State::Good : State::Unfit;
    out.type = build->type();
    return out;
}

}
