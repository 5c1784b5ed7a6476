#include "editor/script/Message.h"

namespace QuillmereEngine {

namespace {

const rapidjson::Value* find(const rapidjson::Document& document, const char* const name) {
    const auto member = document.FindMember(name);
    return member == document.MemberEnd() ? nullptr : &member->value;
}

}

MessageWriter::MessageWriter(const std::string_view type): _writer{_buffer} {
    _writer.StartObject();
    add("type", type);
}

MessageWriter& MessageWriter::add(const char* const name, const std::string_view value) {
    _writer.Key(name);
    _writer.String(value.data() ? value.data() : "", rapidjson::SizeType(value.size()));
    return *this;
}

MessageWriter& MessageWriter::add(const char* const name, const int value) {
    _writer.Key(name);
    _writer.Int(value);
    return *this;
}

MessageWriter& MessageWriter::add(const char* const name, const bool value) {
    _writer.Key(name);
    _writer.Bool(value);
    return *this;
}

std::string MessageWriter::text() {
    _writer.EndObject();
    return {_buffer.GetString(), _buffer.GetSize()};
}

std::optional<Message> Message::parse(const std::string_view text) {
    Message out;
    /* Iterative: however deep the brackets are nested, they don't take stack */
    constexpr unsigned Flags = rapidjson::kParseIterativeFlag |
        rapidjson::kParseValidateEncodingFlag;
    if(out._document.Parse<Flags>(text.data(), text.size()).HasParseError() ||
        !out._document.IsObject() || !out.hasText("type"))
        return {};
    return out;
}

std::string_view Message::text(const char* const name) const {
    const rapidjson::Value* const value = find(_document, name);
    if(!value || !value->IsString())
        return {};
    return {value->GetString(), value->GetStringLength()};
}

bool Message::hasText(const char* const name) const {
    const rapidjson::Value* const value = find(_document, name);
    return value && value->IsString();
}

int Message::number(const char* const name, const int standard) const {
    const rapidjson::Value* const value = find(_document, name);
    return value && value->IsInt() ? value->GetInt() : standard;
}

bool Message::flag(const char* const name) const {
    const rapidjson::Value* const value = find(_document, name);
    return value && value->IsTrue();
}

}
