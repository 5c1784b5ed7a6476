#include "metadataFile.h"

#include <fstream>
#include <iterator>
#include <string>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Debug.h>

namespace Corrade { namespace PluginManager {

namespace {

using namespace Containers::Literals;

Containers::StringView trimmed(Containers::StringView text) {
    constexpr Containers::StringView Whitespace = " \t\f\v\r\n"_s;
    while(text && Whitespace.contains(text.front()))
        text = text.exceptPrefix(1);
    while(text && Whitespace.contains(text.back()))
        text = text.exceptSuffix(1);
    return text;
}

bool fail(const char* const message) {
    Utility::Error{} << "Utility::Configuration::Configuration():" << message;
    return false;
}

bool parseKeyValue(const Containers::StringView line, const bool counts, MetadataFile& out) {
    const Containers::StringView equals = line.find('=');
    if(!equals)
        return fail("missing equals for a value");
    const Containers::StringView key = trimmed(line.prefix(equals.begin()));
    Containers::StringView value = trimmed(line.suffix(equals.end()));
    if(value.hasPrefix('"')) {
        if(value.size() < 2 || !value.hasSuffix('"'))
            return fail("missing closing quote for a value");
        value = value.exceptPrefix(1).exceptSuffix(1);
    }

    if(counts && key == "depends"_s)
        out.depends.emplace_back(value);
    else if(counts && key == "provides"_s)
        out.provides.emplace_back(value);
    return true;
}

}

bool parseMetadata(Containers::StringView text, MetadataFile& out) {
    constexpr Containers::StringView ByteOrderMark = "\xef\xbb\xbf"_s;
    if(text.hasPrefix(ByteOrderMark))
        text = text.exceptPrefix(ByteOrderMark.size());

    bool inGroup = false;
    while(!text.isEmpty()) {
        const Containers::StringView end = text.find('\n');
        const Containers::StringView line = trimmed(end ? text.prefix(end.begin()) : text);
        text = end ? text.suffix(end.end()) : Containers::StringView{};

        if(line.isEmpty() || line.hasPrefix('#') || line.hasPrefix(';'))
            continue;
        if(line.hasPrefix('[')) {
            if(!line.hasSuffix(']'))
                return fail("missing closing bracket for a group header");
            inGroup = true;
        } else if(!parseKeyValue(line, !inGroup, out))
            return false;
    }
    return true;
}

bool readMetadataFile(const Containers::String& path, MetadataFile& out) {
    std::ifstream file{path.data(), std::ios::binary};
    if(!file) {
        Utility::Error{} << "PluginManager::Manager:" << path << "was not found";
        return false;
    }
    const std::string text{std::istreambuf_iterator<char>{file}, std::istreambuf_iterator<char>{}};
    return parseMetadata(text, out);
}

}}
