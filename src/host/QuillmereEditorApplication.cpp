#include "host/QuillmereEditorApplication.h"

#include "QuillmereEditor/Ui.h"

namespace QuillmereEngine {

QuillmereEditorApplication::QuillmereEditorApplication() = default;

/* Here and not in the header, as destroying the Ui needs its definition */
QuillmereEditorApplication::~QuillmereEditorApplication() = default;

void QuillmereEditorApplication::consoleLinesChanged() {}

}
