#include "editor/QuitQuestion.h"

namespace QuillmereEngine {

QuitAnswer QuitQuestion::draw(const std::string& project) {
    constexpr QuitAnswer Answers[]{QuitAnswer::Save, QuitAnswer::Discard, QuitAnswer::Cancel};
    const std::string text = "Save the changes to " + project + "?";
    const auto answer = _question.draw(text.c_str(), "They are lost if they aren't saved.");
    return answer ? Answers[*answer] : QuitAnswer::None;
}

}
