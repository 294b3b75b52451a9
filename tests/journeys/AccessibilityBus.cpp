#include "AccessibilityBus.h"

#include "Wait.h"

#include <stdexcept>

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QProcessEnvironment>

namespace journey {
namespace {

constexpr const char* kAccessible = "org.a11y.atspi.Accessible";
constexpr const char* kObjectEvents = "org.a11y.atspi.Event.Object";
constexpr int kEnabled = 8; // states
constexpr int kShowing = 25;
constexpr int kPressAndRelease = 3; // of a key by its symbol
constexpr int kFromLineStart = 5;   // a boundary of text

const Control kDesktop{"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"};
const Control kRegistry{"org.a11y.atspi.Registry", "/org/a11y/atspi/registry"};
const Control kKeyboard{"org.a11y.atspi.Registry",
                        "/org/a11y/atspi/registry/deviceeventcontroller"};

QString NewName() {
    static int count = 0;
    return QStringLiteral("accessibility%1").arg(++count);
}

} // namespace

AccessibilityBus::AccessibilityBus(const Display& screen) {
    StartSession(screen);
    QDBusConnection session = QDBusConnection::connectToBus(SessionAddress, NewName());
    const QDBusMessage answer = session.call(QDBusMessage::createMethodCall(
        "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress"));
    if (answer.type() != QDBusMessage::ReplyMessage)
        throw std::runtime_error("No accessibility bus: " + answer.errorMessage().toStdString());
    Bus = QDBusConnection::connectToBus(answer.arguments().value(0).toString(), NewName());
    Listen("object:state-changed:showing", "StateChanged", SLOT(StateChanged(QDBusMessage)));
    Listen("object:text-changed:insert", "TextChanged", SLOT(TextChanged(QDBusMessage)));
}

AccessibilityBus::~AccessibilityBus() { StopChild(Session); }

void AccessibilityBus::StartSession(const Display& screen) {
    QProcessEnvironment environment;
    environment.insert("PATH", QProcessEnvironment::systemEnvironment().value("PATH"));
    environment.insert("LANG", "C.UTF-8");
    environment.insert("HOME", Folder.path());
    environment.insert("XDG_RUNTIME_DIR", Folder.path());
    environment.insert("DISPLAY", screen.Name);
    Session.setProcessEnvironment(environment);
    Session.setStandardErrorFile(QProcess::nullDevice());
    StartChild(Session, "dbus-daemon", {"--session", "--nofork", "--print-address=1"});
    QByteArray address;
    WaitFor("a session bus", [&] {
        address += Session.readAllStandardOutput();
        return address.endsWith('\n');
    });
    SessionAddress = QString::fromLatin1(address.trimmed());
}

void AccessibilityBus::Listen(const QString& event, const QString& signal, const char* slot) {
    Call(kRegistry, "org.a11y.atspi.Registry", "RegisterEvent", {event, QStringList(), QString()});
    Bus.connect({}, {}, kObjectEvents, signal, this, slot);
}

QVariantList AccessibilityBus::Call(const Control& control, const QString& interface,
                                    const QString& method, const QVariantList& arguments) const {
    QDBusMessage call =
        QDBusMessage::createMethodCall(control.Service, control.Path, interface, method);
    call.setArguments(arguments);
    const QDBusMessage answer = Bus.call(call);
    // A control may go at any moment, and then tells nothing more.
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments() : QVariantList();
}

QVariant AccessibilityBus::Property(const Control& control, const QString& interface,
                                    const QString& name) const {
    const QVariantList answer =
        Call(control, "org.freedesktop.DBus.Properties", "Get", {interface, name});
    return answer.value(0).value<QDBusVariant>().variant();
}

QString AccessibilityBus::Name(const Control& control) const {
    return Property(control, kAccessible, "Name").toString();
}

QString AccessibilityBus::RoleOf(const Control& control) const {
    return Call(control, kAccessible, "GetRoleName").value(0).toString();
}

bool AccessibilityBus::HasState(const Control& control, int state) const {
    const auto words = qdbus_cast<QList<uint>>(Call(control, kAccessible, "GetState").value(0));
    return (words.value(state / 32) >> (state % 32) & 1) != 0;
}

QList<Control> AccessibilityBus::ChildrenOf(const Control& control) const {
    QList<Control> children;
    const QVariant answer = Call(control, kAccessible, "GetChildren").value(0);
    if (!answer.canConvert<QDBusArgument>())
        return children;
    const auto list = answer.value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QDBusObjectPath path;
        Control child;
        list.beginStructure();
        list >> child.Service >> path;
        list.endStructure();
        child.Path = path.path();
        children.append(child);
    }
    list.endArray();
    return children;
}

