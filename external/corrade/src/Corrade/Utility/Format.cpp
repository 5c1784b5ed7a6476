#include "Format.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <memory>
#include <string>

namespace Corrade { namespace Utility { namespace Implementation {

namespace {

typedef FormatArgument::Type Type;

constexpr std::size_t NoPrecision = ~std::size_t{};

struct Placeholder {
    std::size_t index;
    std::size_t precision;
    /* NUL where there is none */
    char type;
};

/* Where the text goes. Numbers are told apart, as a buffer of a fixed size has
   to have room for a NUL behind them. */
class Sink {
public:
    virtual void text(const char* data, std::size_t size) = 0;
    virtual void number(const char* data, const std::size_t size) { text(data, size); }

protected:
    ~Sink() = default;
};

class BufferSink final: public Sink {
public:
    explicit BufferSink(const Containers::MutableStringView buffer): _buffer{buffer} {}

    void text(const char* const data, const std::size_t size) override { append(data, size, 0); }
    void number(const char* const data, const std::size_t size) override { append(data, size, 1); }
    std::size_t size() const { return _size; }

private:
    void append(const char* const data, const std::size_t size, const std::size_t behind) {
        CORRADE_ASSERT(_size + size + behind <= _buffer.size(),
            "Utility::formatInto(): buffer too small, expected at least"
                << _size + size + behind << "but got" << _buffer.size(), );
        if(size)
            std::memcpy(_buffer.data() + _size, data, size);
        _size += size;
    }

    Containers::MutableStringView _buffer;
    std::size_t _size = 0;
};

class StringSink final: public Sink {
public:
    explicit StringSink(std::string& string, const std::size_t offset):
        _string(string),
        _offset{offset} {
        if(_string.size() < offset)
            _string.resize(offset);
    }

