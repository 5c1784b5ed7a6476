#include "editor/ElfCheck.h"

#include <cstdint>
#include <cstring>
#include <elf.h>

namespace QuillmereEngine {

namespace {

constexpr unsigned char NativeByteOrder = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? ELFDATA2LSB
                                                                                    : ELFDATA2MSB;

/* Without a sum, which could overflow */
bool isInside(const std::string_view file, const std::uint64_t offset, const std::uint64_t size) {
    return offset <= file.size() && size <= file.size() - offset;
}

template<class T> T readAt(const std::string_view file, const std::uint64_t offset) {
    T out;
    std::memcpy(&out, file.data() + offset, sizeof(out));
    return out;
}

bool hasKnownHeader(const Elf64_Ehdr& header) {
    return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 &&
        header.e_ident[EI_CLASS] == ELFCLASS64 && header.e_ident[EI_DATA] == NativeByteOrder;
}

bool hasAllSegments(const std::string_view file, const Elf64_Ehdr& header) {
    const std::uint64_t tableSize = std::uint64_t(header.e_phnum) * sizeof(Elf64_Phdr);
    if(!header.e_phnum || header.e_phentsize != sizeof(Elf64_Phdr) ||
        !isInside(file, header.e_phoff, tableSize))
        return false;
    for(std::uint64_t i = 0; i != header.e_phnum; ++i) {
        const auto segment = readAt<Elf64_Phdr>(file, header.e_phoff + i * sizeof(Elf64_Phdr));
        if(!isInside(file, segment.p_offset, segment.p_filesz))
            return false;
    }
    return true;
}

/* A file may have been stripped of its sections, then there is no table */
bool hasSectionTable(const std::string_view file, const Elf64_Ehdr& header) {
    return header.e_shoff == 0 ||
        isInside(file, header.e_shoff, std::uint64_t(header.e_shnum) * header.e_shentsize);
}

}

bool isWholeElf(const std::string_view file) {
    if(file.size() < sizeof(Elf64_Ehdr))
        return false;
    const auto header = readAt<Elf64_Ehdr>(file, 0);
    return hasKnownHeader(header) && hasAllSegments(file, header) && hasSectionTable(file, header);
}

}
