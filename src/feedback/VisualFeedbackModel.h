#pragma once

#include "platform/RunLoop.h"
#include "reactive/MutableProperty.h"
#include "toolkit/Picture.h"

#include <QColor>

#include <cstdint>

namespace tensio {

// Makes the target marker blink: switches picture and colour between a usual and an alternative
// pair every 0.2 s.
class VisualFeedbackModel {
public:
    static constexpr std::int64_t STATE_USUAL = 0;
    static constexpr std::int64_t STATE_ALT = 1;

    VisualFeedbackModel(
        RunLoop& runLoop, Picture usualImage, Picture altImage, QColor usualColor, QColor altColor);

    MutableProperty<Picture> targetImage;
    MutableProperty<QColor> targetColor;

    // The first change comes at the first tick. Calling it again does not restart the blinking.
    void startBlinking();
    void stopBlinking();
    bool isBlinking() const { return m_state == STATE_ALT; }

private:
    struct Look {
        Picture image;
        QColor color;
    };

    void blinkWithTimer() { show(m_index++ % 2 == 0 ? m_alt : m_usual); }
    void show(Look const& look);

    RunLoop& m_runLoop;
    Look m_usual;
    Look m_alt;
    std::int64_t m_state = STATE_USUAL;
    std::int64_t m_index = 0;
    Subscription m_timer;
};

} // namespace tensio
