#include "bench/program/Screen.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/extensions/Xdamage.h>
#include <cstdlib>
#include <poll.h>
#include <stdexcept>
#include <unistd.h>

namespace bench {
namespace {

// The number that the server writes when it is ready.
std::string ReadName(int pipe) {
    std::string name = ":";
    for (char c = 0; ::read(pipe, &c, 1) == 1 && c != '\n';)
        name += c;
    return name;
}

Window LargestWindow(Display* display) {
    Window root = 0;
    Window parent = 0;
    Window* windows = nullptr;
    unsigned count = 0;
    XQueryTree(display, DefaultRootWindow(display), &root, &parent, &windows, &count);
    Window largest = None;
    int most = 0;
    for (unsigned i = 0; i < count; ++i) {
        XWindowAttributes attributes;
        if (XGetWindowAttributes(display, windows[i], &attributes) != 0 &&
            attributes.map_state == IsViewable && attributes.width * attributes.height > most) {
            most = attributes.width * attributes.height;
            largest = windows[i];
        }
    }
    XFree(windows);
    return largest;
}

bool Resembles(unsigned long pixel, const Colour& colour) {
    constexpr int kSoftness = 24;
    const auto isNear = [pixel](int shift, int channel) {
        return std::abs(static_cast<int>(pixel >> shift & 255) - channel) <= kSoftness;
    };
    return isNear(16, colour.Red) && isNear(8, colour.Green) && isNear(0, colour.Blue);
}

} // namespace

Screen::Screen() {
    int pipe[2];
    if (::pipe(pipe) != 0)
        throw std::runtime_error("No pipe could be made");
    const std::string size = std::to_string(kWidth) + "x" + std::to_string(kHeight) + "x24";
    Server = std::make_unique<Process>(
        std::vector<std::string>{"Xvfb", "-displayfd", "1", "-screen", "0", size, "-nolisten",
                                 "tcp", "-noreset", "-r"},
        std::vector<std::string>{"PATH=" + std::string(::getenv("PATH"))}, pipe[1]);
    ::close(pipe[1]);
    Name = ReadName(pipe[0]);
    ::close(pipe[0]);
    Connection = XOpenDisplay(Name.c_str());
    if (Connection == nullptr)
        throw std::runtime_error("The virtual display can't be reached");
}

Screen::~Screen() { XCloseDisplay(Connection); }

void Screen::GiveKeys() const {
    XSetInputFocus(Connection, LargestWindow(Connection), RevertToNone, CurrentTime);
    XSync(Connection, False);
}

void Screen::TakeKeysAway() const {
    XSetInputFocus(Connection, None, RevertToNone, CurrentTime);
    XSync(Connection, False);
}

void Screen::Press(const char* key) const {
    const KeyCode code = XKeysymToKeycode(Connection, XStringToKeysym(key));
    XTestFakeKeyEvent(Connection, code, True, CurrentTime);
    XTestFakeKeyEvent(Connection, code, False, CurrentTime);
    XFlush(Connection);
}

void Screen::WatchPaints() {
    int errors = 0;
    if (XDamageQueryExtension(Connection, &DamageEvents, &errors) == 0)
        throw std::runtime_error("The virtual display does not tell what is painted");
    XDamageCreate(Connection, DefaultRootWindow(Connection), XDamageReportRawRectangles);
    XSync(Connection, False);
}

bool Screen::NextPaint(int limitMs) const {
    pollfd waiting{ConnectionNumber(Connection), POLLIN, 0};
    while (XPending(Connection) > 0 || ::poll(&waiting, 1, limitMs) > 0) {
        XEvent event;
        XNextEvent(Connection, &event);
        if (event.type == DamageEvents + XDamageNotify)
            return true;
    }
    return false;
}

bool Screen::Shows(const Area& area, const Colour& colour) const {
    XImage* const image = XGetImage(Connection, DefaultRootWindow(Connection), area.Left, area.Top,
                                    static_cast<unsigned>(area.Width),
                                    static_cast<unsigned>(area.Height), AllPlanes, ZPixmap);
    if (image == nullptr)
        return false;
    bool found = false;
    for (int y = 0; y < area.Height && !found; ++y) {
        for (int x = 0; x < area.Width && !found; ++x)
            found = Resembles(XGetPixel(image, x, y), colour);
    }
    XDestroyImage(image);
    return found;
}

} // namespace bench
