#include "editor/escapedForUrl.h"

#include <cstdint>

namespace QuillmereEngine {

std::string escapedForUrl(const std::string_view name) {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    constexpr std::string_view Unreserved =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
    std::string out;
    for(const char c: name) {
        if(Unreserved.find(c) != std::string_view::npos)
            out += c;
        else
            (((out += '%') += Digits[std::uint8_t(c) >> 4]) += Digits[std::uint8_t(c) & 0xf]);
    }
    return out;
}

}
