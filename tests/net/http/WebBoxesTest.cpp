#include "net/http/WebBoxes.h"

#include "fakes/Fakes.h"

namespace mw {
namespace {

using Texts = std::vector<std::string>;

class WebBoxes : public RuleTest {
protected:
    ~WebBoxes() override { DropWebBoxes(); }

    void Queue(const std::string& text, bool isError = false) {
        QueueWebBox({text, isError, [this, text] { Answered.push_back(text); }});
    }

    // The one that is shown and all that may wait.
    void QueueAsManyAsMayBe() {
        for (std::size_t i = 0; i <= kMostWaitingBoxes; ++i)
            Queue(std::to_string(i));
    }

    Texts Answered;
};

TEST_F(WebBoxes, AreShownAtOnceWhenNoneIs) {
    Queue("path");
    EXPECT_EQ(fakes::Calls, Texts{"Box path"});
    EXPECT_EQ(Answered, Texts{});
}

TEST_F(WebBoxes, AreShownAsErrorsWhenTheyAre) {
    Queue("lost", true);
    EXPECT_EQ(fakes::Calls, Texts{"Error box lost"});
}

TEST_F(WebBoxes, AreShownOneAtATimeInTheirOrder) {
    Queue("a");
    Queue("b", true);
    Queue("c");
    EXPECT_EQ(fakes::Calls, Texts{"Box a"});
    WebBox_Closed();
    EXPECT_EQ(fakes::Calls, (Texts{"Box a", "Error box b"}));
    WebBox_Closed();
    EXPECT_EQ(fakes::Calls, (Texts{"Box a", "Error box b", "Box c"}));
    WebBox_Closed();
    EXPECT_EQ(fakes::Calls.size(), 3u);
}

TEST_F(WebBoxes, AreAnsweredWhenTheyAreClosed) {
    Queue("a");
    Queue("b");
    WebBox_Closed();
    EXPECT_EQ(Answered, Texts{"a"});
    WebBox_Closed();
    EXPECT_EQ(Answered, (Texts{"a", "b"}));
}

TEST_F(WebBoxes, WithTheSameTextAreShownEachForItself) {
    Queue("a");
    Queue("a");
    WebBox_Closed();
    EXPECT_EQ(fakes::Calls, (Texts{"Box a", "Box a"}));
}

TEST_F(WebBoxes, AreShownAtOnceAgainAfterTheLastWasClosed) {
    Queue("a");
    WebBox_Closed();
    Queue("b");
    EXPECT_EQ(fakes::Calls, (Texts{"Box a", "Box b"}));
}

TEST_F(WebBoxes, WaitEightAtMost) {
    EXPECT_EQ(kMostWaitingBoxes, 8u);
    QueueAsManyAsMayBe();
    EXPECT_EQ(Answered, Texts{});
    for (int i = 0; i < 9; ++i)
        WebBox_Closed();
    EXPECT_EQ(Answered, (Texts{"0", "1", "2", "3", "4", "5", "6", "7", "8"}));
    EXPECT_EQ(fakes::Calls, (Texts{"Box 0", "Box 1", "Box 2", "Box 3", "Box 4", "Box 5", "Box 6",
                                   "Box 7", "Box 8"}));
}

TEST_F(WebBoxes, BeyondTheLimitAreAnsweredAndNeverShown) {
    QueueAsManyAsMayBe();
    Queue("late");
    Queue("later", true);
    EXPECT_EQ(Answered, (Texts{"late", "later"}));
    for (int i = 0; i < 20; ++i)
        WebBox_Closed();
    EXPECT_EQ(fakes::Calls.size(), 9u);
    EXPECT_EQ(fakes::Calls.back(), "Box 8");
    EXPECT_EQ(Answered.size(), 11u);
}

TEST_F(WebBoxes, AreTakenAgainWhenOneWasClosed) {
    QueueAsManyAsMayBe();
    WebBox_Closed();
    Queue("late");
    EXPECT_EQ(Answered, Texts{"0"});
    for (int i = 0; i < 9; ++i)
        WebBox_Closed();
    EXPECT_EQ(Answered.back(), "late");
    EXPECT_EQ(fakes::Calls.back(), "Box late");
}

TEST_F(WebBoxes, NeedNotBeAnswered) {
    QueueWebBox({"a", false, nullptr});
    for (int i = 0; i < 20; ++i)
        QueueWebBox({"b", false, nullptr});
    EXPECT_NO_THROW(WebBox_Closed());
    EXPECT_EQ(fakes::Calls, (Texts{"Box a", "Box b"}));
}

TEST_F(WebBoxes, ClosedWhereNoneIsDoNothing) {
    WebBox_Closed();
    EXPECT_EQ(fakes::Calls, Texts{});
}

TEST_F(WebBoxes, MayBeCausedByAnAnswer) {
    QueueWebBox({"a", false, [this] { Queue("b"); }});
    WebBox_Closed();
    EXPECT_EQ(fakes::Calls, (Texts{"Box a", "Box b"}));
    WebBox_Closed();
    EXPECT_EQ(Answered, Texts{"b"});
}

TEST_F(WebBoxes, CausedByAnAnswerStandBehindThoseThatWait) {
    QueueWebBox({"a", false, [this] { Queue("c"); }});
    Queue("b");
    for (int i = 0; i < 3; ++i)
        WebBox_Closed();
    EXPECT_EQ(fakes::Calls, (Texts{"Box a", "Box b", "Box c"}));
}

TEST_F(WebBoxes, MayBeDroppedByAnAnswer) {
    QueueWebBox({"a", false, DropWebBoxes});
    Queue("b");
    Queue("c");
    WebBox_Closed();
    WebBox_Closed();
    EXPECT_EQ(Answered, Texts{});
    EXPECT_EQ(fakes::Calls, (Texts{"Box a", "Box b", "HideWebBox"}));
}

TEST_F(WebBoxes, AreDroppedWithoutAnAnswer) {
    Queue("a");
    Queue("b");
    DropWebBoxes();
    EXPECT_EQ(fakes::Calls, (Texts{"Box a", "HideWebBox"}));
    WebBox_Closed();
    EXPECT_EQ(Answered, Texts{});
    EXPECT_EQ(fakes::Calls.size(), 2u);
}

TEST_F(WebBoxes, AreShownAtOnceAfterTheOthersWereDropped) {
    Queue("a");
    DropWebBoxes();
    Queue("b");
    EXPECT_EQ(fakes::Calls, (Texts{"Box a", "HideWebBox", "Box b"}));
    WebBox_Closed();
    EXPECT_EQ(Answered, Texts{"b"});
}

TEST_F(WebBoxes, DroppedWhereNoneIsHideNothing) {
    DropWebBoxes();
    EXPECT_EQ(fakes::Calls, Texts{});
}

} // namespace
} // namespace mw