bool AccessibilityBus::Search(const Control& below, const QString& role, const QString& name,
                              Control& found) const {
    for (const Control& child : ChildrenOf(below)) {
        const bool isIt = RoleOf(child) == role && Name(child).startsWith(name) &&
                          HasState(child, kEnabled) &&
                          (role == "menu item" || HasState(child, kShowing));
        if (isIt)
            found = child;
        if (isIt || Search(child, role, name, found))
            return true;
    }
    return false;
}

bool AccessibilityBus::Has(const QString& role, const QString& name) const {
    Control found;
    return Search(kDesktop, role, name, found);
}

Control AccessibilityBus::Find(const QString& role, const QString& name) const {
    Control found;
    WaitFor("the " + (role + ' ' + name).toStdString(),
            [&] { return Search(kDesktop, role, name, found); });
    return found;
}

void AccessibilityBus::Press(const QString& role, const QString& name) const {
    const Control control = Find(role, name);
    const char* const interface = "org.a11y.atspi.Action";
    const int count = Property(control, interface, "NActions").toInt();
    for (int i = 0; i < count; ++i) {
        if (Call(control, interface, "GetName", {i}).value(0).toString() == "Press") {
            Call(control, interface, "DoAction", {i});
            return;
        }
    }
    throw std::runtime_error("Not to be pressed: " + name.toStdString());
}

void AccessibilityBus::Write(const QString& name, const QString& text) const {
    const Control box = Find("text", name);
    Call(box, "org.a11y.atspi.EditableText", "SetTextContents", {text});
    WaitFor("the text in " + name.toStdString(), [&] { return TextOf(box) == text; });
}

void AccessibilityBus::PressKey(int keySymbol) const {
    Call(kKeyboard, "org.a11y.atspi.DeviceEventController", "GenerateKeyboardEvent",
         {keySymbol, QString(), static_cast<uint>(kPressAndRelease)});
}

QString AccessibilityBus::TextOf(const Control& control) const {
    return Call(control, "org.a11y.atspi.Text", "GetText", {0, -1}).value(0).toString();
}

QString AccessibilityBus::LineAt(const Control& control, int offset) const {
    return Call(control, "org.a11y.atspi.Text", "GetTextAtOffset",
                {offset, static_cast<uint>(kFromLineStart)})
        .value(0)
        .toString();
}

void AccessibilityBus::StateChanged(const QDBusMessage& event) {
    const Control source{event.service(), event.path()};
    if (event.arguments().value(0) == "showing" && event.arguments().value(1) == 1 &&
        RoleOf(source) == "notification")
        Heard += Name(source) + '\n';
}

void AccessibilityBus::TextChanged(const QDBusMessage& event) {
    const Control source{event.service(), event.path()};
    if (event.arguments().value(0) == "insert" && Name(source) == "Game output")
        Inserted += event.arguments().value(3).value<QDBusVariant>().variant().toString();
}

void AccessibilityBus::WaitToHear(const QString& words) {
    WaitFor("a notification: " + words.toStdString(), [&] { return Heard.contains(words); });
    Heard.remove(0, Heard.indexOf(words) + words.size());
}

void AccessibilityBus::WaitForInsertion(const QString& words) {
    WaitFor("an insertion: " + words.toStdString(), [&] { return Inserted.contains(words); });
    Inserted.remove(0, Inserted.indexOf(words) + words.size());
}

} // namespace journey
