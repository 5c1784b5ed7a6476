#ifndef QuillmerePortableFileDialogs_Test_scripts_h
#define QuillmerePortableFileDialogs_Test_scripts_h

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdlib.h>
#include <string>
#include <vector>

/* A folder of scripts that is all of $PATH, and variables of the desktop that say nothing. A test
   is a process of its own, so nothing is put back. */
class Scripts {
public:
    Scripts() {
        for(const char* const i: {"XDG_CURRENT_DESKTOP", "XDG_SESSION_DESKTOP", "DESKTOP_SESSION"})
            unsetenv(i);
        std::string name = (std::filesystem::temp_directory_path() / "pfd-XXXXXX").string();
        if(!mkdtemp(name.data()))
            std::abort();
        folder = name;
        setenv("PATH", folder.c_str(), 1);
    }
    Scripts(const Scripts&) = delete;
    Scripts& operator=(const Scripts&) = delete;
    ~Scripts() { std::filesystem::remove_all(folder); }

    std::string add(const std::string& name, const std::string& script) const {
        const std::filesystem::path path = folder / name;
        std::ofstream{path} << "#!/bin/sh\nPATH=/usr/bin:/bin\n" << script << "\n";
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        return path;
    }

    /* Arguments of a script that begins with `noting`, in its last run */
    std::vector<std::string> arguments_of(const std::string& name) const {
        std::ifstream in{folder / (name + ".arguments"), std::ios::binary};
        std::vector<std::string> out;
        for(std::string i; std::getline(in, i, '\0');)
            out.push_back(i);
        return out;
    }

    static constexpr const char* noting = "printf '%s\\0' \"$@\" > \"$0.arguments\"\n";

    std::filesystem::path folder;
};

#endif
