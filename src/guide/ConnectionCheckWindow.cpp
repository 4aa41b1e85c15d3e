#include "guide/ConnectionCheckWindow.h"

#include "platform/PortInspector.h"
#include "toolkit/Colors.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/WindowSize.h"

#include <QClipboard>
#include <QDialog>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTextBrowser>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

QString html(std::string const& text)
{
    auto const escaped = QString::fromStdString(text).toHtmlEscaped();
    return text.empty() ? u"—"_s : QString(escaped).replace(u'\n', u"<br>"_s);
}

QString row(QString const& caption, QString const& value)
{
    return u"<tr><td style='color:%1; padding: 3px 24px 3px 0px'>%2</td>"
           "<td style='padding: 3px 0px'>%3</td></tr>"_s.arg(
               colors::placeholder.name(), caption, value);
}

QString state(InspectedPort const& port)
{
    if (port.isOpen)
        return u"測定に使用中です"_s;
    return port.obstacle.empty() ? u"接続できます"_s : html(port.obstacle);
}

QString heading(QString const& text)
{
    return u"<h3>%1</h3>"_s.arg(text);
}

QString table(InspectedPort const& port)
{
    auto report = u"<table cellspacing='0'>"_s;
    if (port.isSimulated)
        report += row(u"種類"_s, u"模擬装置（実際の測定ではありません）"_s);
    report += row(u"名前"_s, html(port.name));
    report += row(u"ポート"_s, html(port.node));
    report += row(u"製造元"_s, html(port.vendor));
    report += row(u"製品"_s, html(port.product));
    report += row(u"製造番号"_s, html(port.serialNumber));
    if (!port.isOther)
        report += row(u"状態"_s, state(port));
    return report + u"</table>"_s;
}

// As inspect() gives them; a connection uses the first bridge.
QString connectionReport(std::vector<InspectedPort> const& ports)
{
    auto const others = std::ranges::find_if(ports, &InspectedPort::isOther);
    QString report;
    if (others == ports.begin())
        report += heading(u"測定器が見つかりません"_s)
            + u"<p>測定器のUSBケーブルを接続し、測定器の電源を確かめて"
              "から、「再読込」を押してください。</p>"_s;
    for (auto port = ports.begin(); port != others; ++port)
        report += heading(port == ports.begin() ? u"接続する測定器"_s
                                                : u"使わない測定器（上の測定器を使います）"_s)
            + table(*port);
    if (others != ports.end())
        report += heading(u"ほかのシリアルポート"_s);
    for (auto port = others; port != ports.end(); ++port)
        report += table(*port);
    return report;
}

} // namespace

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
