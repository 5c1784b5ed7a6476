#include "QuillmereEditor/Tools/System.h"

#include <CoreFoundation/CoreFoundation.h>
#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Directory.h>

#include "QuillmereEditor/Tools/systemMac.h"
#include "QuillmereEditor/Tools/systemPlatform.h"

namespace QuillmereEngine {

using namespace Corrade;

const char* openCommand() { return "open"; }

std::string appDirectory() {
    return Utility::Directory::fromNativeSeparators(Utility::Directory::join(
        {Utility::Directory::home(), "Library", "Application Support", "QuillmereEngine"}));
}

/* The message has a location of its own, which stays when lines move */
void expectUuidRoom(const std::string& s) {
    CORRADE_ASSERT(s.capacity() >= 37,
        "Assertion s.capacity() >= 37 failed at src/QuillmereEditor/Tools/System:245", );
}

std::string generateUUID() {
    const CFUUIDRef uuid = CFUUIDCreate(nullptr);
    const CFStringRef string = CFUUIDCreateString(nullptr, uuid);
    if(const char* const text = CFStringGetCStringPtr(string, kCFStringEncodingUTF8))
        return text;

    std::string s;
    /* Some libraries give a string of 36 characters no more room than for these */
    s.reserve(37);
    s.resize(36);
    expectUuidRoom(s);
    CFStringGetCString(string, &s[0], 37, kCFStringEncodingUTF8);
    CFRelease(uuid);
    return s;
}

}
