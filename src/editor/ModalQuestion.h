#ifndef Quillmere_editor_ModalQuestion_h
#define Quillmere_editor_ModalQuestion_h

#include <array>
#include <cstddef>
#include <optional>

namespace QuillmereEngine {

/**
@brief A question with three answers that takes all input until it's answered

Enter is the first answer and Escape the last, as their buttons are. UI thread.
*/
class ModalQuestion {
public:
    /**
    @param title        Of its window, and its ID. Kept.
    @param answers      Texts of the buttons. Kept.
    @param buttonWidth  In font sizes, so that the buttons look the same with any font
    */
    explicit ModalQuestion(
        const char* title, const std::array<const char*, 3>& answers, float buttonWidth);

    /** @brief Ask from the next @ref draw() on */
    void ask() { _isAsked = true; }

    /** @brief Whether an answer is waited for */
    bool isAsked() const { return _isAsked; }

    /**
    @brief Draw the question, inside of a frame and outside of all windows
    @param text     The question
    @param hint     What comes of the answers, one line below it
    @return Index of the answer in the one frame in which it's given, which also ends the question
    */
    std::optional<std::size_t> draw(const char* text, const char* hint);

private:
    std::optional<std::size_t> drawAnswers() const;

    const char* _title;
    std::array<const char*, 3> _answers;
    float _buttonWidth;
    bool _isAsked = false;
};

}

#endif
