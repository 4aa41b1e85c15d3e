#include "guide/ConnectionCheckWindow.h"

#include "guide/ConnectionCheck.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/WindowSize.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTextBrowser>

namespace tensio {

ConnectionCheckWindow::ConnectionCheckWindow(PortInspector& ports, QWidget& parent)
    : QDialog(&parent)
    , m_ports(ports)
    , m_report(new QTextBrowser(this))
{
    setWindowTitle(QStringLiteral("接続の確認"));
    m_report->setAccessibleName(QStringLiteral("接続の確認の結果"));
    m_report->setFrameShape(QFrame::NoFrame);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(16);
    buttons->addStretch();
    auto const add = [&](QString const& title, char const* role, auto work) {
        auto* button = new QPushButton(title, this);
        button->setProperty("role", QString::fromLatin1(role));
        connect(button, &QPushButton::clicked, this, work);
        buttons->addWidget(button);
        return button;
    };
    add(QStringLiteral("再読込"), "command", &ConnectionCheckWindow::reload);
    add(QStringLiteral("コピー"), "command", &ConnectionCheckWindow::copy);
    auto* close = add(QStringLiteral("閉じる"), "command", &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(16);
    layout->addWidget(m_report);
    layout->addLayout(buttons);
    resize(640, 520);
    scaleLayouts(*this, dialogScale(size(), shownScale(parent), availableSize(parent)));
    close->setDefault(true);
    close->setFocus();
    reload();
}

void ConnectionCheckWindow::reload()
{
    m_report->setHtml(connectionReport(m_ports.inspect()));
}

void ConnectionCheckWindow::copy()
{
    QGuiApplication::clipboard()->setText(m_report->toPlainText());
}

} // namespace tensio
