#include "editor/script/MemoryLimit.h"

#include <fstream>
#include <malloc.h>
#include <new>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

#include "editor/script/ScriptProtocol.h"

namespace QuillmereEngine {

namespace {

/* Of this process, 0 when the kernel doesn't tell */
std::size_t dataSize() {
    std::ifstream status{"/proc/self/status"};
    for(std::string word; status >> word;) {
        std::size_t kilobytes = 0;
        if(word == "VmData:" && status >> kilobytes)
            return kilobytes * 1024;
    }
    return 0;
}

}

bool limitMemory(const std::size_t size) {
    std::set_new_handler([] { _exit(ScriptExit::MemoryLimit); });
    /* One arena: each further one would keep memory that another thread asks for in vain */
    mallopt(M_ARENA_MAX, 1);
    const rlim_t limit = dataSize() + size;
    const rlimit limits{limit, limit};
    return setrlimit(RLIMIT_DATA, &limits) == 0;
}

}
