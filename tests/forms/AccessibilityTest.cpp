// Every window by the keyboard alone, and as a screen reader has it.
#include "automation/Triggers.h"
#include "automation/frmEntries.h"
#include "browser/Browser.h"
#include "browser/frmBrowser.h"
#include "config/Setup.h"
#include "forms/FrameTest.h"
#include "net/http/VersionCheck.h"
#include "ui/DownloadControls.h"
#include "ui/UpdateControls.h"

#include <algorithm>
#include <map>
#include <ostream>

#include <QAccessible>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QTextEdit>

namespace mw {
namespace {

using forms::WaitFor;

using Names = std::vector<std::string>;

// A page with nothing on it.
struct BlankPage : QTextEdit, PageView {
    BlankPage() {
        setTabChangesFocus(true);
        setAccessibleName("Page");
    }
    QWidget* Widget() override { return this; }
    void Navigate(const QUrl&) override {}
    void GoBack() override {}
    void GoForward() override {}
    void Stop() override {}
    void Refresh() override {}
    bool Busy() const override { return false; }
    QString LocationName() const override { return {}; }
    QUrl LocationURL() const override { return {}; }
};

std::string LabelOf(QAccessibleInterface* control) {
    const auto labels = control->relations(QAccessible::Label);
    return labels.isEmpty() ? "" : labels[0].first->text(QAccessible::Name).toStdString();
}

// What a screen reader calls a control. The name of a box with a list is what is chosen there.
std::string NameOf(QAccessibleInterface* control) {
    const std::string name = control->text(QAccessible::Name).toStdString();
    return control->role() == QAccessible::ComboBox || name.empty() ? LabelOf(control) : name;
}

std::string NameOf(QWidget* control) {
    return NameOf(QAccessible::queryAccessibleInterface(control));
}

class AccessibilityTest : public forms::FrameTest {
protected:
    QWidget* Opened(const char* item) {
        Item(item)->trigger();
        return QApplication::activeModalWidget();
    }

public:
    QWidget* TheFrame() { return Frame.get(); }
    QWidget* TheFrameWithoutToolbar() {
        Item("mnutoolbar")->trigger();
        return Frame.get();
    }
    QWidget* Aliases() {
        CurrentSet().Aliases = {{"gb", "get bread", true}};
        return Opened("mnuAlias");
    }
    QWidget* ASelectedAlias() {
        QWidget* const editor = Aliases();
        auto* const list = editor->findChild<QListWidget*>();
        list->setCurrentRow(0);
        list->setFocus();
        return editor;
    }
    QWidget* ANewAlias() {
        QWidget* const editor = Aliases();
        editor->findChild<QPushButton*>("cmdNew")->click();
        return editor;
    }
    QWidget* Triggers() {
        AddTrigger("hungry", "eat bread");
        return Opened("mnuTriggers");
    }
    QWidget* Macros() { return Opened("Macros"); }
    QWidget* FontsAndColours() { return Opened("mnuSetUp"); }
    QWidget* Sound() {
        MudList[0].Msp = true;
        return Opened("mnuSound");
    }
    QWidget* AddMud() {
        Frame->cmdNew->click();
        return QApplication::activeModalWidget();
    }
    QWidget* ChooseMud() {
        Item("mnutoolbar")->trigger();
        return Opened("mnuADCmud");
    }
    QWidget* Help() {
        Item("mnuGHlp")->trigger();
        return WindowNamed("frmHelp");
    }
    QWidget* About() { return Opened("mnuAbout"); }
    QWidget* Update() {
        PublishedVersion = "1.26";
        LoadUpdatePrompt();
        ShowUpdatePrompt();
        return WindowNamed("frmUpdate");
    }
    QWidget* Download() {
        OpenDownloadWindow(1, 0, "rain.wav");
        return WindowNamed("frmDownload");
    }
    QWidget* Browser() {
        auto* const browser = new frmBrowser(new BlankPage);
        browser->show();
        return browser;
    }

private:
    static QWidget* WindowNamed(const char* name) {
        for (QWidget* const window : forms::VisibleWindows()) {
            if (window->objectName() == name)
                return window;
        }
        return nullptr;
    }
};

struct Case {
    const char* Name;
    QWidget* (AccessibilityTest::*Open)();
    Names Order;         // by the Tab key; first the control that has the focus on opening
    const char* ByEnter; // the button that Enter is
    bool ClosesByEscape;
};

void PrintTo(const Case& row, std::ostream* out) { *out << row.Name; }

Names Colours() {
    Names names;
    for (const Swatch& swatch : kSwatches)
        names.emplace_back(swatch.Colour);
    return names;
}

Names operator+(Names names, const Names& more) {
    names.insert(names.end(), more.begin(), more.end());
    return names;
}

Names FunctionKeys() {
    Names names;
    for (int i = 1; i <= 12; ++i)
        names.push_back("F" + std::to_string(i));
    return names;
}

using T = AccessibilityTest;
const Case kWindows[] = {
    {"Frame",
     &T::TheFrame,
     {"Command line", "Close the game window", "Mud", "Connect", "New", "Delete", "Game output"},
     "",
     false},
    {"FrameWithoutToolbar",
     &T::TheFrameWithoutToolbar,
     {"Command line", "Close the game window", "Game output"},
     "",
     false},
    {"Aliases", &T::Aliases, {"New", "Done", "Cancel", "Aliases"}, "New", true},
    {"ASelectedAlias",
     &T::ASelectedAlias,
     {"Aliases", "Disable this alias", "New", "Edit", "Delete", "Done", "Cancel"},
     "Done",
     true},
    {"ANewAlias",
     &T::ANewAlias,
     {"When a line begins with", "put this in its place", "Add", "Done", "Cancel"},
     "Add",
     true},
    {"Triggers", &T::Triggers, {"New", "Done", "Cancel", "Triggers"}, "New", true},
    {"Macros", &T::Macros, FunctionKeys() + Names{"Done", "Macro set", "New Macro Set", "F Keys"},
     "Done", true},
    {"FontsAndColours", &T::FontsAndColours,
     Colours() + Names{"Font...", "Escape character", "Default", "Close", "Cancel"}, "Close", true},
    {"Sound",
     &T::Sound,
     {"Enable MSP", "Allow Wav Files", "Allow Midi Files", "Allow Download", "Done"},
     "Done",
     true},
    {"AddMud", &T::AddMud, {"Name", "Address", "Port", "Add", "Cancel"}, "Add", true},
    {"ChooseMud", &T::ChooseMud, {"Mud", "Add...", "Delete", "Done"}, "Done", true},
    {"Help", &T::Help, {"Manual", "Contents", "Close"}, "", true},
    {"About", &T::About, {"OK"}, "OK", true},
    {"Update", &T::Update, {"Yes", "No", "Dont show me this again"}, "Yes", true},
    {"Download", &T::Download, {"Cancel"}, "Cancel", true},
    {"Browser",
     &T::Browser,
     {"Address", "Page", "Back", "Forward", "Stop", "Home", "Refresh"},
     "",
     false},
};

class EveryWindow : public AccessibilityTest, public testing::WithParamInterface<Case> {
protected:
    void SetUp() override {
        Window = (this->*GetParam().Open)();
        ASSERT_NE(Window, nullptr);
        Window->activateWindow();
        ASSERT_TRUE(WaitFor([this] { return QApplication::activeWindow() == Window; }));
    }

