/* A panel that hears of changes through functions of its own, which hold what only its code can
   destroy */

#include <memory>
#include <string>

#include <Corrade/PluginManager/AbstractManager.h>

#include "QuillmereEditor/EditorView.h"
#include "QuillmereEditor/Tools/Log.h"

namespace QuillmereEngine { namespace {

/* Its destructor is the module's */
struct Witness {
    explicit Witness(std::string text): line{std::move(text)} {}
    virtual ~Witness() { log(LogLevel::Info, (line + " destroyed").c_str()); }

    std::string line;
};

class ListeningPanel: public EditorView {
public:
    using EditorView::EditorView;

    const char* title() const override { return "Listening"; }
    void draw() override {}

    void init(ImGuiContext* const context, EditorData* const data,
        QuillmereEditorApplication* const application) override {
        EditorView::init(context, data, application);
        /* A key that is gone when this function returns */
        std::string key = "obj";
        key += "ects";
        addChangeHandler({key.data(), key.size()},
            [this, witness = std::make_shared<Witness>("Witness")](
                const Change&, Corrade::Containers::ArrayView<const std::string>) {
                log(LogLevel::Info, (witness->line + " heard " + std::to_string(++_heard)).c_str());
            });
        addChangeHandler(
            "failing", [](const Change&, Corrade::Containers::ArrayView<const std::string>) {
                throw Failure{};
            });
    }

private:
    struct Failure: std::exception {
        const char* what() const noexcept override { return "it's of the module"; }
    };

    int _heard = 0;
};

}}

CORRADE_PLUGIN_REGISTER(
    Listening, QuillmereEngine::ListeningPanel, "com.quillmere.QuillmereEditor.AbstractModule/1.1")
