#include "editor/PickLimit.h"

#include "QuillmereEditor/Ui.h"

namespace QuillmereEngine {

void PickLimit::frameDrawn(Ui& ui) {
    if(ui.pickedObject && _wasPicked) {
        ui.pickedObject = nullptr;
        ui.pickingId = 0;
    }
    _wasPicked = ui.pickedObject;
}

}
