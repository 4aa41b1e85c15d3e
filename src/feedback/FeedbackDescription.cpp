#include "feedback/FeedbackDescription.h"

#include "core/NumberText.h"
#include "feedback/VisualFeedbackViewModel.h"

namespace tensio {

namespace {

QString number(float value, int decimals)
{
    return QString::fromStdString(formatFixed(value, decimals));
}

} // namespace

FeedbackDescription::FeedbackDescription(VisualFeedbackViewModel const& viewModel)
    : pressureScale(
        QStringLiteral("圧力目盛 0〜%1 kPa").arg(number(viewModel.upperBoundPressure.value(), 0)))
    , timeScale(QStringLiteral("時間目盛 %1秒").arg(number(viewModel.timeWindow.value(), 0)))
    , target(QStringLiteral("%1 kPa").arg(number(viewModel.targetPressure.value(), 1)))
    , maximum(QStringLiteral("%1 kPa").arg(number(viewModel.maxPressure.value(), 1)))
{
    if (viewModel.isTargetReached())
        target += QStringLiteral(" 達成");
}

QString FeedbackDescription::gauge() const
{
    return QStringLiteral("%1、目標 %2、最大圧 %3").arg(pressureScale, target, maximum);
}

QString FeedbackDescription::graph() const
{
    return QStringLiteral("%1、%2、目標 %3、最大圧 %4")
        .arg(pressureScale, timeScale, target, maximum);
}

} // namespace tensio
