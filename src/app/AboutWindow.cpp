#include "app/AboutWindow.h"

#include "toolkit/DesignFrame.h"
#include "toolkit/WindowSize.h"
#include "ui_About.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace tensio {

AboutWindow::AboutWindow(QWidget& parent)
    : QDialog(&parent)
    , m_ui(std::make_unique<Ui::About>())
{
    m_ui->setupUi(this);
    auto const scale = dialogScale(sizeHint(), scaleOfContent(parent), availableSize(parent));
    scaleLayouts(*this, scale);
    m_ui->iconView->setFixedSize(m_ui->iconView->minimumSize() * scale);
    m_ui->iconView->setPixmap(
        QIcon(u":/tensio.svg"_s).pixmap(m_ui->iconView->minimumSize(), devicePixelRatioF()));
    m_ui->versionLabel->setText(m_ui->versionLabel->text().arg(
        QCoreApplication::applicationVersion(), QString::fromLatin1(qVersion())));
    m_ui->closeButton->setFocus();
    connect(m_ui->closeButton, &QAbstractButton::clicked, this, &QDialog::accept);
}

AboutWindow::~AboutWindow() = default;

} // namespace tensio
