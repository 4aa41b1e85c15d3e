#include "guide/ConnectionCheckWindow.h"

#include "guide/ConnectionCheck.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/WindowSize.h"

#include <QClipboard>
#include <QDialog>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTextBrowser>

using namespace Qt::StringLiterals;

namespace tensio {

QDialog* makeConnectionCheckWindow(PortInspector& ports, QWidget& parent)
{
    auto* window = new QDialog(&parent);
    window->setWindowTitle(u"接続の確認"_s);
    auto* report = new QTextBrowser;
    report->setAccessibleName(u"接続の確認の結果"_s);
    report->setFrameShape(QFrame::NoFrame);
    auto const reload = [&ports, report] { report->setHtml(connectionReport(ports.inspect())); };
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(16);
    buttons->addStretch();
    auto const add = [&](QString const& title, auto work) {
        auto* button = new QPushButton(title);
        button->setProperty("role", u"command"_s);
        QObject::connect(button, &QPushButton::clicked, window, work);
        buttons->addWidget(button);
        return button;
    };
    add(u"再読込"_s, reload);
    add(u"コピー"_s, [report] { QGuiApplication::clipboard()->setText(report->toPlainText()); });
    auto* close = add(u"閉じる"_s, &QDialog::accept);
    auto* layout = new QVBoxLayout(window);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(16);
    layout->addWidget(report);
    layout->addLayout(buttons);
    window->resize(640, 520);
    scaleLayouts(
        *window, dialogScale(window->size(), scaleOfContent(parent), availableSize(parent)));
    close->setDefault(true);
    close->setFocus();
    reload();
    return window;
}

} // namespace tensio
