#pragma once

#include <QDialog>

namespace tensio {

// Without an event loop of its own, so that nothing else waits; it deletes itself when it closes.
inline void openDialog(QDialog* dialog)
{
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

} // namespace tensio
