#ifndef Quillmere_QuillmereEditor_Tools_systemPlatform_h
#define Quillmere_QuillmereEditor_Tools_systemPlatform_h

/** @file
@brief What System.cpp needs of the source for the platform, `SystemLinux.cpp` or `SystemMac.cpp`

The same source holds `appDirectory()` and `generateUUID()`.
*/

namespace QuillmereEngine {

/** @brief Name of the program that opens a URL, a folder or a file with the user's application for it */
const char* openCommand();

}

#endif
