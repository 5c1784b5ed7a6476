#ifndef Quillmere_editor_sha256_h
#define Quillmere_editor_sha256_h

#include <string>
#include <string_view>

namespace QuillmereEngine {

/**
@brief SHA-256 of some bytes (FIPS 180-4)
@return 64 lower-case hexadecimal digits. Empty if the cryptographic library fails, for lack of
    memory: equal to no digest.
*/
std::string sha256(std::string_view bytes);

}

#endif
