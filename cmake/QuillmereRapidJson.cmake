# Quillmere::RapidJson, headers only
find_path(QUILLMERE_RAPIDJSON_INCLUDE rapidjson/document.h REQUIRED)
mark_as_advanced(QUILLMERE_RAPIDJSON_INCLUDE)

add_library(QuillmereRapidJson INTERFACE)
add_library(Quillmere::RapidJson ALIAS QuillmereRapidJson)
target_include_directories(QuillmereRapidJson SYSTEM INTERFACE ${QUILLMERE_RAPIDJSON_INCLUDE})
