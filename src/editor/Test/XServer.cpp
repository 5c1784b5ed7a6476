#include "XServer.h"

#include <cstddef>
#include <cstdint>

#include <X11/Xlib.h>

namespace QuillmereEngine {

namespace {

/* Fields of the header of an X window dump, big-endian numbers of four bytes: XWDFile.h of x11proto */
constexpr std::size_t HeaderSize = 0, Width = 4, Height = 5, BytesPerLine = 12, ColorCount = 19;
constexpr std::size_t FieldCount = 25, ColorSize = 12;

std::size_t field(const std::string& dump, const std::size_t i) {
    std::uint32_t out = 0;
    for(std::size_t byte = 0; byte != 4; ++byte)
        out = out << 8 | static_cast<unsigned char>(dump[i * 4 + byte]);
    return out;
}

}

XServer::XServer():
    _server{{"Xvfb", "-displayfd", "1", "-screen", "0", "1280x720x24", "-nolisten", "tcp", "-fbdir",
        _folder.path()}} {
    /* It tells its number once it takes clients */
    const auto isReady = [this] { return _server.out().find('\n') != std::string::npos; };
    if(eventually([&] { return isReady() || _server.hasEnded(); }) && isReady())
        _display = ":" + _server.out().substr(0, _server.out().find('\n'));
}

Picture XServer::screen() const {
    /* The server keeps what's shown in this file while it runs */
    const std::string dump = Testing::readFile(_folder.file("Xvfb_screen0"));
    if(dump.size() < FieldCount * 4)
        return {};
    Picture out;
    out.width = int(field(dump, Width));
    out.height = int(field(dump, Height));
    out.channels = 3;
    const std::size_t begin = field(dump, HeaderSize) + field(dump, ColorCount) * ColorSize;
    for(int y = 0; y != out.height; ++y)
        for(int x = 0; x != out.width; ++x) {
            /* Blue, green, red, nothing */
            const std::size_t pixel = begin + std::size_t(y) * field(dump, BytesPerLine) +
                std::size_t(x) * 4;
            for(std::size_t channel = 0; channel != 3; ++channel)
                out.pixels.push_back(static_cast<unsigned char>(dump.at(pixel + 2 - channel)));
        }
    return out;
}

bool XServer::requestClose(const unsigned long window) const {
    Display* const display = XOpenDisplay(_display.c_str());
    if(!display)
        return false;
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = long(XInternAtom(display, "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    const bool isSent = XSendEvent(display, window, False, NoEventMask, &event);
    XCloseDisplay(display);
    return isSent;
}

}
