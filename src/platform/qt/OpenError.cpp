#include "platform/qt/OpenError.h"

#include "platform/qt/PortLock.h"

#include <QFileInfo>

#include <memory>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

QString ownerOf(QString const& file)
{
    QFileInfo const info(file);
    auto const name = info.owner();
    return name.isEmpty() ? QString::number(info.ownerId()) : name;
}

QString userMessage(QSerialPort const& port, QString const& node)
{
    if (port.error() == QSerialPort::DeviceNotFoundError)
        return u"測定器が見つかりません（%1）。\nケーブルを接続し直してから、もう一度お試しください。"_s
            .arg(node);
    // Elsewhere than on Unix a port is no file.
    if (QFileInfo const info(node); info.exists() && !info.isReadable()) {
        return u"測定器のポートを開く権限がありません（%1）。\n"
               "このコンピューターの管理者に、ポートの使用許可を依頼してください。"_s.arg(node);
    }
    if (auto const lock = abandonedLock(node); !lock.isEmpty()) {
        return u"終了したプログラムが測定器のポートをロックしたままです（%1）。\n"
               "コンピューターを再起動するか、ファイル %2 "
               "の削除を利用者 %3 か管理者に依頼してください。"_s.arg(node, lock, ownerOf(lock));
    }
    if (port.error() == QSerialPort::PermissionError) {
        return u"測定器のポートは他のプログラムが使用中です（%1）。\n"
               "そのプログラムを終了してから、もう一度お試しください。"_s.arg(node);
    }
    return u"測定器のポートを開けませんでした（%"
           "1）。\nケーブルを接続し直してから、もう一度お試しください。"_s.arg(node);
}

} // namespace

ErrorRef openError(QSerialPort const& port, QString const& node)
{
    return std::make_shared<Error>(
        "org.qt-project.serialport", port.error(), userMessage(port, node).toStdString());
}

} // namespace tensio
