#include <stdexcept>

#include <Corrade/PluginManager/AbstractManager.h>

#include "QuillmereEditor/EditorView.h"

namespace QuillmereEngine { namespace {

class ThrowingConstructor: public EditorView {
public:
    explicit ThrowingConstructor(Corrade::PluginManager::AbstractManager& manager,
        const Corrade::Containers::StringView plugin):
        EditorView{manager, plugin} {
        throw std::runtime_error{"no panel today"};
    }

    const char* title() const override { return ""; }
    void draw() override {}
};

}}

CORRADE_PLUGIN_REGISTER(ThrowingConstructor, QuillmereEngine::ThrowingConstructor,
    "com.quillmere.QuillmereEditor.AbstractModule/1.1")
