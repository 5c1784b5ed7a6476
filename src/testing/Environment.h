#ifndef Quillmere_testing_Environment_h
#define Quillmere_testing_Environment_h

#include <memory>
#include <string>
#include <vector>

#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace Testing {

/** @brief An environment variable with another value, until the end of the scope */
class EnvironmentVariable {
public:
    /** @param value    Null unsets the variable */
    explicit EnvironmentVariable(const char* name, const char* value);
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
    ~EnvironmentVariable();

private:
    std::string _name;
    std::unique_ptr<std::string> _before;
};

/** @brief Shell scripts that stand first on `$PATH`, in place of the real programs, for a scope */
class ScriptedPrograms {
public:
    ScriptedPrograms();

    /**
    @brief Add or replace a program
    @param script   What it does, for `/bin/sh`. `$0` is its path, beside which it may leave files.
    */
    void add(const std::string& name, const std::string& script) const;

    /** @brief Add a program that notes its arguments and then does what @p script says */
    void addNoting(const std::string& name, const std::string& script = {}) const;

    /** @brief Arguments of a noting program's last run. None, too, if it didn't run. */
    std::vector<std::string> argumentsOf(const std::string& name) const;

    /** @brief Whether a noting program has run */
    bool hasRun(const std::string& name) const;

    /** @brief Where the programs are */
    const TemporaryFolder& folder() const { return _folder; }

private:
    TemporaryFolder _folder;
    EnvironmentVariable _path;
};

}}

#endif
