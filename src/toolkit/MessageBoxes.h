#pragma once

#include <QObject>

class QCoreApplication;

namespace tensio {

// Gives every message box its margins, and room for the longest line of its text, which Qt would
// cut or break within words. A child of the application.
class MessageBoxes : public QObject {
    Q_OBJECT

public:
    explicit MessageBoxes(QCoreApplication& application);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace tensio
