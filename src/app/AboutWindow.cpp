#include "app/AboutWindow.h"

#include "toolkit/StyleSheet.h"
#include "ui_About.h"

#include <QCoreApplication>

namespace tensio {

AboutWindow::AboutWindow(QWidget& parent)
    : QDialog(&parent)
    , m_ui(std::make_unique<Ui::About>())
{
    m_ui->setupUi(this);
    // The window keeps its size, whatever the scale of the one it belongs to.
    setStyleSheet(tensio::styleSheet(1.0));
    m_ui->iconView->setPixmap(QIcon(QStringLiteral(":/tensio.svg"))
                                  .pixmap(m_ui->iconView->minimumSize(), devicePixelRatioF()));
    m_ui->versionLabel->setText(m_ui->versionLabel->text().arg(
        QCoreApplication::applicationVersion(), QString::fromLatin1(qVersion())));
    m_ui->closeButton->setFocus();
    connect(m_ui->closeButton, &QAbstractButton::clicked, this, &QDialog::accept);
}

AboutWindow::~AboutWindow() = default;

} // namespace tensio
