#pragma once

#include "platform/Screen.h"

class QWidget;

namespace tensio {

class MainQueue;

// The main window's place and picture. Where programs may read the screen, the picture is what the
// screen shows, frame included; elsewhere it is the window's own rendering.
class QtScreen : public Screen {
public:
    // The queue is held while a picture is taken.
    explicit QtScreen(MainQueue& queue)
        : m_queue(queue)
    {
    }

    // Not owned; must outlive this object.
    void setMainWindow(QWidget& window) { m_window = &window; }

    ScreenRect mainWindowFrame() const override;
    double mainScreenHeight() const override;
    void captureToClipboard(ScreenRect const& area) override;
    std::optional<std::string> clipboardPng() const override;

private:
    MainQueue& m_queue;
    QWidget* m_window = nullptr;
};

} // namespace tensio
