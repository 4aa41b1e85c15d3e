#pragma once

#include <QAction>

class QAbstractButton;

namespace tensio {

// A menu's command that clicks a button, enabled while the button is. The button owns it.
class ButtonAction : public QAction {
    Q_OBJECT

public:
    ButtonAction(QAbstractButton& button, QString const& title, QKeySequence const& key);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAbstractButton& m_button;
};

} // namespace tensio
