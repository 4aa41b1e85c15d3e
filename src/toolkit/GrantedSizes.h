#pragma once

#include <QObject>

class QCoreApplication;

namespace tensio {

// Lets every window take the size that it is given, also one that its widget would not grow to: the
// title bars that Qt draws under Wayland offer to maximize even a window of a fixed size, and a
// compositor ends the program whose window then keeps its own.
class GrantedSizes : public QObject {
    Q_OBJECT

public:
    explicit GrantedSizes(QCoreApplication& application);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace tensio
