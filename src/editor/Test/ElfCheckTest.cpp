#include "editor/ElfCheck.h"

#include <cstring>
#include <elf.h>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

/* A header, one segment of 16 bytes and a table of two sections at the end */
struct SmallElf {
    Elf64_Ehdr header{};
    Elf64_Phdr segment{};
    char content[16]{};
    Elf64_Shdr sections[2]{};

    SmallElf() {
        std::memcpy(header.e_ident, ELFMAG, SELFMAG);
        header.e_ident[EI_CLASS] = ELFCLASS64;
        header.e_ident[EI_DATA] = ELFDATA2LSB;
        header.e_phoff = offsetof(SmallElf, segment);
        header.e_phnum = 1;
        header.e_phentsize = sizeof(Elf64_Phdr);
        header.e_shoff = offsetof(SmallElf, sections);
        header.e_shnum = 2;
        header.e_shentsize = sizeof(Elf64_Shdr);
        segment.p_offset = offsetof(SmallElf, content);
        segment.p_filesz = sizeof(content);
    }

    std::string bytes() const { return {reinterpret_cast<const char*>(this), sizeof(*this)}; }
};

TEST(ElfCheckTest, AcceptsAWholeFile) { EXPECT_TRUE(isWholeElf(SmallElf{}.bytes())); }

TEST(ElfCheckTest, RefusesEveryShorterFile) {
    const std::string bytes = SmallElf{}.bytes();
    for(std::size_t size = 0; size != bytes.size(); ++size)
        EXPECT_FALSE(isWholeElf(std::string_view{bytes}.substr(0, size))) << size;
}

TEST(ElfCheckTest, AcceptsARealModuleAndRefusesEveryCutOne) {
    const std::string bytes = Testing::readFile(QUILLMERE_FIXTURE_MODULE);
    EXPECT_TRUE(isWholeElf(bytes));
    for(std::size_t size = 0; size < bytes.size(); size += 1 + bytes.size() / 1000)
        EXPECT_FALSE(isWholeElf(std::string_view{bytes}.substr(0, size))) << size;
    EXPECT_FALSE(isWholeElf(std::string_view{bytes}.substr(0, bytes.size() - 1)));
}

TEST(ElfCheckTest, AcceptsAFileWithoutSections) {
    SmallElf elf;
    elf.header.e_shoff = 0;
    EXPECT_TRUE(isWholeElf(elf.bytes()));
}

struct BrokenElf {
    const char* name;
    void (*breakIt)(SmallElf&);
};

struct BrokenElfTest: ::testing::TestWithParam<BrokenElf> {};

TEST_P(BrokenElfTest, IsRefused) {
    SmallElf elf;
    GetParam().breakIt(elf);
    EXPECT_FALSE(isWholeElf(elf.bytes()));
}

const BrokenElf BrokenElves[]{
    {"Magic", [](SmallElf& elf) { elf.header.e_ident[0] = 0; }},
    {"Class", [](SmallElf& elf) { elf.header.e_ident[EI_CLASS] = ELFCLASS32; }},
    {"ByteOrder", [](SmallElf& elf) { elf.header.e_ident[EI_DATA] = ELFDATA2MSB; }},
    {"NoSegments", [](SmallElf& elf) { elf.header.e_phnum = 0; }},
    {"SegmentEntrySize", [](SmallElf& elf) { elf.header.e_phentsize = 8; }},
    {"SegmentTableOutside", [](SmallElf& elf) { elf.header.e_phoff = sizeof(SmallElf); }},
    {"SegmentTableOffsetOverflows", [](SmallElf& elf) { elf.header.e_phoff = ~0ull - 8; }},
    {"SegmentOutside", [](SmallElf& elf) { elf.segment.p_offset = sizeof(SmallElf) + 1; }},
    {"SegmentTooLong", [](SmallElf& elf) { elf.segment.p_filesz = sizeof(SmallElf); }},
    {"SegmentSumOverflows", [](SmallElf& elf) { elf.segment.p_filesz = ~0ull; }},
    {"SectionTableOutside", [](SmallElf& elf) { elf.header.e_shnum = 3; }},
    {"SectionTableOffsetOverflows", [](SmallElf& elf) { elf.header.e_shoff = ~0ull - 8; }},
};

INSTANTIATE_TEST_SUITE_P(All, BrokenElfTest, ::testing::ValuesIn(BrokenElves),
    [](const auto& row) { return row.param.name; });

}}
