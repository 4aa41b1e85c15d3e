#include "app/AboutWindow.h"

#include "toolkit/DesignFrame.h"
#include "toolkit/WindowSize.h"
#include "ui_About.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace tensio {

QDialog* makeAboutWindow(QWidget& parent)
{
    auto* window = new QDialog(&parent);
    Ui::About ui;
    ui.setupUi(window);
    auto const scale
        = dialogScale(window->sizeHint(), scaleOfContent(parent), availableSize(parent));
    scaleLayouts(*window, scale);
    auto const iconSize = ui.iconView->minimumSize() * scale;
    ui.iconView->setFixedSize(iconSize);
    ui.iconView->setPixmap(QIcon(u":/tensio.svg"_s).pixmap(iconSize, window->devicePixelRatioF()));
    ui.versionLabel->setText(ui.versionLabel->text().arg(
        QCoreApplication::applicationVersion(), QString::fromLatin1(qVersion())));
    ui.closeButton->setFocus();
    QObject::connect(ui.closeButton, &QAbstractButton::clicked, window, &QDialog::accept);
    return window;
}

} // namespace tensio
