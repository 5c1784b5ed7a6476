#include "QuillmereEditor/ChangeObserver.h"

#include "QuillmereEditor/ChangeManager.h"

using namespace Corrade;

namespace QuillmereEngine {

ChangeObserver::~ChangeObserver() {
    if(_manager)
        _manager->removeObserver(*this);
}

void ChangeObserver::changeWritten(
    Containers::StringView, const rapidjson::Value*, const rapidjson::Value*) {}

void ChangeObserver::historyReset() {}

}
