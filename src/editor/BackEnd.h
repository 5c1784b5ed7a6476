#ifndef Quillmere_editor_BackEnd_h
#define Quillmere_editor_BackEnd_h

#include <chrono>
#include <memory>
#include <string>

#include "editor/PanelEvent.h"
#include "editor/Screenshot.h"

namespace QuillmereEngine {

/**
@brief Where the interface is drawn and where its input comes from

Expects a Dear ImGui context that is current as long as the back end lives, and an OpenGL context
of its own that it makes current. UI thread, but for @ref wakeUp().
*/
class BackEnd {
public:
    BackEnd() = default;
    BackEnd(const BackEnd&) = delete;
    BackEnd& operator=(const BackEnd&) = delete;
    virtual ~BackEnd();

    virtual bool isHeadless() const = 0;

    /** @brief Pixels of the screen per pixel of the interface */
    virtual float scale() const = 0;

    /**
    @brief Wait for input or @ref wakeUp(), at most for a while
    @return Whether there was input or the window has to be drawn for another reason
    */
    virtual bool wait(std::chrono::steady_clock::duration longest) = 0;

    /** @brief End @ref wait() early. Any thread. */
    virtual void wakeUp() = 0;

    /** @brief Bring Dear ImGui's input up to date. To be called before its own `NewFrame()`. */
    virtual void beginFrame() = 0;

    /** @brief The events since the last call */
    virtual PanelEvents takeEvents() = 0;

    /** @brief Render what Dear ImGui has drawn. Still to be seen by @ref capture() only. */
    void render();

    /** @brief The rendered picture, in pixels of the screen */
    Image capture() const;

    /** @brief Show what was rendered */
    virtual void present() = 0;

    /** @brief Whether the user wants to close the window */
    virtual bool isCloseRequested() const = 0;

    virtual void cancelClose() = 0;

    virtual void setTitle(const std::string& title) = 0;

    /** @brief Give the font atlas to OpenGL anew after it was built again */
    static void updateFontTexture();

protected:
    /** @brief Size of what's rendered to, in pixels of the screen */
    virtual void framebufferSize(int& width, int& height) const = 0;
};

/**
@brief Back end with a window
@param problem  Why there is no result: no display, no OpenGL 3
*/
std::unique_ptr<BackEnd> createWindowBackEnd(int width, int height, std::string& problem);

/** @brief Back end that renders off screen, needs no display */
std::unique_ptr<BackEnd> createHeadlessBackEnd(int width, int height, std::string& problem);

}

#endif
