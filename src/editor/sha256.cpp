#include "editor/sha256.h"

#include <openssl/evp.h>

namespace QuillmereEngine {

std::string sha256(const std::string_view bytes) {
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned size = 0;
    if(!EVP_Digest(bytes.data(), bytes.size(), digest, &size, EVP_sha256(), nullptr))
        return {};

    constexpr char Digits[] = "0123456789abcdef";
    std::string out;
    for(unsigned i = 0; i != size; ++i) {
        out += Digits[digest[i] >> 4];
        out += Digits[digest[i] & 15];
    }
    return out;
}

}
