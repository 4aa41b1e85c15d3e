#include "feedback/VisualFeedbackModel.h"

#include <utility>

namespace tensio {

namespace {
constexpr Seconds blinkInterval {0.2};
}

VisualFeedbackModel::VisualFeedbackModel(
    RunLoop& runLoop, Picture usualImage, Picture altImage, QColor usualColor, QColor altColor)
    : targetImage(usualImage)
    , targetColor(usualColor)
    , m_runLoop(runLoop)
    , m_usual {std::move(usualImage), usualColor}
    , m_alt {std::move(altImage), altColor}
{
}

void VisualFeedbackModel::startBlinking()
{
    if (m_state == STATE_ALT)
        return;
    m_state = STATE_ALT;
    m_index = 0;
    m_timer = m_runLoop.scheduleRepeating(blinkInterval, [this] { blinkWithTimer(); });
}

void VisualFeedbackModel::stopBlinking()
{
    if (m_state == STATE_USUAL)
        return;
    m_state = STATE_USUAL;
    m_timer.end();
    show(m_usual);
}

void VisualFeedbackModel::show(Look const& look)
{
    targetImage.setValue(look.image);
    targetColor.setValue(look.color);
}

} // namespace tensio
