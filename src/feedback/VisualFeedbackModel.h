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

    // The marker changes first at the first tick. A running blink goes on in its phase.
    void startBlinking();
    void stopBlinking();

private:
    void blink();
    void showUsual();

    RunLoop& m_runLoop;
    Picture m_usualImage;
    Picture m_altImage;
    QColor m_usualColor;
    QColor m_altColor;
    std::int64_t m_state = STATE_USUAL;
    std::int64_t m_index = 0;
    Subscription m_timer;
};

} // namespace tensio
