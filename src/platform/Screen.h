#pragma once

#include <optional>
#include <string>

namespace tensio {

// In screen points, the origin at the bottom left of the main screen.
struct ScreenRect {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
};

// The main window on its screen, and pictures of it by way of the clipboard.
class Screen {
public:
    Screen() = default;
    Screen(Screen const&) = delete;
    Screen& operator=(Screen const&) = delete;
    virtual ~Screen() = default;

    virtual ScreenRect mainWindowFrame() const = 0;
    virtual double mainScreenHeight() const = 0;

    // "x,y,width,height" in screen points from the top left.
    virtual void captureToClipboard(std::string const& rectangle) = 0;
    // The clipboard's picture as PNG; nothing when there is none.
    virtual std::optional<std::string> clipboardPng() const = 0;
};

} // namespace tensio
