#ifndef Quillmere_editor_script_MemoryLimit_h
#define Quillmere_editor_script_MemoryLimit_h

#include <cstddef>

namespace QuillmereEngine {

/**
@brief Limit the memory that the process may take from now on
@param size     Bytes beyond those that it has now
@return Whether the limit is set

Counts private writable memory (`RLIMIT_DATA`, Linux 4.7 and newer) and not the address space, of
which the engine reserves two gigabytes for machine code that it never fills. Memory that isn't
given ends the process with @ref ScriptExit::MemoryLimit, as far as it's our own that asks for it;
the engine has a callback of its own.
*/
bool limitMemory(std::size_t size);

}

#endif
