#include "sessions/Dialogs.h"

#include "toolkit/OpenDialog.h"
#include "toolkit/WindowSize.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tensio {

void tell(QWidget& window, QMessageBox::Icon icon, QString const& message)
{
    openDialog(new QMessageBox(icon, u"tensio"_s, message, QMessageBox::Ok, &window));
}

void confirm(QWidget& window, QString const& question, QString const& agreement,
    std::function<void()> const& agreed)
{
    auto* const box = new QMessageBox(
        QMessageBox::Warning, u"tensio"_s, question, QMessageBox::NoButton, &window);
    auto* const cancel = box->addButton(u"キャンセル"_s, QMessageBox::RejectRole);
    box->setDefaultButton(cancel);
    box->setEscapeButton(cancel);
    auto* const agree = box->addButton(agreement, QMessageBox::AcceptRole);
    QObject::connect(agree, &QPushButton::clicked, &window, agreed);
    openDialog(box);
}

void choose(QWidget& window, QString const& title, QFileDialog::FileMode mode,
    QString const& filter, std::function<void(QString const&)> const& chosen)
{
    auto* const panel = new QFileDialog(&window, title, {}, filter);
    panel->setFileMode(mode);
    panel->setOption(QFileDialog::ShowDirsOnly, mode == QFileDialog::Directory);
    // The style sheet's least width is more than small screens have.
    auto const room = availableSize(window).shrunkBy(assumedFrame);
    panel->ensurePolished();
    panel->setMinimumWidth(std::min(panel->minimumWidth(), room.width()));
    panel->resize(panel->sizeHint().expandedTo(panel->minimumSize()).boundedTo(room));
    QObject::connect(panel, &QFileDialog::fileSelected, &window, chosen);
    openDialog(panel);
}

} // namespace tensio
