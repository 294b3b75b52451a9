// The client as a screen reader has it: controls found by role and name on the accessibility bus,
// their actions, their texts, and the events that tell what is new.
//
// The bus is one of its own, below a session bus of its own. A control that does not come, or words
// that are not heard, throw one line that tells what was waited for.
#pragma once

#include "Display.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <QVariantList>

namespace journey {

struct Control {
    QString Service;
    QString Path;
};

class AccessibilityBus : public QObject {
    Q_OBJECT

public:
    // The keys that are pressed here go to that screen.
    explicit AccessibilityBus(const Display& screen);
    ~AccessibilityBus() override;

    // The first control that can be used, with that role and that name at its beginning.
    Control Find(const QString& role, const QString& name) const;
    bool Has(const QString& role, const QString& name) const;

    QString Name(const Control& control) const;
    bool HasState(const Control& control, int state) const; // by its number on the bus
    void Press(const QString& role, const QString& name) const;
    void Write(const QString& name, const QString& text) const; // into the text box of that name
    void PressKey(int keySymbol) const;

    QString TextOf(const Control& control) const;
    QString LineAt(const Control& control, int offset) const;

    // Waits until a notification says these words. They are looked for behind those heard before.
    void WaitToHear(const QString& words);

    // The same for what is told to be inserted into the output.
    void WaitForInsertion(const QString& words);

    QString SessionAddress; // for the client's environment

private slots:
    void StateChanged(const QDBusMessage& event);
    void TextChanged(const QDBusMessage& event);

private:
    void StartSession(const Display& screen);
    void Listen(const QString& event, const QString& signal, const char* slot);
    QVariantList Call(const Control& control, const QString& interface, const QString& method,
                      const QVariantList& arguments = {}) const;
    QVariant Property(const Control& control, const QString& interface, const QString& name) const;
    QString RoleOf(const Control& control) const;
    QList<Control> ChildrenOf(const Control& control) const;
    bool Search(const Control& below, const QString& role, const QString& name,
                Control& found) const;

    QTemporaryDir Folder;
    QProcess Session;
    QDBusConnection Bus{QString()};
    QString Heard;
    QString Inserted;
};

} // namespace journey
