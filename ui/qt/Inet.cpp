// Transfers by libcurl's multi interface on Qt's event loop: its sockets become notifiers, its time
// limit one timer.
#include "ui/Inet.h"

#include "ui/qt/EventBoundary.h"

#include <chrono>
#include <curl/curl.h>
#include <map>
#include <memory>
#include <set>
#include <string_view>
#include <utility>

#include <QCoreApplication>
#include <QPointer>
#include <QSocketNotifier>
#include <QTimer>

namespace mw {
namespace {

constexpr std::size_t kLongestHeader = 64 * 1024; // bytes
constexpr std::size_t kFull = 64 * 1024;          // bytes of the body kept before the server waits
constexpr std::chrono::seconds kLongestSilence{30};
constexpr std::chrono::seconds kSilenceCheck{1}; // while something is transferred
constexpr int kMostRedirections = 5;

using Clock = std::chrono::steady_clock;

struct CloseEasy {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};

struct FreeList {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

struct Transfer {
    std::unique_ptr<CURL, CloseEasy> Easy;
    std::unique_ptr<curl_slist, FreeList> Fields;
    std::string Header;
    std::string Body;        // what has arrived and not been taken
    std::size_t Taken = 0;   // bytes at its front
    std::size_t Dropped = 0; // bytes of redirections' bodies
    Clock::time_point Heard = Clock::now();
    int Redirections = 0; // followed so far
    bool HeaderIsWhole = false;
    bool IsPacked = false; // its body, in another way than asked for
    bool Waits = false;    // the server, because Body is full
    bool Ended = false;
    bool Changed = false; // to be told
};

bool IsRedirection(const Transfer& transfer) {
    long status = 0;
    curl_easy_getinfo(transfer.Easy.get(), CURLINFO_RESPONSE_CODE, &status);
    return status / 100 == 3;
}

// Where the server points to, when it may be followed there.
std::string Redirection(Transfer& transfer) {
    const char* target = nullptr;
    const char* scheme = nullptr;
    curl_easy_getinfo(transfer.Easy.get(), CURLINFO_REDIRECT_URL, &target);
    curl_easy_getinfo(transfer.Easy.get(), CURLINFO_SCHEME, &scheme);
    if (!IsRedirection(transfer) || target == nullptr || scheme == nullptr)
        return {};
    const std::string address(target);
    const bool isSecure =
        std::string_view(scheme) == "HTTPS" || std::string_view(scheme) == "https";
    const bool isAllowed =
        address.starts_with("https://") || (address.starts_with("http://") && !isSecure);
    return isAllowed && transfer.Redirections < kMostRedirections ? address : "";
}

// A transfer coding but the chunks, as a line of a header tells (RFC 9112, 6.1). It would be
// unpacked unasked, a thousandfold.
bool TellsOfPacking(std::string_view line) {
    const QByteArray field = QByteArray(line.data(), static_cast<qsizetype>(line.size())).toLower();
    const QByteArray name = "transfer-encoding:";
    return field.startsWith(name) && field.sliced(name.size()).trimmed() != "chunked";
}

// One line of a header. Interim responses and those that are followed elsewhere come before the one
// that counts.
std::size_t TakeHeaderLine(char* bytes, std::size_t, std::size_t count, void* context) {
    auto& transfer = *static_cast<Transfer*>(context);
    const std::string_view line(bytes, count);
    transfer.Heard = Clock::now();
    if (line.starts_with("HTTP/")) {
        transfer.Header.clear();
        transfer.IsPacked = false;
    }
    transfer.IsPacked = transfer.IsPacked || TellsOfPacking(line);
    if (transfer.Header.size() + count > kLongestHeader)
        return 0;
    transfer.Header += line;
    long status = 0;
    curl_easy_getinfo(transfer.Easy.get(), CURLINFO_RESPONSE_CODE, &status);
    if ((line == "\r\n" || line == "\n") && status >= 200 && status / 100 != 3)
        transfer.HeaderIsWhole = transfer.Changed = true;
    return count;
}

std::size_t TakeBody(char* bytes, std::size_t, std::size_t count, void* context) {
    auto& transfer = *static_cast<Transfer*>(context);
    transfer.Heard = Clock::now();
    if (transfer.IsPacked)
        return 0;
    if (!transfer.HeaderIsWhole) // of a redirection: nobody reads it
        return (transfer.Dropped += count) <= kFull ? count : 0;
    if (transfer.Body.size() - transfer.Taken >= kFull) {
        transfer.Waits = true;
        return CURL_WRITEFUNC_PAUSE;
    }
    transfer.Body.erase(0, std::exchange(transfer.Taken, 0));
    transfer.Body.append(bytes, count);
    transfer.Changed = true;
    return count;
}

void SetOptions(Transfer& transfer, const inet::Request& request) {
    CURL* const easy = transfer.Easy.get();
    const auto set = [easy](CURLoption option, auto value) {
        curl_easy_setopt(easy, option, value);
    };
    transfer.Fields.reset(curl_slist_append(nullptr, request.Header.c_str()));
    set(CURLOPT_URL, request.Address.c_str());
    set(CURLOPT_HTTPHEADER, transfer.Fields.get());
    if (!request.UserName.empty()) {
        set(CURLOPT_USERNAME, request.UserName.c_str());
        set(CURLOPT_PASSWORD, request.Password.c_str());
    }
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_HTTP_VERSION,
        static_cast<long>(CURL_HTTP_VERSION_1_1)); // its status lines have texts
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_QUICK_EXIT, 1L); // leaves the thread of a look-up that lasts to itself
    set(CURLOPT_HEADERFUNCTION, TakeHeaderLine);
    set(CURLOPT_HEADERDATA, &transfer);
    set(CURLOPT_WRITEFUNCTION, TakeBody);
    set(CURLOPT_WRITEDATA, &transfer);
}

class TransferLoop : public QObject {
public:
    TransferLoop() : QObject(qApp), Multi(curl_multi_init()) {
        curl_multi_setopt(Multi, CURLMOPT_SOCKETFUNCTION, WatchSocket);
        curl_multi_setopt(Multi, CURLMOPT_SOCKETDATA, this);
        curl_multi_setopt(Multi, CURLMOPT_TIMERFUNCTION, WatchTime);
        curl_multi_setopt(Multi, CURLMOPT_TIMERDATA, this);
        Timer.setSingleShot(true);
        connect(&Timer, &QTimer::timeout, this, [this] { Go(CURL_SOCKET_TIMEOUT, 0); });
        SilenceTimer.setInterval(kSilenceCheck);
        connect(&SilenceTimer, &QTimer::timeout, this, [this] { EndSilentOnes(); });
    }

