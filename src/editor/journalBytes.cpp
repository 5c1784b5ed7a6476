#include "editor/journalBytes.h"

#include <cstring>
#include <vector>

#include "host/jsonWalk.h"

namespace QuillmereEngine {

namespace {

enum class Kind : char {
    Null = 'n',
    False = 'f',
    True = 't',
    Signed = 'i',
    Unsigned = 'u',
    Double = 'd',
    String = 's',
    ArrayBegin = '[',
    ArrayEnd = ']',
    ObjectBegin = '{',
    ObjectEnd = '}'
};

template<class Number> void appendAny(std::string& out, const Number number) {
    for(std::size_t i = 0; i != sizeof(number); ++i)
        out += char((number >> 8 * i) & 0xff);
}

template<class Number> bool takeAny(std::string_view& in, Number& number) {
    if(in.size() < sizeof(number))
        return false;
    number = 0;
    for(std::size_t i = 0; i != sizeof(number); ++i)
        number |= Number(static_cast<unsigned char>(in[i])) << 8 * i;
    in.remove_prefix(sizeof(number));
    return true;
}

/* What a value sends of itself, as bytes. A number that fits into a signed one is written as such,
   however it was made: RapidJSON finds out by itself into what it fits. */
class Writer {
public:
    explicit Writer(std::string& out): _out(out) {}

    bool Null() { return add(Kind::Null); }
    bool Bool(const bool value) { return add(value ? Kind::True : Kind::False); }
    bool Int(const int value) { return Int64(value); }
    bool Uint(const unsigned value) { return Int64(value); }
    bool Int64(const std::int64_t value) { return add(Kind::Signed, std::uint64_t(value)); }
    bool Uint64(const std::uint64_t value) { return add(Kind::Unsigned, value); }
    bool Double(const double value) {
        std::uint64_t bits;
        std::memcpy(&bits, &value, sizeof(bits));
        return add(Kind::Double, bits);
    }
    bool String(const char* const text, const rapidjson::SizeType size, bool) {
        add(Kind::String);
        appendText(_out, {text, size});
        return true;
    }
    bool Key(const char* const text, const rapidjson::SizeType size, const bool copy) {
        return String(text, size, copy);
    }
    bool StartArray() { return add(Kind::ArrayBegin); }
    bool EndArray(rapidjson::SizeType) { return add(Kind::ArrayEnd); }
    bool StartObject() { return add(Kind::ObjectBegin); }
    bool EndObject(rapidjson::SizeType) { return add(Kind::ObjectEnd); }

private:
    bool add(const Kind kind) {
        _out += char(kind);
        return true;
    }

    bool add(const Kind kind, const std::uint64_t number) {
        add(kind);
        appendNumber(_out, number);
        return true;
    }

    std::string& _out;
};

/* Sends the value that bytes begin with to a document */
class Reader {
public:
    explicit Reader(std::string_view& in, rapidjson::Document& target): _in(in), _target(target) {}

    bool readValue() {
        do {
            if(!readNext())
                return false;
        } while(!_levels.empty());
        return true;
    }

private:
    struct Level {
        Kind end;
        rapidjson::SizeType count;
    };

    bool takeKind(Kind& kind) {
        if(_in.empty())
            return false;
        kind = Kind(_in[0]);
        _in.remove_prefix(1);
        return true;
    }

    /* A value with its key, or the end of a container */
    bool readNext() {
        Kind kind;
        if(!takeKind(kind))
            return false;
        if(_levels.empty())
            return readValueOf(kind);
        if(kind == _levels.back().end)
            return endLevel();
        ++_levels.back().count;
        if(_levels.back().end == Kind::ArrayEnd)
            return readValueOf(kind);
        std::string_view key;
        return kind == Kind::String && takeText(_in, key) &&
            _target.Key(key.data(), rapidjson::SizeType(key.size()), true) && takeKind(kind) &&
            readValueOf(kind);
    }

    bool endLevel() {
        const Level level = _levels.back();
        _levels.pop_back();
        return level.end == Kind::ArrayEnd ? _target.EndArray(level.count)
                                           : _target.EndObject(level.count);
    }

    bool readValueOf(const Kind kind) {
        switch(kind) {
            case Kind::Null:
                return _target.Null();
            case Kind::False:
                return _target.Bool(false);
            case Kind::True:
                return _target.Bool(true);
            case Kind::Signed:
            case Kind::Unsigned:
            case Kind::Double:
                return readNumber(kind);
            case Kind::String:
                return readString();
            case Kind::ArrayBegin:
                _levels.push_back({Kind::ArrayEnd, 0});
                return _target.StartArray();
            case Kind::ObjectBegin:
                _levels.push_back({Kind::ObjectEnd, 0});
                return _target.StartObject();
            case Kind::ArrayEnd:
            case Kind::ObjectEnd:
                return false;
        }
        return false;
    }

    bool readNumber(const Kind kind) {
        std::uint64_t bits;
        if(!takeNumber(_in, bits))
            return false;
        if(kind == Kind::Signed)
            return _target.Int64(std::int64_t(bits));
        if(kind == Kind::Unsigned)
            return _target.Uint64(bits);
        double number;
        std::memcpy(&number, &bits, sizeof(number));
        return _target.Double(number);
    }

    bool readString() {
        std::string_view text;
        return takeText(_in, text) &&
            _target.String(text.data(), rapidjson::SizeType(text.size()), true);
    }

    std::string_view& _in;
    rapidjson::Document& _target;
    std::vector<Level> _levels;
};

}

void appendNumber(std::string& out, const std::uint32_t number) { appendAny(out, number); }
void appendNumber(std::string& out, const std::uint64_t number) { appendAny(out, number); }
bool takeNumber(std::string_view& in, std::uint32_t& number) { return takeAny(in, number); }
bool takeNumber(std::string_view& in, std::uint64_t& number) { return takeAny(in, number); }

void appendText(std::string& out, const std::string_view text) {
    appendNumber(out, std::uint32_t(text.size()));
    out += text;
}

bool takeText(std::string_view& in, std::string_view& text) {
    std::uint32_t size;
    if(!takeNumber(in, size) || in.size() < size)
        return false;
    text = in.substr(0, size);
    in.remove_prefix(size);
    return true;
}

void appendValue(std::string& out, const rapidjson::Value& value) {
    Writer writer{out};
    walkJson(value, writer);
}

bool takeValue(std::string_view& in, rapidjson::Document& value) {
    rapidjson::Document read;
    bool isWhole = false;
    auto send = [&](rapidjson::Document& target) {
        isWhole = Reader{in, target}.readValue();
        return isWhole;
    };
    read.Populate(send);
    if(isWhole)
        value = std::move(read);
    return isWhole;
}

}
