#pragma once

#include <QObject>

class QCoreApplication;

namespace tensio {

// Lets every window take the size that a Wayland compositor gives it, also one above the maximum of
// its widget: the title bars that Qt draws offer to maximize even a window of a fixed size, and
// some compositors kill a client that ignores the size. A child of the application.
class WaylandWindowSizes : public QObject {
    Q_OBJECT

public:
    explicit WaylandWindowSizes(QCoreApplication& application);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace tensio