    ~TransferLoop() override {
        while (!Transfers.empty())
            Cancel(Transfers.begin()->first);
        curl_multi_cleanup(Multi);
    }

    void Execute(std::int32_t number, const inet::Request& request) {
        Cancel(number);
        auto transfer = std::make_unique<Transfer>();
        transfer->Easy.reset(curl_easy_init());
        SetOptions(*transfer, request);
        curl_multi_add_handle(Multi, transfer->Easy.get());
        Transfers[number] = std::move(transfer);
        SilenceTimer.start();
    }

    Transfer* Find(std::int32_t number) {
        const auto found = Transfers.find(number);
        return found == Transfers.end() ? nullptr : found->second.get();
    }

    void Cancel(std::int32_t number) {
        if (Transfer* const transfer = Find(number))
            curl_multi_remove_handle(Multi, transfer->Easy.get());
        Transfers.erase(number);
    }

private:
    // One may end while it tells something.
    struct EndNotifier {
        void operator()(QSocketNotifier* notifier) const {
            notifier->setEnabled(false);
            notifier->deleteLater();
        }
    };
    using Notifier = std::unique_ptr<QSocketNotifier, EndNotifier>;
    using Notifiers = std::pair<Notifier, Notifier>;

    static int WatchSocket(CURL*, curl_socket_t socket, int what, void* loop, void*) {
        static_cast<TransferLoop*>(loop)->Watch(socket, what);
        return 0;
    }

    static int WatchTime(CURLM*, long milliseconds, void* loop) {
        QTimer& timer = static_cast<TransferLoop*>(loop)->Timer;
        if (milliseconds < 0)
            timer.stop();
        else
            timer.start(static_cast<int>(milliseconds));
        return 0;
    }

    void Watch(curl_socket_t socket, int what) {
        if (what == CURL_POLL_REMOVE) {
            Sockets.erase(socket);
            return;
        }
        auto& [read, write] = Sockets[socket];
        if (!read) {
            read = MakeNotifier(socket, QSocketNotifier::Read, CURL_CSELECT_IN);
            write = MakeNotifier(socket, QSocketNotifier::Write, CURL_CSELECT_OUT);
        }
        read->setEnabled((what & CURL_POLL_IN) != 0);
        write->setEnabled((what & CURL_POLL_OUT) != 0);
    }