    // To the next control. A page of the manual has places of its own to visit.
    void PressTab(Qt::Key key = Qt::Key_Tab, Qt::KeyboardModifiers modifiers = {}) const {
        constexpr int kMostPlaces = 60;
        QWidget* const before = Window->focusWidget();
        for (int i = 0; i < kMostPlaces && Window->focusWidget() == before; ++i)
            QTest::keyClick(before, key, modifiers);
    }

    // What the Tab key visits, from the control that has the focus on.
    QList<QWidget*> Visited() const {
        QList<QWidget*> controls;
        while (Window->focusWidget() != nullptr && !controls.contains(Window->focusWidget())) {
            controls.append(Window->focusWidget());
            PressTab();
        }
        return controls;
    }

    template <typename Control> QList<Control*> Shown() const {
        QList<Control*> shown = Window->findChildren<Control*>();
        shown.removeIf([this](const Control* control) { return !control->isVisibleTo(Window); });
        return shown;
    }

    QPointer<QWidget> Window;
};

TEST_P(EveryWindow, IsVisitedByTheTabKeyAsItIsRead) {
    Names names;
    for (QWidget* const control : Visited())
        names.push_back(NameOf(control));
    EXPECT_EQ(names, GetParam().Order);
}

TEST_P(EveryWindow, IsWalkedBackByShiftAndTab) {
    const qsizetype count = Visited().size();
    QWidget* const first = Window->focusWidget();
    for (qsizetype i = 0; i < count; ++i)
        PressTab(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(Window->focusWidget(), first);
}

void ExpectNames(QAccessibleInterface* control) {
    const QAccessible::State state = control->state();
    if (state.invisible)
        return;
    const auto* const widget = qobject_cast<QWidget*>(control->object());
    const std::string what = widget == nullptr ? "" : widget->metaObject()->className();
    const bool leavesItToAnother =
        widget != nullptr && (widget->focusProxy() != nullptr || what == "QMdiSubWindow");
    if (state.focusable && !state.disabled && !leavesItToAnother) {
        EXPECT_NE(NameOf(control), "") << what;
        EXPECT_NE(control->role(), QAccessible::NoRole) << what << ' ' << NameOf(control);
        EXPECT_NE(control->role(), QAccessible::Client) << what << ' ' << NameOf(control);
    }
    for (int i = 0; i < control->childCount(); ++i) {
        if (QAccessibleInterface* const child = control->child(i))
            ExpectNames(child);
    }
}

TEST_P(EveryWindow, HasANameAndARoleForEachControl) {
    ExpectNames(QAccessible::queryAccessibleInterface(Window));
}

// The keys that work while the window is up, with the texts that bear them.
TEST_P(EveryWindow, HasEachAccessKeyOnce) {
    std::map<std::string, Names> texts;
    const auto take = [&](const QString& text) {
        const QString key = QKeySequence::mnemonic(text).toString();
        if (!key.isEmpty())
            texts[key.toStdString()].push_back(text.toStdString());
    };
    for (const QMenuBar* const bar : Shown<QMenuBar>()) {
        for (const QAction* const menu : bar->actions()) {
            if (menu->isVisible())
                take(menu->text());
        }
    }
    for (const QAbstractButton* const button : Shown<QAbstractButton>())
        take(button->text());
    for (const QLabel* const label : Shown<QLabel>()) {
        if (label->buddy() != nullptr)
            take(label->text());
    }
    for (const QGroupBox* const group : Shown<QGroupBox>())
        take(group->title());
    for (const QTabBar* const bar : Shown<QTabBar>()) {
        for (int i = 0; i < bar->count(); ++i)
            take(bar->tabText(i));
    }
    for (const auto& entry : texts)
        EXPECT_EQ(entry.second, Names{entry.second[0]}) << entry.first;
}

TEST_P(EveryWindow, HasABuddyForEachLabelWithAnAccessKey) {
    for (const QLabel* const label : Shown<QLabel>()) {
        if (label->textFormat() == Qt::PlainText || label->text().contains("<p>"))
            continue; // what it shows is no name of a control
        EXPECT_TRUE(label->buddy() != nullptr || QKeySequence::mnemonic(label->text()).isEmpty())
            << label->text().toStdString();
    }
}

TEST_P(EveryWindow, ShowsWhereTheFocusIs) {
    const QList<QWidget*> controls = Visited();
    for (QWidget* const control : controls) {
        control->setFocus(); // so that it can be lost
        if (controls.size() == 1)
            control->clearFocus();
        else
            (control == controls.front() ? controls.back() : controls.front())->setFocus();
        const auto* const button = qobject_cast<QPushButton*>(control);
        if (button != nullptr && button->isDefault())
            continue; // it stands out anyway
        const QImage without = control->grab().toImage();
        control->setFocus(Qt::TabFocusReason);
        EXPECT_TRUE(without != control->grab().toImage()) << NameOf(control);
    }
}

TEST_P(EveryWindow, HasTheButtonThatEnterIs) {
    std::string name;
    for (const QPushButton* const button : Shown<QPushButton>()) {
        if (button->isDefault())
            name = button->text().remove('&').toStdString();
    }
    EXPECT_EQ(name, GetParam().ByEnter);
}

TEST_P(EveryWindow, ClosesByEscapeWhenItIsADialog) {
    QTest::keyClick(Window->focusWidget() ? Window->focusWidget() : Window.data(), Qt::Key_Escape);
    LetEventsRun();
    EXPECT_EQ(Window.isNull() || !Window->isVisible(), GetParam().ClosesByEscape);
}

INSTANTIATE_TEST_SUITE_P(Accessibility, EveryWindow, testing::ValuesIn(kWindows),
                         [](const auto& row) { return row.param.Name; });

using FrameAccessibility = AccessibilityTest;

TEST_F(FrameAccessibility, TheMenusHaveEachAccessKeyOnceButForOnePairOnPurpose) {
    Names twice;
    for (const QAction* const menu : Frame->menuBar()->actions()) {
        std::map<QString, int> counts;
        for (const QAction* const item : menu->menu()->actions()) {
            const QString key = QKeySequence::mnemonic(item->text()).toString();
            if (!key.isEmpty() && ++counts[key] == 2)
                twice.push_back(item->text().toStdString());
        }
    }
    EXPECT_EQ(twice, Names{"&Enable Toolbar"}); // the other is "&Echo"
}

TEST_F(FrameAccessibility, TheStatusBarIsReadAsItStands) {
    Connect();
    ASSERT_TRUE(PanelShows(1, "Connected to: Testmere"));
    EXPECT_EQ(NameOf(Frame->Panels[0]), "Connected to: Testmere");
    EXPECT_EQ(Frame->Panels[0]->accessibleDescription(), "State");
}

TEST_F(FrameAccessibility, TheAddressIsReadWholeAndByItsCaption) {
    lblAddress::SetCaption(std::string(200, 'a'));
    auto* const address = QAccessible::queryAccessibleInterface(Frame->lblAddress);
    EXPECT_EQ(NameOf(address), std::string(200, 'a'));
    EXPECT_EQ(LabelOf(address), "Address");
}

TEST_F(FrameAccessibility, HintsAreTheTextsColourHalfSeenWhateverTheDesktopSays) {
    const QPalette before = QApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::PlaceholderText, Qt::black);
    QApplication::setPalette(dark);
    ShowFrame();
    EXPECT_EQ(Input()->lineEdit()->palette().color(QPalette::PlaceholderText),
              QColor(255, 255, 255, 128));
    QApplication::setPalette(before);
}

// What a screen reader is told, while there is one. Without one's platform no event leaves the
// program, so the announcements themselves are looked at, and the changes that events are made of.
class Told : public AccessibilityTest {
protected:
    Told() {
        OutputBox()->Apply();
        QAccessible::setActive(true);
        QObject::connect(OutputBox()->document(), &QTextDocument::contentsChange, OutputBox(),
                         [this](int from, int removed, int added) {
                             Changes.push_back({from, removed, added});
                         });
    }

