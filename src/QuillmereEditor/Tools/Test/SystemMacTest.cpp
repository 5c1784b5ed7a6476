#include "QuillmereEditor/Tools/System.h"

#include <cstring>

#include <CoreFoundation/CoreFoundation.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "QuillmereEditor/Tools/systemMac.h"
#include "testing/Environment.h"

/* The source for macOS, built here on a CoreFoundation of our own */

namespace {

constexpr const char* Uuid = "3F2504E0-4F89-41D3-9A0C-0305E82C3301";

int uuidObject;
int stringObject;
bool stringHasPointer = false;
std::vector<CFTypeRef> released;

}

CFUUIDRef CFUUIDCreate(const CFAllocatorRef allocator) {
    EXPECT_EQ(allocator, nullptr);
    return reinterpret_cast<CFUUIDRef>(&uuidObject);
}

CFStringRef CFUUIDCreateString(const CFAllocatorRef allocator, const CFUUIDRef uuid) {
    EXPECT_EQ(allocator, nullptr);
    EXPECT_EQ(uuid, reinterpret_cast<CFUUIDRef>(&uuidObject));
    return reinterpret_cast<CFStringRef>(&stringObject);
}

const char* CFStringGetCStringPtr(const CFStringRef string, const CFStringEncoding encoding) {
    EXPECT_EQ(string, reinterpret_cast<CFStringRef>(&stringObject));
    EXPECT_EQ(encoding, CFStringEncoding(kCFStringEncodingUTF8));
    return stringHasPointer ? Uuid : nullptr;
}

Boolean CFStringGetCString(const CFStringRef string, char* const buffer, const CFIndex size,
    const CFStringEncoding encoding) {
    EXPECT_EQ(string, reinterpret_cast<CFStringRef>(&stringObject));
    EXPECT_EQ(encoding, CFStringEncoding(kCFStringEncodingUTF8));
    EXPECT_EQ(size, 37);
    std::memcpy(buffer, Uuid, 37);
    return true;
}

void CFRelease(const CFTypeRef object) { released.push_back(object); }

namespace QuillmereEngine { namespace {

using ::testing::ElementsAre;
using Testing::EnvironmentVariable;
using ::testing::IsEmpty;
using Testing::ScriptedPrograms;

TEST(SystemMacTest, AppDirectoryIsInTheLibrary) {
    const EnvironmentVariable home{"HOME", "/Users/me"};
    EXPECT_EQ(appDirectory(), "/Users/me/Library/Application Support/QuillmereEngine");
}

TEST(SystemMacTest, BrowserGetsTheBareUrl) {
    const ScriptedPrograms programs;
    programs.addNoting("open");
    openBrowser("http://localhost:8080/a%20b");
    EXPECT_THAT(programs.argumentsOf("open"), ElementsAre("http://localhost:8080/a%20b"));
    openBrowser("http://localhost/a b");
    EXPECT_THAT(programs.argumentsOf("open"), ElementsAre("http://localhost/a", "b"));
}

TEST(SystemMacTest, PathsAreQuoted) {
    const ScriptedPrograms programs;
    programs.addNoting("open");
    openWithSystemFilebrowser("/my folder;x");
    EXPECT_THAT(programs.argumentsOf("open"), ElementsAre("/my folder;x"));
    openWithSystemDefault("/my file's.txt");
    EXPECT_THAT(programs.argumentsOf("open"), ElementsAre("/my file's.txt"));
}

TEST(SystemMacTest, UuidOfAStringWithPointerIsCopied) {
    stringHasPointer = true;
    released.clear();
    EXPECT_EQ(generateUUID(), Uuid);
    EXPECT_THAT(released, IsEmpty());
}

TEST(SystemMacTest, UuidOfAStringWithoutPointerIsWritten) {
    stringHasPointer = false;
    released.clear();
    const std::string uuid = generateUUID();
    EXPECT_EQ(uuid, Uuid);
    EXPECT_EQ(uuid.size(), 36);
    EXPECT_THAT(released, ElementsAre(&uuidObject));
}

TEST(SystemMacTest, RoomForTheNulIsEnough) {
    std::string s;
    s.reserve(37);
    expectUuidRoom(s);
}

TEST(SystemMacDeathTest, TooLittleRoomAborts) {
    /* Anything that has a buffer inside of the string has less room than a UUID needs */
    EXPECT_EXIT(expectUuidRoom({}), ::testing::KilledBySignal(SIGABRT),
        "^Assertion s\\.capacity\\(\\) >= 37 failed at src/QuillmereEditor/Tools/System:245\n$");
}

}}
