#include "guide/GuideView.h"

#include "reactive/assignIfNew.h"
#include "toolkit/Colors.h"
#include "toolkit/DesignFrame.h"

#include <QAbstractTextDocumentLayout>
#include <QImageReader>
#include <QPainter>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextList>
#include <QTextTable>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

constexpr double margin = 24.0;

// The anchor of a heading: without punctuation, a hyphen for each space.
QString anchorOf(QString const& heading)
{
    static QRegularExpression const punctuation(
        u"[^\\w\\s-]"_s, QRegularExpression::UseUnicodePropertiesOption);
    return QString(heading).toLower().remove(punctuation).replace(u' ', u'-');
}

// Qt gives Markdown headings no anchors.
void nameHeading(QTextBlock const& heading)
{
    QTextCharFormat name;
    name.setAnchor(true);
    name.setAnchorNames({anchorOf(heading.text())});
    QTextCursor cursor(heading);
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    cursor.mergeCharFormat(name);
}

void formatBlocks(QTextDocument& document, double scale)
{
    for (auto block = document.begin(); block.isValid(); block = block.next()) {
        auto format = block.blockFormat();
        if (format.headingLevel() > 0) {
            nameHeading(block);
            format.setTopMargin(20.0 * scale);
            format.setBottomMargin(8.0 * scale);
        }
        if (auto const* list = block.textList())
            format.setTopMargin((list->itemNumber(block) == 0 ? 8.0 : 2.0) * scale);
        if (format.nonBreakableLines()) {
            // Code, which is to be wrapped.
            format.setNonBreakableLines(false);
            format.setBackground(colors::code);
            format.setTopMargin(4.0 * scale);
            format.setBottomMargin(4.0 * scale);
        }
        QTextCursor(block).setBlockFormat(format);
    }
}

void ruleTables(QTextDocument& document, double scale)
{
    for (auto* table : document.findChildren<QTextTable*>()) {
        auto format = table->format();
        format.setBorder(scale);
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderBrush(colors::tableRule);
        format.setBorderCollapse(true);
        format.setCellPadding(6.0 * scale);
        format.setCellSpacing(0.0);
        format.setTopMargin(8.0 * scale);
        format.setBottomMargin(8.0 * scale);
        table->setFormat(format);
    }
}

QString fileOf(QTextFormat const& picture, QUrl const& page)
{
    return u':' + page.resolved(QUrl(picture.toImageFormat().name())).path();
}

} // namespace

GuideView::GuideView(QWidget* parent)
    : QTextBrowser(parent)
{
    setAccessibleName(u"手引き"_s);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::NoFrame);
}

QVariant GuideView::loadResource(int type, QUrl const& name)
{
    auto resource = QTextBrowser::loadResource(type, name);
    if (type != QTextDocument::MarkdownResource)
        return resource;
    // Qt would show a space for the end of a line, also between Japanese characters.
    static QRegularExpression const lineEnd(u"(?<=[^\\x00-\\x7f])\n *(?=[^\\x00-\\x7f])"_s);
    return QString::fromUtf8(resource.toByteArray()).remove(lineEnd).toUtf8();
}

void GuideView::doSetSource(QUrl const& url, QTextDocument::ResourceType type)
{
    m_pictures.clear();
    QTextBrowser::doSetSource(url, type);
    document()->documentLayout()->registerHandler(QTextFormat::ImageObject, this);
    auto const scale = scaleOf(*this);
    document()->setDocumentMargin(margin * scale);
    formatBlocks(*document(), scale);
    ruleTables(*document(), scale);
    if (url.hasFragment())
        scrollToAnchor(url.fragment(QUrl::FullyDecoded));
    else
        verticalScrollBar()->setValue(0);
}

void GuideView::resizeEvent(QResizeEvent* event)
{
    // Keeps the line at the top of the view in place.
    auto const atTop = cursorForPosition({0, 0});
    auto const offset = cursorRect(atTop).top();
    QTextBrowser::resizeEvent(event);
    auto& bar = *verticalScrollBar();
    if (bar.value() > 0)
        bar.setValue(bar.value() + cursorRect(atTop).top() - offset);
}

QSizeF GuideView::intrinsicSize(QTextDocument*, int, QTextFormat const& format)
{
    auto const size = QImageReader(fileOf(format, source())).size();
    auto const scale = scaleOf(*this);
    auto const room = viewport()->width() - (2.0 * margin + 8.0) * scale;
    auto const width = std::clamp(room, 1.0, std::max(size.width() * scale, 1.0));
    return {width, std::round(size.height() * width / std::max(size.width(), 1))};
}

void GuideView::drawObject(
    QPainter* painter, QRectF const& frame, QTextDocument*, int, QTextFormat const& format)
{
    auto& picture = m_pictures[fileOf(format, source())];
    painter->drawImage(frame, picture.shown);
    auto const size = (frame.size() * devicePixelRatioF()).toSize();
    if (assignIfNew(picture.size, size))
        QTimer::singleShot(0, this, &GuideView::prepareNextPicture);
}

// Reading takes as long as scaling: a step each.
void GuideView::prepareNextPicture()
{
    auto const next = std::ranges::find_if(m_pictures,
        [](auto const& entry) { return entry.second.shown.size() != entry.second.size; });
    if (next == m_pictures.end())
        return;
    auto& picture = next->second;
    if (picture.source.isNull()) {
        if (!picture.source.load(next->first))
            return;
    } else {
        picture.shown = std::exchange(picture.source, {})
                            .scaled(picture.size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        viewport()->update();
    }
    QTimer::singleShot(0, this, &GuideView::prepareNextPicture);
}

} // namespace tensio
