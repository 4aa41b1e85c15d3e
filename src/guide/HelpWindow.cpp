#include "guide/HelpWindow.h"

#include "guide/GuideView.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/WindowSize.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QShortcut>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {
constexpr QSize comfortable(860, 900);
constexpr QSize smallest(600, 400);
} // namespace

HelpWindow::HelpWindow()
    : m_guide(new GuideView(this))
{
    setWindowTitle(u"tensio 使い方"_s);
    // The program quits when its main window closes, even if this one is open.
    setAttribute(Qt::WA_QuitOnClose, false);
    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(12, 8, 12, 8);
    bar->setSpacing(8);
    auto const add = [&](QString const& title, auto work) {
        auto* button = new QPushButton(title, this);
        button->setProperty("role", u"command"_s);
        connect(button, &QPushButton::clicked, m_guide, work);
        bar->addWidget(button);
        return button;
    };
    auto* back = add(u"戻る"_s, &QTextBrowser::backward);
    back->setEnabled(false);
    connect(m_guide, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
    for (auto const& [title, page] : {std::pair {u"使い方", u"guide.ja.md"},
             {u"困ったとき", u"guide.ja.md#困ったとき"}, {u"導入の手引き", u"install.ja.md"}}) {
        QUrl const url(u"qrc:/help/"_s + QString::fromUtf16(page));
        add(QString::fromUtf16(title), [this, url] { m_guide->setSource(url); });
    }
    bar->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addLayout(bar);
    layout->addWidget(m_guide);
    m_guide->setSource(QUrl(u"qrc:/help/guide.ja.md"_s));
    m_guide->setFocus();
    new QShortcut(Qt::Key_Escape, this, this, &QWidget::close);
    new QShortcut(QKeySequence::ZoomIn, m_guide, this, [this] { zoomBy(+2); });
    new QShortcut(QKeySequence::ZoomOut, m_guide, this, [this] { zoomBy(-2); });
}

void HelpWindow::zoomBy(int pixels)
{
    // QTextBrowser's own zoom knows sizes in points only, and gives way to the style sheet.
    auto const size = std::clamp(m_guide->fontInfo().pixelSize() + pixels, 8, 60);
    m_guide->setStyleSheet(u"font-size: %1px"_s.arg(size));
}

void HelpWindow::showOn(QWidget const& opener)
{
    if (!isVisible()) {
        auto const available = availableSize(opener);
        auto const scale = dialogScale(smallest, scaleOfContent(opener), available);
        if (scale != scaleOf(*this)) {
            scaleLayouts(*this, scale);
            m_guide->setStyleSheet({}); // Its zoom was that of another scale.
            m_guide->reload();
        }
        resize((comfortable * scale).boundedTo(available.shrunkBy(assumedFrame)));
    }
    show();
    raise();
    activateWindow();
}

} // namespace tensio
