#pragma once

#include "reactive/Interface.h"

#include <optional>
#include <string>

namespace tensio {

// In device-independent pixels of the screen.
struct ScreenRect {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
};

// The place of the main window on the screen, and pictures of it through the clipboard.
class Screen : public Interface {
public:
    // From the bottom left of the main screen to the window's bottom left, y upwards; all zero
    // without a window.
    virtual ScreenRect mainWindowFrame() const = 0;
    // In the same unit.
    virtual double mainScreenHeight() const = 0;

    // From the top left of the main screen, y downwards. Returns when it is done; the clipboard has
    // no picture when nothing could be captured.
    virtual void captureToClipboard(ScreenRect const& area) = 0;
    // The clipboard's picture as PNG; nothing when there is none.
    virtual std::optional<std::string> clipboardPng() const = 0;
};

} // namespace tensio
