#include "toolkit/WindowSize.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace tensio {

namespace {
constexpr double largestShare = 0.8;
}

double fittingScale(QSize design, QSize available, QMargins frame, int menuHeight)
{
    auto const room = available.shrunkBy(frame).shrunkBy(QMargins(0, menuHeight, 0, 0));
    return std::min(static_cast<double>(room.width()) / design.width(),
        static_cast<double>(room.height()) / design.height());
}

QSize openingSize(QSize design, QSize available, QMargins frame, int menuHeight)
{
    double const fitting = fittingScale(design, available, frame, menuHeight);
    double const pleasant = fittingScale(design, available * largestShare, frame, menuHeight);
    double const scale = std::min(fitting, std::max(1.0, pleasant));
    // Rounded down, since a pixel more would not fit.
    return {static_cast<int>(design.width() * scale),
        static_cast<int>(design.height() * scale) + menuHeight};
}

double dialogScale(QSize design, double openerScale, QSize available)
{
    return std::min(std::max(openerScale, 1.0), fittingScale(design, available, assumedFrame, 0));
}

QSize availableSize(QWidget const& window)
{
    return window.screen()->availableSize();
}

} // namespace tensio
