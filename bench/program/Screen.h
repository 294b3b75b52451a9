// A virtual display: its windows, keys, and what is painted on it. Raises std::runtime_error when
// the system has none to give.
#pragma once

#include "bench/program/Process.h"

#include <memory>
#include <string>

struct _XDisplay;

namespace bench {

struct Area {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
};

struct Colour {
    int Red = 0;
    int Green = 0;
    int Blue = 0;
};

struct Screen {
    static constexpr int kWidth = 1000;
    static constexpr int kHeight = 700;

    Screen();
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    // The largest window has the keys from now on, or none has.
    void GiveKeys() const;
    void TakeKeysAway() const;

    // A key goes down and up, "n" or "Return". It is on its way when the call returns.
    void Press(const char* key) const;

    // From now on what is painted anywhere is told.
    void WatchPaints();

    // Waits for the next paint. False when there is none within the limit.
    bool NextPaint(int limitMs) const;

    // True when a pixel of the area has the colour, or one that is hard to tell from it.
    bool Shows(const Area& area, const Colour& colour) const;

    std::string Name; // ":1"

private:
    std::unique_ptr<Process> Server;
    _XDisplay* Connection = nullptr;
    int DamageEvents = 0;
};

} // namespace bench
