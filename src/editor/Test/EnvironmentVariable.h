#ifndef Quillmere_editor_Test_EnvironmentVariable_h
#define Quillmere_editor_Test_EnvironmentVariable_h

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace QuillmereEngine {

/** @brief An environment variable that gets its earlier value back in the end */
class EnvironmentVariable {
public:
    explicit EnvironmentVariable(std::string name): _name{std::move(name)} {
        if(const char* const value = std::getenv(_name.c_str()))
            _earlier = value;
    }

    explicit EnvironmentVariable(std::string name, const std::string& value):
        EnvironmentVariable{std::move(name)} {
        set(value);
    }

    ~EnvironmentVariable() { _earlier ? set(*_earlier) : unset(); }

    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

    void set(const std::string& value) { setenv(_name.c_str(), value.c_str(), 1); }
    void unset() { unsetenv(_name.c_str()); }

private:
    std::string _name;
    std::optional<std::string> _earlier;
};

}

#endif
