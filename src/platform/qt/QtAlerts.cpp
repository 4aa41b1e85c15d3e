#include "platform/qt/QtAlerts.h"

#include "platform/qt/FrontWindow.h"
#include "platform/qt/MainQueue.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include <cassert>

namespace tensio {

std::size_t QtAlerts::runModal(
    AlertStyle style, std::string const& message, std::vector<std::string> const& buttons)
{
    auto const hold = m_queue.hold();
    QMessageBox box(frontWindow());
    bool const isCritical = style == AlertStyle::Critical;
    box.setIcon(isCritical ? QMessageBox::Critical : QMessageBox::Warning);
    if (auto* icon = box.findChild<QLabel*>(QStringLiteral("qt_msgboxex_icon_label")))
        icon->setAccessibleName(isCritical ? QStringLiteral("エラー") : QStringLiteral("警告"));
    box.setWindowTitle(QStringLiteral("tensio"));
    box.setText(QString::fromStdString(message));
    box.setAccessibleName(box.text());
    assert(!buttons.empty());
    std::vector<QAbstractButton*> added;
    added.reserve(buttons.size());
    for (auto const& title : buttons)
        added.push_back(box.addButton(QString::fromStdString(title),
            added.empty() ? QMessageBox::AcceptRole : QMessageBox::RejectRole));
    box.setDefaultButton(qobject_cast<QPushButton*>(added.back()));
    box.setEscapeButton(added.back());
    box.exec();

    for (std::size_t index = 0; index < added.size(); ++index) {
        if (box.clickedButton() == added[index])
            return index;
    }
    return added.size() - 1;
}

} // namespace tensio
