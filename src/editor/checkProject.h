#ifndef Quillmere_editor_checkProject_h
#define Quillmere_editor_checkProject_h

#include <string>

namespace QuillmereEngine {

/**
@brief Whether a project file can be read and is JSON
@return If it isn't, a line on Corrade's error output names the file and, for JSON, line and column
    of the error. Both count from 1, the column in bytes.
*/
bool checkProject(const std::string& path);

}

#endif