    Notifier MakeNotifier(curl_socket_t socket, QSocketNotifier::Type type, int action) {
        Notifier notifier(new QSocketNotifier(socket, type));
        connect(notifier.get(), &QSocketNotifier::activated, this,
                [this, socket, action] { Go(socket, action); });
        return notifier;
    }

    void Go(curl_socket_t socket, int action) {
        int running = 0;
        curl_multi_socket_action(Multi, socket, action, &running);
        TakeEnds();
        TellChanges();
    }

    void TakeEnds() {
        int left = 0;
        while (const CURLMsg* const message = curl_multi_info_read(Multi, &left)) {
            if (message->msg != CURLMSG_DONE)
                continue;
            const CURL* const ended = message->easy_handle; // the message goes when it is removed
            for (const auto& [number, transfer] : Transfers) {
                if (transfer->Easy.get() == ended)
                    End(*transfer);
            }
        }
    }

    void End(Transfer& transfer) {
        const std::string target = transfer.HeaderIsWhole ? "" : Redirection(transfer);
        curl_multi_remove_handle(Multi, transfer.Easy.get());
        if (target.empty()) {
            transfer.HeaderIsWhole = transfer.Ended = transfer.Changed = true;
            return;
        }
        ++transfer.Redirections;
        transfer.Header.clear();
        curl_easy_setopt(transfer.Easy.get(), CURLOPT_URL, target.c_str());
        curl_easy_setopt(transfer.Easy.get(), CURLOPT_USERNAME, nullptr); // not for another server
        curl_easy_setopt(transfer.Easy.get(), CURLOPT_PASSWORD, nullptr);
        curl_multi_add_handle(Multi, transfer.Easy.get());
    }

    // A server that waits for us is not silent.
    void EndSilentOnes() {
        for (const auto& [number, transfer] : Transfers) {
            if (transfer->Ended || transfer->Waits ||
                Clock::now() - transfer->Heard < kLongestSilence)
                continue;
            curl_multi_remove_handle(Multi, transfer->Easy.get());
            transfer->HeaderIsWhole = transfer->Ended = transfer->Changed = true;
        }
        TellChanges();
        if (Transfers.empty())
            SilenceTimer.stop();
    }

    // Whoever is told may start and cancel transfers, so they are looked up anew each time.
    void TellChanges() {
        std::set<std::int32_t> changed;
        for (const auto& [number, transfer] : Transfers) {
            if (std::exchange(transfer->Changed, false))
                changed.insert(number);
        }
        for (const std::int32_t number : changed)
            RunHandler("inet_StateChanged", [number] { inet_StateChanged(number); });
    }

    CURLM* Multi;
    QTimer Timer;
    QTimer SilenceTimer;
    std::map<curl_socket_t, Notifiers> Sockets;
    std::map<std::int32_t, std::unique_ptr<Transfer>> Transfers;
};

QPointer<TransferLoop> Loop;

Transfer* Find(std::int32_t number) { return Loop ? Loop->Find(number) : nullptr; }

} // namespace

namespace inet {

void Execute(std::int32_t transfer, const Request& request) {
    if (!Loop)
        Loop = new TransferLoop;
    Loop->Execute(transfer, request);
}

std::optional<std::string> GetHeader(std::int32_t transfer) {
    const Transfer* const found = Find(transfer);
    if (found == nullptr || !found->HeaderIsWhole)
        return std::nullopt;
    return found->Header;
}

std::optional<std::string> GetChunk(std::int32_t transfer, std::size_t size) {
    Transfer* const found = Find(transfer);
    if (found == nullptr)
        return std::nullopt;
    const std::size_t there = found->Body.size() - found->Taken;
    if (there < size && !found->Ended)
        return std::nullopt;
    const std::string chunk = found->Body.substr(found->Taken, size);
    found->Taken += chunk.size();
    if (found->Waits && there - chunk.size() < kFull / 2) {
        found->Waits = false;
        found->Heard = Clock::now();
        curl_easy_pause(found->Easy.get(), CURLPAUSE_CONT); // may fill the body at once
    }
    return chunk;
}

void Cancel(std::int32_t transfer) {
    if (Loop)
        Loop->Cancel(transfer);
}

} // namespace inet
} // namespace mw
