#include "QuillmereEditor/Tools/System.h"

#include <cerrno>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>
#include <vector>

#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Directory.h>

#include "QuillmereEditor/Tools/systemPlatform.h"

namespace QuillmereEngine {

using namespace Corrade;

namespace {

/* Services and cleaned environments go without the variable, and a relative folder would be another
   one in each working directory */
std::string homeDirectory() {
    const char* const variable = std::getenv("HOME");
    if(variable && variable[0] == '/')
        return Utility::Directory::home();

    passwd entry;
    passwd* found = nullptr;
    /* Grows, as entries have no greatest size */
    std::vector<char> strings(1024);
    while(getpwuid_r(getuid(), &entry, strings.data(), strings.size(), &found) == ERANGE)
        strings.resize(2 * strings.size());
    return found ? found->pw_dir : Utility::Directory::home();
}

/* As with all XDG base directories: a relative path is as good as none */
std::string userDataDirectory() {
    const char* const directory = std::getenv("XDG_DATA_HOME");
    if(directory && directory[0] == '/')
        return directory;
    return Utility::Directory::join({homeDirectory(), ".local", "share"});
}

}

const char* openCommand() { return "xdg-open"; }

std::string appDirectory() {
    return Utility::Directory::fromNativeSeparators(
        Utility::Directory::join(userDataDirectory(), "QuillmereEngine"));
}

std::string generateUUID() {
    unsigned char bytes[16]{};
    /* Not in the assertion, which may be left out of a build */
    [[maybe_unused]] const bool isRandom = getentropy(bytes, sizeof(bytes)) == 0;
    CORRADE_ASSERT(isRandom, "generateUUID(): the system has no random bytes", {});
    /* Version 4, made of random bits, in the variant of RFC 4122 */
    bytes[6] = (bytes[6] & 0x0f) | 0x40;
    bytes[8] = (bytes[8] & 0x3f) | 0x80;

    constexpr const char* digits = "0123456789ABCDEF";
    std::string out;
    for(std::size_t i = 0; i != sizeof(bytes); ++i) {
        if(i == 4 || i == 6 || i == 8 || i == 10)
            out += '-';
        out += digits[bytes[i] >> 4];
        out += digits[bytes[i] & 0x0f];
    }
    return out;
}

}
