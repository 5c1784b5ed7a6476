#ifndef Quillmere_editor_ProjectServer_h
#define Quillmere_editor_ProjectServer_h

#include <memory>
#include <optional>
#include <string>

#include "editor/StoreLog.h"
#include "host/Editor.h"

namespace QuillmereEngine {

class QuillmereEditorApplication;

/**
@brief Serves a folder over HTTP on 127.0.0.1, never on another address

Answers `GET` and `HEAD` with the regular files of the folder, as @ref findServedFile() finds them,
whole or in the parts that the client asks for, and sends them while it reads them. Caches have to
ask again each time, so that a reload shows what was saved last. Whoever names another machine than
127.0.0.1 or localhost in `Host` gets nothing.

Every request is a line of @ref serverLines() once it's answered, as @ref requestMessage() writes it,
also one that isn't HTTP; so are start, stop and what goes wrong. The functions are called by one
thread, which doesn't hold the application's mutex.
*/
class ProjectServer: public ServerSource {
public:
    /** @param application  Guards the lines and is told of new ones. Outlives this. */
    explicit ProjectServer(QuillmereEditorApplication& application, StoreLog::Echo echo);

    /** @brief Stops */
    ~ProjectServer() override;

    ProjectServer(const ProjectServer&) = delete;
    ProjectServer& operator=(const ProjectServer&) = delete;

    /**
    @brief Start to serve, on threads of its own
    @param folder   Links and the like are resolved now, not later
    @param port     0 for any free one. Another program's port isn't shared with it.
    @return The port. Nothing when it can't be had or the folder can't; then a line says why.

    Expects that it isn't serving.
    */
    std::optional<int> start(const std::string& folder, int port);

    /**
    @brief Stop serving

    Waits until all threads have ended, which they do at once, whatever clients do: what is being
    sent breaks off. Does nothing when it isn't serving.
    */
    void stop();

    StringArrayView& serverLines() override { return _lines; }

private:
    class HttpServer;

    StringArray _lines;
    StoreLog _log;
    std::unique_ptr<HttpServer> _server;
};

}

#endif
