#include "toolkit/ButtonPair.h"

#include <QAbstractButton>

namespace tensio {

namespace {

void moveFocus(QAbstractButton const& from, QAbstractButton& to)
{
    to.setEnabled(true);
    // Also while another window is in front.
    if (from.window()->focusWidget() == &from)
        to.setFocus();
}

} // namespace

void enableButtonPair(
    QAbstractButton& first, bool isFirstEnabled, QAbstractButton& second, bool isSecondEnabled)
{
    if (!isFirstEnabled && isSecondEnabled)
        moveFocus(first, second);
    if (isFirstEnabled && !isSecondEnabled)
        moveFocus(second, first);
    first.setEnabled(isFirstEnabled);
    second.setEnabled(isSecondEnabled);
}

} // namespace tensio
