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

StatusLine::StatusLine(StatusViewModel& status, QLabel& hint, QLabel& count, QPushButton& saved)
    : m_status(status)
    , m_hint(hint)
    , m_saved(saved)
{
    setAccessibleRole(m_hint, QAccessible::Notification);
    onEvent(m_saved, {QEvent::Resize, QEvent::FontChange, QEvent::StyleChange}, *this,
        [this](QObject&) { elideSavedText(); });
    connect(&m_saved, &QPushButton::clicked, this, &StatusLine::openFolder);
    m_subscriptions += m_status.hint.observe([this](std::string const& text) {
        setLabelText(m_hint, text);
        announcePolitely(m_hint, m_hint.text());
    });
    m_subscriptions += m_status.count.observe([&count](std::string const& text) {
        setLabelText(count, text);
        count.setVisible(!text.empty());
    });
    m_subscriptions
        += m_status.savedPath.observe([this](std::string const& path) { showSavedPath(path); });
}

void StatusLine::showSavedPath(std::string const& path)
{
    bool const isSaved = !path.empty();
    m_hint.setVisible(!isSaved);
    m_saved.setVisible(isSaved);
    if (!isSaved)
        return;
    QFileInfo const file(QString::fromStdString(path));
    auto const shownPath = QDir::toNativeSeparators(file.filePath());
    m_saved.setToolTip(shownPath + u"\nクリックするとフォルダーを開きます"_s);
    m_saved.setAccessibleName(u"保存しました：%1/%2"_s.arg(file.dir().dirName(), file.fileName()));
    m_saved.setAccessibleDescription(u"フォルダーを開きます"_s);
    elideSavedText();
    announcePolitely(m_saved, m_saved.accessibleName());
}

void StatusLine::elideSavedText()
{
    auto const text = m_saved.fontMetrics().elidedText(
        m_saved.accessibleName(), Qt::ElideMiddle, m_saved.width());
    m_saved.setText(QString(text).replace(u'&', u"&&"_s));
}

void StatusLine::openFolder() const
{
    auto const file = QString::fromStdString(m_status.savedPath.value());
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(file).path()));
}

} // namespace tensio
