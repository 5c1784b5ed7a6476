#ifndef Quillmere_QuillmereEditor_Test_ChangeComparison_h
#define Quillmere_QuillmereEditor_Test_ChangeComparison_h

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/Test/ChangeModel.h"
#include "host/ProjectFile.h"

namespace QuillmereEngine { namespace Test {

/**
@brief Does the same operations on a @ref ChangeManager and on the model

The operations are made from bytes, random ones of a test or those of a fuzzer.
*/
class ChangeComparison {
public:
    /** @brief Constructor. The source gives zeros when it has nothing any more. */
    explicit ChangeComparison(std::function<std::uint8_t()> source);

    /**
    @brief Do one operation on both
    @return Whether to go on. If not, either they differ, or the model came to where the manager
        would end the process.
    */
    bool step();

    /** @brief What differs, empty if nothing does */
    const std::string& difference() const { return _difference; }

    const ChangeModel& model() const { return _model; }

private:
    void registerHandlers();
    std::string path();
    std::string typedPath();
    ModelJson value(int depth = 0);
    void operate(std::uint8_t operation);
    void push(bool merge, bool isRemoval);
    void compare();

    std::function<std::uint8_t()> _source;
    ProjectFile _project;
    ChangeManager _manager{_project};
    ChangeModel _model;
    std::vector<std::string> _calls;
    std::string _operation;
    std::string _difference;
};

}}

#endif
