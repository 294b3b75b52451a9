// Any text as the demo world's book of players: it is refused, or kept as it is.
#include "Book.h"
#include "fuzz/Input.h"

#include <stdexcept>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    world::Book book;
    try {
        book = world::ParseBook(Text(bytes, count));
    } catch (const std::runtime_error&) {
        return 0;
    }
    Must(book.size() <= world::MaxNames);
    Must(world::ParseBook(world::FormatBook(book)) == book);
    return 0;
}
