#include "editor/contentType.h"

#include <algorithm>

namespace QuillmereEngine {

namespace {

struct ContentType {
    std::string_view extension, type;
};

constexpr ContentType ContentTypes[]{
    {"aac", "audio/aac"},
    {"avif", "image/avif"},
    {"bin", "application/octet-stream"},
    {"bmp", "image/bmp"},
    {"css", "text/css; charset=utf-8"},
    {"csv", "text/csv; charset=utf-8"},
    {"flac", "audio/flac"},
    {"gif", "image/gif"},
    {"glb", "model/gltf-binary"},
    {"gltf", "model/gltf+json"},
    {"gz", "application/gzip"},
    {"htm", "text/html; charset=utf-8"},
    {"html", "text/html; charset=utf-8"},
    {"ico", "image/vnd.microsoft.icon"},
    {"jpeg", "image/jpeg"},
    {"jpg", "image/jpeg"},
    {"js", "text/javascript; charset=utf-8"},
    {"json", "application/json"},
    {"ktx", "image/ktx"},
    {"ktx2", "image/ktx2"},
    {"m4a", "audio/mp4"},
    {"map", "application/json"},
    {"md", "text/markdown; charset=utf-8"},
    {"mid", "audio/midi"},
    {"mjs", "text/javascript; charset=utf-8"},
    {"mp3", "audio/mpeg"},
    {"mp4", "video/mp4"},
    {"mtl", "model/mtl"},
    {"obj", "model/obj"},
    {"oga", "audio/ogg"},
    {"ogg", "audio/ogg"},
    {"ogv", "video/ogg"},
    {"opus", "audio/ogg"},
    {"otf", "font/otf"},
    {"pdf", "application/pdf"},
    {"png", "image/png"},
    {"stl", "model/stl"},
    {"svg", "image/svg+xml"},
    {"tif", "image/tiff"},
    {"tiff", "image/tiff"},
    {"ttf", "font/ttf"},
    {"txt", "text/plain; charset=utf-8"},
    {"wasm", "application/wasm"},
    {"wav", "audio/wav"},
    {"webm", "video/webm"},
    {"webmanifest", "application/manifest+json"},
    {"webp", "image/webp"},
    {"woff", "font/woff"},
    {"woff2", "font/woff2"},
    {"xml", "application/xml"},
    {"zip", "application/zip"},
};

constexpr char lowerCase(const char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; }

bool isSame(const std::string_view text, const std::string_view lowerCaseText) {
    return std::equal(text.begin(), text.end(), lowerCaseText.begin(), lowerCaseText.end(),
        [](const char a, const char b) { return lowerCase(a) == b; });
}

}

std::string_view contentType(const std::string_view name) {
    if(const std::size_t dot = name.rfind('.'); dot != std::string_view::npos)
        for(const ContentType& type: ContentTypes)
            if(isSame(name.substr(dot + 1), type.extension))
                return type.type;
    return "application/octet-stream";
}

}
