// What every journey against a hostile server begins with. One client lives through many rows, one
// after the other, and must be well after each: a key is answered at once, what an attack took of
// the memory is given back, no file and no window is left that was not there.
//
// The exact times are held, ten times as much is sent, and a table is printed when
// QUILLMERE_LONG_STORMS is set, as "make soak" does. Otherwise other journeys keep the machine
// busy, so that a single key may have to wait for them: only the median of all rows is held then,
// and ten times as long.
#pragma once

#include "Journey.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace journey {

class Siege : public WireJourney {
protected:
    // Starts the client connected, and has it hold what it keeps once it has shown text and a
    // dialog.
    void Begin();

    // What the client has now is what it must come back to.
    void KeepState();

    // One row: whatever happens in it, the client must be well afterwards.
    void Bear(const std::string& name, const std::function<void()>& row);

    // The row of an attack, while keys are pressed or something else goes on.
    void Bear(const Attack& attack);
    void Bear(const Attack& attack, const std::function<void()>& meanwhile);

    // A line is typed; its arrival is awaited.
    void PressKeys(int times);

    // Something that the client answers in another way.
    void Time(const std::function<void()>& answered);

    std::set<std::string> FilesLeft() const; // all in the client's folders but what it was heard by

    void TearDown() override;

    static const bool IsLong;
    static int Times(int often) { return IsLong ? 10 * often : often; }

    std::set<std::string> Known; // the files that may be there

private:
    struct Row {
        std::string Name;
        std::size_t Sent = 0;
        double MbDuring = 0;
        double MbAfter = 0;
        std::vector<double> Ms; // of each key
    };

    void ExpectToBeWell();
    void ExpectToBeQuick(const std::vector<double>& ms, double medianMs) const;
    void PrintTable() const;

    std::vector<Row> Rows;
    double MbBefore = 0;
};

} // namespace journey
