#include "host/Editor.h"

namespace QuillmereEngine {

ServerSource::~ServerSource() = default;

}
