// Takes the place of the system's browser and remembers what it was asked to open.
#pragma once

#include <string>
#include <vector>

#include <QDesktopServices>
#include <QObject>
#include <QUrl>

namespace forms {

class OpenedPages : public QObject {
    Q_OBJECT

public:
    OpenedPages() {
        for (const char* scheme : kSchemes)
            QDesktopServices::setUrlHandler(scheme, this, "Open");
    }

    ~OpenedPages() override {
        for (const char* scheme : kSchemes)
            QDesktopServices::unsetUrlHandler(scheme);
    }

    std::vector<std::string> Addresses;

public slots:
    void Open(const QUrl& address) { Addresses.push_back(address.toString().toStdString()); }

private:
    static constexpr const char* kSchemes[] = {"http", "https"};
};

} // namespace forms
