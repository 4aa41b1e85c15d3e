#pragma once

#include "panels/StatusViewModel.h"

#include <QObject>

class QLabel;
class QPushButton;

namespace tensio {

// The line of the history strip that says what to do next, or where the last save went; beneath it,
// which measurements are shown.
class StatusLine : public QObject {
    Q_OBJECT

public:
    // The saved button stands where the hint does and opens the folder.
    StatusLine(StatusViewModel& status, QLabel& hint, QLabel& count, QPushButton& saved);

private:
    void showSavedPath(std::string const& path);
    void elideSavedText();
    void openFolder() const;

    StatusViewModel& m_status;
    QLabel& m_hint;
    QPushButton& m_saved;
    Subscriptions m_subscriptions;
};

} // namespace tensio
