// What the editors of aliases and triggers share: a list, two text boxes, and six buttons.
//
// Browsing shows the selected entry; "New" and "Edit" open the boxes, "Add" (or "Store") goes back.
// The rules and the table are the module's; a derived form says what to call.
#pragma once

#include "ui/qt/WindowsOnTop.h"

#include <string>
#include <vector>

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

namespace mw {

class frmEntries : public LockedDialog {
    Q_OBJECT

public:
    frmEntries(const char* name, const QString& title, QWidget* frame);

protected:
    struct Entry {
        std::int16_t Index = 0; // in the table
        std::string Text;       // as the list shows it
        std::string Action;
        bool Dimmed = false;
    };

    // The table, and the module's operations. Store and Change answer whether they did.
    virtual std::vector<Entry> Entries() const = 0;
    virtual bool Store(const std::string& text, const std::string& action) = 0;
    virtual bool Change(std::int16_t index, const std::string& text, const std::string& action) = 0;
    virtual void Remove(std::int16_t index) = 0;

    // The row beside the list that a derived form may fill, and what depends on a selection there.
    virtual void SelectionChanged() {}

    // The selected row and its index in the table, -1 for none.
    int SelectedRow() const;
    std::int16_t Selected() const;

    void Refill();
    void Browse();

    QListWidget* List;
    QLabel* TextLabel;
    QLineEdit* Text;
    QLabel* ActionLabel;
    QPlainTextEdit* Action;
    QGridLayout* Fields;
    QPushButton* cmdNew;
    QPushButton* cmdAdd;
    QPushButton* cmdEdit;
    QPushButton* cmdDelete;
    QPushButton* cmdDone;
    QPushButton* cmdCancel;

private:
    void Open(bool editing);
    void New();
    void Add();
    void EditSelected();
    void Delete();
    void ShowSelected();

    std::vector<Entry> Shown; // by row
    bool Editing = false;     // "Add" stores over the selected entry
};

} // namespace mw
