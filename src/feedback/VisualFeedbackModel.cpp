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
    , m_usualImage(std::move(usualImage))
    , m_altImage(std::move(altImage))
    , m_usualColor(usualColor)
    , m_altColor(altColor)
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
    showUsual();
}

void VisualFeedbackModel::blinkWithTimer()
{
    if (m_index++ % 2 != 0) {
        showUsual();
        return;
    }
    targetImage.setValue(m_altImage);
    targetColor.setValue(m_altColor);
}

void VisualFeedbackModel::showUsual()
{
    targetImage.setValue(m_usualImage);
    targetColor.setValue(m_usualColor);
}

} // namespace tensio
