#pragma once

#include "platform/Screen.h"

class QWidget;

namespace tensio {

// The main window's place and picture. Where the screen may be read, its pixels, frame included;
// elsewhere the window's own rendering.
class QtScreen : public Screen {
public:
    // Not owned; must outlive its use.
    void setMainWindow(QWidget& window) { m_window = &window; }

    ScreenRect mainWindowFrame() const override;
    double mainScreenHeight() const override;
    void captureToClipboard(std::string const& rectangle) override;
    std::optional<std::string> clipboardPng() const override;

private:
    QWidget* m_window = nullptr;
};

} // namespace tensio
