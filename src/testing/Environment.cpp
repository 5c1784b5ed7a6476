#include "testing/Environment.h"

#include <cstdlib>
#include <filesystem>
#include <stdlib.h>

namespace QuillmereEngine { namespace Testing {

namespace {

void setVariable(const std::string& name, const char* const value) {
    if(value)
        setenv(name.c_str(), value, 1);
    else
        unsetenv(name.c_str());
}

std::string pathBehind(const std::string& folder) {
    const char* const path = std::getenv("PATH");
    return folder + ":" + (path ? path : "/usr/bin:/bin");
}

}

EnvironmentVariable::EnvironmentVariable(const char* const name, const char* const value):
    _name{name} {
    if(const char* const before = std::getenv(name))
        _before = std::make_unique<std::string>(before);
    setVariable(_name, value);
}

EnvironmentVariable::~EnvironmentVariable() {
    setVariable(_name, _before ? _before->c_str() : nullptr);
}

ScriptedPrograms::ScriptedPrograms(): _path{"PATH", pathBehind(_folder.path()).c_str()} {}

void ScriptedPrograms::add(const std::string& name, const std::string& script) const {
    std::filesystem::permissions(
        _folder.write(name, "#!/bin/sh\n" + script + "\n"), std::filesystem::perms::owner_all);
}

void ScriptedPrograms::addNoting(const std::string& name, const std::string& script) const {
    /* Moved into place, so that whoever sees the file sees all of it */
    add(name,
        "{ [ $# -eq 0 ] || printf '%s\\0' \"$@\"; } > \"$0.part\"\n"
        "mv \"$0.part\" \"$0.arguments\"\n" +
            script);
}

std::vector<std::string> ScriptedPrograms::argumentsOf(const std::string& name) const {
    std::vector<std::string> out;
    if(!hasRun(name))
        return out;
    const std::string noted = readFile(_folder.file(name + ".arguments"));
    for(std::size_t begin = 0, end; (end = noted.find('\0', begin)) != std::string::npos;
        begin = end + 1)
        out.push_back(noted.substr(begin, end - begin));
    return out;
}

bool ScriptedPrograms::hasRun(const std::string& name) const {
    return std::filesystem::exists(_folder.file(name + ".arguments"));
}

}}
