/* What is a project file at all is saved, loaded and saved again with the same bytes */

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "host/RapidJsonUtils.h"
#include "host/jsonText.h"

using namespace QuillmereEngine;

namespace {

void expect(const bool condition, const char* const what, const std::string& json) {
    if(condition)
        return;
    std::fprintf(stderr, "%s: %s\n", what, json.c_str());
    std::abort();
}

void expectSame(const std::string& json, std::string (*print)(const rapidjson::Value&)) {
    rapidjson::Document out;
    JsonTextError error;
    expect(parseJson({json.data(), json.size()}, out, error), "can't be read again", json);
    expect(print(out) == json, "differs when read again", json);
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* const data, const std::size_t size) {
    rapidjson::Document document;
    JsonTextError error;
    if(!parseJson({reinterpret_cast<const char*>(data), size}, document, error)) {
        expect(!error.message.empty() && error.line && error.column, "error without a place", "");
        return 0;
    }
    duplicateMember(document);
    rapidjson::MemoryPoolAllocator<> pool;
    const std::string json = RapidJsonUtils::toJson(document);
    expect(
        RapidJsonUtils::toJson(RapidJsonUtils::copy(document, pool)) == json, "copy differs", json);
    expectSame(json, RapidJsonUtils::toJson);
    expectSame(RapidJsonUtils::toPrettyJson(document), RapidJsonUtils::toPrettyJson);
    return 0;
}
