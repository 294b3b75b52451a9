// A mistake on purpose, chosen by its name: the sanitizers that this is built with must end the
// run.
#include <cstddef>
#include <cstdio>
#include <limits>
#include <string_view>

namespace {

// Volatile, so that no compiler sees what comes of them.
volatile std::size_t One = 1;
volatile int OneMore = 1;
char* volatile Bytes = nullptr;

void WriteBehindTheEnd() {
    Bytes = new char[16];
    Bytes[15 + One] = 'x';
    std::puts("went on");
}

void ReadWhatIsGone() {
    Bytes = new char[16];
    delete[] Bytes;
    std::printf("%d went on\n", Bytes[One]);
}

void CountTooFar() { std::printf("%d went on\n", std::numeric_limits<int>::max() + OneMore); }

// Many, because the last of them may still be found in a register.
void Forget() {
    for (int i = 0; i < 100; ++i)
        Bytes = new char[16];
    Bytes = nullptr;
}

struct Mistake {
    std::string_view Name;
    void (*Make)();
};

constexpr Mistake kMistakes[] = {
    {"heap_overflow", WriteBehindTheEnd},
    {"use_after_free", ReadWhatIsGone},
    {"signed_overflow", CountTooFar},
    {"leak", Forget},
};

} // namespace

int main(int argc, char** argv) {
    for (const Mistake& mistake : kMistakes) {
        if (argc == 2 && mistake.Name == argv[1])
            mistake.Make();
    }
}
