// The ports as recorders: every call is written down in order, and what a rule reads from a control
// is replayed from plain values that a test sets.
#pragma once

#include "ui/FrameControls.h"
#include "ui/Inet.h"
#include "ui/OutputControls.h"
#include "ui/Players.h"
#include "ui/SetupControls.h"
#include "ui/Socket.h"
#include "ui/SplashControls.h"
#include "ui/UpdateControls.h"

#include <cstddef>
#include <deque>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace fakes {

// Every port call that changes something, in order, as text: "Send n", "Panel 1 Connected to: X",
// "Enable cmdConn", "Disable cmdDisco", "Message ...", "Append ffffff text", "Stop wave" ...
inline std::vector<std::string> Calls;
inline std::function<void(const std::string& call)> OnCall; // what happens while one is made

// How often a call was made, and which one it was first, counted from 0. To ask for the place of a
// call that was not made is a failure.
std::ptrdiff_t CallsOf(const std::string& call);
std::ptrdiff_t PlaceOf(const std::string& call);

// What went to the socket: call by call, and as one stream.
inline std::vector<std::string> Sends;
std::string Sent();
inline std::function<void()> OnSend; // what happens while something is sent

// Socket: the state it reports and the arrivals that GetData hands out, one a call.
inline std::int16_t SocketState = 0;
inline std::deque<std::string> Arrivals;

struct Run {
    std::string Text;
    std::int32_t Colour = 0;
    std::string FontName;
    std::string FontSize;
};
inline std::vector<Run> Runs; // every append to the output box, status lines too
inline std::string Shown;     // the text in the output box
inline std::int16_t ScrollMax = 0;
inline std::int16_t ScrollValue = 0;
inline std::int16_t SmallChange = 0;
inline std::int16_t LargeChange = 0;

inline std::string Input; // the command line's text
inline std::size_t SelStart = 0;
inline std::size_t SelLength = 0;
inline std::vector<std::string> Items; // the mirror of the history

inline std::string ChosenMud;                    // text of the selected item of cboMud
inline std::int16_t ListIndex = 0;               // position of the selected item of cboMud
inline std::map<mw::FrameControl, bool> Enabled; // only controls that were set
inline std::map<mw::FrameControl, bool> Visible;
inline std::map<mw::FrameControl, bool> Checked;
inline mw::Rectangle Place; // of the frame
inline mw::WindowState State = mw::WindowState::Normal;
inline std::vector<mw::Rectangle> Screens;

inline std::map<mw::SplashLabel, std::string> SplashCaptions;
inline std::map<mw::UpdateLabel, std::string> PromptCaptions;
inline std::map<std::string, std::optional<std::string>> Pages; // what OpenURL gets, by address

inline mw::PlayState WaveState = mw::PlayState::Stopped;
inline mw::PlayState MusicState = mw::PlayState::Stopped;
inline std::filesystem::path WaveFile; // set last, whole
inline std::filesystem::path MusicFile;

// The transfers that were started and not cancelled, by number: a test fills in what arrives and
// calls inet_StateChanged.
struct Transfer {
    mw::inet::Request Request;
    std::optional<std::string> Header;
    std::string Body;
    bool Ended = false;
};
inline std::map<std::int32_t, Transfer> Transfers;
inline std::uint64_t FreeSpace = 0;

inline std::string AddressBox; // text of cboAdd
inline bool PageIsBusy = false;
inline std::string PageName;
inline std::string PageAddress;

inline std::optional<std::int32_t> NextColour; // what the choosers answer; nothing for a Cancel
inline std::optional<mw::FontChoice> NextFont;

inline std::filesystem::path FreeSpaceAsked; // for which it was asked last

inline std::map<int, std::string> Panels;
inline std::vector<std::string> Messages;               // texts of message boxes
inline std::vector<std::string> Played;                 // "wave name|address|volume|priority"
inline std::map<std::string, std::string> UserSettings; // "application/section/key"
inline int EventRuns = 0;                               // calls of DoEvents
inline std::function<void()> OnEvents;                  // the events that wait for them

// The registry: values by key path and name, as the platform holds them (a string with its
// terminating zero). A code other than 0 is what the call answers.
struct StoredValue {
    std::uint32_t Type = 0;
    std::string Data;
};
inline std::map<std::string, std::map<std::string, StoredValue>> Registry;
inline std::int32_t CreateCode = 0;
inline std::int32_t OpenCode = 0;
inline std::int32_t SetCode = 0;
inline std::int32_t QueryCode = 0;
inline int OpenKeys = 0; // keys opened and not closed

inline std::string Date; // and time, as the clock tells them

} // namespace fakes

// Base of all rule tests: every module and every fake in its start state, the socket connected.
class RuleTest : public testing::Test {
protected:
    RuleTest();
    ~RuleTest() override;
};
