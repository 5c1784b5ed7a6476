#ifndef CoreFoundation_CoreFoundation_h
#define CoreFoundation_CoreFoundation_h

/* As much of macOS' CoreFoundation as the source for macOS needs, to build and run it elsewhere.
   There is one UUID and one string, SystemMacTest.cpp says what they do. */

extern "C" {

typedef const struct FakeAllocator* CFAllocatorRef;
typedef const struct FakeUuid* CFUUIDRef;
typedef const struct FakeString* CFStringRef;
typedef const void* CFTypeRef;
typedef unsigned char Boolean;
typedef long CFIndex;
typedef unsigned int CFStringEncoding;
enum { kCFStringEncodingUTF8 = 0x08000100 };

CFUUIDRef CFUUIDCreate(CFAllocatorRef allocator);
CFStringRef CFUUIDCreateString(CFAllocatorRef allocator, CFUUIDRef uuid);
const char* CFStringGetCStringPtr(CFStringRef string, CFStringEncoding encoding);
Boolean CFStringGetCString(
    CFStringRef string, char* buffer, CFIndex size, CFStringEncoding encoding);
void CFRelease(CFTypeRef object);
}

#endif