    void text(const char* const data, const std::size_t size) override {
        /* Of nothing, the pointer may be null */
        if(!size)
            return;
        _string.replace(_offset, std::min(size, _string.size() - _offset), data, size);
        _offset += size;
    }
    std::size_t offset() const { return _offset; }

private:
    std::string& _string;
    std::size_t _offset;
};

/* Most texts are a line, which then is gathered without an allocation */
class LineSink final: public Sink {
public:
    void text(const char* const data, const std::size_t size) override {
        if(_overflow.empty() && _size + size <= sizeof(_line)) {
            if(size)
                std::memcpy(_line + _size, data, size);
            _size += size;
            return;
        }
        if(!size)
            return;
        if(_overflow.empty())
            _overflow.assign(_line, _size);
        _overflow.append(data, size);
    }
    Containers::StringView view() const {
        return _overflow.empty() ? Containers::StringView{_line, _size}
                                 : Containers::StringView{_overflow.data(), _overflow.size()};
    }

private:
    char _line[512];
    std::size_t _size = 0;
    std::string _overflow;
};

void fill(Sink& sink, const char character, std::size_t count) {
    char block[64];
    std::memset(block, character, sizeof(block));
    for(; count > sizeof(block); count -= sizeof(block))
        sink.text(block, sizeof(block));
    sink.text(block, count);
}

bool isDigit(const char character) { return character >= '0' && character <= '9'; }

Containers::StringView characterView(const char* const character) { return {character, 1}; }

/* Reads a number that saturates far below an overflow of what's computed from
   it, but above all that can be meant */
const char* parseNumber(const char* format, std::size_t& out) {
    constexpr std::size_t Limit = 1000000000;
    for(out = 0; isDigit(*format); ++format)
        out = std::min(out * 10 + std::size_t(*format - '0'), Limit);
    return format;
}

void expectMore(const char* const format) {
    CORRADE_ASSERT(*format, "Utility::format(): unexpected end of format string", );
}

const char* parsePrecision(const char* format, Placeholder& out) {
    expectMore(format);
    CORRADE_ASSERT(isDigit(*format),
        "Utility::format(): invalid character in precision specifier:" << characterView(format),
        format);
    return parseNumber(format, out.precision);
}

/* Of what follows the opening brace. Gives what's behind the closing one. */
const char* parsePlaceholder(const char* format, Placeholder& out) {
    if(isDigit(*format))
        format = parseNumber(format, out.index);
    if(*format == ':') {
        if(*++format == '.')
            format = parsePrecision(format + 1, out);
        expectMore(format);
        if(*format != '}') {
            CORRADE_ASSERT(std::strchr("doxXcgGeEfF", *format),
                "Utility::format(): invalid type specifier:" << characterView(format), format);
            out.type = *format++;
        }
    }
    expectMore(format);
    CORRADE_ASSERT(*format == '}',
        "Utility::format(): unknown placeholder content:" << characterView(format), format);
    return format + 1;
}

void makeUppercase(char* const begin, char* const end) {
    std::transform(begin, end, begin,
        [](const char c) { return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c; });
}

/* Sign and digits of an integer. Hexadecimal and octal digits are those of the
   unsigned value of the same width, as in printf(). */
void writeInteger(Sink& sink, const FormatArgument& argument, const Placeholder& placeholder) {
    const bool is64 = argument.type == Type::Signed64 || argument.type == Type::Unsigned64;
    const bool isSigned = argument.type == Type::Signed || argument.type == Type::Signed64;
    CORRADE_ASSERT(!placeholder.type || std::strchr("doxXc", placeholder.type),
        "Utility::format(): floating-point type used for an integral value", );
    CORRADE_ASSERT(placeholder.type != 'c' || !is64,
        "Utility::format(): character type used for a 64-bit value", );

    if(placeholder.type == 'c') {
        const char character = char(argument.number);
        sink.number(&character, 1);
        return;
    }

    const int base = placeholder.type == 'o'                 ? 8
        : placeholder.type == 'x' || placeholder.type == 'X' ? 16
                                                             : 10;
    const bool negative = base == 10 && isSigned && std::int64_t(argument.number) < 0;
    std::uint64_t number = negative ? -argument.number : argument.number;
    if(base != 10 && !is64)
        number = std::uint32_t(number);

    char buffer[24];
    char* const end = std::to_chars(buffer, buffer + sizeof(buffer), number, base).ptr;
    if(placeholder.type == 'X')
        makeUppercase(buffer, end);
    std::size_t digits = std::size_t(end - buffer);
    /* As in printf(), no digits of a zero are no digits */
    if(placeholder.precision == 0 && number == 0)
        digits = 0;

    if(negative)
        sink.text("-", 1);
    if(placeholder.precision != NoPrecision && placeholder.precision > digits)
        fill(sink, '0', placeholder.precision - digits);
    sink.number(buffer, digits);
}

void writeFloat(Sink& sink, const FormatArgument& argument, const Placeholder& placeholder) {
    CORRADE_ASSERT(!placeholder.type || std::strchr("gGeEfF", placeholder.type),
        "Utility::format(): integral type used for a floating-point value", );
    std::chars_format format = std::chars_format::general;
    if(placeholder.type == 'e' || placeholder.type == 'E')
        format = std::chars_format::scientific;
    else if(placeholder.type == 'f' || placeholder.type == 'F')
        format = std::chars_format::fixed;
    const std::size_t precision = placeholder.precision != NoPrecision ? placeholder.precision
        : argument.type == Type::Float                                 ? 6
                                                                       : 15;

    /* Sign, point, exponent and all digits in front of the point of the
       largest number */
    constexpr std::size_t Most = std::numeric_limits<double>::max_exponent10 + 16;
    char small[Most + 64];
    std::unique_ptr<char[]> large;
    char* begin = small;
    std::size_t size = sizeof(small);
    if(size < Most + precision) {
        size = Most + precision;
        large.reset(new char[size]);
        begin = large.get();
    }

    const std::to_chars_result result = std::to_chars(
        begin, begin + size, argument.real, format, int(precision));
    CORRADE_INTERNAL_ASSERT(result.ec == std::errc{});
    if(placeholder.type && std::strchr("GEF", placeholder.type))
        makeUppercase(begin, result.ptr);
    sink.number(begin, std::size_t(result.ptr - begin));
}

void writeArgument(Sink& sink, const FormatArgument& argument, const Placeholder& placeholder) {
    switch(argument.type) {
        case Type::Signed:
        case Type::Unsigned:
        case Type::Signed64:
        case Type::Unsigned64:
            return writeInteger(sink, argument, placeholder);
        case Type::Float:
        case Type::Double:
            return writeFloat(sink, argument, placeholder);
        case Type::String:
            CORRADE_ASSERT(!placeholder.type,
                "Utility::format(): type specifier can't be used for a string value", );
            return sink.text(
                argument.string.data, std::min(argument.string.size, placeholder.precision));
    }
    CORRADE_INTERNAL_ASSERT_UNREACHABLE();
}

void write(Sink& sink, const char* format, const FormatArguments arguments) {
    std::size_t next = 0;
    while(*format) {
        const std::size_t plain = std::strcspn(format, "{}");
        if(plain)
            sink.text(format, plain);
        format += plain;
        if(!*format)
            return;

        if(format[0] == format[1]) {
            sink.text(format, 1);
            format += 2;
            continue;
        }
        CORRADE_ASSERT(*format == '{', "Utility::format(): mismatched }", );

        Placeholder placeholder{next, NoPrecision, '\0'};
        const char* const end = parsePlaceholder(format + 1, placeholder);
        if(placeholder.index < arguments.size())
            writeArgument(sink, arguments[placeholder.index], placeholder);
        else
            sink.text(format, std::size_t(end - format));
        next = placeholder.index + 1;
        format = end;
    }
}

}

Containers::String format(const char* const format, const FormatArguments arguments) {
    LineSink sink;
    write(sink, format, arguments);
    return sink.view();
}

std::size_t formatInto(const Containers::MutableStringView buffer, const char* const format,
    const FormatArguments arguments) {
    BufferSink sink{buffer};
    write(sink, format, arguments);
    return sink.size();
}

std::size_t formatInto(std::string& string, const std::size_t offset, const char* const format,
    const FormatArguments arguments) {
    StringSink sink{string, offset};
    write(sink, format, arguments);
    return sink.offset();
}

void formatInto(std::FILE* const file, const char* const format, const FormatArguments arguments) {
    LineSink sink;
    write(sink, format, arguments);
    const Containers::StringView text = sink.view();
    std::fwrite(text.data(), 1, text.size(), file);
}

}}}
