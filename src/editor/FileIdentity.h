#ifndef Quillmere_editor_FileIdentity_h
#define Quillmere_editor_FileIdentity_h

#include <cstdint>
#include <string_view>

namespace QuillmereEngine {

/** @brief What a file held at one moment, without holding it: its size and a hash of its bytes */
struct FileIdentity {
    /** @brief Of a file with these bytes. Takes some 0.1 ms a megabyte. */
    static FileIdentity of(std::string_view bytes);

    std::uint64_t size = 0;
    /** XXH3 with 128 bits and without a seed, the low half first (xxHash 0.8). Against accidents and
        not against people who look for a collision. */
    std::uint64_t hash[2]{};
};

bool operator==(const FileIdentity& a, const FileIdentity& b);
bool operator!=(const FileIdentity& a, const FileIdentity& b);

}

#endif
