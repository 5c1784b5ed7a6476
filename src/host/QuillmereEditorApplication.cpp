#include "host/QuillmereEditorApplication.h"

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/Ui.h"
#include "host/ProjectFile.h"

namespace QuillmereEngine {

QuillmereEditorApplication::QuillmereEditorApplication() = default;

/* Here and not in the header, as destroying its members needs their definitions */
QuillmereEditorApplication::~QuillmereEditorApplication() = default;

void QuillmereEditorApplication::consoleLinesChanged() {}

}
