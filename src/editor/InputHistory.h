#ifndef Quillmere_editor_InputHistory_h
#define Quillmere_editor_InputHistory_h

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace QuillmereEngine {

/** @brief Lines that were entered before, to be gone through by the arrow keys */
class InputHistory {
public:
    static constexpr std::size_t MaxLines = 1000;

    /** @brief A line was entered. One that equals the newest isn't kept twice. */
    void add(const std::string& line);

    /**
    @brief Go to the line before the present one
    @param text     What stands in the field. Kept while it's what was typed last and not a line
        from here, so that coming back to the end finds it again.
    @return What is to stand there, nothing if there's no earlier line
    */
    std::optional<std::string> earlier(const std::string& text);

    /** @brief Go to the line after the present one, at last to the text that was typed */
    std::optional<std::string> later();

private:
    std::vector<std::string> _lines;
    /* Index of the line that is shown, the number of lines for the typed text */
    std::size_t _shown = 0;
    std::string _typed;
};

}

#endif
