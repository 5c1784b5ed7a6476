#include "QuillmereEditor/ChangeHandler.h"

#include <utility>

using namespace Corrade;

namespace QuillmereEngine {

ChangeHandler::~ChangeHandler() = default;

FunctionChangeHandler::FunctionChangeHandler(Function function, void* const userData):
    _function{std::move(function)},
    _userData{userData} {}

void FunctionChangeHandler::handle(
    const Change& change, const Containers::ArrayView<const std::string> path) {
    _function(change, path, _userData);
}

}
