#pragma once

#include <QFileDialog>
#include <QMessageBox>

#include <functional>

namespace tensio {

// These return at once; the dialog belongs to the window and is modal to it.
void tell(QWidget& window, QMessageBox::Icon icon, QString const& message);
// Calls back if the user presses the button with that text; キャンセル is the default.
void confirm(QWidget& window, QString const& question, QString const& agreement,
    std::function<void()> const& agreed);
// No larger than the screen. Calls back with the path, unless the user cancels.
void choose(QWidget& window, QString const& title, QFileDialog::FileMode mode,
    QString const& filter, std::function<void(QString const&)> const& chosen);

} // namespace tensio
