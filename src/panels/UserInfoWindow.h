#pragma once

#include <QDialog>

namespace tensio {

// The window of the user information dialog: modal to the main window, without a nested event loop,
// so that the connection it starts can report back.
class UserInfoWindow : public QDialog {
    Q_OBJECT

public:
    explicit UserInfoWindow(QWidget& mainWindow);

Q_SIGNALS:
    // Not when the window system hides and shows the window, as when it is minimised.
    void willAppear();
    void willDisappear();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
};

} // namespace tensio
