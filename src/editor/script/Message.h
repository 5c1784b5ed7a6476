#ifndef Quillmere_editor_script_Message_h
#define Quillmere_editor_script_Message_h

#include <optional>
#include <string>
#include <string_view>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace QuillmereEngine {

/** @brief Writes a message: a JSON object of plain members, see @ref ScriptProtocol.h */
class MessageWriter {
public:
    explicit MessageWriter(std::string_view type);

    MessageWriter& add(const char* name, std::string_view value);
    /* Otherwise a literal would become a bool */
    MessageWriter& add(const char* name, const char* value) {
        return add(name, std::string_view{value});
    }
    MessageWriter& add(const char* name, int value);
    MessageWriter& add(const char* name, bool value);

    /** @brief The message, which ends it */
    std::string text();

private:
    rapidjson::StringBuffer _buffer;
    rapidjson::Writer<rapidjson::StringBuffer> _writer;
};

/** @brief A message that was read */
class Message {
public:
    /** @brief Read a message. Nothing if it isn't a JSON object with a `type`. */
    static std::optional<Message> parse(std::string_view text);

    std::string_view type() const { return text("type"); }

    /** @brief A member that is a string, empty if there's none of that kind */
    std::string_view text(const char* name) const;

    /** @brief Whether there's a member that is a string */
    bool hasText(const char* name) const;

    /** @brief A member that is a number, @p standard if there's none of that kind */
    int number(const char* name, int standard) const;

    /** @brief A member that is a boolean, false if there's none of that kind */
    bool flag(const char* name) const;

private:
    rapidjson::Document _document;
};

}

#endif
