#pragma once

class QAbstractButton;

namespace tensio {

// Of two opposite buttons often only one is of use. When the one that has the keyboard is of none,
// the other gets it, and not whatever control comes next.
void enableOppositeButtons(
    QAbstractButton& first, bool isFirstOfUse, QAbstractButton& second, bool isSecondOfUse);

} // namespace tensio
