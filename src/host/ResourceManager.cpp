#include "host/ResourceManager.h"

namespace QuillmereEngine {

AbstractResourceManager::~AbstractResourceManager() = default;

const char* ObjectResourceManager::typeName() const { return "objects"; }

}
