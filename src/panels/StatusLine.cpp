#include "panels/StatusLine.h"

#include "toolkit/Accessible.h"
#include "toolkit/OnEvent.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

void elideSavedText(QPushButton& saved)
{
    auto const text
        = saved.fontMetrics().elidedText(saved.accessibleName(), Qt::ElideMiddle, saved.width());
    saved.setText(QString(text).replace(u'&', u"&&"_s));
}

void showSavedPath(QString const& path, QLabel& hint, QPushButton& saved)
{
    hint.setVisible(path.isEmpty());
    saved.setVisible(!path.isEmpty());
    if (path.isEmpty())
        return;
    QFileInfo const file(path);
    saved.setToolTip(QDir::toNativeSeparators(path) + u"\nクリックするとフォルダーを開きます"_s);
    saved.setAccessibleName(u"保存しました：%1/%2"_s.arg(file.dir().dirName(), file.fileName()));
    saved.setAccessibleDescription(u"フォルダーを開きます"_s);
    elideSavedText(saved);
    announcePolitely(saved, saved.accessibleName());
}

} // namespace

Subscriptions showStatusLine(
    StatusViewModel const& status, QLabel& hint, QLabel& count, QPushButton& saved)
{
    setAccessibleRole(hint, QAccessible::Notification);
    onEvent(saved, {QEvent::Resize, QEvent::FontChange, QEvent::StyleChange}, saved,
        [&saved](QObject&) { elideSavedText(saved); });
    QObject::connect(&saved, &QPushButton::clicked, &saved, [&status] {
        QFileInfo const file(QString::fromStdString(status.savedPath.value()));
        QDesktopServices::openUrl(QUrl::fromLocalFile(file.path()));
    });
    Subscriptions subscriptions;
    subscriptions += status.hint.observe([&hint](std::string const& text) {
        setLabelText(hint, text);
        announcePolitely(hint, hint.text());
    });
    subscriptions += status.count.observe([&count](std::string const& text) {
        setLabelText(count, text);
        count.setVisible(!text.empty());
    });
    subscriptions += status.savedPath.observe([&hint, &saved](std::string const& path) {
        showSavedPath(QString::fromStdString(path), hint, saved);
    });
    return subscriptions;
}

} // namespace tensio
