#include "base/TextQueue.h"

#include <gtest/gtest.h>
#include <random>

namespace mw {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

TEST(TextQueue, IsEmptyAtFirst) {
    const TextQueue queue;
    EXPECT_EQ(View(queue), "");
    EXPECT_EQ(queue.Taken, 0u);
}

TEST(TextQueue, GivesBackWhatWasAppendedInOrder) {
    TextQueue queue;
    Append(queue, "north ");
    Append(queue, "");
    Append(queue, "south");
    EXPECT_EQ(View(queue), "north south");
}

TEST(TextQueue, LosesFromItsFront) {
    TextQueue queue;
    Append(queue, "abcdef");
    TakeFront(queue, 2);
    EXPECT_EQ(View(queue), "cdef");
    Append(queue, "gh");
    TakeFront(queue, 0);
    TakeFront(queue, 3);
    EXPECT_EQ(View(queue), "fgh");
    EXPECT_EQ(queue.Taken, 5u);
}

TEST(TextQueue, TakingMoreThanThereIsTakesAll) {
    TextQueue queue;
    Append(queue, "abc");
    TakeFront(queue, 1000);
    EXPECT_EQ(View(queue), "");
    EXPECT_EQ(queue.Taken, 3u);
    TakeFront(queue, 1);
    EXPECT_EQ(queue.Taken, 3u);
    Append(queue, "d");
    EXPECT_EQ(View(queue), "d");
}

TEST(TextQueue, HoldsEveryByte) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    TextQueue queue;
    Append(queue, bytes);
    EXPECT_EQ(View(queue), bytes);
    TakeFront(queue, 1); // the NUL
    EXPECT_EQ(View(queue), bytes.substr(1));
}

TEST(TextQueue, KeepsLittleMoreThanWhatWaits) {
    TextQueue queue;
    for (int i = 0; i < 20000; ++i) {
        Append(queue, "0123456789");
        TakeFront(queue, i % 3 == 0 ? 9 : 10);
        if (View(queue).size() > 500)
            TakeFront(queue, 400);
        ASSERT_LE(queue.Bytes.size(), 2 * View(queue).size() + 10);
    }
    TakeFront(queue, View(queue).size());
    EXPECT_TRUE(queue.Bytes.empty());
}

TEST(TextQueue, TakingOneByOneReadsTheWholeText) {
    std::string text;
    for (int i = 0; i < 5000; ++i)
        text += static_cast<char>('a' + i % 26);
    TextQueue queue;
    Append(queue, text);
    std::string read;
    while (!View(queue).empty()) {
        read += View(queue).front();
        TakeFront(queue, 1);
    }
    EXPECT_EQ(read, text);
}

TEST(TextSearch, FindsTheFirstPlace) {
    TextQueue queue;
    Append(queue, "a--b--c");
    Search search{"--"};
    EXPECT_EQ(Find(queue, search), 1u);
    EXPECT_EQ(Find(queue, search), 1u);
    TakeFront(queue, 1);
    EXPECT_EQ(Find(queue, search), 0u);
    TakeFront(queue, 1);
    EXPECT_EQ(Find(queue, search), 2u);
    TakeFront(queue, 3);
    EXPECT_EQ(Find(queue, search), kNone);
}

TEST(TextSearch, AnEmptyQueueHoldsNothing) {
    TextQueue queue;
    Search search{"m"};
    EXPECT_EQ(Find(queue, search), kNone);
    Append(queue, "m");
    EXPECT_EQ(Find(queue, search), 0u);
}

TEST(TextSearch, SeesWhatIsAppendedLater) {
    TextQueue queue;
    Append(queue, "no end");
    Search search{"m"};
    EXPECT_EQ(Find(queue, search), kNone);
    Append(queue, " yet");
    EXPECT_EQ(Find(queue, search), kNone);
    Append(queue, "m");
    EXPECT_EQ(Find(queue, search), 10u);
}

TEST(TextSearch, FindsAWordAppendedInPiecesCutAnywhere) {
    const std::string text = "xx!!SOUND(yy";
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        TextQueue queue;
        Search search{"!!SOUND"};
        Append(queue, text.substr(0, cut));
        EXPECT_EQ(Find(queue, search), cut >= 9 ? 2u : kNone) << cut;
        Append(queue, text.substr(cut));
        EXPECT_EQ(Find(queue, search), 2u) << cut;
    }
}

TEST(TextSearch, APlaceWhoseFirstCharacterWasTakenIsGone) {
    TextQueue queue;
    Append(queue, "abcabc");
    Search search{"abc"};
    EXPECT_EQ(Find(queue, search), 0u);
    TakeFront(queue, 1);
    EXPECT_EQ(Find(queue, search), 2u);
}

TEST(TextSearch, AFreshSearchBeginsAtTheFrontOfAQueueInUse) {
    TextQueue queue;
    Append(queue, "mmmm");
    TakeFront(queue, 3);
    Search search{"m"};
    EXPECT_EQ(Find(queue, search), 0u);
}

TEST(TextSearch, RemembersHowFarItHasLooked) {
    TextQueue queue;
    Append(queue, std::string(1000, 'x'));
    Search search{"ab"};
    EXPECT_EQ(Find(queue, search), kNone);
    EXPECT_EQ(search.From, 999u); // an "a" at the end might begin it
    TakeFront(queue, 500);
    EXPECT_EQ(Find(queue, search), kNone);
    EXPECT_EQ(search.From, 999u);
    Append(queue, "ab");
    EXPECT_EQ(Find(queue, search), 500u);
    EXPECT_EQ(search.From, 1000u);
}

TEST(TextSearch, FindsWhatAPlainSearchFinds) {
    std::mt19937 random(501);
    std::uniform_int_distribution<int> choice(0, 3);
    std::uniform_int_distribution<std::size_t> count(0, 6);
    TextQueue queue;
    std::string plain;
    Search searches[] = {{"a"}, {"ab"}, {"aab"}, {"abab"}};
    for (int step = 0; step < 50000; ++step) {
        std::string text;
        switch (choice(random)) {
        case 0:
            for (std::size_t i = count(random); i > 0; --i)
                text += "abc"[choice(random) % 3];
            Append(queue, text);
            plain += text;
            break;
        case 1: {
            const std::size_t taken = count(random);
            TakeFront(queue, taken);
            plain.erase(0, taken);
            break;
        }
        default: {
            Search& search = searches[choice(random)];
            ASSERT_EQ(Find(queue, search), plain.find(search.What)) << plain;
            break;
        }
        }
        ASSERT_EQ(View(queue), plain);
    }
}

} // namespace
} // namespace mw
