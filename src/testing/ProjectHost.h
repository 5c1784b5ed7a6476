#ifndef Quillmere_testing_ProjectHost_h
#define Quillmere_testing_ProjectHost_h

#include <string>

#include <Corrade/PluginManager/Manager.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/EditorView.h"
#include "QuillmereEditor/Ui.h"
#include "host/EditorData.h"
#include "host/ProjectFile.h"
#include "host/QuillmereEditorApplication.h"
#include "testing/HeadlessFrame.h"

namespace QuillmereEngine { namespace Testing {

/** @brief A headless host with a project, for tests of panels that edit it */
class ProjectHost {
public:
    /** @param json The project's document */
    explicit ProjectHost(const std::string& json, const ImVec2& size = {1280.0f, 720.0f});

    /** @brief Initialize a panel. It isn't to log after the host's end. */
    void init(EditorView& view);

    /** @brief The document in one line */
    std::string document() const;

    /** @brief A value of the document in one line, "" if it isn't there */
    std::string value(const char* path) const;

    ProjectFile& project() { return *application.project; }
    ChangeManager& changes() { return *application.changeManager; }
    Ui& ui() { return *application.ui; }

    HeadlessFrame frame;
    EditorData data;
    QuillmereEditorApplication application;
    Corrade::PluginManager::Manager<AbstractModule> modules;
};

}}

#endif
