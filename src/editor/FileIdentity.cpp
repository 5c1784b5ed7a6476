#include "editor/FileIdentity.h"

/* In here and not from the shared library, which would be one more to install */
#define XXH_INLINE_ALL
#include <xxhash.h>

namespace QuillmereEngine {

FileIdentity FileIdentity::of(const std::string_view bytes) {
    const XXH128_hash_t hash = XXH3_128bits(bytes.data(), bytes.size());
    return {bytes.size(), {hash.low64, hash.high64}};
}

bool operator==(const FileIdentity& a, const FileIdentity& b) {
    return a.size == b.size && a.hash[0] == b.hash[0] && a.hash[1] == b.hash[1];
}

bool operator!=(const FileIdentity& a, const FileIdentity& b) { return !(a == b); }

}
