#ifndef Quillmere_editor_QuitQuestion_h
#define Quillmere_editor_QuitQuestion_h

#include <string>

namespace QuillmereEngine {

/** @brief What the user wants to become of unsaved changes */
enum class QuitAnswer {
    None,    /**< No answer yet, or no question */
    Save,    /**< Button "Save" or Enter */
    Discard, /**< Button "Discard" */
    Cancel   /**< Button "Cancel" or Escape */
};

/** @brief Asks before unsaved changes are lost. Takes all input meanwhile. UI thread. */
class QuitQuestion {
public:
    /** @brief Ask from the next @ref draw() on */
    void ask() { _isAsked = true; }

    /** @brief Whether an answer is waited for */
    bool isAsked() const { return _isAsked; }

    /**
    @brief Draw the question, inside of a frame and outside of all windows
    @param project  What has unsaved changes
    @return The answer in the one frame in which it's given, which also ends the question
    */
    QuitAnswer draw(const std::string& project);

private:
    bool _isAsked = false;
};

}

#endif
