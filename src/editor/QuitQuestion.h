#ifndef Quillmere_editor_QuitQuestion_h
#define Quillmere_editor_QuitQuestion_h

#include <string>

#include "editor/ModalQuestion.h"

namespace QuillmereEngine {

/** @brief What the user wants to become of unsaved changes */
enum class QuitAnswer {
    None,    /**< No answer yet, or no question */
    Save,    /**< Button "Save" or Enter */
    Discard, /**< Button "Discard" */
    Cancel   /**< Button "Cancel" or Escape */
};

/** @brief Asks before unsaved changes are lost, see @ref ModalQuestion */
class QuitQuestion {
public:
    /** @brief Ask from the next @ref draw() on */
    void ask() { _question.ask(); }

    /** @brief Whether an answer is waited for */
    bool isAsked() const { return _question.isAsked(); }

    /**
    @brief Draw the question
    @param project  What has unsaved changes
    @return The answer in the one frame in which it's given
    */
    QuitAnswer draw(const std::string& project);

private:
    ModalQuestion _question{"Unsaved changes", {"Save", "Discard", "Cancel"}, 6.0f};
};

}

#endif
