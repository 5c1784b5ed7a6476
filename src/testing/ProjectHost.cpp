#include "testing/ProjectHost.h"

#include <Corrade/PluginManager/Manager.hpp>
#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "host/RapidJsonUtils.h"

using namespace Corrade;

namespace QuillmereEngine { namespace Testing {

ProjectHost::ProjectHost(const std::string& json, const ImVec2& size):
    frame{size},
    modules{QUILLMERE_MODULE_DIR} {
    application.project = Containers::pointer<ProjectFile>();
    application.project->document->Parse(json.c_str());
    EXPECT_FALSE(application.project->document->HasParseError()) << json;
    application.changeManager = Containers::pointer<ChangeManager>(*application.project);
    application.ui = Containers::pointer<Ui>();
    application.ui->project = application.project.get();
    application.ui->changeManager = application.changeManager.get();
}

void ProjectHost::init(EditorView& view) {
    std::ostream* const silence = nullptr;
    const Utility::Debug redirectDebug{silence};
    view.init(frame.context(), &data, &application);
}

std::string ProjectHost::document() const {
    return RapidJsonUtils::toJson(*application.project->document);
}

std::string ProjectHost::value(const char* const path) const {
    const rapidjson::Value* const out = application.project->getValue(path, true);
    return out ? RapidJsonUtils::toJson(*out) : "";
}

}}
