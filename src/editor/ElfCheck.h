#ifndef Quillmere_editor_ElfCheck_h
#define Quillmere_editor_ElfCheck_h

#include <string_view>

namespace QuillmereEngine {

/**
@brief Whether a 64-bit ELF file of this machine's byte order is all there
@param file     Its content

Looks at what has to lie inside of the file: the header, every segment and the table of sections,
with which linkers end a file. The dynamic loader doesn't look: it maps a file that was cut off and
the process ends with `SIGBUS` at the first touch of what isn't there. Nothing else is checked, a
whole file may still be no module. The format is that of the System V ABI, chapters 4 and 5.
*/
bool isWholeElf(std::string_view file);

}

#endif
