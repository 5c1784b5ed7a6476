#ifndef Quillmere_editor_RecoveryQuestion_h
#define Quillmere_editor_RecoveryQuestion_h

#include <cstddef>
#include <string>

#include "editor/ModalQuestion.h"

namespace QuillmereEngine {

/** @brief What the user wants to become of changes that a crash left in a journal */
enum class RecoveryAnswer {
    None,    /**< No answer yet, or no question */
    Recover, /**< Button "Recover" or Enter */
    Discard, /**< Button "Discard" */
    Keep     /**< Button "Keep for later" or Escape */
};

/** @brief Asks what is to become of a journal, see @ref ModalQuestion */
class RecoveryQuestion {
public:
    /** @brief Ask from the next @ref draw() on */
    void ask() { _question.ask(); }

    /** @brief Whether an answer is waited for */
    bool isAsked() const { return _question.isAsked(); }

    /**
    @brief Draw the question
    @param project      What the changes were made in
    @param changeCount  How many there are
    @return The answer in the one frame in which it's given
    */
    RecoveryAnswer draw(const std::string& project, std::size_t changeCount);

private:
    ModalQuestion _question{"Recover changes", {"Recover", "Discard", "Keep for later"}, 8.0f};
};

}

#endif
