#ifndef Quillmere_plugins_console_ConsoleView_h
#define Quillmere_plugins_console_ConsoleView_h

#include <cstddef>

#include "QuillmereEditor/EditorView.h"

namespace QuillmereEngine {

class StringArrayView;

/**
@brief The panel that shows the editor's log, its server's output and that of its scripts

Three tabs show one line store each. A toolbar on the line of the tabs hides lines of a level, keeps
the view at the newest line and clears the shown store. What's set there lives as long as the panel
and isn't handed over when the module is reloaded.
*/
class ConsoleView: public EditorView {
public:
    explicit ConsoleView(
        Corrade::PluginManager::AbstractManager& manager, Corrade::Containers::StringView plugin);

    ~ConsoleView() override;

    /** @brief "Console" */
    const char* title() const override;

    /**
    @brief Draw the panel's window

    Expects that the panel is initialized and that the editor has a server source and a store for
    its scripts, whichever tab is shown. Holds the application's log mutex from the toolbar to the
    end of the window.
    */
    void draw() override;

private:
    StringArrayView& store(int tab);
    bool drawToolbar(StringArrayView& shownStore);
    void drawClearButton(StringArrayView& shownStore);
    void drawText(const StringArrayView& shownStore, bool filtersChanged);

    /* Cleared by the window's close button. Nobody reads it: closing panels is the host's affair. */
    bool _open = true;
    bool _autoScroll = true;
    bool _showErrors = true;
    bool _showWarnings = true;
    bool _showInfo = true;
    bool _scrollToBottom = true;
    std::size_t _lastLineCount = 0;
};

}

#endif
