#include "net/Send.h"

#include "base/Globals.h"
#include "ui/Socket.h"

namespace mw {

void SendChar(std::int16_t code) {
    if (wskTCP::State() != SocketConnected)
        return;
    LastSentChar = code;
    const char character = static_cast<char>(code);
    wskTCP::SendData({&character, 1});
}

void SendLine(std::string_view text) {
    for (const char c : text) {
        if (EscapeChar == std::string_view(&c, 1))
            wskTCP::SendData("\r");
        else
            SendChar(static_cast<unsigned char>(c));
    }
    wskTCP::SendData("\r");
}

} // namespace mw
