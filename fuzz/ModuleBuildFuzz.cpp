/* A module's .conf, which may be any file: what is read has all keys, what isn't has its problem in
   one line */

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "editor/ModuleBuild.h"

using QuillmereEngine::ModuleBuild;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* const data, const std::size_t size) {
    const std::string_view metadata{reinterpret_cast<const char*>(data), size};
    std::string problem;
    const std::optional<ModuleBuild> build = ModuleBuild::read(metadata, problem);
    if(bool(build) != problem.empty())
        std::abort();
    if(build) {
        problem = build->whyUnfit() + build->whyIncomplete("not the file");
        if(problem.empty() || build->type().size() > size)
            std::abort();
    }
    if(problem.find('\n') != std::string::npos)
        std::abort();
    return 0;
}
