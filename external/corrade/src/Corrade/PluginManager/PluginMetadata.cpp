#include "PluginMetadata.h"

namespace Corrade { namespace PluginManager {

PluginMetadata::PluginMetadata(const Containers::StringView name): _name{name} {}

PluginMetadata::PluginMetadata(const PluginMetadata&) = default;

PluginMetadata::~PluginMetadata() = default;

PluginMetadata& PluginMetadata::operator=(const PluginMetadata&) = default;

}}
