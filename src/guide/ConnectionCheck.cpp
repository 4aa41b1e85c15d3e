#include "guide/ConnectionCheck.h"

#include <algorithm>

namespace tensio {

namespace {

QString html(std::string const& text)
{
    auto const escaped = QString::fromStdString(text).toHtmlEscaped();
    return text.empty() ? QStringLiteral("—")
                        : QString(escaped).replace(u'\n', QStringLiteral("<br>"));
}

QString row(QString const& caption, QString const& value)
{
    return QStringLiteral("<tr><td style='color:#4b5563; padding: 3px 0px'>%1　　</td>"
                          "<td style='padding: 3px 0px'>%2</td></tr>")
        .arg(caption, value);
}

QString state(InspectedPort const& port)
{
    if (port.isOpen)
        return QStringLiteral("測定に使用中です");
    return port.obstacle.empty() ? QStringLiteral("接続できます") : html(port.obstacle);
}

QString heading(QString const& text)
{
    return QStringLiteral("<h3>%1</h3>").arg(text);
}

QString table(InspectedPort const& port)
{
    auto report = QStringLiteral("<table cellspacing='0'>");
    if (port.isSimulated)
        report
            += row(QStringLiteral("種類"), QStringLiteral("模擬装置（実際の測定ではありません）"));
    report += row(QStringLiteral("名前"), html(port.name));
    report += row(QStringLiteral("ポート"), html(port.node));
    report += row(QStringLiteral("製造元"), html(port.vendor));
    report += row(QStringLiteral("製品"), html(port.product));
    report += row(QStringLiteral("製造番号"), html(port.serialNumber));
    if (!port.isOther)
        report += row(QStringLiteral("状態"), state(port));
    return report + QStringLiteral("</table>");
}

} // namespace

QString connectionReport(std::vector<InspectedPort> const& ports)
{
    auto const others = std::ranges::find_if(ports, &InspectedPort::isOther);
    QString report;
    if (others == ports.begin())
        report += heading(QStringLiteral("測定器が見つかりません"))
            + QStringLiteral("<p>測定器のUSBケーブルを接続し、測定器の電源を確かめて"
                             "から、「再読込」を押してください。</p>");
    for (auto port = ports.begin(); port != others; ++port)
        report += heading(port == ports.begin()
                          ? QStringLiteral("接続する測定器")
                          : QStringLiteral("使わない測定器（上の測定器を使います）"))
            + table(*port);
    if (others != ports.end())
        report += heading(QStringLiteral("ほかのシリアルポート"));
    for (auto port = others; port != ports.end(); ++port)
        report += table(*port);
    return report;
}

} // namespace tensio
