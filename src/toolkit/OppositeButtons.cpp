#include "toolkit/OppositeButtons.h"

#include <QAbstractButton>

namespace tensio {

namespace {

void handKeyboardOver(QAbstractButton const& useless, QAbstractButton& useful)
{
    useful.setEnabled(true);
    // Also while another window is in front.
    if (useless.window()->focusWidget() == &useless)
        useful.setFocus();
}

} // namespace

void enableOppositeButtons(
    QAbstractButton& first, bool isFirstOfUse, QAbstractButton& second, bool isSecondOfUse)
{
    if (!isFirstOfUse && isSecondOfUse)
        handKeyboardOver(first, second);
    if (isFirstOfUse && !isSecondOfUse)
        handKeyboardOver(second, first);
    first.setEnabled(isFirstOfUse);
    second.setEnabled(isSecondOfUse);
}

} // namespace tensio
