#ifndef Quillmere_QuillmereEditor_Tools_systemMac_h
#define Quillmere_QuillmereEditor_Tools_systemMac_h

#include <string>

namespace QuillmereEngine {

/** @brief Aborts, with the failed condition, unless a UUID and the NUL behind it fit into @p s */
void expectUuidRoom(const std::string& s);

}

#endif