    ~Told() override { QAccessible::setActive(false); }

    static void Append(std::string text) { AppendOutput(text); }

    void AppendInAFrame(const std::string& text) const {
        Append(text);
        OutputBox()->Apply();
    }

    // The announcements that have words, in no order.
    Names Announcements() const {
        Names words;
        for (QWidget* const widget : Output()->findChildren<QWidget*>()) {
            auto* const announcement = QAccessible::queryAccessibleInterface(widget);
            if (announcement->role() == QAccessible::Notification && !NameOf(announcement).empty())
                words.push_back(NameOf(announcement));
        }
        return words;
    }

    bool Hears(const std::string& words) const {
        return WaitFor([&] { return std::ranges::count(Announcements(), words) > 0; });
    }

    struct Change {
        int From;
        int Removed;
        int Added;

        bool operator==(const Change&) const = default;
    };

    std::vector<Change> Changes;
};

TEST_F(Told, NewOutputIsANotificationAndTheCommandLineKeepsTheFocus) {
    Connect();
    Type("loo");
    Receive("A goose hisses.");
    EXPECT_TRUE(Hears("A goose hisses."));
    EXPECT_TRUE(Input()->hasFocus());
    EXPECT_EQ(Typed(), "loo");
}

TEST_F(Told, OutputOfOneFrameIsToldAtOnce) {
    for (const char* line : {"north\n", "south\n", "east\n"})
        Append(line);
    EXPECT_TRUE(Hears("north\nsouth\neast"));
    EXPECT_EQ(Changes.size(), 1u);
}

TEST_F(Told, ATrimIsNotTakenForNewText) {
    AppendInAFrame(std::string(16000, 'a') + "\n");
    Changes.clear();
    AppendInAFrame("the end\n");
    EXPECT_TRUE(Hears("the end"));
    EXPECT_EQ(Changes, (std::vector<Change>{{0, 8001, 0}, {8000, 0, 8}}));
}

TEST_F(Told, EveryAnnouncementKeepsItsWordsForAWhile) {
    for (const char* line : {"one\n", "two\n", "three\n"})
        AppendInAFrame(line);
    EXPECT_EQ(Announcements(), (Names{"one", "two", "three"}));
}

TEST_F(Told, OfAFloodTheEndIsToldOnly) {
    AppendInAFrame(std::string(9000, 'a') + "\nthe end\n");
    ASSERT_EQ(Announcements().size(), 1u);
    EXPECT_EQ(Announcements()[0], std::string(1992, 'a') + "\nthe end");
}

TEST_F(Told, TwoThousandCharactersAreToldWholeAndOfOneMoreAllButTheFirst) {
    AppendInAFrame("b" + std::string(1999, 'a') + "\n");
    EXPECT_EQ(Announcements(), Names{"b" + std::string(1999, 'a')});
    AppendInAFrame("b" + std::string(2000, 'c') + "\n");
    EXPECT_TRUE(Hears(std::string(2000, 'c')));
}

TEST_F(Told, ALineBreakAloneIsNothingToHear) {
    constexpr int kMoreThanAnnouncements = 20;
    AppendInAFrame("A goose hisses.\n");
    for (int i = 0; i < kMoreThanAnnouncements; ++i)
        AppendInAFrame("\n");
    EXPECT_EQ(Announcements(), Names{"A goose hisses."}) << "none took its place";
}

TEST_F(Told, NothingWhenNobodyListens) {
    QAccessible::setActive(false);
    AppendInAFrame("A goose hisses.\n");
    EXPECT_EQ(Announcements(), Names{});
}

TEST_F(Told, TheOutputIsReadLineByLine) {
    AppendInAFrame("north\nsouth\neast\n");
    OutputBox()->setFocus();
    auto* const text = QAccessible::queryAccessibleInterface(OutputBox())->textInterface();
    Names lines;
    QTest::keyClick(OutputBox(), Qt::Key_Home, Qt::ControlModifier);
    for (int i = 0; i < 3; ++i) {
        int start = 0;
        int end = 0;
        const int at = text->cursorPosition();
        lines.push_back(text->textAtOffset(at, QAccessible::LineBoundary, &start, &end)
                            .trimmed()
                            .toStdString());
        QTest::keyClick(OutputBox(), Qt::Key_Down);
    }
    EXPECT_EQ(lines, (Names{"north", "south", "east"}));
}

} // namespace
} // namespace mw
