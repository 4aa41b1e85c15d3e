#include "guide/ConnectionCheckWindow.h"

#include "guide/ConnectionCheck.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/WindowSize.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTextBrowser>

using namespace Qt::StringLiterals;

namespace tensio {

ConnectionCheckWindow::ConnectionCheckWindow(PortInspector& ports, QWidget& parent)
    : QDialog(&parent)
    , m_ports(ports)
    , m_report(new QTextBrowser(this))
{
    setWindowTitle(u"接続の確認"_s);
    m_report->setAccessibleName(u"接続の確認の結果"_s);
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
    add(u"再読込"_s, "command", &ConnectionCheckWindow::reload);
    add(u"コピー"_s, "command", &ConnectionCheckWindow::copy);
    auto* close = add(u"閉じる"_s, "command", &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(16);
    layout->addWidget(m_report);
    layout->addLayout(buttons);
    resize(640, 520);
    scaleLayouts(*this, dialogScale(size(), scaleOfContent(parent), availableSize(parent)));
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
