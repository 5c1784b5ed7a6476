/* What the built files let out, by `nm` and `readelf`: a second copy of Dear ImGui in the process
   would have a context of its own, which is null, and a module with more than its entry points could
   meet the symbols of another one. */

#include <cstdio>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace QuillmereEngine { namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

struct Symbol {
    char type;
    std::string name;
};

std::string outputOf(const std::string& command) {
    std::FILE* const output = popen(command.c_str(), "r");
    std::string text;
    char buffer[4096];
    while(const std::size_t size = std::fread(buffer, 1, sizeof(buffer), output))
        text.append(buffer, size);
    EXPECT_EQ(pclose(output), 0) << command;
    return text;
}

std::vector<Symbol> definedSymbols(const std::string& options, const std::string& file) {
    std::vector<Symbol> out;
    std::istringstream in{outputOf("nm --defined-only " + options + " '" + file + "'")};
    for(std::string line; std::getline(in, line);)
        if(line.size() > 19)
            out.push_back({line[17], line.substr(19)});
    return out;
}

std::vector<std::string> split(const char* const list) {
    std::vector<std::string> out;
    std::istringstream in{list};
    for(std::string item; std::getline(in, item, ':');)
        out.push_back(item);
    return out;
}

/* Inline functions of ImGui's headers that the compiler didn't inline are weak; they work on the
   one context all the same. GImGui is the pointer to it: a program that refers to the variable may
   get it copied into itself by the linker, and then the library's own is no longer the one. */
std::vector<std::string> ownImGuiSymbols(const std::string& file) {
    std::vector<std::string> out;
    for(const Symbol& symbol: definedSymbols("-C", file))
        if((symbol.name.rfind("ImGui::", 0) == 0 && symbol.type != 'W') ||
            symbol.name.rfind("GImGui", 0) == 0)
            out.push_back(symbol.name);
    return out;
}

struct ModuleFileTest: ::testing::TestWithParam<std::string> {};

TEST_P(ModuleFileTest, ExportsTheFiveEntryPointsAndNothingElse) {
    std::set<std::string> names;
    for(const Symbol& symbol: definedSymbols("-D", GetParam()))
        names.insert(symbol.name);
    EXPECT_THAT(names,
        ElementsAre("pluginFinalizer", "pluginInitializer", "pluginInstancer", "pluginInterface",
            "pluginVersion"));
}

TEST_P(ModuleFileTest, DefinesNothingOfImGui) {
    EXPECT_THAT(ownImGuiSymbols(GetParam()), IsEmpty());
}

/* A unique symbol would keep the module mapped after it was closed */
TEST_P(ModuleFileTest, HasNoUniqueSymbol) {
    for(const Symbol& symbol: definedSymbols("", GetParam()))
        EXPECT_NE(symbol.type, 'u') << symbol.name;
}

/* So would a thread-local variable with a destructor, as long as a thread has it */
TEST_P(ModuleFileTest, HasNoThreadLocalStorage) {
    const std::string headers = outputOf("readelf --program-headers --wide '" + GetParam() + "'");
    EXPECT_THAT(headers, HasSubstr("\n  LOAD "));
    EXPECT_THAT(headers, Not(HasSubstr("\n  TLS ")));
}

std::string baseName(const ::testing::TestParamInfo<std::string>& info) {
    std::string name = info.param.substr(info.param.rfind('/') + 1);
    for(char& c: name)
        if(!std::isalnum(static_cast<unsigned char>(c)))
            c = '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(
    All, ModuleFileTest, ::testing::ValuesIn(split(QUILLMERE_TEST_MODULES)), baseName);

struct ProgramFileTest: ::testing::TestWithParam<std::string> {};

TEST_P(ProgramFileTest, DefinesNothingOfImGui) {
    EXPECT_THAT(ownImGuiSymbols(GetParam()), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    All, ProgramFileTest, ::testing::ValuesIn(split(QUILLMERE_TEST_PROGRAMS)), baseName);

TEST(LibraryFileTest, CarriesImGuiForEverybody) {
    std::set<std::string> names;
    for(const Symbol& symbol: definedSymbols("-D -C", QUILLMERE_TEST_LIBRARY))
        names.insert(symbol.name);
    EXPECT_EQ(names.count("GImGui"), 1);
    EXPECT_EQ(names.count("ImGui::NewFrame()"), 1);
    EXPECT_EQ(names.count("ImGui_ImplOpenGL3_RenderDrawData(ImDrawData*)"), 1);
    EXPECT_EQ(names.count("ImGui_ImplGlfw_NewFrame()"), 1);
    EXPECT_EQ(names.count("ImGui_ImplSDL2_NewFrame()"), 0);
}

}}
