#ifndef Quillmere_editor_RecoveryQuestion_h
#define Quillmere_editor_RecoveryQuestion_h

#include <cstddef>
#include <string>

namespace QuillmereEngine {

/** @brief What the user wants to become of changes that a crash left in a journal */
enum class RecoveryAnswer {
    None,    /**< No answer yet, or no question */
    Recover, /**< Button "Recover" or Enter */
    Discard, /**< Button "Discard" */
    Keep     /**< Button "Keep for later" or Escape */
};

/** @brief Asks what is to become of a journal. Takes all input meanwhile. UI thread. */
class RecoveryQuestion {
public:
    /** @brief Ask from the next @ref draw() on */
    void ask() { _isAsked = true; }

    /** @brief Whether an answer is waited for */
    bool isAsked() const { return _isAsked; }

    /**
    @brief Draw the question, inside of a frame and outside of all windows
    @param project  What the changes were made in
    @param changeCount  How many there are
    @return The answer in the one frame in which it's given, which also ends the question
    */
    RecoveryAnswer draw(const std::string& project, std::size_t changeCount);

private:
    bool _isAsked = false;
};

}

#endif
