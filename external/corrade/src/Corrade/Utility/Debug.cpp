#include "Debug.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <iostream>

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

namespace Corrade { namespace Utility {

namespace {

/* Kept in this library and reached through functions only, so the process has
   one set of them whichever module prints */
thread_local std::ostream* currentDebugOutput = &std::cout;
thread_local std::ostream* currentWarningOutput = &std::cerr;
thread_local std::ostream* currentErrorOutput = &std::cerr;

std::ostream*& debugSlot() { return currentDebugOutput; }
std::ostream*& warningSlot() { return currentWarningOutput; }
std::ostream*& errorSlot() { return currentErrorOutput; }

/* Enough for a double with 15 digits, a sign, a point and an exponent and for
   a 64-bit number. Formatted without the stream, as its width, base and locale
   are its owner's. */
typedef std::array<char, 32> NumberBuffer;

template<class T> std::size_t formatNumber(NumberBuffer& buffer, T value) {
    return std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr - buffer.data();
}

template<class T> std::size_t formatFloat(NumberBuffer& buffer, T value, int precision) {
    return std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
               std::chars_format::general, precision)
               .ptr -
        buffer.data();
}

}

void Debug::nospace(Debug& debug) { debug._immediateFlags |= Flag::NoSpace; }

void Debug::newline(Debug& debug) { debug << nospace << "\n" << nospace; }

void Debug::space(Debug& debug) { debug << nospace << " " << nospace; }

void Debug::packed(Debug& debug) { debug._immediateFlags |= Flag::Packed; }

std::ostream* Debug::defaultOutput() { return &std::cout; }

std::ostream* Debug::output() { return debugSlot(); }

Debug::Debug(const Flags flags): Debug{debugSlot, flags} {}

Debug::Debug(std::ostream* const output, const Flags flags): Debug{debugSlot, output, flags} {}

Debug::Debug(const Slot slot, const Flags flags):
    _output{slot()},
    _previousOutput{},
    _redirected{},
    _flags{flags},
    _immediateFlags{Flag::NoSpace},
    _written{} {}

Debug::Debug(const Slot slot, std::ostream* const output, const Flags flags):
    _output{output},
    _previousOutput{slot()},
    _redirected{slot},
    _flags{flags},
    _immediateFlags{Flag::NoSpace},
    _written{} {
    slot() = output;
}

Debug::~Debug() {
    if(_output && _written && !(_flags & Flag::NoNewlineAtTheEnd))
        *_output << std::endl;
    if(_redirected)
        _redirected() = _previousOutput;
}

Debug& Debug::print(const char* const data, const std::size_t size) {
    if(_output) {
        if(!(immediateFlags() & Flag::NoSpace))
            _output->put(' ');
        _output->write(data, std::streamsize(size));
    }
    _immediateFlags = {};
    _written = true;
    return *this;
}

Debug& Debug::operator<<(const bool value) { return value ? print("true", 4) : print("false", 5); }

Debug& Debug::operator<<(const int value) { return *this << static_cast<long long>(value); }

Debug& Debug::operator<<(const unsigned int value) {
    return *this << static_cast<unsigned long long>(value);
}

Debug& Debug::operator<<(const long value) { return *this << static_cast<long long>(value); }

Debug& Debug::operator<<(const unsigned long value) {
    return *this << static_cast<unsigned long long>(value);
}

Debug& Debug::operator<<(const long long value) {
    NumberBuffer buffer;
    return print(buffer.data(), formatNumber(buffer, value));
}

Debug& Debug::operator<<(const unsigned long long value) {
    NumberBuffer buffer;
    return print(buffer.data(), formatNumber(buffer, value));
}

Debug& Debug::operator<<(const float value) {
    NumberBuffer buffer;
    return print(buffer.data(), formatFloat(buffer, value, 6));
}

Debug& Debug::operator<<(const double value) {
    NumberBuffer buffer;
    return print(buffer.data(), formatFloat(buffer, value, 15));
}

Debug& Debug::operator<<(std::nullptr_t) { return print("nullptr", 7); }

Debug& Debug::operator<<(const char* const value) { return *this << Containers::StringView{value}; }

Debug& Debug::operator<<(const void* const value) {
    NumberBuffer buffer{'0', 'x'};
    const std::to_chars_result result = std::to_chars(buffer.data() + 2,
        buffer.data() + buffer.size(), reinterpret_cast<std::uintptr_t>(value), 16);
    return print(buffer.data(), result.ptr - buffer.data());
}

Debug& Debug::operator<<(const Containers::StringView value) {
    return print(value.data(), value.size());
}

Debug& Debug::operator<<(const Containers::MutableStringView value) {
    return print(value.data(), value.size());
}

Debug& Debug::operator<<(const Containers::String& value) {
    return print(value.data(), value.size());
}

std::ostream* Warning::defaultOutput() { return &std::cerr; }

std::ostream* Warning::output() { return warningSlot(); }

Warning::Warning(const Flags flags): Debug{warningSlot, flags} {}

Warning::Warning(std::ostream* const output, const Flags flags):
    Debug{warningSlot, output, flags} {}

Warning::~Warning() = default;

std::ostream* Error::defaultOutput() { return &std::cerr; }

std::ostream* Error::output() { return errorSlot(); }

Error::Error(const Flags flags): Debug{errorSlot, flags} {}

Error::Error(std::ostream* const output, const Flags flags): Debug{errorSlot, output, flags} {}

Error::~Error() = default;

}}
