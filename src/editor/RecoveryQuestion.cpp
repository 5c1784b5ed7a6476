#include "editor/RecoveryQuestion.h"

namespace QuillmereEngine {

RecoveryAnswer RecoveryQuestion::draw(const std::string& project, const std::size_t changeCount) {
    constexpr RecoveryAnswer Answers[]{
        RecoveryAnswer::Recover, RecoveryAnswer::Discard, RecoveryAnswer::Keep};
    const bool isOne = changeCount == 1;
    const std::string text = "The editor ended before " + std::to_string(changeCount) +
        (isOne ? " change of " : " changes of ") + project + (isOne ? " was" : " were") + " saved.";
    const auto answer = _question.draw(
        text.c_str(), "Recovered, they can be undone as one. Kept, they are offered again.");
    return answer ? Answers[*answer] : RecoveryAnswer::None;
}

}
