#include "plugins/history/shortText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

#include <rapidjson/document.h>

#include "QuillmereEditor/Change.h"
#include "host/RapidJsonUtils.h"

namespace QuillmereEngine {

namespace {

constexpr const char* Dots = "...";
constexpr const char* Replacement = "\xef\xbf\xbd";

bool isContinuation(const char byte) { return (byte & 0xc0) == 0x80; }

/* Bytes of the code point at the start of a text, 0 if there's none in UTF-8. Doesn't tell overlong
   and surrogate forms from others: what draws them knows how. */
std::size_t codePointSize(const std::string_view text) {
    const unsigned char lead = static_cast<unsigned char>(text[0]);
    const std::size_t size = lead < 0x80 ? 1
        : lead < 0xc2                    ? 0
        : lead < 0xe0                    ? 2
        : lead < 0xf0                    ? 3
        : lead < 0xf5                    ? 4
                                         : 0;
    if(size == 0 || text.size() < size ||
        !std::all_of(text.begin() + 1, text.begin() + std::ptrdiff_t(size), isContinuation))
        return 0;
    return size;
}

/* Of a byte below 128, with the quotes only where they'd end a string */
std::string escaped(const char c, const bool isInQuotes) {
    switch(c) {
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        case '"':
        case '\\':
            return isInQuotes ? std::string{'\\', c} : std::string{c};
        default:
            break;
    }
    if(c >= 0x20 && c != 0x7f)
        return {c};
    char out[8];
    std::snprintf(out, sizeof(out), "\\u%04x", unsigned(c));
    return out;
}

/* Takes the first code point of a text as it's to be shown */
std::string takeShown(std::string_view& text, const bool isInQuotes) {
    const std::size_t size = codePointSize(text);
    const std::string_view taken = text.substr(0, std::max<std::size_t>(size, 1));
    text.remove_prefix(taken.size());
    if(size == 0)
        return Replacement;
    return size == 1 ? escaped(taken[0], isInQuotes) : std::string{taken};
}

/* Widgets edit single precision, and the value that is the same as a double has many digits more */
std::string shortNumber(const rapidjson::Value& value) {
    const double number = value.GetDouble();
    if(std::isfinite(number) && std::abs(number) <= double(std::numeric_limits<float>::max()) &&
        double(float(number)) == number) {
        char out[32];
        const auto result = std::to_chars(out, out + sizeof(out), float(number));
        return {out, result.ptr};
    }
    return RapidJsonUtils::toJson(value);
}

/* Writes until the limit. Each function gives whether all of it was written. */
class Writer {
public:
    explicit Writer(const std::size_t limit): _left{limit} {}

    bool value(const rapidjson::Value& value) {
        if(value.IsString())
            return string({value.GetString(), value.GetStringLength()});
        if(value.IsArray())
            return array(value);
        if(value.IsObject())
            return object(value);
        return plain(value.IsDouble() ? shortNumber(value) : RapidJsonUtils::toJson(value));
    }

    std::string out;

private:
    bool plain(const std::string_view ascii) {
        const std::string_view fitting = ascii.substr(0, _left);
        out += fitting;
        _left -= fitting.size();
        return fitting.size() == ascii.size();
    }

    bool string(std::string_view text) {
        if(!plain("\""))
            return false;
        while(!text.empty()) {
            if(_left == 0)
                return false;
            const std::string shown = takeShown(text, true);
            out += shown;
            --_left;
        }
        return plain("\"");
    }

    /* Each level takes a bracket, so that the depth stays below the limit */
    bool array(const rapidjson::Value& value) {
        if(!plain("["))
            return false;
        for(rapidjson::SizeType i = 0; i != value.Size(); ++i)
            if((i != 0 && !plain(",")) || !this->value(value[i]))
                return false;
        return plain("]");
    }

    bool object(const rapidjson::Value& value) {
        if(!plain("{"))
            return false;
        for(auto i = value.MemberBegin(); i != value.MemberEnd(); ++i)
            if((i != value.MemberBegin() && !plain(",")) ||
                !string({i->name.GetString(), i->name.GetStringLength()}) || !plain(":") ||
                !this->value(i->value))
                return false;
        return plain("}");
    }

    std::size_t _left;
};

}

std::string_view pathOf(const Change& change) {
    const std::string_view path{change.path.data(), change.path.size()};
    return !path.empty() && path.back() == '\0' ? path.substr(0, path.size() - 1) : path;
}

std::string shortJson(const rapidjson::Value& value, const std::size_t limit) {
    Writer writer{limit};
    if(!writer.value(value))
        writer.out += Dots;
    return std::move(writer.out);
}

std::string shortPath(std::string_view path, const std::size_t limit) {
    std::string out;
    if(path.size() > limit) {
        out = Dots;
        path.remove_prefix(path.size() - limit);
        for(int i = 0; i != 3 && !path.empty() && isContinuation(path[0]); ++i)
            path.remove_prefix(1);
    }
    while(!path.empty())
        out += takeShown(path, false);
    return out;
}

}
