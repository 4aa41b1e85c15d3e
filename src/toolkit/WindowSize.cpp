#include "toolkit/WindowSize.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace tensio {

namespace {
constexpr double largestShare = 0.8;

// May be larger than is pleasant.
double fittingScale(QSize design, QSize available, int menuHeight)
{
    auto const room = available.shrunkBy(assumedFrame).shrunkBy(QMargins(0, menuHeight, 0, 0));
    return std::min(static_cast<double>(room.width()) / design.width(),
        static_cast<double>(room.height()) / design.height());
}

} // namespace

QSize openingSize(QSize design, QSize available, int menuHeight)
{
    double const fitting = fittingScale(design, available, menuHeight);
    double const pleasant = fittingScale(design, available * largestShare, menuHeight);
    double const scale = std::min(fitting, std::max(1.0, pleasant));
    // Rounded down, since a pixel more would not fit.
    return {static_cast<int>(design.width() * scale),
        static_cast<int>(design.height() * scale) + menuHeight};
}

double dialogScale(QSize design, double openerScale, QSize available)
{
    return std::min(std::max(openerScale, 1.0), fittingScale(design, available, 0));
}

QSize availableSize(QWidget const& window)
{
    return window.screen()->availableSize();
}

} // namespace tensio
